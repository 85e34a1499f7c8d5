// Renders the screens of the main window into PNG files, for a person to look at:
//
//   sagwerk-screenshots OUTDIR de|en|fr|sv light|dark
//
// Runs in a throw-away session (HOME, keyring) and leaves its state there.
#include "Media.h"
#include "Palettes.h"

#include "app/AppModel.h"
#include "app/Settings.h"
#include "app/ModelStore.h"
#include "app/TranscriptionJob.h"
#include "app/TranscriptionQueue.h"
#include "engine/Decoder.h"
#include "engine/EngineError.h"
#include "storage/BundleStore.h"
#include "ui/BusyView.h"
#include "ui/ContentView.h"
#include "ui/DetailPane.h"
#include "ui/MainWindow.h"
#include "ui/ProcessingVisualizer.h"
#include "ui/SagwerkApp.h"
#include "ui/Sidebar.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>

namespace {

QString outDir;
QString prefix;

void settle(int ms = 150)
{
    QTest::qWait(ms);
}

void save(QWidget *widget, const QString &name)
{
    settle();
    const QString path = outDir + u'/' + prefix + name + QStringLiteral(".png");
    if (!widget->grab().save(path))
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    else
        std::printf("%s\n", qPrintable(path));
}

void atMinimum(MainWindow *window, const QString &name)
{
    const QSize before = window->size();
    window->resize(window->minimumSizeHint());
    save(window, name);
    window->resize(before);
}

QString dataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk");
}

TranscriptionResult sampleResult(const QString &text)
{
    TranscriptionResult result;
    result.fullText = text;
    result.language = QStringLiteral("de");
    TranscriptSegment segment;
    segment.startMs = 0;
    segment.endMs = 4000;
    segment.text = text;
    result.segments = {segment};
    return result;
}

