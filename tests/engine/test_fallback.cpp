// The ffmpeg road: the search list, the child's failures, and cancels while it runs.
// Stand-in ffmpeg programs are real shell scripts put where the search looks.
#include "Media.h"

#include "engine/Decoder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <thread>

namespace {

class Fallback : public ::testing::Test {
protected:
    void TearDown() override
    {
        Decoder::setFfmpegCandidatesForTesting(std::nullopt);
        EXPECT_NO_TEMPORARY_FILES();
    }

    // Uses `body` as the only ffmpeg there is; "$14" is the output path.
    void useFfmpeg(const QString &name, const QString &body)
    {
        Decoder::setFfmpegCandidatesForTesting(QStringList{Media::script(name, body)});
    }

    static QString convertError(const std::function<void()> &f) { return caught(f).first; }
    // What ffmpeg said itself, kept apart from the user's text.
    static QString convertDetails(const std::function<void()> &f) { return caught(f).second; }

    static std::pair<QString, QString> caught(const std::function<void()> &f)
    {
        try {
            f();
        } catch (const EngineError &e) {
            return {e.errorDescription(), e.details()};
        }
        return {QStringLiteral("(no error)"), {}};
    }
};

const QString prefix = QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: ");

} // namespace

TEST_F(Fallback, SearchListTakesTheFirstExecutableAndNeverThePath)
{
    const QString plain = Media::script(QStringLiteral("not-executable"), QString());
    QFile(plain).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const QString good = Media::script(QStringLiteral("good-ffmpeg"), QString());
    Decoder::setFfmpegCandidatesForTesting(QStringList{"/nonexistent/ffmpeg", plain, good});
    EXPECT_EQ(Decoder::ffmpegPath(), good);

    Decoder::setFfmpegCandidatesForTesting(QStringList{"/nonexistent/ffmpeg", plain});
    EXPECT_EQ(Decoder::ffmpegPath(), std::nullopt);
    // Without any ffmpeg a bad file gets the format message, not the first attempt's reason.
    EXPECT_EQ(convertError([] { Decoder::decodeTo16kMonoFloats(Media::videoWithoutAudio()); }),
              prefix + QString::fromUtf8(Decoder::formatMessage));
    EXPECT_EQ(convertError([] { Decoder::extractWav(Media::textFileNamedMp3()); }),
              prefix + QString::fromUtf8(Decoder::formatMessage));

    Decoder::setFfmpegCandidatesForTesting(std::nullopt);
    EXPECT_EQ(Decoder::ffmpegPath(), QStringLiteral("/usr/bin/ffmpeg"));
}

TEST_F(Fallback, ChildGetsExactlyTheFourteenArgumentsAndItsResultIsReadBack)
{
    const QString log = QDir::tempPath() + QStringLiteral("/../fallback-args.txt");
    const QString tone = Media::tone(QStringLiteral("flac"));
    useFfmpeg(QStringLiteral("recording-ffmpeg"),
              QStringLiteral("printf '%s\\n' \"$@\" > '%1'\nexec /usr/bin/ffmpeg -hide_banner -loglevel error -y "
                             "-i '%2' -ac 1 -ar 16000 -c:a pcm_s16le \"${14}\"")
                  .arg(log, tone));
    const auto removeLog = qScopeGuard([&] { QFile::remove(log); });

    // The first attempt fails on a text file; the stand-in then yields the tone.
    const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(Media::textFileNamedMp3());
    EXPECT_NEAR(double(samples.size()), 32000.0, 50.0);

    const QStringList args = QString::fromUtf8(Media::readFile(log)).split(u'\n').mid(0, 14);
    ASSERT_EQ(QString::fromUtf8(Media::readFile(log)).count(u'\n'), 14);
    EXPECT_EQ(args.mid(0, 5), (QStringList{"-hide_banner", "-loglevel", "error", "-y", "-i"}));
    EXPECT_EQ(args[5], Media::textFileNamedMp3());
    EXPECT_EQ(args.mid(6, 7), (QStringList{"-vn", "-ac", "1", "-ar", "16000", "-c:a", "pcm_s16le"}));
    EXPECT_TRUE(args[13].startsWith(QDir::tempPath() + u'/'));
    EXPECT_TRUE(args[13].endsWith(QStringLiteral(".wav")));

    // On the WAV road the child writes straight to the output, replacing a file there.
    const QString wav = Decoder::extractWav(Media::videoWithoutAudio());
    EXPECT_GT(QFileInfo(wav).size(), 60000);
    QFile::remove(wav);
}

