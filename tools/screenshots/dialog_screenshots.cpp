// Renders the settings sheet, the first-run wizard, help and about offscreen into PNG
// files, in German and English, light and dark, so that a person can look at them:
//
//   dialog-screenshots OUT-FOLDER
//
// Run it in a throw-away session (tests/support/with-secret-service.sh), as
// scripts/screenshots does: it writes settings, models and a key there.
#include "LocalServer.h"

#include "app/AppModel.h"
#include "engine/ModelStore.h"
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

QPalette darkPalette()
{
    QPalette p;
    const QColor window(0x2b, 0x2b, 0x2e), base(0x1e, 0x1e, 0x20), text(0xe8, 0xe8, 0xea);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::ToolTipBase, window);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, QColor(0x8e, 0x8e, 0x93));
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3d));
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, Qt::red);
    p.setColor(QPalette::Light, QColor(0x48, 0x48, 0x4c));
    p.setColor(QPalette::Midlight, QColor(0x40, 0x40, 0x44));
    p.setColor(QPalette::Mid, QColor(0x50, 0x50, 0x55));
    p.setColor(QPalette::Dark, QColor(0x18, 0x18, 0x1a));
    p.setColor(QPalette::Shadow, Qt::black);
    p.setColor(QPalette::Highlight, QColor(0x0a, 0x84, 0xff));
    p.setColor(QPalette::Accent, QColor(0x0a, 0x84, 0xff));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, QColor(0x4d, 0xa3, 0xff));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(0x7a, 0x7a, 0x7e));
    return p;
}

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
    const QPalette light = QApplication::style()->standardPalette();

    // A store with every state on show: Base with its package, Small chosen with its
    // package on the way, Medium downloading, Large available.
    const QList<WhisperModel> &models = WhisperModel::all();
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                        + QStringLiteral("/Sagwerk/models");
    install(models[0], dir);
    install(models[1], dir);
    QDir(dir).mkpath(models[0].coreMLName);
    LocalServer server;
    const QByteArray body(qint64(models[2].approxSizeMB) * 900'000, 'x');
    server.answer(QLatin1Char('/') + models[2].fileName, {.body = body, .holdAfter = body.size() * 2 / 5});
    const QByteArray package(2'000'000, 'z');
    server.answer(QLatin1Char('/') + models[1].coreMLName + QStringLiteral(".zip"),
                  {.body = package, .holdAfter = package.size() * 7 / 10});
    AppModel model(nullptr, new ModelStore(server.base()));
    model.setSelectedModelId(models[1].id);
    model.saveAnthropicKey(QStringLiteral("sk-ant-screenshot"));
    model.saveOpenAIKey(QString());
    model.setActiveModelId(QStringLiteral("gpt-4o"));
    model.modelStore()->download(models[2]);
    model.modelStore()->downloadCoreML(models[1]);
    waitFor([&] { return server.held() == 2; });
    waitFor([&] {
        return model.modelStore()->downloading().value(models[2].id) > 0.35
               && model.modelStore()->coreMLDownloading().value(models[1].id) > 0.65;
    });

    for (const QString &look : {QStringLiteral("light"), QStringLiteral("dark")}) {
        QApplication::setPalette(look == QLatin1String("dark") ? darkPalette() : light);
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
