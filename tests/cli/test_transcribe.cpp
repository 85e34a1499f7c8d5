// sagwerk-cli transcribe as a user runs it: real files, the generated model, signals.
#include "Media.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <signal.h>

namespace {

struct CliRun {
    int status = -1;
    QByteArray out, err;
};

CliRun cli(const QStringList &args, int interruptAfterMs = -1)
{
    QProcess p;
    p.start(QStringLiteral(SAGWERK_CLI), args);
    p.waitForStarted();
    if (interruptAfterMs >= 0) {
        p.waitForFinished(interruptAfterMs);
        ::kill(pid_t(p.processId()), SIGINT);
    }
    p.waitForFinished(-1);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

} // namespace

TEST(CliTranscribe, Mp3AndVideoBecomeJson)
{
    for (const QString &input : {Media::tone(QStringLiteral("mp3")), Media::videoWithAudio()}) {
        SCOPED_TRACE(input.toStdString());
        const CliRun run = cli({"transcribe", input, "--model", Media::tinyModel(), "--language", "de"});
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        EXPECT_TRUE(run.err.isEmpty()) << "no progress bar when stderr is no terminal";
        QJsonParseError error;
        const QJsonObject json = QJsonDocument::fromJson(run.out, &error).object();
        ASSERT_EQ(error.error, QJsonParseError::NoError);
        EXPECT_EQ(json.value("language").toString(), QStringLiteral("de"));
        EXPECT_TRUE(json.value("fullText").isString());
        EXPECT_TRUE(json.value("processingSeconds").isDouble());
        const QJsonArray segments = json.value("segments").toArray();
        for (const QJsonValue &v : segments) {
            const QJsonObject s = v.toObject();
            for (const char *key : {"id", "startMs", "endMs", "text", "words"})
                EXPECT_TRUE(s.contains(QLatin1String(key))) << key;
            for (const QJsonValue &w : s.value("words").toArray())
                EXPECT_EQ(w.toObject().keys(), (QStringList{"endMs", "startMs", "text"}));
        }
    }
}

TEST(CliTranscribe, FailuresSpeakTheUsersTextAndExitNonZero)
{
    const CliRun bad = cli({"transcribe", Media::textFileNamedMp3(), "--model", Media::tinyModel()});
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(bad.err.startsWith("Audio konnte nicht nach 16 kHz konvertiert werden: ")) << bad.err.toStdString();
    EXPECT_TRUE(bad.out.isEmpty());

    const CliRun noModel = cli({"transcribe", Media::tone(QStringLiteral("mp3")), "--model", "/nonexistent.bin"});
    EXPECT_EQ(noModel.status, 1);
    EXPECT_EQ(noModel.err, "Kein Modell ausgewählt/installiert.\n");

    EXPECT_EQ(cli({"transcribe", "--model", "x"}).status, 2);
    EXPECT_EQ(cli({"frobnicate"}).status, 2);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

TEST(CliTranscribe, CtrlCCancelsAndLeavesNoTemporaryFile)
{
    // A minute of sound keeps the run busy long enough to be interrupted.
    const QString longFile = Media::tone(QStringLiteral("opus"), 60.0);
    const CliRun run = cli({"transcribe", longFile, "--model", Media::tinyModel()}, 300);
    EXPECT_EQ(run.status, 130) << run.err.toStdString();
    EXPECT_EQ(run.err, "Abgebrochen.\n");
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
