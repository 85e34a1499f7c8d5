#include "review/TranscriptLines.h"

#include "core/FileNames.h"
#include "core/Tr.h"
#include "export/TextForms.h"
#include "export/Format.h"
#include "review/Corrections.h"

#include <QFileInfo>

#include <cmath>

namespace TranscriptLines {

std::optional<qint64> viewingLevel(qint64 selectedView)
{
    return selectedView >= 1 ? std::optional(selectedView) : std::nullopt;
}

QList<qint64> views(const HistoryItem &item)
{
    QList<qint64> list{originalView};
    if (item.speakerText)
        list << speakerView;
    list += item.smoothed.keys(); // QMap keys ascend
    return list;
}

Surface surface(const HistoryItem &item, qint64 selectedView)
{
    if (selectedView == speakerView && item.speakerText)
        return Surface::Speaker;
    const std::optional<qint64> level = viewingLevel(selectedView);
    if (level && item.smoothed.contains(*level))
        return Surface::Level;
    return Surface::Original;
}

QList<TranscriptLine> originalLines(const TranscriptionResult &result)
{
    QList<TranscriptLine> lines;
    lines.reserve(result.segments.size());
    for (const TranscriptSegment &s : result.segments) {
        TranscriptLine line{s.startMs, s.text, s.words, false};
        if (line.words.isEmpty())
            line.words.append(TranscriptWord{s.text, s.startMs, s.endMs});
        lines.append(std::move(line));
    }
    return lines;
}

QList<TranscriptLine> speakerLines(const QList<SpeakerTurn> &turns)
{
    QList<TranscriptLine> lines;
    for (const SpeakerTurn &turn : turns) {
        if (turn.label)
            lines.append(TranscriptLine{turn.ms, *turn.label, {}, true});
        if (!turn.segments.isEmpty()) {
            // No stand-in word for a wordless segment here: the turns carry real words only.
            for (const TranscriptSegment &s : turn.segments)
                lines.append(TranscriptLine{s.startMs, s.text, s.words, false});
        } else {
            lines.append(TranscriptLine{turn.ms, SpeakerTurn::splitLabel(turn.text).second, turn.words, false});
        }
    }
    return lines;
}

QString speakerRebuildKey(const HistoryItem &item, bool showTimestamps)
{
    const size_t rules = qHashRange(item.corrections.cbegin(), item.corrections.cend());
    // The segments count too: a stored item's come from disk after it is first shown.
    return QStringList{QStringLiteral("spk"), item.id,
                       showTimestamps ? QStringLiteral("true") : QStringLiteral("false"),
                       QString::number(qHash(item.speakerText.value_or(QString()))), QString::number(rules),
                       QString::number(item.result.segments.size())}
        .join(u'|');
}

QString rebuildKey(const HistoryItem &item, bool showTimestamps)
{
    const size_t rules = qHashRange(item.corrections.cbegin(), item.corrections.cend());
    return QStringList{QStringLiteral("orig"), item.id,
                       showTimestamps ? QStringLiteral("true") : QStringLiteral("false"),
                       QString::number(item.result.segments.size()), QString::number(rules)}
        .join(u'|');
}

QString currentText(const HistoryItem &item, qint64 selectedView, bool showTimestamps)
{
    QString text;
    if (selectedView == speakerView)
        text = item.speakerText.value_or(QString());
    else if (const std::optional<qint64> level = viewingLevel(selectedView))
        text = item.smoothed.value(*level);
    else
        text = TextForms::plainText(item.result, showTimestamps);
    if (item.corrections.isEmpty())
        return text;
    return Corrections::apply(item.corrections, text).text;
}

QString searchBase(const HistoryItem &item)
{
    QStringList texts;
    texts.reserve(item.result.segments.size());
    for (const TranscriptSegment &s : item.result.segments)
        texts << s.text;
    return texts.join(u' ');
}

QString metaString(const HistoryItem &item)
{
    // The words follow the interface language; the figures keep one form in all of them.
    QStringList parts{Format::date(item.date),
                      Tr::tr("%n Segmente", nullptr, int(item.result.segments.size())),
                      Tr::tr("in %1 s").arg(QString::asprintf("%.1f", item.result.processingSeconds))};
    if (!item.result.language.isEmpty())
        parts << item.result.language;
    return parts.join(QStringLiteral("  ·  "));
}

std::optional<QString> audioURL(const HistoryItem &item)
{
    if (item.audioURL && QFileInfo(*item.audioURL).isFile())
        return item.audioURL;
    return std::nullopt;
}

QString exportBase(const HistoryItem &item, qint64 selectedView)
{
    QString base = FileNames::deletingPathExtension(item.fileName);
    if (selectedView == speakerView)
        base += QStringLiteral("-sprecher");
    else if (const std::optional<qint64> level = viewingLevel(selectedView))
        base += QStringLiteral("-stufe") + QString::number(*level);
    return base;
}

qint64 currentMs(double seconds)
{
    return std::llround(seconds * 1000.0);
}

} // namespace TranscriptLines