void startFresh(const QString &language)
{
    QSettings settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"));
    settings.clear();
    settings.setValue(Settings::onboardingDone, true);
    settings.setValue(Settings::appLanguage, language);
    settings.sync();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Morvane"));
    QApplication::setApplicationName(QStringLiteral("Sagwerk"));
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s OUTDIR LANGUAGE light|dark\n", argv[0]);
        return 2;
    }
    outDir = QString::fromLocal8Bit(argv[1]);
    const QString language = QString::fromLocal8Bit(argv[2]);
    const bool dark = QString::fromLocal8Bit(argv[3]) == QLatin1String("dark");
    prefix = QStringLiteral("%1-%2-").arg(language, dark ? QStringLiteral("dark") : QStringLiteral("light"));
    QDir().mkpath(outDir);
    QApplication::setPalette(dark ? Palettes::dark() : Palettes::light());
    QDir(dataDir()).removeRecursively();

    // No model, no history.
    startFresh(language);
    {
        SagwerkApp sagwerk;
        MainWindow *window = sagwerk.mainWindow();
        window->show();
        save(window, QStringLiteral("01-drop-no-model"));
        sagwerk.model().stage(QStringLiteral("/home/anna/Aufnahmen/Gespräch mit der Bürgermeisterin über den "
                                             "Haushalt 2026 – Teil 1.m4a"));
        save(window, QStringLiteral("02-setup-no-model"));
        atMinimum(window, QStringLiteral("03-setup-no-model-min"));
        sagwerk.model().setErrorMessage(
            QStringLiteral("Modell Small ist nicht installiert. Bitte in den Einstellungen herunterladen."));
        settle();
        save(window->content()->errorAlert(), QStringLiteral("04-error-alert"));
        window->content()->errorAlert()->close();
        settle();
        // A damaged file: the user's text, ffmpeg's own lines behind the details button.
        try {
            Decoder::decodeTo16kMonoFloats(Media::textFileNamedMp3());
        } catch (const EngineError &e) {
            sagwerk.model().setErrorMessage(e.errorDescription(), e.details());
        }
        settle();
        save(window->content()->errorAlert(), QStringLiteral("04-error-alert-damaged"));
        window->content()->errorAlert()->close();
    }

    // A model and a history.
    Media::installTinyModel(dataDir() + QStringLiteral("/models"), QStringLiteral("ggml-base-q5_1.bin"));
    const QString audio = Media::tone(QStringLiteral("m4a"));
    const QDateTime now = QDateTime::currentDateTime();
    BundleStore::create(QStringLiteral("Interview Meier.m4a"), now.addDays(-3), audio,
                        sampleResult(QStringLiteral("Guten Tag, Frau Meier. Wie war die Reise?")));
    BundleStore::create(QStringLiteral("Vorlesung Thermodynamik, zweiter Hauptsatz und Entropie.mp3"),
                        now.addDays(-1), audio,
                        sampleResult(QStringLiteral("Heute sprechen wir über den zweiten Hauptsatz.")));
    BundleStore::create(QStringLiteral("Sprachnotiz.wav"), now.addSecs(-3600), audio,
                        sampleResult(QStringLiteral("Milch, Brot und Äpfel nicht vergessen.")));
    startFresh(language);
    QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).setValue(Settings::speechModelId,
                                                                            QStringLiteral("base-q5_1"));
    {
        SagwerkApp sagwerk;
        AppModel &model = sagwerk.model();
        MainWindow *window = sagwerk.mainWindow();
        window->show();
        save(window, QStringLiteral("05-drop-history"));
        atMinimum(window, QStringLiteral("06-drop-min"));

        model.setCurrent(model.history().at(1));
        save(window, QStringLiteral("07-result"));

        QMenu *menu = window->content()->sidebar()->contextMenu(1);
        menu->adjustSize();
        save(menu, QStringLiteral("08-row-menu"));
        menu->close();

        model.setSpeakerDetection(true);
        model.stage(audio, QStringLiteral("Podcast Folge 12.mp3"));
        save(window, QStringLiteral("09-setup-file"));
        atMinimum(window, QStringLiteral("10-setup-file-min"));
        model.stageInterview();
        save(window, QStringLiteral("11-setup-interview"));

        model.setPending(std::nullopt);
        model.setCurrent(model.history().at(0));
        window->content()->detailPane()->deleteAction()->trigger();
        settle();
        save(window->content()->detailPane()->deleteConfirmation(), QStringLiteral("12-delete-confirm"));
        window->content()->detailPane()->setShowDeleteConfirm(false);

        // A real job, long enough to be caught while it runs.
        const QString longer = Media::tone(QStringLiteral("wav"), 60);
        model.stage(longer);
        model.startPending();
        QElapsedTimer clock;
        clock.start();
        while (model.transcription().isBusy() && model.transcription().busyProgress() < 0.3 && clock.elapsed() < 12000)
            QTest::qWait(50);
        QTest::qWait(600);
        save(window, QStringLiteral("13-busy"));
        atMinimum(window, QStringLiteral("14-busy-min"));
        model.cancelTranscription();
        while (model.transcription().isBusy() && clock.elapsed() < 90000)
            QTest::qWait(50);

        // Several files: staged with their setup, then a row in every state at once.
        TranscriptionQueue &queue = model.queue();
        queue.open({Media::tone(QStringLiteral("mp3"), 3), Media::textFileNamedMp3(), longer,
                    Media::tone(QStringLiteral("wav"), 5), Media::tone(QStringLiteral("mp3"), 6)});
        save(window, QStringLiteral("17-queue-staged"));
        // Speaker separation needs its model, which is not here.
        model.setSpeakerDetection(false);
        queue.start();
        queue.cancel(queue.rows()[3].id);
        clock.restart();
        while ((queue.rows()[2].state != TranscriptionQueue::State::Running || queue.rows()[2].progress < 0.3)
               && clock.elapsed() < 60000)
            QTest::qWait(50);
        save(window, QStringLiteral("18-queue-running"));
        atMinimum(window, QStringLiteral("19-queue-running-min"));
        queue.cancel(queue.rows()[2].id);
        while (queue.phase() == TranscriptionQueue::Phase::Running && clock.elapsed() < 90000)
            QTest::qWait(50);
        save(window, QStringLiteral("20-queue-ended"));
    }

    // The scene alone, with loads of every colour.
    ProcessingVisualizer scene;
    scene.resize(660, 300);
    scene.setProgress(0.42);
    scene.setCores({0.05, 0.3, 0.55, 0.8, 1.0, 0.15, 0.65, 0.9, 0.0, 0.45});
    scene.setGpu(0.7);
    scene.setDevice(QStringLiteral("NVIDIA GeForce RTX 4070 Laptop GPU"), {}, 8);
    scene.show();
    save(&scene, QStringLiteral("15-scene"));
    scene.setCores({});
    scene.setGpu(0);
    scene.setDevice({}, QStringLiteral("AMD Ryzen 7 7840U w/ Radeon 780M Graphics"), 8);
    scene.setProgress(0);
    save(&scene, QStringLiteral("16-scene-idle"));
    return 0;
}
