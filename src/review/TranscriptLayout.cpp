#include "review/TranscriptLayout.h"

#include "export/TextForms.h"

#include <algorithm>

namespace TranscriptLayout {

Built build(const QList<TranscriptLine> &lines, bool showTime, const QList<Correction> &corrections)
{
    Built out;
    out.headerParagraphs.reserve(lines.size());
    out.runs.reserve(lines.size() * 2);
    QString &text = out.text;
    auto append = [&](const QString &piece, Style style) {
        if (piece.isEmpty())
            return;
        out.runs.append({text.size(), piece.size(), style});
        text += piece;
    };

    for (qsizetype i = 0; i < lines.size(); ++i) {
        const TranscriptLine &line = lines[i];
        const qsizetype lineStart = text.size();
        if (line.isHeader) {
            out.headerParagraphs.append(i > 0);
            append(line.text, Style::Header);
            if (line.timeMs)
                out.anchors.append({lineStart, *line.timeMs});
        } else {
            out.headerParagraphs.append(false);
            if (showTime) {
                const QString time = line.timeMs ? TextForms::minuteStamp(*line.timeMs) : QString();
                append(u'\t' + time + u'\t', Style::Time);
            }
            const qsizetype base = text.size();
            const Corrections::Applied shown = Corrections::apply(corrections, line.text);
            append(shown.text, Style::Body);
            if (line.timeMs)
                out.anchors.append({lineStart, *line.timeMs});
            for (const Corrections::Range &r : shown.ranges)
                out.replaced.append({base + r.start, base + r.end});

            // Words are found in order in the shown text; one that a correction changed
            // is skipped without costing the words behind it their places.
            qsizetype from = 0;
            for (const TranscriptWord &word : line.words) {
                const QString needle = word.text.trimmed();
                if (needle.isEmpty())
                    continue;
                const qsizetype at = shown.text.indexOf(needle, from, Qt::CaseSensitive);
                if (at < 0)
                    continue;
                out.anchors.append({base + at, word.startMs});
                out.words.append({base + at, needle.size(), word.startMs});
                from = at + needle.size();
            }
        }
        if (i + 1 < lines.size())
            text += u'\n';
    }
    std::stable_sort(out.anchors.begin(), out.anchors.end(),
                     [](const Anchor &a, const Anchor &b) { return a.loc < b.loc; });
    return out;
}

std::optional<qsizetype> wordAt(const QList<WordAnchor> &words, qint64 currentMs, bool isPlaying)
{
    if (!(isPlaying || currentMs > 10) || words.isEmpty() || currentMs < words.constFirst().ms)
        return std::nullopt;
    // A plain walk that stops at the first later word, even if a word after it is earlier.
    qsizetype i = 0;
    while (i + 1 < words.size() && words[i + 1].ms <= currentMs)
        ++i;
    return i;
}

std::optional<Seek> seekFor(const QList<Anchor> &anchors, qsizetype location, qsizetype length)
{
    if (anchors.isEmpty() || location < anchors.constFirst().loc)
        return std::nullopt;
    qsizetype i = 0;
    while (i + 1 < anchors.size() && anchors[i + 1].loc <= location)
        ++i;
    return Seek{anchors[i].ms, length == 0};
}

} // namespace TranscriptLayout
