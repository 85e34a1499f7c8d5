// The settings sheet, the model rows, the first-run wizard, help and about, as widgets
// offscreen against a real model store, a real HTTP server on 127.0.0.1 and a real
// keyring in a throw-away session.
#include "LocalServer.h"

#include "ai/AIModel.h"
#include "app/AppModel.h"
#include "app/Settings.h"
#include "engine/ModelStore.h"
#include "storage/KeychainStore.h"
#include "ui/AboutView.h"
#include "ui/HelpView.h"
#include "ui/InlineMarkdown.h"
#include "ui/KeyField.h"
#include "ui/ModelRow.h"
#include "ui/OnboardingWizard.h"
#include "ui/SettingsSheet.h"
#include "ui/Icons.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <memory>

namespace {

const WhisperModel &base = WhisperModel::all().at(0);
const WhisperModel &small = WhisperModel::all().at(1);
const WhisperModel &medium = WhisperModel::all().at(2);
const WhisperModel &large = WhisperModel::all().at(3);

QString modelsDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk/models");
}

void install(const WhisperModel &model)
{
    QDir().mkpath(modelsDir());
    QFile file(modelsDir() + u'/' + model.fileName);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(file.resize(qint64(model.approxSizeMB) * 900'000 + 1));
}

QByteArray packageZip(const WhisperModel &model)
{
    const QString path = QDir::tempPath() + QStringLiteral("/package.zip");
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import sys, zipfile\n"
                                 "with zipfile.ZipFile(sys.argv[1], 'w') as z: z.writestr(sys.argv[2], 'x')\n"),
                  path, model.coreMLName + QStringLiteral("/coremldata.bin")});
    python.waitForFinished(-1);
    QFile file(path);
    const QByteArray zip = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    file.remove();
    return zip;
}

template <typename T>
T *child(QWidget *parent, const QString &name)
{
    T *found = parent->findChild<T *>(name);
    if (!found)
        qWarning("no child %s", qPrintable(name));
    return found;
}

ModelRow *rowOf(QWidget *parent, const WhisperModel &model)
{
    return child<ModelRow>(parent, QStringLiteral("row-") + model.id);
}

bool shows(QWidget *parent, const QString &name)
{
    QWidget *widget = parent->findChild<QWidget *>(name);
    return widget && widget->isVisibleTo(parent);
}

QString textOf(QWidget *parent, const QString &name)
{
    if (auto *label = parent->findChild<QLabel *>(name))
        return label->text();
    if (auto *button = parent->findChild<QAbstractButton *>(name))
        return button->text();
    return {};
}

