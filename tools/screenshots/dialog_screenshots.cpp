// Renders the settings sheet, the first-run wizard, help and about offscreen into PNG
// files, in German and English, light and dark, so that a person can look at them:
//
//   dialog-screenshots OUT-FOLDER
//
// Run it in a throw-away session (tests/support/with-secret-service.sh), as
// scripts/screenshots does: it writes settings, models and a key there.
#include "LocalServer.h"
#include "Palettes.h"

#include "app/AppModel.h"
#include "app/ModelStore.h"
#include "ui/AboutView.h"
#include "ui/HelpView.h"
#include "ui/OnboardingWizard.h"
#include "ui/SettingsSheet.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QScrollArea>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
#include <QTextStream>

#include <cstdio>

namespace {

QString out;

void save(QWidget *widget, const QString &name)
{
    widget->show();
    QApplication::processEvents();
    const QString path = out + u'/' + name + QStringLiteral(".png");
    if (!widget->grab().save(path))
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    else
        std::printf("%s\n", qPrintable(path));
}

void install(const WhisperModel &model, const QString &dir)
{
    QDir().mkpath(dir);
    QFile file(dir + u'/' + model.fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.resize(qint64(model.approxSizeMB) * 900'000 + 1);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: dialog-screenshots OUT-FOLDER\n");
        return 2;
    }
    out = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(out);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const QPalette light = Palettes::light();

    // A store with every state on show: Base installed, Small chosen, Medium downloading,
    // Large after a failed download.
    const QList<WhisperModel> &models = WhisperModel::all();
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                        + QStringLiteral("/Sagwerk/models");
    install(models[0], dir);
    install(models[1], dir);
    LocalServer server;
    const QByteArray body(qint64(models[2].approxSizeMB) * 900'000, 'x');
    server.answer(QLatin1Char('/') + models[2].fileName, {.body = body, .holdAfter = body.size() * 2 / 5});
    AppModel model(nullptr, new ModelStore(server.base()));
    model.setSelectedModelId(models[1].id);
    model.saveAnthropicKey(QStringLiteral("sk-ant-screenshot"));
    model.saveOpenAIKey(QString());
    model.setActiveModelId(QStringLiteral("gpt-4o"));
    model.modelStore()->download(models[2]);
    // The server has no such file: an error page.
    model.modelStore()->download(models[3]);
    waitFor([&] { return server.held() == 1; });
    waitFor([&] {
        return model.modelStore()->downloading().value(models[2].id) > 0.35
               && model.modelStore()->failures().contains(models[3].id);
    });

    for (const QString &look : {QStringLiteral("light"), QStringLiteral("dark")}) {
        QApplication::setPalette(look == QLatin1String("dark") ? Palettes::dark() : light);
        for (const QString &language : {QStringLiteral("de"), QStringLiteral("en")}) {
            model.setAppLanguage(language);
            const QString suffix = u'-' + language + u'-' + look;

            SettingsSheet settings(model);
            save(&settings, QStringLiteral("settings") + suffix);
            settings.resize(560, 1180);
            save(&settings, QStringLiteral("settings-full") + suffix);
            settings.resize(settings.minimumSize());
            save(&settings, QStringLiteral("settings-minimum") + suffix);
            settings.hide();

            OnboardingWizard wizard(model);
            for (int step = 0; step < 4; ++step) {
                save(&wizard, QStringLiteral("wizard-%1").arg(step) + suffix);
                wizard.next();
            }
            wizard.hide();

            HelpView help(model);
            help.select(QStringLiteral("models"));
            save(&help, QStringLiteral("help") + suffix);
            help.resize(help.minimumSize());
            help.select(QStringLiteral("trouble"));
            save(&help, QStringLiteral("help-minimum") + suffix);
            help.hide();

            AboutView about;
            save(&about, QStringLiteral("about") + suffix);
            about.hide();
        }
    }

    // Every help section at its full height, in both books, for reading.
    QApplication::setPalette(light);
    for (const QString &language : {QStringLiteral("de"), QStringLiteral("en")}) {
        for (const HelpSection &section : HelpContent::book(language)) {
            HelpSectionBody body(section);
            body.setFixedWidth(712);
            body.setFixedHeight(body.heightForWidth(712) > 0 ? body.heightForWidth(712) : body.sizeHint().height());
            body.setAutoFillBackground(true);
            save(&body, QStringLiteral("help-%1-%2").arg(language, section.id));
        }
    }
    model.setAppLanguage(QStringLiteral("system"));
    server.release();
    return 0;
}
