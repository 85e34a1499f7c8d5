// The live interview's lag: a private microphone hears speech in real time, and each
// stretch of the recording is timed from its end to the moment it has been recognised.
// Also the time `stop` takes for the tail after the last word.
//
//   bench-interview MODEL SECONDS    (under tests/support/with-sound-server.sh --speech)
#include "app/InterviewJob.h"

#include <QFile>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench-interview MODEL SECONDS\n");
        return 2;
    }
    const QString model = QString::fromLocal8Bit(argv[1]);
    const double seconds = QString::fromLocal8Bit(argv[2]).toDouble();

    InterviewJob session;
    QElapsedTimer clock;
    QList<double> lags; // seconds from a stretch's end to its being heard
    QObject::connect(&session, &InterviewJob::rangeHeard, &app, [&](qint64, qint64 toMs) {
        lags.append(double(clock.elapsed() - toMs) / 1000.0);
    });
    clock.start();
    session.start(model, QStringLiteral("de"), false);
    if (!session.isRecording()) {
        std::fprintf(stderr, "no recording: %s\n", qPrintable(session.status()));
        return 1;
    }
    int status = 0;
    QTimer::singleShot(qint64(seconds * 1000), &app, [&] {
        const qsizetype rolling = lags.size();
        QElapsedTimer stopping;
        stopping.start();
        session.stop().then(&app, [&, rolling, stopping](const std::optional<InterviewResult> &value) {
            const double stopSeconds = double(stopping.elapsed()) / 1000.0;
            QList<double> sorted = lags.mid(0, rolling);
            std::sort(sorted.begin(), sorted.end());
            const double median = sorted.isEmpty() ? 0 : sorted[sorted.size() / 2];
            const double worst = sorted.isEmpty() ? 0 : sorted.last();
            // Falling behind for good shows as a lag that grows from the first to the last third.
            const qsizetype third = std::max<qsizetype>(1, rolling / 3);
            double early = 0, late = 0;
            for (qsizetype i = 0; i < third && i < rolling; ++i) {
                early += lags[i] / third;
                late += lags[rolling - 1 - i] / third;
            }
            std::printf("interview: %.0f s recorded, %lld rolling passes, %lld segments\n", seconds,
                        qlonglong(rolling), qlonglong(value ? value->result.segments.size() : 0));
            std::printf("interview lag: median %.2f s, worst %.2f s (goal: median <= 8 s); first third %.2f s, last "
                        "third %.2f s\n",
                        median, worst, early, late);
            std::printf("interview stop: %.2f s for the tail after the last word (goal <= 3 s)\n", stopSeconds);
            if (value)
                QFile::remove(value->audio);
            status = rolling > 0 && value ? 0 : 1;
            QCoreApplication::exit(status);
        });
    });
    return app.exec();
}