TEST_F(Fallback, EmptyTrackFromTheChildIsAnEmptyResultNotAnError)
{
    useFfmpeg(QStringLiteral("silent-ffmpeg"),
              QStringLiteral("exec /usr/bin/ffmpeg -hide_banner -loglevel error -y -f lavfi -i "
                             "anullsrc=r=16000:cl=mono -t 0 -c:a pcm_s16le \"${14}\""));
    EXPECT_TRUE(Decoder::decodeTo16kMonoFloats(Media::emptyFile()).empty());
}

TEST_F(Fallback, ChildFailuresSayItInWordsAndKeepTheirTrimmedOutputAsDetails)
{
    const QString damaged = prefix + QStringLiteral("Die Datei ist beschädigt oder enthält keine lesbare Tonspur.");
    useFfmpeg(QStringLiteral("quiet-failure"), QStringLiteral("exit 1"));
    EXPECT_EQ(convertError([] { Decoder::decodeTo16kMonoFloats(Media::emptyFile()); }), damaged);
    EXPECT_EQ(convertDetails([] { Decoder::decodeTo16kMonoFloats(Media::emptyFile()); }), QString());

    useFfmpeg(QStringLiteral("talking-failure"), QStringLiteral("printf '\\n  kaputt: Ende der Datei \\n\\n' >&2; exit 3"));
    EXPECT_EQ(convertError([] { Decoder::decodeTo16kMonoFloats(Media::emptyFile()); }), damaged);
    EXPECT_EQ(convertDetails([] { Decoder::decodeTo16kMonoFloats(Media::emptyFile()); }),
              QStringLiteral("kaputt: Ende der Datei"));

    useFfmpeg(QStringLiteral("latin1-failure"), QStringLiteral("printf 'Gr\\374\\337e' >&2; exit 7"));
    EXPECT_EQ(convertDetails([] { Decoder::extractWav(Media::emptyFile()); }), QStringLiteral("Exit 7"));

    // A child that outlasts one wait, and one that writes more than a pipe holds: all of
    // its output is kept, and neither side blocks.
    useFfmpeg(QStringLiteral("slow-chatty-failure"),
              QStringLiteral("sleep 1.5; head -c 300000 /dev/zero | tr '\\0' x >&2; echo ' Ende' >&2; exit 2"));
    EXPECT_EQ(convertDetails([] { Decoder::decodeTo16kMonoFloats(Media::emptyFile()); }),
              QString(300000, u'x') + QStringLiteral(" Ende"));
}

TEST_F(Fallback, CancelStopsTheChildBeforeOrWhileItRuns)
{
    useFfmpeg(QStringLiteral("slow-ffmpeg"), QStringLiteral(": > \"${14}\"; exec sleep 30"));

    // Cancelled before the child starts: it is terminated right after launch.
    auto early = std::make_shared<CancelToken>();
    early->cancel();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(convertError([&] { Decoder::runProcess(*Decoder::ffmpegPath(), {"-i", "x"}, early,
                                                     [](const QString &m) { return EngineError::convertFailed(m); }); }),
              QStringLiteral("Abgebrochen."));

    // Cancelled while it runs, from another thread, twice: same outcome, temp file gone.
    auto control = std::make_shared<CancelToken>();
    std::thread canceller([control] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        control->cancel();
        control->cancel();
    });
    EXPECT_EQ(convertError([&] { Decoder::decodeTo16kMonoFloats(Media::emptyFile(), control); }),
              QStringLiteral("Abgebrochen."));
    canceller.join();
    EXPECT_LT(clock.elapsed(), 10000);

    // A cancel seen by the in-process decoder never falls back to the child.
    const QString marker = QDir::tempPath() + QStringLiteral("/../fallback-ran");
    useFfmpeg(QStringLiteral("marking-ffmpeg"), QStringLiteral(": > '%1'").arg(marker));
    auto cancelled = std::make_shared<CancelToken>();
    cancelled->cancel();
    EXPECT_THROW(Decoder::decodeTo16kMonoFloats(Media::tone(QStringLiteral("mp3")), cancelled), EngineError);
    EXPECT_THROW(Decoder::extractWav(Media::tone(QStringLiteral("mp3")), cancelled), EngineError);
    EXPECT_FALSE(QFile::exists(marker));
}
