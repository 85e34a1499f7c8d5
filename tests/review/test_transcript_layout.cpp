// The text of the transcript view and its anchors, headless.
#include "review/TranscriptLayout.h"

#include <gtest/gtest.h>

using namespace TranscriptLayout;

namespace {

TranscriptLine body(std::optional<qint64> timeMs, const QString &text, const QList<TranscriptWord> &words)
{
    return TranscriptLine{timeMs, text, words, false};
}

} // namespace

TEST(TranscriptLayout, TimeColumnAndWordAnchorsInUtf16)
{
    const Built b = build({body(4503000, "Die Mühle, die Mühle.",
                                {{"Die", 4503000, 0}, {"Mühle,", 4503400, 0}, {" die ", 4503900, 0},
                                 {"Mühle.", 4504300, 0}, {"fehlt", 4504800, 0}, {"\n", 4505000, 0}}),
                           body(std::nullopt, "Ohne Zeit.", {{"Zeit.", 4600000, 0}})},
                          true, {});
    EXPECT_EQ(b.text, QStringLiteral("\t75:03\tDie Mühle, die Mühle.\n\t\tOhne Zeit."));
    // Repeated words are found in order; a word not in the text, or blank, is skipped.
    const qsizetype base = 7;
    EXPECT_EQ(b.words, (QList<WordAnchor>{{base + 0, 3, 4503000}, {base + 4, 6, 4503400}, {base + 11, 3, 4503900},
                                          {base + 15, 6, 4504300}, {base + 29, 5, 4600000}}));
    // A line without a time has no line anchor, though its words have theirs.
    EXPECT_EQ(b.anchors.size(), 1 + 5);
    EXPECT_EQ(b.anchors.first(), (Anchor{0, 4503000}));
    ASSERT_EQ(b.runs.size(), 4);
    EXPECT_EQ(b.runs[2].style, Style::Time);
    EXPECT_EQ(b.text.sliced(b.runs[2].start, b.runs[2].length), QStringLiteral("\t\t"));

    const Built emoji = build({body(1000, "Hallo 😀 Welt", {{"Hallo", 1000, 0}, {"😀", 1300, 0}, {"Welt", 1600, 0}})},
                              false, {});
    EXPECT_EQ(emoji.words, (QList<WordAnchor>{{0, 5, 1000}, {6, 2, 1300}, {9, 4, 1600}}));
    // Of two anchors at one place a click takes the word's, behind the line's.
    const Built shifted = build({body(900, "Hallo", {{"Hallo", 1000, 0}})}, false, {});
    EXPECT_EQ(seekFor(shifted.anchors, 0, 0), (Seek{1000, true}));
    EXPECT_TRUE(build({}, true, {}).anchors.isEmpty());
}

TEST(TranscriptLayout, HeadersAndCorrections)
{
    const QList<TranscriptLine> lines{
        TranscriptLine{std::nullopt, "Sprecher 1: Anna", {}, true},
        body(0, "Der Schefer kam.", {{"Der", 0, 0}, {"Schefer", 500, 0}, {"kam.", 900, 0}}),
        TranscriptLine{5000, "Sprecher 2: Schefer", {}, true},
        body(5000, "Ja.", {{"Ja.", 5000, 0}}),
    };
    const Built b = build(lines, true, {Correction{{}, "Schefer", "Schäfer"}, Correction{{}, "Ja", ""}});
    EXPECT_EQ(b.text, QStringLiteral("Sprecher 1: Anna\n\t0:00\tDer Schäfer kam.\nSprecher 2: Schefer\n\t0:05\t."));
    // A header first in the text takes the body paragraph.
    EXPECT_EQ(b.headerParagraphs, (QList<bool>{false, false, true, false}));
    EXPECT_EQ(b.runs[0].style, Style::Header);

    // The replaced word is marked and has no anchor; the word after it keeps its place.
    const qsizetype line2 = 17, base2 = line2 + 6;
    EXPECT_EQ(b.replaced, (QList<Corrections::Range>{{base2 + 4, base2 + 11}, {b.text.size() - 1, b.text.size() - 1}}));
    EXPECT_EQ(b.words, (QList<WordAnchor>{{base2, 3, 0}, {base2 + 12, 4, 900}}));
    EXPECT_EQ(b.anchors.first(), (Anchor{line2, 0}));
    EXPECT_TRUE(b.anchors.contains(Anchor{b.text.indexOf(QStringLiteral("Sprecher 2")), 5000}));
    EXPECT_EQ(seekFor(b.anchors, base2 + 6, 0), (Seek{0, true})) << "the replaced word seeks to the anchor before it";
    EXPECT_EQ(seekFor(b.anchors, 3, 0), std::nullopt) << "before the first anchor nothing seeks";
}

TEST(TranscriptLayout, WordCursorChoiceAndSeekRule)
{
    const QList<WordAnchor> words{{0, 3, 1000}, {4, 3, 2000}, {8, 3, 1500}, {12, 3, 4000}};
    const QList<WordAnchor> early{{0, 3, 0}, {4, 3, 5}}, none;
    struct Case {
        const QList<WordAnchor> &words;
        qint64 ms;
        bool playing;
        std::optional<qsizetype> lit;
    };
    const Case cases[] = {
        {words, 0, false, std::nullopt}, // stopped at the very start
        {words, 999, true, std::nullopt}, // before the first word
        {words, 1000, true, 0},
        {words, 1999, false, 0}, // lit until the next word starts
        {words, 1700, true, 0},  // the walk stops at the first later word
        {words, 2500, true, 2},
        {words, 9000, false, 3},
        {early, 10, false, std::nullopt}, // 10 ms while stopped counts as the start
        {early, 11, false, 1},
        {early, 0, true, 0},
        {none, 5000, true, std::nullopt},
    };
    for (const Case &c : cases)
        EXPECT_EQ(wordAt(c.words, c.ms, c.playing), c.lit) << c.ms << (c.playing ? " playing" : " stopped");

    const QList<Anchor> anchors{{0, 1000}, {7, 1000}, {7, 1200}, {13, 1800}};
    EXPECT_EQ(seekFor(anchors, 3, 0), (Seek{1000, true}));
    EXPECT_EQ(seekFor(anchors, 7, 0), (Seek{1200, true}));
    EXPECT_EQ(seekFor(anchors, 12, 4), (Seek{1200, false})) << "a selection seeks from its start";
    EXPECT_EQ(seekFor(anchors, 400, 0), (Seek{1800, true}));
}
