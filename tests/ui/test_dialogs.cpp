// The settings sheet, the model rows, the first-run wizard, help and about, offscreen
// against a real model store, a local HTTP server and a keyring in a throw-away session.
#include "LocalServer.h"
#include "Media.h"
#include "StoredKey.h"

#include "app/AppModel.h"
#include "app/Settings.h"
#include "app/ModelStore.h"
#include "storage/KeychainStore.h"
#include "ui/AboutView.h"
#include "ui/HelpView.h"
#include "ui/InlineMarkdown.h"
#include "ui/KeyField.h"
#include "ui/ModelImportRow.h"
#include "ui/ModelRow.h"
#include "ui/OnboardingWizard.h"
#include "ui/SettingsSheet.h"
#include "ui/Icons.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include <memory>

namespace {

const WhisperModel &base = WhisperModel::all().at(0);
const WhisperModel &small = WhisperModel::all().at(1);
const WhisperModel &medium = WhisperModel::all().at(2);
const WhisperModel &large = WhisperModel::all().at(3);

QString modelsDir()
{
    return Media::dataDir() + QStringLiteral("/models");
}

void install(const WhisperModel &model)
{
    QDir().mkpath(modelsDir());
    QFile file(modelsDir() + u'/' + model.fileName);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(file.resize(qint64(model.approxSizeMB) * 900'000 + 1));
}

template <typename T = QWidget>
T *child(QWidget *parent, const QString &name)
{
    return parent->findChild<T *>(name);
}

ModelRow *rowOf(QWidget *parent, const WhisperModel &model)
{
    return child<ModelRow>(parent, QStringLiteral("row-") + model.id);
}

bool shows(QWidget *parent, const QString &name)
{
    QWidget *widget = child(parent, name);
    return widget && widget->isVisibleTo(parent);
}

QString textOf(QWidget *parent, const QString &name)
{
    if (auto *label = child<QLabel>(parent, name))
        return label->text();
    return child<QAbstractButton>(parent, name)->text();
}

void click(QWidget *parent, const QString &name)
{
    QTest::mouseClick(child(parent, name), Qt::LeftButton);
}

void clickRow(ModelRow *row)
{
    QWidget *note = child(row, QStringLiteral("note"));
    QTest::mouseClick(note->isVisible() ? note : row, Qt::LeftButton);
}

QLineEdit *keyField(QWidget *parent, const char *name)
{
    return child<QLineEdit>(child(parent, QLatin1String(name)), QStringLiteral("field"));
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        QDir(modelsDir()).removeRecursively();
        KeychainStore::remove(QString(KeychainStore::anthropicAccount));
        KeychainStore::remove(QString(KeychainStore::openaiAccount));
    }

    void aiCatalogueAndActiveKey()
    {
        AppModel app;
        app.saveAnthropicKey(QStringLiteral("sk-ant-1"));
        app.setActiveModelId(QStringLiteral("gpt-4o-mini"));
        QCOMPARE(app.activeKey(), QString()); // an Anthropic key does not serve OpenAI
        app.saveOpenAIKey(QStringLiteral("sk-2"));
        QCOMPARE(app.activeKey(), QStringLiteral("sk-2"));
        app.setActiveModelId(QStringLiteral("retired-model"));
        QCOMPARE(app.activeKey(), QStringLiteral("sk-ant-1"));
        QCOMPARE(app.activeModelId(), QStringLiteral("retired-model"));
    }

    void modelRowsFollowTheStore()
    {
        install(small);
        install(medium);
        LocalServer server;
        const QByteArray body = randomBytes(qint64(base.approxSizeMB) * 900'000 + 4096);
        server.answer(QLatin1Char('/') + base.fileName, {.body = body, .holdAfter = 1024});
        server.answer(QLatin1Char('/') + medium.fileName, {.body = randomBytes(100'000), .dropAfter = 1000});
        AppModel app(nullptr, new ModelStore(server.base()));
        ModelStore &store = *app.modelStore();
        ModelList list(app);
        list.show();

        ModelRow *baseRow = rowOf(&list, base);
        ModelRow *smallRow = rowOf(&list, small);
        QVERIFY(baseRow->state() == ModelRow::State::available);
        QVERIFY(shows(baseRow, QStringLiteral("load")) && !shows(baseRow, QStringLiteral("trash")));
        QCOMPARE(textOf(baseRow, QStringLiteral("title")), QStringLiteral("Base · 57 MB"));
        QVERIFY(smallRow->state() == ModelRow::State::installed);
        QVERIFY(child<RadioMark>(smallRow, QStringLiteral("radio"))->isSelectedMark());
        QVERIFY(shows(smallRow, QStringLiteral("trash")) && !shows(smallRow, QStringLiteral("load")));
        QVERIFY(!shows(smallRow, QStringLiteral("failureLine")));
        clickRow(baseRow);
        QCOMPARE(app.selectedModelId(), small.id);

        // Downloading: the bar replaces note and action until the file is in place.
        click(baseRow, QStringLiteral("load"));
        QVERIFY(baseRow->state() == ModelRow::State::downloading);
        QVERIFY(waitFor([&] { return server.held() == 1; }));
        QVERIFY(shows(baseRow, QStringLiteral("progress")));
        for (const char *gone : {"note", "load", "trash"})
            QVERIFY2(!shows(baseRow, QLatin1String(gone)), gone);
        server.release();
        QVERIFY(waitFor([&] { return store.downloading().isEmpty(); }));
        QVERIFY(baseRow->state() == ModelRow::State::installed);
        clickRow(baseRow);
        QCOMPARE(app.selectedModelId(), base.id);

        // A failed download (no file on the server) says why in the row, with a retry in
        // place of "Laden".
        ModelRow *largeRow = rowOf(&list, large);
        click(largeRow, QStringLiteral("load"));
        QVERIFY(waitFor([&] { return store.downloading().isEmpty(); }));
        QVERIFY(largeRow->state() == ModelRow::State::available);
        QVERIFY(shows(largeRow, QStringLiteral("note")) && !shows(largeRow, QStringLiteral("load")));
        QVERIFY(shows(largeRow, QStringLiteral("failureLine")));
        QCOMPARE(textOf(largeRow, QStringLiteral("failure")),
                 QStringLiteral("Laden fehlgeschlagen: Der Server lieferte statt des Modells eine Fehlerseite (HTTP 404)."));
        QCOMPARE(textOf(largeRow, QStringLiteral("retry")), QStringLiteral("Erneut versuchen"));
        click(largeRow, QStringLiteral("retry"));
        QVERIFY(largeRow->state() == ModelRow::State::downloading);
        QVERIFY(!shows(largeRow, QStringLiteral("failureLine")));
        QVERIFY(waitFor([&] { return store.downloading().isEmpty(); }));
        QVERIFY(shows(largeRow, QStringLiteral("failureLine")));

        // Deleting the chosen model hands the choice on; with none left it falls back to Small.
        click(baseRow, QStringLiteral("trash"));
        QVERIFY(!QFile::exists(modelsDir() + u'/' + base.fileName));
        QCOMPARE(app.selectedModelId(), small.id);
        ModelRow *mediumRow = rowOf(&list, medium);
        store.download(medium);
        QVERIFY(mediumRow->state() == ModelRow::State::downloading);
        clickRow(mediumRow);
        QCOMPARE(app.selectedModelId(), medium.id);
        QVERIFY(waitFor([&] { return store.downloading().isEmpty(); }));
        QVERIFY(mediumRow->state() == ModelRow::State::installed);
        smallRow->deleteModel();
        QCOMPARE(app.selectedModelId(), medium.id);
        mediumRow->deleteModel();
        QCOMPARE(app.selectedModelId(), QStringLiteral("small-q5_1"));
    }

    void settingsImportAModelAndSayWhyNot()
    {
        AppModel app;
        SettingsSheet sheet(app);
        sheet.show();
        auto *row = sheet.findChild<ModelImportRow *>();
        QVERIFY(row);
        // A file that is no model, then a real model of no catalogue size: each import runs
        // to its end and says in plain words why it took nothing.
        row->importFrom(Media::textFileNamedMp3());
        QVERIFY(waitFor([&] { return row->status()->isVisible(); }));
        QVERIFY2(row->status()->text().startsWith(QStringLiteral("Kein Whisper-Modell gefunden")),
                 qPrintable(row->status()->text()));
        // (A rejection this quick may be shown before importFrom returns.)
        row->importFrom(Media::tinyModel());
        QVERIFY2(waitFor([&] {
                     return row->status()->isVisible()
                         && row->status()->text().contains(QStringLiteral("passt zu keinem Modell des Katalogs"));
                 }),
                 qPrintable(row->status()->text()));
        QVERIFY(QDir(modelsDir()).entryList(QDir::Files).isEmpty());
    }

    void settingsKeysLanguageAndSwitches()
    {
        AppModel app;
        app.setShowSettings(true);
        auto sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        QVERIFY(!shows(child(sheet.get(), QStringLiteral("anthropicKey")), QStringLiteral("stored")));
        QVERIFY(shows(sheet.get(), QStringLiteral("keyWarning")));
        // Every change applies at once; so does a typed key when the sheet closes by Escape.
        QTest::keyClicks(keyField(sheet.get(), "anthropicKey"), QStringLiteral("sk-ant-escaped"));
        QTest::keyClick(sheet.get(), Qt::Key_Escape);
        QVERIFY(!sheet->isVisible());
        QVERIFY(!app.showSettings());
        QCOMPARE(app.anthropicKey(), QStringLiteral("sk-ant-escaped"));
        app.saveAnthropicKey(QString());

        // Return stores a typed key, trimmed, and leaves an empty draft's key alone.
        app.saveOpenAIKey(QStringLiteral("sk-openai-kept"));
        sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        QVERIFY(keyField(sheet.get(), "openaiKey")->text().isEmpty()); // a stored key is never shown
        QTest::keyClicks(keyField(sheet.get(), "anthropicKey"), QStringLiteral(" sk-ant-saved "));
        QTest::keyClick(keyField(sheet.get(), "anthropicKey"), Qt::Key_Return);
        QCOMPARE(sheet->result(), int(QDialog::Accepted));
        QCOMPARE(storedKey(QString(KeychainStore::anthropicAccount)).value_or(QString()),
                 QStringLiteral("sk-ant-saved"));
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-openai-kept"));
        QVERIFY(shows(child(sheet.get(), QStringLiteral("anthropicKey")), QStringLiteral("stored")));

        sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        QTest::keyClicks(keyField(sheet.get(), "openaiKey"), QStringLiteral("draft"));
        click(child(sheet.get(), QStringLiteral("openaiKey")), QStringLiteral("remove"));
        QVERIFY(app.openaiKey().isEmpty());
        QVERIFY(!storedKey(QString(KeychainStore::openaiAccount)));
        QVERIFY(keyField(sheet.get(), "openaiKey")->text().isEmpty());
        QVERIFY(sheet->isVisible());

        auto *picker = child<QComboBox>(sheet.get(), QStringLiteral("aiModel"));
        QVERIFY(!shows(sheet.get(), QStringLiteral("keyWarning")));
        picker->setCurrentIndex(3);
        emit picker->activated(3);
        QCOMPARE(app.activeModelId(), QStringLiteral("gpt-4o"));
        QVERIFY(shows(sheet.get(), QStringLiteral("keyWarning")));

        child<QCheckBox>(sheet.get(), QStringLiteral("liveSpeakers"))->click();
        QVERIFY(app.interviewLiveSpeakers());
        auto *language = child<QComboBox>(sheet.get(), QStringLiteral("appLanguage"));
        emit language->activated(language->findData(QStringLiteral("en")));
        QCOMPARE(app.appLanguage(), QStringLiteral("en"));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("keyWarning")),
                 QStringLiteral("No OpenAI key is stored for the active model yet."));
        app.setAppLanguage(QStringLiteral("system"));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("done")), QStringLiteral("Fertig"));
    }

    void wizardWalksThroughItsSteps()
    {
        AppModel app;
        QVERIFY(app.showOnboarding());
        OnboardingWizard wizard(app);
        wizard.show();
        auto *next = child<QPushButton>(&wizard, QStringLiteral("next"));
        QVERIFY(!shows(&wizard, QStringLiteral("back")) && !shows(&wizard, QStringLiteral("later")));
        wizard.later(); // not on the welcome step
        QVERIFY(app.showOnboarding());
        QTest::keyClick(&wizard, Qt::Key_Escape); // cannot be dismissed
        QTest::keyClick(&wizard, Qt::Key_Return);
        QVERIFY(wizard.isVisible());
        QCOMPARE(wizard.step(), 1);

        // No model, no way on.
        QVERIFY(shows(&wizard, QStringLiteral("back")) && shows(&wizard, QStringLiteral("later")));
        QVERIFY(!next->isEnabled());
        wizard.next();
        QCOMPARE(wizard.step(), 1);
        install(small);
        app.modelStore()->refresh();
        next->click();
        QCOMPARE(wizard.step(), 2);
        QVERIFY(!shows(&wizard, QStringLiteral("later")));

        // The typed key is stored on leaving the step, and again after going back.
        QTest::keyClicks(keyField(&wizard, "openaiKey"), QStringLiteral("sk-wizard"));
        next->click();
        QCOMPARE(wizard.step(), 3);
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-wizard"));
        app.saveOpenAIKey(QString());
        child<QPushButton>(&wizard, QStringLiteral("back"))->click();
        next->click();
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-wizard"));
        next->click();
        QVERIFY(!app.showOnboarding());
        QVERIFY(!wizard.isVisible());
        QVERIFY(QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).value(Settings::onboardingDone).toBool());
    }


    void helpBooksAndLanguage()
    {
        const QList<HelpSection> &german = HelpContent::german();
        const QList<HelpSection> &english = HelpContent::english();
        QCOMPARE(german.size(), english.size());
        for (qsizetype i = 0; i < german.size(); ++i)
            QVERIFY(german[i].id == english[i].id && german[i].icon == english[i].icon);
        QCOMPARE(HelpView::shown(german, QStringLiteral("no-such-topic"))->id, QStringLiteral("overview"));
        QVERIFY(!HelpView::shown({}, QStringLiteral("overview")));

        AppModel app;
        app.setAppLanguage(QStringLiteral("de"));
        HelpView help(app);
        help.show();
        QCOMPARE(help.selection().value_or(QString()), QStringLiteral("overview"));
        child<QListWidget>(&help, QStringLiteral("topics"))->setCurrentRow(2);
        QCOMPARE(help.selection().value_or(QString()), QStringLiteral("models"));
        // The choice survives a change of book; French reads the English one.
        app.setAppLanguage(QStringLiteral("fr"));
        QCOMPARE(help.body()->section().title, QStringLiteral("Models & graphics card"));
        QCOMPARE(help.windowTitle(), QStringLiteral("Aide"));
        const auto labels = help.body()->findChildren<QLabel *>();
        const auto has = [&](const QString &fragment) {
            return std::any_of(labels.begin(), labels.end(), [&](QLabel *l) { return l->text().contains(fragment); });
        };
        QVERIFY(has(QStringLiteral("<b>Small</b>")) && !has(QStringLiteral("**")));
        app.setAppLanguage(QStringLiteral("system"));
    }



};

int main(int argc, char **argv)
{
    QDir().mkpath(QDir::tempPath());
    QApplication app(argc, argv);
    DialogsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_dialogs.moc"
