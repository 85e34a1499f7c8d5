// In-process decoding of real media against the ffmpeg program's own result.
#include "Media.h"

#include "core/Wav.h"
#include "engine/Engine.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

const QString convertPrefix = QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: ");

struct Shape {
    double rms = 0;
    int crossings = 0;
};

Shape shapeOf(const std::vector<float> &s, size_t from, size_t to)
{
    Shape shape;
    double sum = 0;
    for (size_t i = from; i < to; ++i) {
        sum += double(s[i]) * s[i];
        if (i > from && (s[i - 1] < 0) != (s[i] < 0))
            ++shape.crossings;
    }
    shape.rms = std::sqrt(sum / double(to - from));
    return shape;
}

} // namespace

TEST(EngineAudio, DecodesEveryContainerLikeTheFfmpegProgram)
{
    for (const QString ext : {"wav", "mp3", "m4a", "opus", "flac"}) {
        SCOPED_TRACE(ext.toStdString());
        const QString path = Media::tone(ext);
        const QByteArray ours = Engine::avfDecodePCM16(path, nullptr);
        const QByteArray theirs = Media::ffmpegPcm(path);
        ASSERT_FALSE(ours.isEmpty());
        // Same decoder and resampler: the same samples, give or take rounding.
        ASSERT_NEAR(double(ours.size()), double(theirs.size()), 2.0 * 16);
        const auto *a = reinterpret_cast<const qint16 *>(ours.constData());
        const auto *b = reinterpret_cast<const qint16 *>(theirs.constData());
        int worst = 0;
        for (qsizetype i = 0; i < std::min(ours.size(), theirs.size()) / 2; ++i)
            worst = std::max(worst, std::abs(int(a[i]) - int(b[i])));
        EXPECT_LE(worst, 2);

        // Two seconds at 16 kHz of an audible 440 Hz tone; the floats taken frame by frame
        // are exactly the 16-bit samples scaled.
        const std::vector<float> floats = Engine::decodeTo16kMonoFloats(path);
        EXPECT_EQ(floats, Wav::floatsFromPcm16(ours));
        EXPECT_NEAR(double(floats.size()), 32000.0, 800.0);
        const Shape shape = shapeOf(floats, 4000, 28000);
        EXPECT_GT(shape.rms, 0.03);
        EXPECT_LT(shape.rms, 0.2);
        EXPECT_NEAR(shape.crossings, 880 * 24000 / 16000, 6);
    }
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

TEST(EngineAudio, VideoGivesItsSoundtrackAndTruncatedFilesWhatTheyHold)
{
    const std::vector<float> video = Engine::decodeTo16kMonoFloats(Media::videoWithAudio());
    EXPECT_NEAR(double(video.size()), 32000.0, 1000.0);
    EXPECT_NEAR(shapeOf(video, 4000, 28000).crossings, 1320, 8);

    const std::vector<float> cut = Engine::decodeTo16kMonoFloats(Media::truncatedMp3());
    EXPECT_GT(cut.size(), 16000u * 15 / 10);
    EXPECT_LT(cut.size(), 16000u * 25 / 10);

    // Cut off inside a packet: the in-process road itself gives what is there.
    const QByteArray cutM4a = Engine::avfDecodePCM16(Media::truncatedM4a(), nullptr);
    EXPECT_GT(cutM4a.size(), 32000 * 18 / 10);
    EXPECT_LT(cutM4a.size(), 32000 * 26 / 10);
}

TEST(EngineAudio, DamageInTheMiddleFailsTheDecodingAndTheFfmpegRoadTakesOver)
{
    const std::string decodingFailed = (convertPrefix + QStringLiteral("Dekodierung fehlgeschlagen")).toStdString();
    const auto errorOf = [](const std::function<void()> &f) {
        try {
            f();
        } catch (const EngineError &e) {
            return e.errorDescription().toStdString();
        }
        return std::string("(no error)");
    };
    const auto restore = qScopeGuard([] { Engine::setFfmpegCandidatesForTesting(std::nullopt); });
    for (const QString ext : {"m4a", "mp3", "flac"}) {
        SCOPED_TRACE(ext.toStdString());
        const QString path = Media::damagedInTheMiddle(ext);
        EXPECT_EQ(errorOf([&] { Engine::avfDecodePCM16(path, nullptr); }), decodingFailed);

        // The ffmpeg program passes over the damage, so the text keeps its whole length.
        Engine::setFfmpegCandidatesForTesting(std::nullopt);
        const std::vector<float> recovered = Engine::decodeTo16kMonoFloats(path);
        EXPECT_NEAR(double(recovered.size()), 6.0 * 16000, 0.2 * 16000);

        // When ffmpeg's file is as damaged, nothing replaces the second pass's reason.
        Engine::setFfmpegCandidatesForTesting(
            QStringList{Media::script(QStringLiteral("copying-ffmpeg"), QStringLiteral("cp \"$6\" \"${14}\""))});
        EXPECT_EQ(errorOf([&] { Engine::decodeTo16kMonoFloats(path); }), decodingFailed);
    }
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(EngineAudio, BadFilesEndInConvertFailedAndLeaveNothingBehind)
{
    const QStringList bad = {Media::videoWithoutAudio(), Media::emptyFile(), Media::textFileNamedMp3(),
                             QStringLiteral("/nonexistent/sagwerk/missing.mp3")};
    for (const QString &path : bad) {
        SCOPED_TRACE(path.toStdString());
        // The first attempt's own reasons never surface; the ffmpeg program's do.
        EXPECT_THROW(Engine::avfDecodePCM16(path, nullptr), EngineError);
        try {
            Engine::decodeTo16kMonoFloats(path);
            ADD_FAILURE() << "decoded a bad file";
        } catch (const EngineError &e) {
            EXPECT_EQ(e.kind(), EngineError::Case::convertFailed);
            EXPECT_TRUE(e.errorDescription().startsWith(convertPrefix));
            EXPECT_FALSE(e.message().isEmpty());
            EXPECT_NE(e.message(), QStringLiteral("keine Tonspur"));
        }
        EXPECT_THROW(Engine::extractWav(path), EngineError);
    }
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(u' ').toStdString();
}

TEST(EngineAudio, ExtractWavWritesTheFixedHeaderAndTheSamples)
{
    const QString input = Media::tone(QStringLiteral("m4a"));
    const QString wav = Engine::extractWav(input);
    const QByteArray bytes = Media::readFile(wav);
    QFile::remove(wav);
    EXPECT_TRUE(wav.endsWith(QStringLiteral(".wav")));
    // Named by the process and a fresh id, never by the source, so a later run can tell a
    // killed process's leftovers.
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^sagwerk-[0-9]+-[0-9A-F-]{36}$")).match(QFileInfo(wav).completeBaseName()).hasMatch())
        << wav.toStdString();

    const QByteArray pcm = Engine::avfDecodePCM16(input, nullptr);
    ASSERT_EQ(bytes.size(), pcm.size() + 44);
    EXPECT_EQ(bytes.left(44), Wav::header(quint32(pcm.size()), 16000, 1, 16));
    EXPECT_EQ(bytes.mid(44), pcm);
    // RIFF size, PCM, mono, 16 kHz, 32000 bytes a second, 2-byte frames of 16 bits, data size.
    EXPECT_EQ(Wav::header(100, 16000, 1, 16).toHex(),
              "524946468800000057415645666d74201000000001000100803e0000007d0000020010006461746164000000");

    EXPECT_TRUE(Wav::floatsFromPcm16(QByteArray(1, '\x7f')).empty());
    const std::vector<float> f = Wav::floatsFromPcm16(QByteArray("\x00\x80\xff\x7f\x01", 5));
    EXPECT_EQ(f, (std::vector<float>{-1.0f, 0.999969482421875f}));
}
