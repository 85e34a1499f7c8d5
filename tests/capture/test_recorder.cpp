// The recorder against a sound server whose input plays a 440 Hz tone.
#include "LocalServer.h"
#include "Media.h"

#include "capture/Recorder.h"
#include "engine/Decoder.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>

namespace {

QJsonObject probeStream(const QString &path)
{
    QProcess p;
    p.start(QStringLiteral("ffprobe"), {"-v", "error", "-show_streams", "-show_format", "-of", "json", path});
    p.waitForFinished(30'000);
    const QJsonObject all = QJsonDocument::fromJson(p.readAllStandardOutput()).object();
    QJsonObject stream = all.value("streams").toArray().first().toObject();
    stream.insert("format_name", all.value("format").toObject().value("format_name"));
    return stream;
}

// The power of one frequency in the middle half of 16 kHz samples (Goertzel).
double powerAt(const std::vector<float> &samples, double frequency)
{
    const double k = 2.0 * std::cos(2.0 * M_PI * frequency / 16000.0);
    double s1 = 0, s2 = 0;
    for (size_t i = samples.size() / 4; i < samples.size() * 3 / 4; ++i) {
        const double s0 = samples[i] + k * s1 - s2;
        s2 = s1;
        s1 = s0;
    }
    return s1 * s1 + s2 * s2 - k * s1 * s2;
}

// What a stop delivers once the encoder has closed the file.
std::optional<QString> finished(const QFuture<std::optional<QString>> &stopped)
{
    EXPECT_TRUE(waitFor([&] { return stopped.isFinished(); }, 15'000)) << "the file was never closed";
    return stopped.isFinished() ? stopped.result() : std::nullopt;
}

} // namespace

TEST(Recorder, RecordsTheInputIntoAnAacFile)
{
    Recorder recorder;
    EXPECT_EQ(finished(recorder.stop()), std::nullopt);

    float highest = 0;
    QObject::connect(&recorder, &Recorder::levelChanged, [&] { highest = std::max(highest, recorder.level()); });
    recorder.start();
    ASSERT_TRUE(waitFor([&] { return recorder.isRecording(); }, 10'000)) << "denied: " << recorder.permissionDenied();
    EXPECT_FALSE(recorder.permissionDenied());
    ASSERT_TRUE(waitFor([&] { return recorder.elapsed() >= 3.0; }, 15'000)) << recorder.elapsed();
    const QFuture<std::optional<QString>> stopped = recorder.stop();
    const double elapsed = recorder.elapsed();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.level(), 0.0f);
    const std::optional<QString> file = finished(stopped);

    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(finished(recorder.stop()), file) << "a second stop hands out the same file";
    EXPECT_GE(elapsed, 3.0) << "the last length stays for the sheet";
    EXPECT_GT(highest, 0.2f) << "a tone moves the meter";
    const QFileInfo info(*file);
    EXPECT_EQ(info.absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
    EXPECT_TRUE(QRegularExpression("^aufnahme-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.m4a$")
                    .match(info.fileName())
                    .hasMatch())
        << info.fileName().toStdString();

    // AAC in MPEG-4, 44.1 kHz mono, as long as the recorder said, with the source's tone.
    const QJsonObject stream = probeStream(*file);
    EXPECT_EQ(stream.value("codec_name").toString(), "aac");
    EXPECT_EQ(stream.value("sample_rate").toString(), "44100");
    EXPECT_EQ(stream.value("channels").toInt(), 1);
    EXPECT_TRUE(stream.value("format_name").toString().contains("mp4"));
    const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(*file);
    EXPECT_NEAR(double(samples.size()) / 16000.0, elapsed, 0.5);
    const double tone = powerAt(samples, 440.0);
    for (double other : {220.0, 330.0, 550.0, 880.0, 1000.0})
        EXPECT_GT(tone, 20 * powerAt(samples, other)) << other << " Hz";

    // A cancelled recording leaves nothing; the one before belongs to the caller.
    recorder.start();
    ASSERT_TRUE(waitFor([&] { return recorder.isRecording(); }, 10'000));
    const std::optional<QString> second = recorder.filePath();
    ASSERT_TRUE(second.has_value());
    EXPECT_NE(second, file);
    EXPECT_EQ(recorder.elapsed(), 0.0);
    ASSERT_TRUE(waitFor([&] { return recorder.elapsed() >= 0.5; }, 10'000));
    recorder.cancel();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(QFile::exists(*second));
    EXPECT_EQ(recorder.elapsed(), 0.0);
    EXPECT_EQ(finished(recorder.stop()), std::nullopt);
    EXPECT_TRUE(QFile::exists(*file));
    QFile::remove(*file);

    // A cancel while the stopped file is still being closed: the stop delivers nothing.
    recorder.start();
    ASSERT_TRUE(waitFor([&] { return recorder.elapsed() >= 0.5; }, 10'000));
    const QString third = recorder.filePath().value_or(QString());
    const QFuture<std::optional<QString>> closing = recorder.stop();
    ASSERT_FALSE(closing.isFinished()) << "the encoder closes the file after stop() has returned";
    recorder.cancel();
    EXPECT_EQ(finished(closing), std::nullopt);
    EXPECT_FALSE(QFile::exists(third));

    // A recorder that goes away while recording, or while closing its file, takes the file
    // along.
    for (bool stopFirst : {false, true}) {
        {
            Recorder abandoned;
            abandoned.start();
            ASSERT_TRUE(waitFor([&] { return abandoned.isRecording(); }, 10'000));
            if (stopFirst)
                abandoned.stop();
        }
        EXPECT_TRUE(waitFor([] { return Media::temporaryEntries().isEmpty(); }, 15'000))
            << Media::temporaryEntries().join(' ').toStdString();
    }
}

TEST(Recorder, TheLevelIsAmplitudeWithAFixedGain)
{
    for (auto [db, level] : {std::pair{0.0f, 1.0f}, {-20.0f, 0.16f}, {-4.08f, 1.0f}, {-160.0f, 0.0f}, {12.0f, 1.0f},
                             {std::numeric_limits<float>::quiet_NaN(), 0.0f}})
        EXPECT_NEAR(Recorder::levelFor(db), level, 1e-3) << db;
}
