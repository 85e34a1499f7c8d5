// The speaker text from segments and spans, its way back to the timings, and the
// diarisation program's output lines.
#include "speakers/Diarizer.h"
#include "review/SpeakerTurn.h"

#include <gtest/gtest.h>

namespace {

TranscriptSegment segment(qint64 startMs, qint64 endMs, const QString &text, QList<TranscriptWord> words = {})
{
    return {.startMs = startMs, .endMs = endMs, .text = text, .words = std::move(words)};
}

// A segment whose words sit at the given midpoints (seconds), 200 ms each.
TranscriptSegment voiced(const QString &text, const QList<double> &midpoints)
{
    QList<TranscriptWord> words;
    const QStringList pieces = text.split(u' ', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < midpoints.size(); ++i) {
        const qint64 mid = qRound64(midpoints[i] * 1000);
        words.append({pieces.value(i), mid - 100, mid + 100});
    }
    return segment(words.first().startMs, words.last().endMs, text, words);
}

} // namespace

TEST(SpeakerLabels, PlainTextWhenThereIsNothingToSeparate)
{
    using Diarizer::speakerLabeledText;
    EXPECT_EQ(speakerLabeledText({}, {}), QString());
    const QList<TranscriptSegment> two{segment(0, 1000, QStringLiteral("Guten Tag.")),
                                       segment(1000, 2000, QStringLiteral(" Hallo."))};
    // Joined with one blank and never trimmed.
    EXPECT_EQ(speakerLabeledText(two, {}), QStringLiteral("Guten Tag.  Hallo."));
    EXPECT_EQ(speakerLabeledText({}, {{0, 5, 1}}), QString());
    // Speaker 7 never wins a word: one speaker, no label at all.
    EXPECT_EQ(speakerLabeledText(two, {{0, 5, 3}, {50, 60, 7}}), QStringLiteral("Guten Tag.  Hallo."));
}

TEST(SpeakerLabels, NumbersByFirstAppearanceAndMergesOnlyNeighbours)
{
    const QList<TranscriptSegment> segments{
        voiced(QStringLiteral("Eins zwei"), {0.5, 0.9}), voiced(QStringLiteral("drei"), {1.5}),
        voiced(QStringLiteral("vier fünf"), {3.2, 3.4}), voiced(QStringLiteral("sechs"), {5.5})};
    const QList<SpeakerSpan> spans{{0, 2, 2}, {3, 4, 0}, {5, 6, 2}};
    EXPECT_EQ(Diarizer::speakerLabeledText(segments, spans),
              QStringLiteral("Sprecher 1: Eins zwei drei\nSprecher 2: vier fünf\nSprecher 1: sechs"));
}

TEST(SpeakerLabels, VotesContainmentNearnessAndTies)
{
    const QList<SpeakerSpan> spans{{0, 1, 4}, {1, 2, 1}, {3, 4, 9}};
    // A wordless segment that lies half in each of two spans, by its midpoint on their
    // shared edge: the first in the list.
    EXPECT_EQ(Diarizer::speakerLabeledText({segment(500, 1500, QStringLiteral("a")), voiced(QStringLiteral("b"), {1.5})},
                                           spans),
              QStringLiteral("Sprecher 1: a\nSprecher 2: b"));
    // Two one-word segments at these midpoints (seconds) go to two speakers: on the
    // shared edge of two spans the first in the list; in the gap 2..3 the nearer edge,
    // at its exact centre the earlier span; far beyond every span the nearest.
    for (const auto &[a, b] : {std::pair{1.0, 1.5}, {2.4, 2.6}, {2.5, 3.5}, {0.5, 900.0}}) {
        EXPECT_EQ(Diarizer::speakerLabeledText({voiced(QStringLiteral("a"), {a}), voiced(QStringLiteral("b"), {b})}, spans),
                  QStringLiteral("Sprecher 1: a\nSprecher 2: b"))
            << a << " " << b;
    }
    // A wordless segment goes by its midpoint.
    EXPECT_EQ(Diarizer::speakerLabeledText(
                  {segment(0, 1000, QStringLiteral("ohne")), segment(3000, 4000, QStringLiteral("Wörter"))}, spans),
              QStringLiteral("Sprecher 1: ohne\nSprecher 2: Wörter"));
}

