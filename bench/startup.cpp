// bench-startup [BUNDLES]: start-up with a full history. Makes BUNDLES transcriptions
// (default 1,000; twenty minutes of words each) in a throw-away data folder, then starts
// itself afresh five times and reports the medians of: AppModel ready (settings, history,
// and the answers of the key store), and the main window's first paint with that state.
// Goal: AppModel ready <= 1 s. Beside it, the listing against reading every document whole.
#include "Transcripts.h"

#include "app/AppModel.h"
#include "storage/BundleStore.h"
#include "storage/KeychainStore.h"
#include "ui/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr double goalMs = 1000.0;

// One fresh process: prints "<model ms> <paint ms>".
int child(QElapsedTimer &clock)
{
    AppModel app;
    // The key store answers in order, so this one comes after the model's two.
    KeychainStore::load(QStringLiteral("bench")).then(qApp, [&](const std::optional<QString> &) {
        const double ready = clock.nsecsElapsed() / 1e6;
        auto *window = new MainWindow(app);
        struct Watch : QObject {
            QElapsedTimer *clock;
            double ready;
            bool eventFilter(QObject *, QEvent *e) override
            {
                if (e->type() == QEvent::Paint)
                    QTimer::singleShot(0, qApp, [this] {
                        std::printf("%.1f %.1f\n", ready, clock->nsecsElapsed() / 1e6);
                        qApp->exit(0);
                    });
                return false;
            }
        };
        auto *watch = new Watch;
        watch->clock = &clock;
        watch->ready = ready;
        window->installEventFilter(watch);
        window->show();
    });
    return qApp->exec();
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QElapsedTimer clock;
    clock.start();
    if (argc > 1 && QByteArray(argv[1]) == "--child") {
        QApplication app(argc, argv);
        return child(clock);
    }
    QCoreApplication app(argc, argv);
    const int count = argc > 1 ? std::max(1, atoi(argv[1])) : 1000;

    QTemporaryDir dir;
    dir.setAutoRemove(qEnvironmentVariableIsEmpty("SAGWERK_BENCH_KEEP"));
    if (!dir.autoRemove())
        std::printf("start-up: the data stays in %s\n", qPrintable(dir.path()));
    qputenv("HOME", dir.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", (dir.path() + "/data").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (dir.path() + "/config").toLocal8Bit());
    // The audio copies are no part of start-up: a few bytes stand in for them.
    const QString audio = dir.filePath(QStringLiteral("audio.m4a"));
    QFile stand(audio);
    stand.open(QIODevice::WriteOnly);
    stand.write("m4a");
    stand.close();
    // Twenty minutes: 160 segments of 21 words.
    const TranscriptionResult result = Transcripts::result(160, 21);
    QElapsedTimer making;
    making.start();
    for (int i = 0; i < count; ++i)
        BundleStore::create(QStringLiteral("Interview %1.m4a").arg(i), QDateTime::currentDateTime().addSecs(-i),
                            audio, result);
    qint64 bytes = 0;
    for (const LoadedBundle &b : BundleStore::list())
        bytes += QFileInfo(b.url + QStringLiteral("/sagwerk.json")).size();
    std::printf("start-up: %d bundles of %lld words each, %.0f MB of documents (made in %.1f s)\n", count,
                qlonglong(160 * 21), bytes / 1e6, making.nsecsElapsed() / 1e9);

    // The list at start reads summaries; beside it, the same documents read whole.
    QElapsedTimer reading;
    reading.start();
    const qsizetype summaries = BundleStore::listSummaries().size();
    const double summaryMs = reading.nsecsElapsed() / 1e6;
    reading.restart();
    const qsizetype wholes = BundleStore::list().size();
    const double wholeMs = reading.nsecsElapsed() / 1e6;
    std::printf("start-up: listing %lld bundles %.0f ms, read whole %lld of them %.0f ms, ratio %.3f\n",
                qlonglong(summaries), summaryMs, qlonglong(wholes), wholeMs, summaryMs / wholeMs);

    std::vector<double> ready, paint;
    for (int round = 0; round < 5; ++round) {
        QProcess p;
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child")});
        if (!p.waitForFinished(120'000) || p.exitCode() != 0) {
            std::fprintf(stderr, "start-up: the child failed\n");
            return 1;
        }
        const QList<QByteArray> figures = p.readAllStandardOutput().simplified().split(' ');
        ready.push_back(figures.value(0).toDouble());
        paint.push_back(figures.value(1).toDouble());
    }
    std::printf("start-up: AppModel ready (settings, keys, history) %.0f ms (goal <= %.0f ms), first paint of the "
                "window %.0f ms, medians of 5 fresh processes\n",
                median(ready), goalMs, median(paint));
    return 0;
}
