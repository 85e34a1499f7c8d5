// The live interview: the growing recording's arithmetic, the rolling loop under a private
// sound server whose microphone hears speech, and the stored result.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/InterviewJob.h"
#include "capture/LiveRecording.h"
#include "core/Wav.h"
#include "engine/WhisperEngine.h"
#include "speakers/DiarizationModels.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

QString writeFile(const QString &name, const QByteArray &bytes)
{
    const QString path = QDir::temp().filePath(name);
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return path;
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Samples whose value is their index, so that a range shows where it came from.
QByteArray countingSamples(qint64 count)
{
    QByteArray bytes(count * 2, '\0');
    for (qint64 i = 0; i < count; ++i)
        qToLittleEndian(qint16(i % 30000), bytes.data() + 2 * i);
    return bytes;
}

QString dataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk");
}

QStringList leftovers()
{
    return QDir::temp().entryList({QStringLiteral("interview-*"), QStringLiteral("chunk-*")}, QDir::Files);
}

} // namespace

TEST(InterviewFile, DurationsRangesAndHeaders)
{
    for (const auto &[size, ms] : QList<std::pair<int, qint64>>{{0, 0}, {44, 0}, {45, 0}, {46, 0}, {44 + 32, 1},
                                                                {44 + 32001, 1000}, {44 + 320000, 10000}})
        EXPECT_EQ(LiveRecording::durationMs(writeFile(QStringLiteral("d.wav"), QByteArray(size, 'x'))), ms) << size;
    EXPECT_EQ(LiveRecording::durationMs(QStringLiteral("/no/such/file.wav")), 0);

    const QString recording = writeFile(QStringLiteral("r.wav"), Wav::header(0) + countingSamples(16000 * 3));
    const QString chunk = LiveRecording::extractRange(recording, 1000, 2500);
    const QByteArray bytes = readAll(chunk);
    ASSERT_EQ(bytes.size(), 44 + 2 * 24000);
    EXPECT_EQ(bytes.left(4), "RIFF");
    EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 4), quint32(bytes.size() - 8));
    EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 24), 16000u);
    EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 28), 32000u);
    EXPECT_EQ(qFromLittleEndian<quint16>(bytes.constData() + 32), 2);
    EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + 40), quint32(2 * 24000));
    EXPECT_EQ(qFromLittleEndian<qint16>(bytes.constData() + 44), 16000) << "starts at the range's first sample";
    // The same stretch handed over in memory.
    const std::vector<float> samples = LiveRecording::samples(recording, 1000, 2500);
    ASSERT_EQ(samples.size(), 24000u);
    EXPECT_EQ(samples.front(), 16000.0f / 32768.0f);
    EXPECT_EQ(samples.back(), float((16000 + 23999) % 30000) / 32768.0f);
    EXPECT_EQ(LiveRecording::samples(recording, 2500, 9000).size(), 8000u);
    EXPECT_THROW(LiveRecording::samples(QStringLiteral("/no/such/file.wav"), 0, 1000), std::runtime_error);

    // Past the end the chunk is shorter; a backward range is empty.
    const QString tail = LiveRecording::extractRange(recording, 2500, 9000);
    EXPECT_EQ(readAll(tail).size(), 44 + 2 * 8000);
    const QString backward = LiveRecording::extractRange(recording, 2000, 1000);
    EXPECT_EQ(readAll(backward).size(), 44);
    for (const QString &path : {chunk, tail, backward})
        QFile::remove(path);
    EXPECT_THROW(LiveRecording::extractRange(QStringLiteral("/no/such/file.wav"), 0, 1000), std::runtime_error);
}