TEST(SpeakerLabels, ASegmentHoldingTwoSpeakersIsCutAtTheChange)
{
    // The answer came inside the question's segment; each word goes to its own speaker,
    // in the text and, through the turns, in the speaker view.
    const QList<TranscriptSegment> segments{
        segment(0, 4000, QStringLiteral(" Wie geht es? Gut, danke."),
                {{"Wie", 0, 400}, {"geht", 400, 900}, {"es?", 900, 1500}, {"Gut,", 2100, 2600}, {"danke.", 2600, 3900}}),
        voiced(QStringLiteral("Und dir?"), {4.2, 4.6})};
    const QList<SpeakerSpan> spans{{0, 2, 5}, {2, 4, 8}, {4, 5, 5}};
    const QList<TranscriptSegment> cut = Diarizer::splitAtSpeakerChanges(segments, spans);
    ASSERT_EQ(cut.size(), 3);
    EXPECT_EQ(cut[0].text, QStringLiteral("Wie geht es?"));
    EXPECT_EQ(std::pair(cut[0].startMs, cut[0].endMs), std::pair(qint64(0), qint64(1500)));
    EXPECT_EQ(std::pair(cut[1].startMs, cut[1].endMs), std::pair(qint64(2100), qint64(4000)));
    EXPECT_EQ(cut[2].id, segments[1].id) << "a segment of one speaker stays as it is";

    const QString text = Diarizer::speakerLabeledText(segments, spans);
    EXPECT_EQ(text, QStringLiteral("Sprecher 1: Wie geht es?\nSprecher 2: Gut, danke.\nSprecher 1: Und dir?"));

    // The same turns from the labels as they come and from names an AI put on them.
    for (const QString &named : {text, QStringLiteral("Anna: Wie geht es?\nBen: gut danke\nAnna: Und dir?")}) {
        const QList<SpeakerTurn> turns = SpeakerTurn::build(named, segments);
        ASSERT_EQ(turns.size(), 3) << named.toStdString();
        EXPECT_EQ(turns[0].ms, 0);
        EXPECT_EQ(turns[0].words.size(), 3);
        EXPECT_EQ(turns[1].ms, 2100);
        ASSERT_EQ(turns[1].words.size(), 2);
        EXPECT_EQ(turns[1].words[0].text, QStringLiteral("Gut,"));
        EXPECT_EQ(turns[1].segments.first().text, QStringLiteral("Gut, danke."));
        EXPECT_EQ(turns[2].ms, 4100);
    }
}

TEST(SpeakerLabels, TrimsLinesButKeepsInnerBlanks)
{
    const QList<SpeakerSpan> spans{{0, 1, 0}, {2, 3, 1}};
    const QList<TranscriptSegment> segments{segment(0, 400, QStringLiteral(" Ja,")),
                                            segment(400, 800, QStringLiteral(" genau. ")),
                                            segment(2000, 3000, QStringLiteral(" \t "))};
    EXPECT_EQ(Diarizer::speakerLabeledText(segments, spans),
              QStringLiteral("Sprecher 1: Ja,  genau.\nSprecher 2: "));
}

TEST(SpeakerTurns, SplitLabelLimits)
{
    using L = std::pair<std::optional<QString>, QString>;
    EXPECT_EQ(SpeakerTurn::splitLabel(QStringLiteral("Sprecher 1: Hallo du")),
              L(QStringLiteral("Sprecher 1"), QStringLiteral("Hallo du")));
    EXPECT_EQ(SpeakerTurn::splitLabel(QStringLiteral("Kein Etikett")), L(std::nullopt, QStringLiteral("Kein Etikett")));
    EXPECT_EQ(SpeakerTurn::splitLabel(QStringLiteral(": leer")), L(QString(), QStringLiteral("leer")));
    const QString forty = QString(39, u'a') + QStringLiteral("ä");
    EXPECT_EQ(SpeakerTurn::splitLabel(forty + QStringLiteral(":x")).first, forty);
    EXPECT_EQ(SpeakerTurn::splitLabel(forty + QStringLiteral("b:x")).first, std::nullopt);
    // Characters, not code units: 40 flags are 160 code units, still a label.
    QString flags;
    for (int i = 0; i < 40; ++i)
        flags += QStringLiteral("🇩🇪");
    EXPECT_EQ(SpeakerTurn::splitLabel(flags + u':').first, flags);
    EXPECT_EQ(SpeakerTurn::splitLabel(QStringLiteral("Dr. Anna Maria Berg, Ärztin: ja")).first,
              QStringLiteral("Dr. Anna Maria Berg, Ärztin"));
    EXPECT_EQ(SpeakerTurn::splitLabel(QStringLiteral("und dann sagte sie ganz leise: ja")).first, std::nullopt);
}

