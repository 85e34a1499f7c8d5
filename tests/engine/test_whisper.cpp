// Recognition runs through the real libwhisper on a generated model.
#include "Media.h"

#include "engine/Decoder.h"
#include "engine/WhisperEngine.h"

#include <QDir>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

using WhisperEngine::TokenTuple;

namespace {

std::vector<float> toneSamples()
{
    static const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(Media::tone(QStringLiteral("wav")));
    return samples;
}

struct ProgressLog {
    std::mutex lock;
    std::vector<double> values;
    void operator()(double v)
    {
        std::lock_guard guard(lock);
        values.push_back(v);
    }
};

// The description of what `f` throws.
QString failure(const std::function<void()> &f)
{
    try {
        f();
    } catch (const EngineError &e) {
        return e.isCancelled() ? QStringLiteral("<cancelled>") : e.errorDescription();
    }
    return QStringLiteral("<ran to the end>");
}

} // namespace

TEST(Whisper, RunGivesConsistentSegmentsWordsAndProgress)
{
    ProgressLog log;
    const TranscriptionResult result = WhisperEngine::transcribe(
        toneSamples(), Media::tinyModel(), QString(), std::make_shared<CancelToken>(), std::ref(log));

    // An empty language is asked as "auto", and a detected code comes back.
    EXPECT_FALSE(result.language.isEmpty());
    EXPECT_NE(result.language, QStringLiteral("auto"));
    EXPECT_GT(result.processingSeconds, 0.0);

    QStringList texts;
    for (const TranscriptSegment &s : result.segments) {
        texts << s.text;
        EXPECT_EQ(s.text, s.text.trimmed());
        EXPECT_LE(s.startMs, s.endMs);
        EXPECT_EQ(s.startMs % 10, 0);
        EXPECT_LE(s.endMs, 30000 + 10);
        for (const TranscriptWord &w : s.words) {
            EXPECT_FALSE(w.text.isEmpty());
            EXPECT_EQ(w.text, w.text.trimmed());
            EXPECT_FALSE(w.text.startsWith(QStringLiteral("[_")));
        }
    }
    EXPECT_EQ(result.fullText, texts.join(u' '));

    ASSERT_FALSE(log.values.empty());
    EXPECT_EQ(log.values.back(), 1.0);
    for (size_t i = 0; i < log.values.size(); ++i) {
        EXPECT_GE(log.values[i], 0.0);
        EXPECT_LE(log.values[i], 1.0);
    }

    // A fixed code goes through unchanged and comes back as the run's language.
    const TranscriptionResult german
        = WhisperEngine::transcribe(toneSamples(), Media::tinyModel(), QStringLiteral("de"), nullptr, {});
    EXPECT_EQ(german.language, QStringLiteral("de"));
}

TEST(Whisper, ModelFailuresHaveTheirOwnTextsAndCancelStopsEachMomentOfTheRoad)
{
    const QString model = Media::tinyModel();
    const QString audio = Media::tone(QStringLiteral("mp3"));
    const QString broken = QDir::tempPath() + QStringLiteral("/../broken-model.bin");
    Media::writeFile(broken, "ggml but not really a model");
    EXPECT_EQ(failure([&] { WhisperEngine::transcribe(toneSamples(), broken, QString(), nullptr, {}); }),
              QStringLiteral("Transkription fehlgeschlagen: Modell konnte nicht geladen werden"));
    QFile::remove(broken);

    // Before anything: even a file that cannot be decoded is never looked at; but a
    // missing model is reported first.
    auto before = std::make_shared<CancelToken>();
    before->cancel();
    EXPECT_EQ(failure([&] { WhisperEngine::transcribeFile(Media::textFileNamedMp3(), model, QString(), before); }), "<cancelled>");
    EXPECT_EQ(failure([&] { WhisperEngine::transcribeFile(audio, QStringLiteral("/nonexistent.bin"), QString(), before); }),
              QStringLiteral("Kein Modell ausgewählt/installiert."));

    // While the model loads: the run never starts, so progress is never reported.
    std::atomic<int> calls = 0;
    EXPECT_EQ(failure([&] { WhisperEngine::transcribe(toneSamples(), model, QString(), before, [&](double) { ++calls; }); }),
              "<cancelled>");
    EXPECT_EQ(calls.load(), 0);

    // During whisper_full: the abort callback stops it and nothing of it comes out.
    auto during = std::make_shared<CancelToken>();
    std::vector<double> seen;
    EXPECT_EQ(failure([&] {
                  WhisperEngine::transcribeFile(audio, model, QString(), during, [&](double v) {
                      seen.push_back(v);
                      during->cancel();
                  });
              }),
              "<cancelled>");
    EXPECT_FALSE(seen.empty());
    EXPECT_NE(seen.back(), 1.0);

    // No control (the live interview): the run cannot be stopped and completes.
    EXPECT_NO_THROW(WhisperEngine::transcribe(toneSamples(), model, QStringLiteral("en"), nullptr, {}));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

TEST(Whisper, WordsStartAtALeadingBlankAndSpanTheirTokens)
{
    const QList<TokenTuple> tokens = {
        {QStringLiteral("Gu"), 0, 100},         // first token without a blank opens a word
        {QStringLiteral("ten"), 100, 180},
        {QStringLiteral(" Tag"), 200, 300},
        {QStringLiteral(","), 300, 250},        // ends early: the word's end stays 300
        {QStringLiteral("  "), 400, 410},       // blanks only: no word of its own
        {QStringLiteral("Welt"), 420, 500},     // ...but this word starts at the blank token
        {QStringLiteral(" \u2013"), 600, 650},
    };
    const QList<TranscriptWord> words = WhisperEngine::groupWords(tokens);
    const QList<TranscriptWord> expected = {
        {QStringLiteral("Guten"), 0, 180},
        {QStringLiteral("Tag,"), 200, 300},
        {QStringLiteral("Welt"), 400, 500},
        {QStringLiteral("\u2013"), 600, 650},
    };
    EXPECT_EQ(words, expected);
    EXPECT_TRUE(WhisperEngine::groupWords({}).isEmpty());
    EXPECT_TRUE(WhisperEngine::groupWords({{QStringLiteral(" "), 0, 10}}).isEmpty());
}

TEST(Whisper, ThreadCountFollowsPerformanceCoresWithinTwoToEight)
{
    // Ids without a topology folder count one core each; no hybrid CPU: online cores minus two.
    const std::tuple<const char *, int, int> cases[] = {{"9000", 64, 2}, {"9000-9005\n", 64, 6},
        {"9000-9011,9020", 2, 8}, {"", 1, 2}, {"", 6, 4}, {"", 32, 8}, {"garbage", 7, 5}};
    for (const auto &[ids, online, threads] : cases)
        EXPECT_EQ(WhisperEngine::threadCount(QString::fromLatin1(ids), online), threads) << ids << " " << online;
    EXPECT_GE(WhisperEngine::threadCount(), 2);
    EXPECT_LE(WhisperEngine::threadCount(), 8);
}
