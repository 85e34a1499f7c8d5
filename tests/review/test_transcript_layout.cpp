// The text of the transcript view and its anchors, headless: time column, headers,
// corrections, word location in UTF-16 units, the word cursor's choice and the seek rule.
#include "review/TranscriptLayout.h"

#include <gtest/gtest.h>

using namespace TranscriptLayout;

namespace {

TranscriptLine body(std::optional<qint64> timeMs, const QString &text, const QList<TranscriptWord> &words)
{
    return TranscriptLine{timeMs, text, words, false};
}

TranscriptLine header(std::optional<qint64> timeMs, const QString &text)
{
    return TranscriptLine{timeMs, text, {}, true};
}

Correction rule(const QString &from, const QString &to)
{
    Correction c;
    c.from = from;
    c.to = to;
    return c;
}

} // namespace

TEST(TranscriptLayout, TimeColumnLineAndWordAnchors)
{
    const QList<TranscriptLine> lines{
        body(4503000, "Die Mühle, die Mühle.", {{"Die", 4503000, 0}, {"Mühle,", 4503400, 0}, {" die ", 4503900, 0},
                                                {"Mühle.", 4504300, 0}, {"fehlt", 4504800, 0}, {"\n", 4505000, 0}}),
        body(std::nullopt, "Ohne Zeit.", {{"Zeit.", 4600000, 0}}),
    };
    const Built b = build(lines, true, {});
    EXPECT_EQ(b.text, QStringLiteral("\t75:03\tDie Mühle, die Mühle.\n\t\tOhne Zeit."));
    EXPECT_EQ(b.headerParagraphs, (QList<bool>{false, false}));

    // Repeated words are found in their order; a word not in the text is skipped, as are
    // blank ones, and cost the rest nothing.
    const qsizetype base = 7; // "\t75:03\t"
    EXPECT_EQ(b.words, (QList<WordAnchor>{{base + 0, 3, 4503000}, {base + 4, 6, 4503400}, {base + 11, 3, 4503900},
                                          {base + 15, 6, 4504300}, {base + 29, 5, 4600000}}));
    // The line anchor sits at the line's start, the time column included; a line without
    // a time has none, though its words have theirs.
    ASSERT_FALSE(b.anchors.isEmpty());
    EXPECT_EQ(b.anchors.first(), (Anchor{0, 4503000}));
    EXPECT_EQ(b.anchors.size(), 1 + 5);
    EXPECT_TRUE(std::is_sorted(b.anchors.begin(), b.anchors.end(),
                               [](const Anchor &x, const Anchor &y) { return x.loc < y.loc; }));
    // Runs: time, body, then the second line's two tabs and its body.
    ASSERT_EQ(b.runs.size(), 4);
    EXPECT_EQ(b.runs[0].style, Style::Time);
    EXPECT_EQ(b.runs[2].style, Style::Time);
    EXPECT_EQ(b.text.sliced(b.runs[2].start, b.runs[2].length), QStringLiteral("\t\t"));
}

TEST(TranscriptLayout, WithoutTimeColumnTheLineAnchorComesBeforeTheFirstWord)
{
    const Built b = build({body(1000, "Hallo 😀 Welt", {{"Hallo", 1000, 0}, {"😀", 1300, 0}, {"Welt", 1600, 0}})}, false, {});
    EXPECT_EQ(b.text, QStringLiteral("Hallo 😀 Welt"));
    // Positions count UTF-16 units: the emoji takes two.
    EXPECT_EQ(b.words, (QList<WordAnchor>{{0, 5, 1000}, {6, 2, 1300}, {9, 4, 1600}}));
    ASSERT_GE(b.anchors.size(), 2);
    EXPECT_EQ(b.anchors[0], (Anchor{0, 1000}));
    EXPECT_EQ(b.anchors[1], (Anchor{0, 1000}));
    // Of two anchors at one place the word's, behind the line's, is the one a click takes.
    const Built shifted = build({body(900, "Hallo", {{"Hallo", 1000, 0}})}, false, {});
    EXPECT_EQ(seekFor(shifted.anchors, 0, 0), (Seek{1000, true}));
}

