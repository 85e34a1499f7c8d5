// Correction rules over German text: order, chaining, boundaries, case.
#include "review/Corrections.h"

#include <gtest/gtest.h>

using Corrections::Range;

namespace {

Correction rule(const QString &from, const QString &to, bool caseSensitive = false, bool wholeWord = false)
{
    return Correction{.from = from, .to = to, .caseSensitive = caseSensitive, .wholeWord = wholeWord};
}

QString applied(const QList<Correction> &rules, const QString &text)
{
    return Corrections::apply(rules, text).text;
}

} // namespace

TEST(Corrections, FirstRuleWinsAndNothingChains)
{
    const QString text = QStringLiteral("Müller-Lüdenscheidt kommt");
    // A rule for a prefix listed first wins over a longer one; the rest of the word stays.
    EXPECT_EQ(applied({rule("Müller", "Miller"), rule("Müller-Lüdenscheidt", "ML")}, text),
              QStringLiteral("Miller-Lüdenscheidt kommt"));
    EXPECT_EQ(applied({rule("Müller-Lüdenscheidt", "ML"), rule("Müller", "Miller")}, text),
              QStringLiteral("ML kommt"));
    // a -> b and b -> c turn a into b: a replacement is never searched again.
    EXPECT_EQ(applied({rule("a", "b"), rule("b", "c")}, QStringLiteral("ab")), QStringLiteral("bc"));
    EXPECT_EQ(Corrections::matchRanges("oo", false, false, "ooo"), (QList<Range>{{0, 2}}));
    EXPECT_EQ(applied({rule("oo", "0")}, "ooo"), QStringLiteral("0o"));
    // Empty `from` is inert; empty `to` deletes and keeps both blanks, with an empty range.
    EXPECT_EQ(applied({rule("", "x")}, "abc"), QStringLiteral("abc"));
    EXPECT_TRUE(Corrections::apply({rule("", "x")}, "abc").ranges.isEmpty());
    const auto removed = Corrections::apply({rule("ähm", "")}, QStringLiteral("Also ähm ja"));
    EXPECT_EQ(removed.text, QStringLiteral("Also  ja"));
    EXPECT_EQ(removed.ranges, (QList<Range>{{5, 5}}));
}

TEST(Corrections, WholeWordsAreJudgedOnTheInputWithUnicodeLetters)
{
    const Correction anna = rule("Anna", "Hanna", true, true);
    EXPECT_EQ(applied({anna}, QStringLiteral("Annas Anna2 Anna, _Anna_ Anna-Lena")),
              QStringLiteral("Annas Anna2 Hanna, _Hanna_ Hanna-Lena"));
    // An umlaut or a non-Latin letter is a letter, so no boundary there.
    EXPECT_EQ(applied({anna}, QStringLiteral("Annaä äAnna Annaж Anna")), QStringLiteral("Annaä äAnna Annaж Hanna"));
    // The boundary is judged on the input: "-" from a replacement does not free "Anna".
    EXPECT_EQ(applied({rule("Bob", "-"), anna}, QStringLiteral("BobAnna")), QStringLiteral("-Anna"));
    EXPECT_EQ(Corrections::matchRanges("Anna", true, true, QStringLiteral("Anna Annas Anna")),
              (QList<Range>{{0, 4}, {11, 15}}));
}

TEST(Corrections, CaseFoldingIsFullLowerCasingWithoutLocale)
{
    EXPECT_EQ(applied({rule("jürgen", "Jürgen")}, QStringLiteral("JÜRGEN und jürgen")),
              QStringLiteral("Jürgen und Jürgen"));
    EXPECT_EQ(applied({rule("jürgen", "J", true)}, QStringLiteral("JÜRGEN")), QStringLiteral("JÜRGEN"));
    // "ß" and "SS" lower-case to different strings, so they do not match.
    EXPECT_EQ(applied({rule("straße", "Weg")}, QStringLiteral("STRASSE Straße")), QStringLiteral("STRASSE Weg"));
    // Canonically equal spellings match: a precomposed ü and u + combining diaeresis.
    EXPECT_EQ(applied({rule(QStringLiteral("Jürgen"), "J", true)}, QStringLiteral("Ju\u0308rgen")), QStringLiteral("J"));
}

TEST(Corrections, MatchesCoverWholeCharactersAndRangesAreUtf16)
{
    // A family emoji is one character of several code points: "a" never matches inside it,
    // and a rule for the emoji replaces it whole.
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString text = family + QStringLiteral(" Familie");
    const auto out = Corrections::apply({rule(family, QStringLiteral("Fam.")), rule("e", "E")}, text);
    EXPECT_EQ(out.text, QStringLiteral("Fam. FamiliE"));
    EXPECT_EQ(out.ranges, (QList<Range>{{0, 4}, {11, 12}}));
    // "e" followed by a combining accent is "é" as one character and is not an "e".
    EXPECT_TRUE(Corrections::matchRanges("e", true, false, QStringLiteral("e\u0301")).isEmpty());
    EXPECT_EQ(Corrections::matchRanges(family, true, false, text), (QList<Range>{{0, qsizetype(family.size())}}));
}