TEST(SpeakerTurns, AnchorsByFirstWordsForwardOnly)
{
    const QList<TranscriptSegment> segments{
        segment(0, 1000, QStringLiteral("Vorweg etwas."), {{"Vorweg", 0, 500}, {"etwas.", 500, 1000}}),
        segment(1000, 2000, QStringLiteral("Guten Tag, Frau Berg."), {{"Guten", 1000, 1500}}),
        segment(2000, 3000, QStringLiteral("Wie geht es?"), {{"Wie", 2000, 2500}}),
        segment(3000, 4000, QStringLiteral("Danke, gut."), {{"Danke,", 3000, 3500}}),
        segment(4000, 5000, QStringLiteral("Und Ihnen?"), {{"Und", 4000, 4500}}),
        segment(5000, 6000, QStringLiteral("Auch."), {{"Auch.", 5000, 6000}})};
    const QString text = QStringLiteral("Moderatorin: GUTEN tag frau Berg! Wie geht es?\n"
                                        "\n"
                                        "Gast: Völlig umgeschrieben von der KI\n"
                                        "Gast: danke gut, und Ihnen?\n"
                                        "Sprecher 2:\n"
                                        "Auch.");
    const QList<SpeakerTurn> turns = SpeakerTurn::build(text, segments);
    ASSERT_EQ(turns.size(), 5);
    // Case and punctuation do not matter; the turn runs to the next anchor.
    EXPECT_EQ(turns[0].id, 0);
    EXPECT_EQ(turns[0].label, QStringLiteral("Moderatorin"));
    EXPECT_EQ(turns[0].ms, 1000);
    EXPECT_EQ(turns[0].segments.size(), 2);
    EXPECT_EQ(turns[0].words.size(), 2);
    // A changed line finds nothing; the empty line is skipped but counted.
    EXPECT_EQ(turns[1].id, 2);
    EXPECT_EQ(turns[1].ms, std::nullopt);
    EXPECT_TRUE(turns[1].segments.isEmpty());
    EXPECT_TRUE(turns[1].words.isEmpty());
    // The next line still anchors and takes what the unanchored line would have had.
    EXPECT_EQ(turns[2].ms, 3000);
    EXPECT_EQ(turns[2].segments.size(), 2);
    EXPECT_EQ(turns[2].text, QStringLiteral("Gast: danke gut, und Ihnen?"));
    // A label alone has no words and so no anchor.
    EXPECT_EQ(turns[3].label, QStringLiteral("Sprecher 2"));
    EXPECT_EQ(turns[3].ms, std::nullopt);
    EXPECT_EQ(turns[4].label, std::nullopt);
    EXPECT_EQ(turns[4].ms, 5000);
    EXPECT_EQ(turns[4].segments.size(), 1);

    EXPECT_TRUE(SpeakerTurn::build(QString(), segments).isEmpty());
    const QList<SpeakerTurn> untimed = SpeakerTurn::build(QStringLiteral("A: eins\nB: zwei"), {});
    ASSERT_EQ(untimed.size(), 2);
    EXPECT_EQ(untimed[1].ms, std::nullopt);
}

