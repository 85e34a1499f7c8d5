// The diarisation child's contract, played by shell scripts written into the vendor
// folder of a throw-away home, where the program is looked for after the binary's folder.
#include "Home.h"

#include "speakers/Diarizer.h"
#include "speakers/DiarizerError.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFuture>
#include <QMutex>
#include <QThread>
#include <QtConcurrent/QtConcurrentRun>

#include <gtest/gtest.h>

namespace {

class Diarize : public ::testing::Test {
protected:
    void SetUp() override
    {
        home = useThrowawayHome();
        vendor = home + QStringLiteral("/Developer/SagwerkMac/vendor");
        QDir().mkpath(vendor);
        qputenv("SAGWERK_DIARIZE_PROGRAM", (vendor + QStringLiteral("/sherpa-diarize")).toUtf8());
    }

    // The stand-in program: `body` runs under sh; it finds its folder in $here.
    void child(const QByteArray &body, bool executable = true)
    {
        QFile script(vendor + QStringLiteral("/sherpa-diarize"));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly | QIODevice::Truncate));
        script.write("#!/bin/sh\nhere=$(dirname \"$0\")\n" + body);
        script.close();
        QFile::Permissions p = QFile::ReadOwner | QFile::WriteOwner;
        if (executable)
            p |= QFile::ExeOwner;
        script.setPermissions(p);
    }

    QStringList recordedArguments() const
    {
        QFile file(vendor + QStringLiteral("/args"));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }

    static DiarizerError::Case failure(const std::function<void()> &run, QString *text = nullptr)
    {
        try {
            run();
        } catch (const DiarizerError &e) {
            if (text)
                *text = e.errorDescription();
            return e.kind();
        }
        ADD_FAILURE() << "no DiarizerError";
        return DiarizerError::Case::failed;
    }

    QString home, vendor;
};

} // namespace

TEST_F(Diarize, ReadsResultAndProgressFromTheTwoStreams)
{
    // Progress comes in pieces and a line is cut across two writes; results come unsorted.
    child("printf '%s\\n' \"$@\" > \"$here/args\"\n"
          "printf 'segmentation progress 10%%\\n' >&2\n"
          "printf '1.0 -- 2.0 speaker_1\\n'\n"
          "printf 'progress 4' >&2; sleep 0.2; printf '5.5%%\\nprogress 150%%\\n' >&2\n"
          "printf 'not a result\\n0.5 -- 1.0 speaker_0\\n'\n"
          "exit 0\n");
    QMutex lock;
    QList<double> fractions;
    const QList<SpeakerSpan> spans = Diarizer::diarize("/in.wav", "/seg.onnx", "/emb.onnx", 0.9, 0, {}, [&](double f) {
        QMutexLocker locked(&lock);
        fractions << f;
    });
    EXPECT_EQ(spans, (QList<SpeakerSpan>{{0.5, 1.0, 0}, {1.0, 2.0, 1}}));
    EXPECT_EQ(recordedArguments(),
              Diarizer::arguments("/in.wav", "/seg.onnx", "/emb.onnx", 0.9, 0, Diarizer::performanceCoreCount()));
    ASSERT_FALSE(fractions.isEmpty());
    EXPECT_EQ(fractions.first(), 0.1);
    EXPECT_EQ(fractions.last(), 1.0);
    for (double f : fractions)
        EXPECT_TRUE(f >= 0.0 && f <= 1.0) << f;
}

TEST_F(Diarize, LargeOutputOnBothStreamsDoesNotStall)
{
    // Far more than a pipe holds, on both streams at once.
    child("i=0; while [ $i -lt 20000 ]; do echo \"$i -- $((i+1)) speaker_$((i%3))\"; "
          "echo \"progress $((i/200))%\" >&2; i=$((i+1)); done\n");
    std::atomic<int> calls = 0;
    const QList<SpeakerSpan> spans =
        Diarizer::diarize("w", "s", "e", 0.9, 3, {}, [&](double) { ++calls; });
    ASSERT_EQ(spans.size(), 20000);
    EXPECT_EQ(spans.last(), (SpeakerSpan{19999, 20000, 19999 % 3}));
    EXPECT_GT(calls.load(), 0);
}

