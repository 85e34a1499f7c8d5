// bench-stall [GIGABYTES]: how long the main thread's event loop stalls while AppModel
// transcribes a large video, from the call to the finished item in the history.
// bench-stall --correction [HOURS]: the same for one correction of a stored transcript of
// 3.6 hours (default), beside the time its bundle patch takes, which the main thread
// waited for when it wrote the patch itself. The
// video (default 1 GB) is a long, raw picture stream that costs nothing to encode, with
// twenty seconds of speech-like sound; the generated tiny model recognises it. A 5 ms
// timer on the main thread records how late each of its ticks comes. Goal: no stall above
// 50 ms. Everything lives in a throw-away folder in the temporary folder: the video, the
// model, and the data and settings folders of the run; no key store is reached.
#include "TinyModel.h"

#include "app/AppModel.h"
#include "app/PatchQueue.h"
#include "storage/BundleStore.h"
#include "app/TranscriptionJob.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <QUuid>

#include <algorithm>
#include <functional>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int tickMs = 5;
constexpr double goalMs = 50.0;

// 320 x 180 raw 4:2:0 frames at 25 a second: 86,400 bytes a frame.
constexpr double frameBytes = 320.0 * 180.0 * 1.5;
constexpr double frameRate = 25.0;

bool makeVideo(const QString &path, double gigabytes, double *pictureSeconds)
{
    *pictureSeconds = std::max(1.0, gigabytes * 1e9 / (frameBytes * frameRate));
    // A voiced tone at 150 Hz with two overtones, opened and closed five times a second,
    // like syllables.
    const QString speech = QStringLiteral("aevalsrc=0.5*abs(sin(2*PI*2.5*t))*(sin(2*PI*150*t)+0.5*sin(2*PI*300*t)"
                                          "+0.3*sin(2*PI*450*t))/1.8:s=16000:d=20");
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 {"-hide_banner", "-loglevel", "error", "-y", "-f", "lavfi", "-i",
                  QStringLiteral("color=c=gray:s=320x180:r=25:d=%1").arg(*pictureSeconds, 0, 'f', 2), "-f", "lavfi",
                  "-i", speech, "-map", "0:v", "-map", "1:a", "-c:v", "rawvideo", "-pix_fmt", "yuv420p", "-c:a", "aac",
                  path});
    return ffmpeg.waitForFinished(600'000) && ffmpeg.exitStatus() == QProcess::NormalExit && ffmpeg.exitCode() == 0;
}

double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(p * double(values.size())))];
}

// Speech of `hours`: a segment every four seconds of ten words, each with its times.
TranscriptionResult longTranscript(double hours)
{
    TranscriptionResult result;
    result.language = QStringLiteral("de");
    QStringList texts;
    const qint64 segments = qint64(hours * 3600 / 4);
    for (qint64 n = 0; n < segments; ++n) {
        TranscriptSegment segment;
        segment.id = QUuid::createUuid();
        segment.startMs = n * 4000;
        segment.endMs = segment.startMs + 4000;
        QStringList words;
        for (int w = 0; w < 10; ++w) {
            const QString word = QStringLiteral("Wort%1").arg((n * 10 + w) % 997);
            segment.words.append({word, segment.startMs + w * 400, segment.startMs + w * 400 + 380});
            words << word;
        }
        segment.text = words.join(u' ');
        texts << segment.text;
        result.segments.append(segment);
    }
    result.fullText = texts.join(u' ');
    return result;
}

// Each tick's lateness against the one before it, while `work` runs on the loop and for a
// second after it.
std::vector<double> ticksAround(QCoreApplication &app, const std::function<void()> &work)
{
    std::vector<double> lateness;
    QElapsedTimer clock;
    qint64 lastTick = 0;
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    ticker.setInterval(tickMs);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        lateness.push_back(std::max(0.0, double(now - lastTick) / 1e6 - tickMs));
        lastTick = now;
    });
    QTimer::singleShot(0, [&] {
        clock.start();
        ticker.start();
        QTimer::singleShot(200, work);
        QTimer::singleShot(1200, [] { QCoreApplication::quit(); });
    });
    app.exec();
    return lateness;
}

