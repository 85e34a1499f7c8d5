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

QList<TranscriptLine> speakerLines(const QList<SpeakerTurn> &turns, const QMap<QString, QString> &names)
{
    QList<TranscriptLine> lines;
    for (const SpeakerTurn &turn : turns) {
        if (turn.label)
            lines.append(TranscriptLine{turn.ms, names.value(*turn.label, *turn.label), {}, true});
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

std::optional<QString> namedSpeakerText(const HistoryItem &item)
{
    if (!item.speakerText)
        return std::nullopt;
    return SpeakerTurn::renamed(*item.speakerText, item.speakerNames);
}

QStringList speakerLabels(const HistoryItem &item)
{
    QStringList labels;
    for (const QString &line : item.speakerText.value_or(QString()).split(u'\n')) {
        const std::optional<QString> label = SpeakerTurn::splitLabel(line).first;
        if (label && !label->isEmpty() && !labels.contains(*label))
            labels << *label;
    }
    return labels;
}

QStringList labelsShownAs(const HistoryItem &item, const QString &shown)
{
    QStringList labels;
    for (const QString &label : speakerLabels(item)) {
        if (item.speakerNames.value(label, label) == shown)
            labels << label;
    }
    return labels;
}

QString speakerRebuildKey(const HistoryItem &item, bool showTimestamps)
{
    const size_t rules = qHashRange(item.corrections.cbegin(), item.corrections.cend());
    QStringList names;
    for (auto it = item.speakerNames.cbegin(); it != item.speakerNames.cend(); ++it)
        names << it.key() << it.value();
    // The segments count too: a stored item's come from disk after it is first shown.
    return QStringList{QStringLiteral("spk"), item.id,
                       showTimestamps ? QStringLiteral("true") : QStringLiteral("false"),
                       QString::number(qHash(item.speakerText.value_or(QString()))), QString::number(rules),
                       QString::number(item.result.segments.size()), QString::number(qHash(names))}
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

namespace {

QString speakerText(const HistoryItem &item, bool showTimestamps)
{
    if (!item.speakerText)
        return QString();
    if (!showTimestamps)
        return *namedSpeakerText(item);
    QStringList lines;
    for (const SpeakerTurn &turn : SpeakerTurn::build(*item.speakerText, item.result.segments)) {
        QString line = turn.label ? item.speakerNames.value(*turn.label, *turn.label) + QStringLiteral(": ")
                + SpeakerTurn::splitLabel(turn.text).second
                                  : turn.text;
        if (turn.ms)
            line = u'[' + TextForms::minuteStamp(*turn.ms) + QStringLiteral("] ") + line;
        lines << line;
    }
    return lines.join(u'\n');
}

// What the labelled lines claim of each segment, by segment id: one piece per speaker,
// in order, where a change of speaker cuts the segment.
struct Claim {
    TranscriptSegment piece;
    QString speaker;
};

QHash<QUuid, QList<Claim>> claims(const HistoryItem &item)
{
    QHash<QUuid, QList<Claim>> claimed;
    if (!item.speakerText)
        return claimed;
    for (const SpeakerTurn &turn : SpeakerTurn::build(*item.speakerText, item.result.segments)) {
        if (!turn.label)
            continue;
        const QString name = item.speakerNames.value(*turn.label, *turn.label);
        for (const TranscriptSegment &piece : turn.segments)
            claimed[piece.id] << Claim{piece, name};
    }
    return claimed;
}

// The claims on `s` when they cover each of its words once; a segment without words
// counts as covered by its one claim.
bool coversEachWord(const TranscriptSegment &s, const QList<Claim> &pieces)
{
    qsizetype words = 0;
    for (const Claim &c : pieces)
        words += c.piece.words.size();
    return pieces.size() == 1 || (!s.words.isEmpty() && words == s.words.size());
}

QString corrected(const HistoryItem &item, const QString &text)
{
    return item.corrections.isEmpty() ? text : Corrections::apply(item.corrections, text).text;
}

} // namespace

QList<Cue> subtitleCues(const HistoryItem &item, bool withSpeakers)
{
    const QHash<QUuid, QList<Claim>> claimed = withSpeakers ? claims(item) : QHash<QUuid, QList<Claim>>();
    QList<Cue> cues;
    cues.reserve(item.result.segments.size());
    for (const TranscriptSegment &s : item.result.segments) {
        const QList<Claim> pieces = claimed.value(s.id);
        if (pieces.size() > 1 && coversEachWord(s, pieces)) {
            // Two voices in one segment: a cue for each, so every line names who says it.
            for (const Claim &c : pieces)
                cues << Cue{c.piece.startMs, c.piece.endMs, corrected(item, c.piece.text), c.speaker};
            continue;
        }
        cues << Cue{s.startMs, s.endMs, corrected(item, s.text),
                    pieces.isEmpty() ? std::nullopt : std::optional(pieces.first().speaker)};
    }
    return cues;
}

TranscriptJson::Document transcriptDocument(const HistoryItem &item)
{
    TranscriptJson::Document d;
    d.title = item.fileName;
    d.createdAt = item.date;
    d.language = item.result.language;
    d.model = item.result.model;
    d.processingSeconds = item.result.processingSeconds;
    d.text = corrected(item, item.result.fullText);
    d.corrections = item.corrections;
    const QHash<QUuid, QList<Claim>> claimed = claims(item);
    for (const TranscriptSegment &s : item.result.segments) {
        TranscriptJson::Segment segment{s.startMs, s.endMs, corrected(item, s.text), s.text, std::nullopt, {}};
        const QList<Claim> pieces = claimed.value(s.id);
        if (!pieces.isEmpty())
            segment.speaker = pieces.first().speaker;
        const bool byWord = coversEachWord(s, pieces);
        qsizetype piece = 0, left = pieces.isEmpty() ? 0 : pieces.first().piece.words.size();
        for (const TranscriptWord &w : s.words) {
            while (byWord && left == 0 && piece + 1 < pieces.size())
                left = pieces[++piece].piece.words.size();
            --left;
            segment.words << TranscriptJson::Word{w.text, w.startMs, w.endMs,
                                                  byWord ? std::optional(pieces[piece].speaker) : segment.speaker};
        }
        d.segments << segment;
    }
    return d;
}

QString currentText(const HistoryItem &item, qint64 selectedView, bool showTimestamps)
{
    QString text;
    if (selectedView == speakerView)
        text = speakerText(item, showTimestamps);
    else if (const std::optional<qint64> level = viewingLevel(selectedView))
        text = SpeakerTurn::renamed(item.smoothed.value(*level), item.speakerNames);
    else
        text = TextForms::plainText(item.result, showTimestamps);
    return corrected(item, text);
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
