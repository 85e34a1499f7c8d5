// Finding in the text on show: blind to case and accents, whole characters only, with
// ranges in the shown text's own units.
#include "review/TextFind.h"

#include <gtest/gtest.h>

using Range = Corrections::Range;

TEST(TextFind, FoldsCaseAndAccentsAndKeepsTheSourceRanges)
{
    // Precomposed, decomposed and upper-case forms all match; the ranges are the text's.
    const QString text = QStringLiteral("Frau Müller, MÜLLER und Mu\u0308ller; Straße.\r\nEnde");
    const TextFind find(text);
    const QList<Range> hits = find.find(QStringLiteral("muller"));
    ASSERT_EQ(hits.size(), 3);
    EXPECT_EQ(text.mid(hits[0].start, hits[0].end - hits[0].start), QStringLiteral("Müller"));
    EXPECT_EQ(text.mid(hits[1].start, hits[1].end - hits[1].start), QStringLiteral("MÜLLER"));
    EXPECT_EQ(text.mid(hits[2].start, hits[2].end - hits[2].start), QStringLiteral("Mu\u0308ller"));
    EXPECT_EQ(find.find(QStringLiteral("MÜLLER")), hits) << "the query folds the same way";
    // As in the corrections, a sharp s is not its upper-case pair of letters.
    EXPECT_TRUE(find.find(QStringLiteral("strasse")).isEmpty());
    EXPECT_EQ(find.find(QStringLiteral("straße")).size(), 1);
    // A line break of two units is one character: a match may end right after it.
    const QList<Range> across = find.find(QStringLiteral(".\r\nende"));
    ASSERT_EQ(across.size(), 1);
    EXPECT_EQ(across[0].end, text.size());

    EXPECT_TRUE(find.find(QString()).isEmpty());
    EXPECT_TRUE(find.find(QStringLiteral("  ")).isEmpty());
    EXPECT_TRUE(find.find(QStringLiteral("Meier")).isEmpty());
}

TEST(TextFind, MatchesCoverWholeCharactersAndDoNotOverlap)
{
    EXPECT_EQ(TextFind(QStringLiteral("aaa")).find(QStringLiteral("aa")), (QList<Range>{{0, 2}}));
    // Half a flag is no match; the whole flag is.
    const QString flags = QStringLiteral("Fahne \U0001F1E9\U0001F1EA und \U0001F1E9");
    const TextFind find(flags);
    EXPECT_EQ(find.find(QStringLiteral("\U0001F1E9")), (QList<Range>{{flags.size() - 2, flags.size()}}));
    EXPECT_EQ(find.find(QStringLiteral("\U0001F1E9\U0001F1EA")), (QList<Range>{{6, 10}}));
    EXPECT_EQ(TextFind(QStringLiteral("Café crème")).find(QStringLiteral("CAFE CREME")), (QList<Range>{{0, 10}}));
}

TEST(TextFind, StepsWrapRound)
{
    EXPECT_EQ(TextFind::step(0, -1, true), -1);
    EXPECT_EQ(TextFind::step(3, -1, true), 0);
    EXPECT_EQ(TextFind::step(3, -1, false), 2);
    EXPECT_EQ(TextFind::step(3, 2, true), 0);
    EXPECT_EQ(TextFind::step(3, 0, false), 2);
    EXPECT_EQ(TextFind::step(3, 7, true), 0) << "a stale index starts afresh";
}