int correctionStall(QCoreApplication &app, double hours)
{
    const TranscriptionResult result = longTranscript(hours);
    const LoadedBundle bundle
        = BundleStore::create(QStringLiteral("Lang"), QDateTime::currentDateTime(), QString(), result);
    const double megabytes = double(QFileInfo(bundle.url + QStringLiteral("/sagwerk.json")).size()) / 1e6;

    AppModel state;
    state.setCurrent(state.history().first());
    QElapsedTimer wait;
    wait.start();
    while (state.current()->segmentsPending && wait.elapsed() < 60'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    const QString id = state.current()->id;

    double callMs = 0;
    const std::vector<double> lateness = ticksAround(app, [&] {
        QElapsedTimer call;
        call.start();
        state.addCorrection(id, QStringLiteral("Wort1"), QStringLiteral("Wort eins"), false, true);
        callMs = double(call.nsecsElapsed()) / 1e6;
    });
    PatchQueue::drain();
    // What the main thread waited for when it wrote the patch itself.
    QElapsedTimer patch;
    patch.start();
    BundleStore::saveCorrections(bundle.url, state.current()->corrections);
    const double patchMs = double(patch.nsecsElapsed()) / 1e6;

    const double longest = *std::max_element(lateness.begin(), lateness.end());
    std::printf("stall: one correction of a %.1f h transcript (%lld segments, %.1f MB document): the call %.1f ms, "
                "longest main-thread stall %.1f ms (goal: %.0f ms); the patch itself, as the main thread wrote it "
                "before, %.1f ms (%.1fx)%s\n",
                hours, qlonglong(result.segments.size()), megabytes, callMs, longest, goalMs, patchMs,
                longest > 0 ? patchMs / longest : 0.0, longest > goalMs ? " MISSED" : "");
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const bool correction = argc > 1 && qstrcmp(argv[1], "--correction") == 0;
    const int first = correction ? 2 : 1;
    const double gigabytes = argc > first ? std::max(0.01, atof(argv[first])) : 1.0;
    const double hours = argc > first ? std::max(0.01, atof(argv[first])) : 3.6;

    // The run's own home, data and settings folders; no bus, so the key store answers at
    // once with nothing instead of asking the user's keyring.
    QTemporaryDir scratch;
    if (!scratch.isValid()) {
        std::fprintf(stderr, "bench-stall: no temporary folder\n");
        return 1;
    }
    qputenv("HOME", scratch.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", scratch.filePath(QStringLiteral("data")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", scratch.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_CACHE_HOME", scratch.filePath(QStringLiteral("cache")).toLocal8Bit());
    qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + scratch.filePath(QStringLiteral("no-bus"))).toLocal8Bit());

    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Morvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Sagwerk"));
    if (correction)
        return correctionStall(app, hours);

    const QString video = scratch.filePath(QStringLiteral("video.mkv"));
    const QString model = scratch.filePath(QStringLiteral("ggml-tiny-test.bin"));
    double pictureSeconds = 0;
    if (!makeVideo(video, gigabytes, &pictureSeconds) || !TinyModel::write(model)) {
        std::fprintf(stderr, "bench-stall: could not make the video or the model\n");
        return 1;
    }

    AppModel state;
    AppModel::JobOverrides overrides;
    overrides.modelPath = model;
    overrides.language = QStringLiteral("de");

    // Each tick's lateness against the one before it is how long the loop could not turn.
    std::vector<double> lateness;
    QElapsedTimer clock;
    QElapsedTimer job;
    qint64 lastTick = 0;
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    ticker.setInterval(tickMs);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        lateness.push_back(std::max(0.0, double(now - lastTick) / 1e6 - tickMs));
        lastTick = now;
    });
    QObject::connect(&state.transcription(), &TranscriptionJob::isBusyChanged, [&] {
        if (!state.transcription().isBusy())
            QCoreApplication::quit();
    });
    QTimer::singleShot(0, [&] {
        clock.start();
        ticker.start();
        job.start();
        // The call itself runs on the main thread too, so it counts.
        state.transcribe(video, QStringLiteral("Video"), overrides);
        if (!state.transcription().isBusy())
            QCoreApplication::quit();
    });
    app.exec();
    const double seconds = double(job.nsecsElapsed()) / 1e9;
    // The tick that sees the loop quit still counts what came before it.
    lateness.push_back(std::max(0.0, double(clock.nsecsElapsed() - lastTick) / 1e6 - tickMs));

    if (state.errorMessage() || state.history().isEmpty()) {
        std::fprintf(stderr, "bench-stall: the job failed: %s\n",
                     qPrintable(state.errorMessage().value_or(QStringLiteral("no item"))));
        return 1;
    }
    const double longest = *std::max_element(lateness.begin(), lateness.end());
    std::printf("stall: transcribe of a %.2f GB video (%.0f s of picture, 20 s of sound) in %.1f s, %zu ticks of "
                "%d ms: longest main-thread stall %.1f ms, 99th percentile %.1f ms (goal: no stall above %.0f ms)%s\n",
                double(QFileInfo(video).size()) / 1e9, pictureSeconds, seconds, lateness.size(), tickMs, longest,
                percentile(lateness, 0.99), goalMs, longest > goalMs ? " MISSED" : "");
    return 0;
}