class Interview : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(qEnvironmentVariable("PULSE_SERVER").isEmpty()) << "run under with-sound-server.sh --speech";
        useThrowawayHome();
        QSettings settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"));
        settings.clear();
        settings.setValue(QStringLiteral("selectedModelId"), QStringLiteral("base-q5_1"));
        Media::installTinyModel(dataDir() + QStringLiteral("/models"), QStringLiteral("ggml-base-q5_1.bin"));
    }

    QString model() const { return dataDir() + QStringLiteral("/models/ggml-base-q5_1.bin"); }

    // Starts `session` on the test model, noting each stretch it hears in `ranges`.
    void startNoting(InterviewJob &session, QList<std::pair<qint64, qint64>> &ranges) const
    {
        QObject::connect(&session, &InterviewJob::rangeHeard, &session,
                         [&ranges](qint64 from, qint64 to) { ranges.append({from, to}); });
        session.start(model(), QStringLiteral("de"), false);
    }
};

TEST_F(Interview, RollingPassesCoverTheRecordingOnceAndInOrder)
{
    InterviewJob session;
    QList<std::pair<qint64, qint64>> ranges;
    startNoting(session, ranges);
    ASSERT_TRUE(session.isRecording()) << qPrintable(session.status());

    // The first pass starts once five seconds are recorded and moves the position on,
    // words or not.
    ASSERT_TRUE(waitFor([&] { return session.transcribedMs() >= 5000; }, 30'000));
    EXPECT_GE(session.elapsed(), 5.0);
    // Stop while the next stretch is still short or being heard.
    waitFor([&] { return session.elapsed() >= 7.5; }, 10'000);
    QFuture<std::optional<InterviewResult>> stopped = session.stop();
    EXPECT_FALSE(session.isRecording());
    EXPECT_TRUE(session.isFinalizing());
    EXPECT_EQ(session.status(), QStringLiteral("Aufnahme wird abgeschlossen…"));
    ASSERT_TRUE(waitFor([&] { return stopped.isFinished(); }, 60'000));
    EXPECT_FALSE(session.isFinalizing());
    const std::optional<InterviewResult> value = stopped.result();
    ASSERT_TRUE(value);

    // The recording: whole, with its sizes written, and all of it heard.
    const qint64 duration = LiveRecording::durationMs(value->audio);
    EXPECT_GE(duration, 7000);
    const QByteArray wav = readAll(value->audio);
    EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 4), quint32(wav.size() - 8));
    EXPECT_EQ(qFromLittleEndian<quint32>(wav.constData() + 40), quint32(wav.size() - 44));
    EXPECT_GE(session.transcribedMs(), duration - 499);
    EXPECT_LE(session.transcribedMs(), duration);

    // The ranges follow each other without gap or overlap, the tail included.
    ASSERT_GE(ranges.size(), 2);
    EXPECT_EQ(ranges.first().first, 0);
    EXPECT_GE(ranges.first().second, 5000);
    for (qsizetype i = 1; i < ranges.size(); ++i)
        EXPECT_EQ(ranges[i].first, ranges[i - 1].second);
    EXPECT_EQ(ranges.last().second, session.transcribedMs());
    // Times are relative to the recording: no segment starts before its range.
    for (const TranscriptSegment &s : value->result.segments)
        EXPECT_GE(s.startMs, 0);
    EXPECT_EQ(value->result.segments.size(), session.segments().size());
    EXPECT_EQ(value->result.fullText, session.fullText());
    EXPECT_EQ(value->result.language, QStringLiteral("de"));
    EXPECT_EQ(leftovers(), QStringList{QFileInfo(value->audio).fileName()}) << "no chunk is left";

    // Stored as a transcript of its own, and the recording is gone.
    AppModel app;
    app.setInterviewActive(true);
    InterviewResult withSpeakers = *value;
    withSpeakers.result.segments = {TranscriptSegment{QUuid::createUuid(), 0, 1000, QStringLiteral("Guten Tag"), {}}};
    withSpeakers.result.fullText = QStringLiteral("Guten Tag");
    withSpeakers.speakerText = QStringLiteral("Sprecher 1: Guten Tag");
    QFuture<void> stored = app.finishInterview(withSpeakers);
    EXPECT_FALSE(app.interviewActive());
    ASSERT_TRUE(waitFor([&] { return stored.isFinished(); }));
    ASSERT_TRUE(app.current());
    EXPECT_TRUE(app.current()->fileName.startsWith(QStringLiteral("Interview ")));
    EXPECT_EQ(app.current()->speakerText, QStringLiteral("Sprecher 1: Guten Tag"));
    EXPECT_EQ(app.history().size(), 1);
    EXPECT_EQ(BundleStore::historyItem(BundleStore::list().first()).speakerText, QStringLiteral("Sprecher 1: Guten Tag"));
    EXPECT_EQ(BundleStore::list().first().data.processingSeconds, 0.0);
    EXPECT_TRUE(leftovers().isEmpty());
}

TEST_F(Interview, CancelStopAndEmptyInterviewsLeaveNothing)
{
    // Cancelled mid-recording, with a pass under way or not: no file stays.
    {
        InterviewJob session;
        session.start(model(), QStringLiteral("de"), false);
        ASSERT_TRUE(session.isRecording());
        waitFor([&] { return session.elapsed() >= 5.5; }, 15'000);
        session.cancel();
        EXPECT_FALSE(session.isRecording());
        QTest::qWait(1500); // a pass in flight ends by itself
    }
    EXPECT_TRUE(leftovers().isEmpty()) << leftovers().join(u' ').toStdString();

    // A stop after a start that never recorded gives nothing.
    InterviewJob idle;
    EXPECT_FALSE(idle.stop().result());

    // Under half a second of tail and no pass: no segments, and nothing is stored.
    InterviewJob brief;
    brief.start(model(), QStringLiteral("de"), false);
    QTest::qWait(300);
    QFuture<std::optional<InterviewResult>> stopped = brief.stop();
    ASSERT_TRUE(waitFor([&] { return stopped.isFinished(); }));
    ASSERT_TRUE(stopped.result());
    EXPECT_TRUE(stopped.result()->result.segments.isEmpty());
    AppModel app;
    app.setInterviewActive(true);
    QFuture<void> stored = app.finishInterview(*stopped.result());
    ASSERT_TRUE(waitFor([&] { return stored.isFinished(); }));
    EXPECT_FALSE(app.interviewActive());
    EXPECT_TRUE(app.history().isEmpty());
    EXPECT_TRUE(BundleStore::list().isEmpty());
    EXPECT_TRUE(leftovers().isEmpty());
}

TEST_F(Interview, TheCommandLineRecordsPrintsAndStores)
{
    const CliRun run = cli({"interview", "--duration", "6.5", "--language", "de"});
    EXPECT_EQ(run.status, 0) << run.err.constData();
    const QList<QByteArray> lines = run.out.trimmed().split('\n');
    ASSERT_FALSE(lines.isEmpty());
    const QString folder = QString::fromUtf8(lines.last());
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/sagwerk.json"))) << run.out.constData();
    for (qsizetype i = 0; i + 1 < lines.size(); ++i)
        EXPECT_TRUE(lines[i].startsWith("[0:0")) << lines[i].constData();
    EXPECT_EQ(BundleStore::list().size(), 1);
}

TEST_F(Interview, LiveSpeakersSeparateTheWholeRecordingOnStop)
{
    // A stand-in for the diarisation program: two speakers, one per half of what it gets,
    // and a note of each WAV it was given.
    const QString vendor = QDir::homePath() + QStringLiteral("/Developer/SagwerkMac/vendor");
    QDir().mkpath(vendor);
    QFile program(vendor + QStringLiteral("/sherpa-diarize"));
    qputenv("SAGWERK_DIARIZE_PROGRAM", program.fileName().toUtf8());
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\n"
                  "for wav; do :; done\n" // the recording comes last
                  "size=$(stat -c %s \"$wav\")\n"
                  "echo \"$size\" >> \"$(dirname \"$0\")/given\"\n"
                  "half=$(( (size - 44) / 64000 ))\n"
                  "echo \"0.000 -- $half.000 speaker_00\"\n"
                  "echo \"$half.000 -- 99.000 speaker_01\"\n");
    program.close();
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const QString &model : {DiarizationModels::segPath(), DiarizationModels::embPath()}) {
        QDir().mkpath(QFileInfo(model).path());
        writeFile(QStringLiteral("model"), "x");
        QFile::rename(QDir::temp().filePath(QStringLiteral("model")), model);
    }

    InterviewJob session;
    session.start(model(), QStringLiteral("de"), true);
    ASSERT_TRUE(session.isRecording());
    waitFor([&] { return session.elapsed() >= 6.5; }, 15'000);
    QFuture<std::optional<InterviewResult>> stopped = session.stop();
    ASSERT_TRUE(waitFor([&] { return stopped.isFinished(); }, 60'000));
    const std::optional<InterviewResult> value = stopped.result();
    ASSERT_TRUE(value);
    if (value->result.segments.isEmpty())
        GTEST_SKIP() << "the generated model heard no words this time";
    // Too short for a rolling separation: the one at the end got the whole recording.
    const QList<QByteArray> given = readAll(vendor + QStringLiteral("/given")).trimmed().split('\n');
    ASSERT_EQ(given.size(), 1);
    // Whole milliseconds of it: less than one millisecond (32 bytes) may be cut off.
    EXPECT_NEAR(double(given.first().toLongLong()), double(QFileInfo(value->audio).size()), 32.0);
    if (value->speakerText) {
        EXPECT_TRUE(value->speakerText->startsWith(QStringLiteral("Sprecher 1: ")));
    }
    QFile::remove(value->audio);
    EXPECT_TRUE(leftovers().isEmpty());
}

// The microphone hears the speech once and then silence. The passes over the silence, the
// tail at the stop included, add no line: every line comes from a pass that heard speech.
class InterviewSilence : public Interview {};

TEST_F(InterviewSilence, PassesOverSilenceAddNothing)
{
    InterviewJob session;
    QList<std::pair<qint64, qint64>> ranges;
    startNoting(session, ranges);
    ASSERT_TRUE(session.isRecording()) << qPrintable(session.status());
    ASSERT_TRUE(waitFor([&] { return session.elapsed() >= 45.0; }, 90'000));
    QFuture<std::optional<InterviewResult>> stopped = session.stop();
    ASSERT_TRUE(waitFor([&] { return stopped.isFinished(); }, 60'000));
    const std::optional<InterviewResult> value = stopped.result();
    ASSERT_TRUE(value);

    // Where the speech ends, from the recording itself.
    const QByteArray wav = readAll(value->audio);
    std::vector<float> samples;
    for (qsizetype at = 44; at + 1 < wav.size(); at += 2)
        samples.push_back(qFromLittleEndian<qint16>(wav.constData() + at) / 32768.0f);
    qint64 speechEndMs = 0;
    for (size_t at = 0; at + 480 <= samples.size(); at += 480)
        if (!WhisperEngine::isSilent(samples, at, 480))
            speechEndMs = qint64(at + 480) / 16;
    ASSERT_GT(speechEndMs, 0) << "the microphone heard no speech";
    ASSERT_LT(speechEndMs + 25'000, LiveRecording::durationMs(value->audio)) << "too little silence followed";

    // The first pass that reaches past the speech is the last that may add a line.
    qint64 lastHeardSpeech = 0;
    for (const auto &[from, to] : ranges) {
        lastHeardSpeech = to;
        if (to > speechEndMs)
            break;
    }
    ASSERT_GT(ranges.last().second, lastHeardSpeech + 20'000) << "passes went over the silence";
    for (const TranscriptSegment &s : value->result.segments)
        EXPECT_LT(s.startMs, lastHeardSpeech) << qPrintable(s.text);
    QFile::remove(value->audio);
    EXPECT_TRUE(leftovers().isEmpty());
}

TEST(InterviewWithoutInput, ReadsAsRefused)
{
    InterviewJob session;
    session.start(QStringLiteral("/models/any.bin"), QStringLiteral("de"), false);
    EXPECT_TRUE(session.permissionDenied());
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(session.stop().result());
}