TEST(SpeakerTurns, ShortWordListsMatchOnFewerWordsAndMayJumpAhead)
{
    const QList<TranscriptSegment> segments{segment(0, 1, QStringLiteral("Ja.")),
                                            segment(1, 2, QStringLiteral("Nein, sicher nicht.")),
                                            segment(2, 3, QStringLiteral("Also gut.")),
                                            segment(3, 4, QStringLiteral("Also dann."))};
    // "Ja" is one word, so k is 1 and any line opening with "ja" matches it.
    // A one-word line jumps to the first later segment that opens with its word.
    const QList<SpeakerTurn> turns =
        SpeakerTurn::build(QStringLiteral("A: Ja, das meine ich\nB: also"), segments);
    ASSERT_EQ(turns.size(), 2);
    EXPECT_EQ(turns[0].ms, 0);
    EXPECT_EQ(turns[0].segments.size(), 2) << "what lies between falls to the previous turn";
    EXPECT_EQ(turns[1].ms, 2);
    EXPECT_EQ(turns[1].segments.size(), 2) << "the last anchor takes the rest";
    // An apostrophe separates words on both sides.
    EXPECT_EQ(SpeakerTurn::build(QStringLiteral("geht's los"), {segment(7, 8, QStringLiteral("Geht es los"))})[0].ms,
              std::nullopt);
    EXPECT_EQ(SpeakerTurn::build(QStringLiteral("geht's los"), {segment(7, 8, QStringLiteral("geht s los"))})[0].ms, 7);
}

TEST(DiarizerOutput, ResultLinesSortedAndBadOnesSkipped)
{
    const QByteArray output = "1.0 -- 2.5 speaker_01\n"
                              "\n"
                              "0.5 -- 0.9 speaker_1 extra pieces\n"
                              "0.5   --\t0.7 speaker_00\n"
                              "0.2 -- 0.3 speaker_\n"
                              "0.2 0.3 speaker_2\n"
                              "x -- 0.3 speaker_2\n"
                              "0.1 -- 0.2 Speaker_2\n"
                              "0.1 -- 0.2 speaker_-3\r\n"
                              "3.0 -- 1.0 speaker_4";
    const QList<SpeakerSpan> spans = Diarizer::parseResult(output);
    EXPECT_EQ(spans, (QList<SpeakerSpan>{{0.1, 0.2, -3}, {0.5, 0.9, 1}, {0.5, 0.7, 0}, {1.0, 2.5, 1}, {3.0, 1.0, 4}}));
    EXPECT_TRUE(Diarizer::parseResult("0.5 -- 1.0 speaker_\xff\n1.0 -- 2.0 speaker_1\n").isEmpty())
        << "invalid UTF-8 anywhere gives nothing";
}

TEST(DiarizerOutput, ProgressLines)
{
    EXPECT_EQ(Diarizer::parseProgress("progress 45.5%\n"), QList<double>{0.455});
    EXPECT_EQ(Diarizer::parseProgress("segmenting: progress  12 % done\nprogress 150%\rprogress -3%\n"),
              (QList<double>{0.12, 1.0, 0.0}));
    EXPECT_TRUE(Diarizer::parseProgress("progress abc%\nprogress %\nProgress 5%\nprogress\n").isEmpty());
    EXPECT_EQ(Diarizer::parseProgress("progress 7"), QList<double>{0.07}) << "the per cent sign is optional";
    EXPECT_TRUE(Diarizer::parseProgress("progress 5\xff%").isEmpty());
}

TEST(DiarizerOutput, ArgumentsAndThreads)
{
    const QStringList threshold = Diarizer::arguments("/a.wav", "/s.onnx", "/e.onnx", 0.9, 0, 4);
    EXPECT_EQ(threshold, (QStringList{"--clustering.cluster-threshold=0.9", "--segmentation.pyannote-model=/s.onnx",
                                      "--embedding.model=/e.onnx", "--embedding.provider=cpu",
                                      "--segmentation.provider=cpu", "--embedding.num-threads=4",
                                      "--segmentation.num-threads=4", "--min-duration-on=0.3",
                                      "--min-duration-off=0.5", "/a.wav"}));
    EXPECT_EQ(Diarizer::arguments("w", "s", "e", 0.5, -1, 2).first(), "--clustering.cluster-threshold=0.5");
    const QStringList clusters = Diarizer::arguments("w", "s", "e", 0.9, 3, 2);
    EXPECT_EQ(clusters.first(), "--clustering.num-clusters=3");
    EXPECT_EQ(clusters.filter("threshold").size(), 0);

    EXPECT_EQ(Diarizer::performanceCoreCount(1, 16), 2);
    EXPECT_EQ(Diarizer::performanceCoreCount(12, 16), 8);
    EXPECT_EQ(Diarizer::performanceCoreCount(6, 16), 6);
    EXPECT_EQ(Diarizer::performanceCoreCount(0, 4), 4);
    EXPECT_EQ(Diarizer::performanceCoreCount(std::nullopt, 1), 2);
}
