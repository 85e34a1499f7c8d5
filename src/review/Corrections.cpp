#include "review/Corrections.h"

#include "core/Text.h"

#include <unicode/uchar.h>

namespace Corrections {

namespace {

// A text split into user-perceived characters, with each character also in the forms
// that comparisons need. Equality is canonical (NFC), case-blind comparison uses the
// full lower-case mapping without locale. Both forms are laid out contiguously, so a
// run of characters compares as one slice without building strings.
struct Characters {
    QList<qsizetype> bounds;  // UTF-16 offsets into the source, size n + 1
    QString exact, lower;     // per character NFC, and lower-cased NFC, concatenated
    QList<qsizetype> exactAt, lowerAt; // offsets into exact/lower, size n + 1
    QList<bool> wordy;        // letter or number, judged by the first scalar
    // Every code unit is a character of its own and its own NFC form, and lower-casing
    // keeps the length: all offsets are the identity and the lists above stay empty.
    bool identity = false;
    qsizetype count = 0;

    explicit Characters(const QString &text)
    {
        if (isSimple(text)) {
            identity = true;
            count = text.size();
            exact = text;
            lower = text.toLower();
            wordy.resize(count);
            for (qsizetype i = 0; i < count; ++i)
                wordy[i] = isWordy(text[i].unicode());
            return;
        }
        bounds << 0;
        exactAt << 0;
        lowerAt << 0;
        qsizetype start = 0;
        for (const qsizetype end : Text::characterEnds(text)) {
            const QString piece = text.mid(start, end - start).normalized(QString::NormalizationForm_C);
            exact += piece;
            lower += piece.toLower().normalized(QString::NormalizationForm_C);
            bounds << end;
            exactAt << exact.size();
            lowerAt << lower.size();
            wordy << isWordy(QStringView(piece).toUcs4().value(0));
            start = end;
        }
        count = bounds.size() - 1;
    }

    // Below U+0300 there are no combining marks, no characters that normalisation
    // changes and no grapheme joins but CR LF; of full lower-casing only U+0130 grows.
    static bool isSimple(const QString &text)
    {
        for (qsizetype i = 0; i < text.size(); ++i) {
            const char16_t c = text[i].unicode();
            if (c >= 0x300 || c == 0x130 || (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n'))
                return false;
        }
        return true;
    }

    static bool isWordy(char32_t scalar)
    {
        return u_hasBinaryProperty(UChar32(scalar), UCHAR_ALPHABETIC)
            || u_getIntPropertyValue(UChar32(scalar), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
    }

    qsizetype size() const { return count; }
    qsizetype bound(qsizetype i) const { return identity ? i : bounds[i]; }
    qsizetype exactOffset(qsizetype i) const { return identity ? i : exactAt[i]; }
    qsizetype lowerOffset(qsizetype i) const { return identity ? i : lowerAt[i]; }
};

// A rule prepared once: its length in characters and the slice to compare against.
struct Pattern {
    qsizetype length = 0;
    QString key;
    bool caseSensitive = false;
    bool wholeWord = false;

    Pattern(const QString &from, bool caseSensitive, bool wholeWord)
        : caseSensitive(caseSensitive), wholeWord(wholeWord)
    {
        const Characters c(from);
        length = c.size();
        key = caseSensitive ? c.exact : c.lower;
    }

    bool matchesAt(const Characters &t, qsizetype i) const
    {
        const qsizetype e = i + length;
        if (length == 0 || e > t.size())
            return false;
        const QString &hay = caseSensitive ? t.exact : t.lower;
        const qsizetype from = caseSensitive ? t.exactOffset(i) : t.lowerOffset(i);
        const qsizetype to = caseSensitive ? t.exactOffset(e) : t.lowerOffset(e);
        if (to - from != key.size() || hay[from] != key[0] || QStringView(hay).sliced(from, key.size()) != key)
            return false;
        if (wholeWord && ((i > 0 && t.wordy[i - 1]) || (e < t.size() && t.wordy[e])))
            return false;
        return true;
    }
};

} // namespace

Applied apply(const QList<Correction> &rules, const QString &text)
{
    QList<Pattern> patterns;
    QList<QString> replacements;
    for (const Correction &rule : rules) {
        if (rule.from.isEmpty())
            continue;
        patterns.append(Pattern(rule.from, rule.caseSensitive, rule.wholeWord));
        replacements.append(rule.to);
    }
    if (patterns.isEmpty() || text.isEmpty())
        return {text, {}};

    const Characters t(text);
    Applied out;
    out.text.reserve(text.size());
    qsizetype copiedFrom = 0; // start of the unchanged run not yet copied, in characters
    auto flush = [&](qsizetype upTo) {
        out.text += QStringView(text).sliced(t.bound(copiedFrom), t.bound(upTo) - t.bound(copiedFrom));
    };
    for (qsizetype i = 0; i < t.size();) {
        qsizetype hit = -1;
        for (qsizetype r = 0; r < patterns.size(); ++r) {
            if (patterns[r].matchesAt(t, i)) {
                hit = r;
                break;
            }
        }
        if (hit < 0) {
            ++i;
            continue;
        }
        flush(i);
        const qsizetype start = out.text.size();
        out.text += replacements[hit];
        out.ranges.append({start, out.text.size()});
        i += patterns[hit].length;
        copiedFrom = i;
    }
    flush(t.size());
    return out;
}

QList<Range> matchRanges(const QString &from, bool caseSensitive, bool wholeWord, const QString &text)
{
    if (from.isEmpty())
        return {};
    const Pattern pattern(from, caseSensitive, wholeWord);
    const Characters t(text);
    QList<Range> ranges;
    for (qsizetype i = 0; i + pattern.length <= t.size();) {
        if (pattern.matchesAt(t, i)) {
            ranges.append({t.bound(i), t.bound(i + pattern.length)});
            i += pattern.length;
        } else {
            ++i;
        }
    }
    return ranges;
}

} // namespace Corrections