TEST(TranscriptLayout, HeadersAndCorrections)
{
    const QList<TranscriptLine> lines{
        header(std::nullopt, "Sprecher 1: Anna"),
        body(0, "Der Schefer kam.", {{"Der", 0, 0}, {"Schefer", 500, 0}, {"kam.", 900, 0}}),
        header(5000, "Sprecher 2: Schefer"),
        body(5000, "Ja.", {{"Ja.", 5000, 0}}),
    };
    const Built b = build(lines, true, {rule("Schefer", "Schäfer"), rule("Ja", "")});
    EXPECT_EQ(b.text, QStringLiteral("Sprecher 1: Anna\n\t0:00\tDer Schäfer kam.\nSprecher 2: Schefer\n\t0:05\t."));
    // A header first in the text takes the body paragraph; later ones their own spacing.
    EXPECT_EQ(b.headerParagraphs, (QList<bool>{false, false, true, false}));
    EXPECT_EQ(b.runs[0].style, Style::Header);

    // The replaced word is marked and has no anchor; the word after it keeps its place.
    const qsizetype line2 = 17, base2 = line2 + 6;
    EXPECT_EQ(b.replaced, (QList<Corrections::Range>{{base2 + 4, base2 + 11}, {b.text.size() - 1, b.text.size() - 1}}));
    EXPECT_EQ(b.words, (QList<WordAnchor>{{base2, 3, 0}, {base2 + 12, 4, 900}}));
    // A header with a time is an anchor, one without is not; the first anchor is line 2's.
    EXPECT_EQ(b.anchors.first(), (Anchor{line2, 0}));
    const qsizetype header2 = b.text.indexOf(QStringLiteral("Sprecher 2"));
    EXPECT_TRUE(b.anchors.contains(Anchor{header2, 5000}));
    // A click on the replaced word seeks to the last anchor before it.
    EXPECT_EQ(seekFor(b.anchors, base2 + 6, 0), (Seek{0, true}));
    EXPECT_EQ(seekFor(b.anchors, 3, 0), std::nullopt) << "before the first anchor nothing seeks";
}

TEST(TranscriptLayout, EmptyLinesGiveNothingToSeek)
{
    const Built b = build({}, true, {});
    EXPECT_TRUE(b.text.isEmpty());
    EXPECT_TRUE(b.anchors.isEmpty());
    EXPECT_EQ(seekFor(b.anchors, 0, 0), std::nullopt);
    EXPECT_EQ(wordAt(b.words, 5000, true), std::nullopt);
}

TEST(TranscriptLayout, WordCursorChoice)
{
    const QList<WordAnchor> words{{0, 3, 1000}, {4, 3, 2000}, {8, 3, 1500}, {12, 3, 4000}};
    // Stopped at the very start: no cursor; playing or past 10 ms: the cursor shows.
    EXPECT_EQ(wordAt(words, 0, false), std::nullopt);
    EXPECT_EQ(wordAt(words, 999, true), std::nullopt) << "before the first word nothing is lit";
    EXPECT_EQ(wordAt(words, 1000, true), 0);
    EXPECT_EQ(wordAt(words, 1999, false), 0) << "a word stays lit until the next one starts";
    // The walk stops at the first later word, even if a word behind it is earlier.
    EXPECT_EQ(wordAt(words, 1700, true), 0);
    EXPECT_EQ(wordAt(words, 2500, true), 2);
    EXPECT_EQ(wordAt(words, 9000, false), 3);
    const QList<WordAnchor> early{{0, 3, 0}, {4, 3, 5}};
    EXPECT_EQ(wordAt(early, 10, false), std::nullopt) << "10 ms while stopped counts as the start";
    EXPECT_EQ(wordAt(early, 11, false), 1);
    EXPECT_EQ(wordAt(early, 0, true), 0);
}

TEST(TranscriptLayout, SeekRule)
{
    const QList<Anchor> anchors{{0, 1000}, {7, 1000}, {7, 1200}, {13, 1800}};
    EXPECT_EQ(seekFor(anchors, 3, 0), (Seek{1000, true}));
    EXPECT_EQ(seekFor(anchors, 7, 0), (Seek{1200, true}));
    EXPECT_EQ(seekFor(anchors, 12, 4), (Seek{1200, false})) << "a selection seeks from its start";
    EXPECT_EQ(seekFor(anchors, 400, 0), (Seek{1800, true}));
}