TEST_F(Diarize, ExitStatusesAndMissingProgram)
{
    QString text;
    EXPECT_EQ(failure([] { Diarizer::diarize("w", "s", "e", 0.9, 0); }, &text), DiarizerError::Case::cliNotFound);
    EXPECT_EQ(text, "Programm für die Sprechertrennung nicht gefunden (App beschädigt?).");

    child("exit 0\n", false);
    EXPECT_EQ(failure([] { Diarizer::diarize("w", "s", "e", 0.9, 0); }), DiarizerError::Case::cliNotFound)
        << "a file that is not executable is not the program";

    // The error stream's text is no part of the message.
    child("echo 'model broken' >&2; echo '0 -- 1 speaker_0'; exit 3\n");
    EXPECT_EQ(failure([] { Diarizer::diarize("w", "s", "e", 0.9, 0); }, &text), DiarizerError::Case::failed);
    EXPECT_EQ(text, "Sprechertrennung fehlgeschlagen: Exit 3");

    child("kill -KILL $$\n");
    EXPECT_EQ(failure([] { Diarizer::diarize("w", "s", "e", 0.9, 0); }, &text), DiarizerError::Case::failed);
    EXPECT_EQ(text, "Sprechertrennung fehlgeschlagen: Exit 9");

    // Nothing usable on the output is no error: no speakers.
    child("printf 'nothing\\n\\377\\n'\n");
    EXPECT_TRUE(Diarizer::diarize("w", "s", "e", 0.9, 0).isEmpty());

    // An interpreter that does not exist: the launch itself fails, with the system's text.
    QFile script(vendor + QStringLiteral("/sherpa-diarize"));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly | QIODevice::Truncate));
    script.write("#!/nonexistent/interpreter\n");
    script.close();
    EXPECT_EQ(failure([] { Diarizer::diarize("w", "s", "e", 0.9, 0); }, &text), DiarizerError::Case::failed);
    EXPECT_TRUE(text.startsWith("Sprechertrennung fehlgeschlagen: ")) << qPrintable(text);
    EXPECT_GT(text.size(), QStringLiteral("Sprechertrennung fehlgeschlagen: ").size());
}

TEST_F(Diarize, CancelTerminatesTheChild)
{
    child("echo started > \"$here/started\"; sleep 30\n");
    // A cancel before the launch reaches the child right after it.
    auto early = std::make_shared<CancelToken>();
    early->cancel();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(failure([&] { Diarizer::diarize("w", "s", "e", 0.9, 0, early); }), DiarizerError::Case::cancelled);
    EXPECT_LT(clock.elapsed(), 10'000);

    // A cancel while it runs, from another thread.
    auto control = std::make_shared<CancelToken>();
    QFile::remove(vendor + QStringLiteral("/started"));
    QFuture<void> run = QtConcurrent::run([&] {
        EXPECT_EQ(failure([&] { Diarizer::diarize("w", "s", "e", 0.9, 0, control); }),
                  DiarizerError::Case::cancelled);
    });
    for (int i = 0; i < 100 && !QFile::exists(vendor + QStringLiteral("/started")); ++i)
        QThread::msleep(50);
    clock.restart();
    control->cancel();
    run.waitForFinished();
    EXPECT_LT(clock.elapsed(), 10'000);

    // A child that answers the terminate signal with a clean exit still gives its result.
    child("trap 'echo \"2 -- 3 speaker_5\"; exit 0' TERM\necho started > \"$here/started\"\n"
          "while :; do sleep 0.05; done\n");
    QFile::remove(vendor + QStringLiteral("/started"));
    auto late = std::make_shared<CancelToken>();
    QFuture<QList<SpeakerSpan>> answered =
        QtConcurrent::run([&] { return Diarizer::diarize("w", "s", "e", 0.9, 0, late); });
    for (int i = 0; i < 100 && !QFile::exists(vendor + QStringLiteral("/started")); ++i)
        QThread::msleep(50);
    late->cancel();
    EXPECT_EQ(answered.result(), (QList<SpeakerSpan>{{2, 3, 5}}));
}