void clickRow(ModelRow *row)
{
    QWidget *note = row->findChild<QLabel *>(QStringLiteral("note"));
    QTest::mouseClick(note->isVisible() ? note : row, Qt::LeftButton);
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
        QVERIFY(AIModel::by(QStringLiteral("gpt-4o-mini")).provider == AIProvider::openai);
        QCOMPARE(AIModel::by(QStringLiteral("GPT-4O")).id, QStringLiteral("claude-opus-5"));
        QVERIFY(AIProviders::fromRawValue(QStringLiteral("openai")) == AIProvider::openai);
        QVERIFY(!AIProviders::fromRawValue(QStringLiteral("OpenAI")));

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
        server.answer(QLatin1Char('/') + small.coreMLName + QStringLiteral(".zip"),
                      {.body = packageZip(small), .holdAfter = 10});
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
        QCOMPARE(textOf(smallRow, QStringLiteral("coreMLLoad")), QStringLiteral("Neural Engine laden (163 MB)"));

        clickRow(baseRow);
        QCOMPARE(app.selectedModelId(), small.id);

        // Downloading: the bar replaces note and action until the file is in place.
        QTest::mouseClick(child<QToolButton>(baseRow, QStringLiteral("load")), Qt::LeftButton);
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

        // The Neural Engine package: loading, active, removed again.
        QTest::mouseClick(child<QToolButton>(smallRow, QStringLiteral("coreMLLoad")), Qt::LeftButton);
        QVERIFY(shows(smallRow, QStringLiteral("coreMLLoading")) && shows(smallRow, QStringLiteral("coreMLProgress")));
        QVERIFY(waitFor([&] { return server.held() == 1; }));
        server.release();
        QVERIFY(waitFor([&] { return store.coreMLInstalled().contains(small.id); }));
        QVERIFY(shows(smallRow, QStringLiteral("coreMLActive")) && !shows(smallRow, QStringLiteral("coreMLLoading")));
        QTest::mouseClick(child<QToolButton>(smallRow, QStringLiteral("coreMLRemove")), Qt::LeftButton);
        QVERIFY(!store.coreMLInstalled().contains(small.id));
        QVERIFY(shows(smallRow, QStringLiteral("coreMLLoad")));

        ModelRow *largeRow = rowOf(&list, large);
        QTest::mouseClick(child<QToolButton>(largeRow, QStringLiteral("load")), Qt::LeftButton);
        QVERIFY(waitFor([&] { return store.downloading().isEmpty(); }));
        QVERIFY(largeRow->state() == ModelRow::State::available);
        QVERIFY(shows(largeRow, QStringLiteral("load")) && shows(largeRow, QStringLiteral("note")));

        // Deleting the chosen model hands the choice on; with none left it falls back to Small.
        QTest::mouseClick(child<QToolButton>(baseRow, QStringLiteral("trash")), Qt::LeftButton);
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
        rowOf(&list, medium)->deleteModel();
        QCOMPARE(app.selectedModelId(), QStringLiteral("small-q5_1"));
    }

    void settingsKeysLanguageAndSwitches()
    {
        AppModel app;
        app.setShowSettings(true);
        auto sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        auto field = [&](const char *key) {
            return child<QLineEdit>(child<KeyField>(sheet.get(), QLatin1String(key)), QStringLiteral("field"));
        };
        QWidget *anthropic = child<KeyField>(sheet.get(), QStringLiteral("anthropicKey"));
        QWidget *warning = child<QLabel>(sheet.get(), QStringLiteral("keyWarning"));
        QVERIFY(!shows(anthropic, QStringLiteral("stored")));
        QVERIFY(warning->isVisibleTo(sheet.get()));

        QTest::keyClicks(field("anthropicKey"), QStringLiteral("sk-ant-dropped"));
        QTest::mouseClick(child<QPushButton>(sheet.get(), QStringLiteral("close")), Qt::LeftButton);
        QCOMPARE(sheet->result(), int(QDialog::Rejected));
        QVERIFY(!app.showSettings());
        QVERIFY(app.anthropicKey().isEmpty());

        // "Speichern" (Return) stores a typed key, trimmed, and leaves an empty draft's key alone.
        app.saveOpenAIKey(QStringLiteral("sk-openai-kept"));
        sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        anthropic = child<KeyField>(sheet.get(), QStringLiteral("anthropicKey"));
        QVERIFY(field("openaiKey")->text().isEmpty()); // a stored key is never shown
        QTest::keyClicks(field("anthropicKey"), QStringLiteral(" sk-ant-saved "));
        QTest::keyClick(field("anthropicKey"), Qt::Key_Return);
        QCOMPARE(sheet->result(), int(QDialog::Accepted));
        QCOMPARE(app.anthropicKey(), QStringLiteral("sk-ant-saved"));
        QCOMPARE(KeychainStore::load(QString(KeychainStore::anthropicAccount)).value_or(QString()),
                 QStringLiteral("sk-ant-saved"));
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-openai-kept"));
        QVERIFY(shows(anthropic, QStringLiteral("stored")));

        sheet = std::make_unique<SettingsSheet>(app);
        sheet->show();
        QWidget *openai = child<KeyField>(sheet.get(), QStringLiteral("openaiKey"));
        QTest::keyClicks(field("openaiKey"), QStringLiteral("draft"));
        QTest::mouseClick(child<QPushButton>(openai, QStringLiteral("remove")), Qt::LeftButton);
        QVERIFY(app.openaiKey().isEmpty());
        QVERIFY(!KeychainStore::load(QString(KeychainStore::openaiAccount)));
        QVERIFY(field("openaiKey")->text().isEmpty());
        QVERIFY(sheet->isVisible());

        auto *picker = child<QComboBox>(sheet.get(), QStringLiteral("aiModel"));
        warning = child<QLabel>(sheet.get(), QStringLiteral("keyWarning"));
        QVERIFY(!warning->isVisibleTo(sheet.get()));
        picker->setCurrentIndex(3);
        emit picker->activated(3);
        QCOMPARE(app.activeModelId(), QStringLiteral("gpt-4o"));
        QVERIFY(warning->isVisibleTo(sheet.get()));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("keyWarning")),
                 QStringLiteral("Für das aktive Modell ist noch kein OpenAI-Key hinterlegt."));

        child<QCheckBox>(sheet.get(), QStringLiteral("liveSpeakers"))->click();
        QVERIFY(app.interviewLiveSpeakers());
        auto *language = child<QComboBox>(sheet.get(), QStringLiteral("appLanguage"));
        emit language->activated(language->findData(QStringLiteral("en")));
        QCOMPARE(app.appLanguage(), QStringLiteral("en"));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("save")), QStringLiteral("Save"));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("keyWarning")),
                 QStringLiteral("No OpenAI key is stored for the active model yet."));
        app.setAppLanguage(QStringLiteral("system"));
        QCOMPARE(textOf(sheet.get(), QStringLiteral("save")), QStringLiteral("Speichern"));
    }

    void wizardWalksThroughItsSteps()
    {
        AppModel app;
        QVERIFY(app.showOnboarding());
        OnboardingWizard wizard(app);
        wizard.show();
        auto visible = [&](const char *name) { return shows(&wizard, QLatin1String(name)); };
        auto *next = child<QPushButton>(&wizard, QStringLiteral("next"));

        QCOMPARE(wizard.step(), 0);
        QVERIFY(!visible("back") && !visible("later"));
        QCOMPARE(next->text(), QStringLiteral("Los geht's"));
        QTest::keyClick(&wizard, Qt::Key_Escape); // cannot be dismissed
        QTest::keyClick(&wizard, Qt::Key_Return);
        QVERIFY(wizard.isVisible());
        QCOMPARE(wizard.step(), 1);

        QVERIFY(visible("back") && visible("later"));
        QVERIFY(!next->isEnabled());
        QCOMPARE(textOf(&wizard, QStringLiteral("modelStatus")),
                 QStringLiteral("Lade mindestens ein Modell, um fortzufahren."));
        wizard.next();
        QCOMPARE(wizard.step(), 1);
        install(small);
        app.modelStore()->refresh();
        QVERIFY(next->isEnabled());
        next->click();
        QCOMPARE(wizard.step(), 2);
        QVERIFY(!visible("later"));

        auto *openai = child<QLineEdit>(child<KeyField>(&wizard, QStringLiteral("openaiKey")), QStringLiteral("field"));
        QTest::keyClicks(openai, QStringLiteral("sk-wizard"));
        next->click();
        QCOMPARE(wizard.step(), 3);
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-wizard"));
        app.saveOpenAIKey(QString());
        child<QPushButton>(&wizard, QStringLiteral("back"))->click();
        QCOMPARE(wizard.step(), 2);
        next->click();
        QCOMPARE(app.openaiKey(), QStringLiteral("sk-wizard"));

        next->click();
        QVERIFY(!app.showOnboarding());
        QVERIFY(!wizard.isVisible());
        QVERIFY(QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).value(Settings::onboardingDone).toBool());
    }

    void wizardCanBeLeftLaterWithoutAModel()
    {
        AppModel app;
        OnboardingWizard wizard(app);
        wizard.show();
        wizard.later(); // not on the welcome step
        QVERIFY(app.showOnboarding());
        wizard.next();
        child<QPushButton>(&wizard, QStringLiteral("later"))->click();
        QVERIFY(!app.showOnboarding());
        QVERIFY(!wizard.isVisible());
        QCOMPARE(app.selectedModelId(), QStringLiteral("small-q5_1"));
    }

    void helpBooksAndLanguage()
    {
        const QList<HelpSection> &german = HelpContent::german();
        const QList<HelpSection> &english = HelpContent::english();
        QCOMPARE(german.size(), 15);
        QCOMPARE(english.size(), 15);
        for (int i = 0; i < 15; ++i) {
            QCOMPARE(german[i].id, english[i].id);
            QCOMPARE(german[i].icon, english[i].icon);
        }

        QCOMPARE(&HelpContent::book(HelpView::lang(QStringLiteral("de"))), &german);
        for (const char *code : {"en", "fr", "sv"})
            QCOMPARE(&HelpContent::book(HelpView::lang(QLatin1String(code))), &english);
        QCOMPARE(HelpView::lang(QStringLiteral("system")), QStringLiteral("de"));
        QCOMPARE(HelpView::shown(german, QStringLiteral("no-such-topic"))->id, QStringLiteral("overview"));
        QVERIFY(!HelpView::shown({}, QStringLiteral("overview")));

        AppModel app;
        app.setAppLanguage(QStringLiteral("de"));
        HelpView help(app);
        help.show();
        QCOMPARE(help.selection().value_or(QString()), QStringLiteral("overview"));
        auto *topics = child<QListWidget>(&help, QStringLiteral("topics"));
        topics->setCurrentRow(2);
        QCOMPARE(help.selection().value_or(QString()), QStringLiteral("models"));

        app.setAppLanguage(QStringLiteral("fr"));
        QCOMPARE(help.body()->section().title, QStringLiteral("Models & Neural Engine"));
        QCOMPARE(help.windowTitle(), QStringLiteral("Aide"));

        const auto labels = help.body()->findChildren<QLabel *>();
        const auto has = [&](const QString &fragment) {
            return std::any_of(labels.begin(), labels.end(), [&](QLabel *l) { return l->text().contains(fragment); });
        };
        QVERIFY(has(QStringLiteral("<b>Small</b>")));
        QVERIFY(!has(QStringLiteral("**")));
        QVERIFY(help.body()->findChild<QWidget *>(QStringLiteral("tip")));
        app.setAppLanguage(QStringLiteral("system"));
    }

    void inlineMarkdown()
    {
        const auto html = [](const char *md) {
            QString out = InlineMarkdown::toHtml(QString::fromUtf8(md));
            out.remove(QStringLiteral("<span style=\"white-space: pre-wrap;\">")).chop(7);
            return out;
        };
        QCOMPARE(html("ein **fettes** und *schräges* Wort"), QStringLiteral("ein <b>fettes</b> und <i>schräges</i> Wort"));
        QCOMPARE(html("**nur auf"), QStringLiteral("**nur auf"));
        QCOMPARE(html("snake_case_name und __fett__"), QStringLiteral("snake_case_name und <b>fett</b>"));
        QCOMPARE(html("`a **b** <c>` \\*x\\*"), QStringLiteral("<code>a **b** &lt;c&gt;</code> *x*"));
        QCOMPARE(html("[Seite](https://example.org/?a=1&b=2)"),
                 QStringLiteral("<a href=\"https://example.org/?a=1&amp;b=2\">Seite</a>"));
        QCOMPARE(html("# kein Titel\n1. keine Liste"), QStringLiteral("# kein Titel<br>1. keine Liste"));
    }

    void everySymbolHasAPicture()
    {
        QStringList symbols{"trash", "cpu", "checkmark.seal", "checkmark.circle.fill", "arrow.down.circle",
                            "waveform.circle.fill", "mic.fill", "lightbulb"};
        for (const HelpSection &section : HelpContent::english())
            symbols << section.icon;
        for (const QString &symbol : symbols) {
            const QImage image = Icons::pixmap(symbol, 22, Qt::black).toImage();
            QVERIFY2(!image.isNull(), qPrintable(symbol));
            int ink = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    ink += qAlpha(image.pixel(x, y)) > 128;
            // Drawn, and not a filled square: a one-colour symbol leaves space free.
            QVERIFY2(ink > 10 && ink < 22 * 22 * 9 / 10, qPrintable(symbol + u' ' + QString::number(ink)));
        }
    }

    void openScreensFollowPaletteAndLanguage()
    {
        install(small);
        AppModel app;
        SettingsSheet sheet(app);
        OnboardingWizard wizard(app);
        sheet.show();
        wizard.show();
        auto *note = child<QLabel>(rowOf(&sheet, small), QStringLiteral("note"));
        const QPalette light = QApplication::palette();
        QPalette dark = light;
        for (QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
            dark.setColor(role, QColor(0x20, 0x20, 0x22));
        for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            dark.setColor(role, QColor(0xee, 0xee, 0xee));
        QVERIFY(note->palette().color(QPalette::WindowText).lightness() < 160);
        QApplication::setPalette(dark);
        QTRY_VERIFY(note->palette().color(QPalette::WindowText).lightness() > 120);
        QApplication::setPalette(light);
        QTRY_VERIFY(note->palette().color(QPalette::WindowText).lightness() < 160);

        app.setAppLanguage(QStringLiteral("sv"));
        QCOMPARE(textOf(rowOf(&sheet, WhisperModel::all().at(3)), QStringLiteral("load")), QStringLiteral("Ladda ned"));
        QCOMPARE(note->text(), QStringLiteral("Ett bra standardval."));
        QCOMPARE(textOf(&wizard, QStringLiteral("next")), QStringLiteral("Sätt igång"));
        app.setAppLanguage(QStringLiteral("system"));
        QCOMPARE(textOf(&wizard, QStringLiteral("next")), QStringLiteral("Los geht's"));
    }

    void aboutShowsLogoAndVersion()
    {
        AboutView about;
        about.show();
        QVERIFY(!child<QLabel>(&about, QStringLiteral("logo"))->pixmap().isNull());
        QCOMPARE(textOf(&about, QStringLiteral("version")), QStringLiteral("Version ") + QStringLiteral(SAGWERK_VERSION));
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
