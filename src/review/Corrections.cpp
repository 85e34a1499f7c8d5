#include "review/Corrections.h"

#include <QTextBoundaryFinder>

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

    explicit Characters(const QString &text)
    {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
        bounds << 0;
        exactAt << 0;
        lowerAt << 0;
        qsizetype start = 0;
        while (finder.toNextBoundary() != -1) {
            const qsizetype end = finder.position();
            const QString piece = text.mid(start, end - start).normalized(QString::NormalizationForm_C);
            exact += piece;
            lower += piece.toLower().normalized(QString::NormalizationForm_C);
            bounds << end;
            exactAt << exact.size();
            lowerAt << lower.size();
            const char32_t first = QStringView(piece).toUcs4().value(0);
            wordy << (u_hasBinaryProperty(UChar32(first), UCHAR_ALPHABETIC)
                      || u_getIntPropertyValue(UChar32(first), UCHAR_NUMERIC_TYPE) != U_NT_NONE);
            start = end;
        }
    }

    qsizetype size() const { return bounds.size() - 1; }
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
        const QList<qsizetype> &at = caseSensitive ? t.exactAt : t.lowerAt;
        if (at[e] - at[i] != key.size() || QStringView(hay).sliced(at[i], key.size()) != key)
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
        out.text += QStringView(text).sliced(t.bounds[copiedFrom], t.bounds[upTo] - t.bounds[copiedFrom]);
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
            ranges.append({t.bounds[i], t.bounds[i + pattern.length]});
            i += pattern.length;
        } else {
            ++i;
        }
    }
    return ranges;
}

} // namespace Corrections
