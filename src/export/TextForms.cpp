#include "export/TextForms.h"

#include <QRegularExpression>

namespace TextForms {

QString minuteStamp(qint64 ms)
{
    ms = std::max<qint64>(ms, 0);
    return QString::asprintf("%lld:%02lld", ms / 60000, (ms / 1000) % 60);
}

QString subtitleStamp(qint64 ms)
{
    ms = std::max<qint64>(ms, 0);
    return QString::asprintf("%02lld:%02lld:%02lld,%03lld", ms / 3600000, (ms % 3600000) / 60000,
                             (ms % 60000) / 1000, ms % 1000);
}

QString vttStamp(qint64 ms)
{
    QString stamp = subtitleStamp(ms);
    stamp[stamp.size() - 4] = u'.';
    return stamp;
}

QString plainText(const TranscriptionResult &result, bool withTimestamps)
{
    if (!withTimestamps)
        return result.fullText;
    QStringList lines;
    lines.reserve(result.segments.size());
    for (const TranscriptSegment &s : result.segments)
        lines << u'[' + minuteStamp(s.startMs) + QStringLiteral("] ") + s.text;
    return lines.join(u'\n');
}

QList<Cue> cues(const TranscriptionResult &result)
{
    QList<Cue> list;
    list.reserve(result.segments.size());
    for (const TranscriptSegment &s : result.segments)
        list << Cue{s.startMs, s.endMs, s.text, std::nullopt};
    return list;
}

QString srt(const QList<Cue> &cues)
{
    QStringList blocks;
    blocks.reserve(cues.size());
    int number = 1;
    for (const Cue &c : cues) {
        const QString text = c.speaker ? *c.speaker + QStringLiteral(": ") + c.text : c.text;
        blocks << QString::number(number++) + u'\n' + subtitleStamp(c.startMs) + QStringLiteral(" --> ")
                      + subtitleStamp(c.endMs) + u'\n' + text + u'\n';
    }
    return blocks.join(u'\n');
}

namespace {

// A cue's text may hold no markup and no empty line, which would end the cue.
QString vttText(const QString &text)
{
    QString escaped = text;
    escaped.replace(u'&', QStringLiteral("&amp;")).replace(u'<', QStringLiteral("&lt;")).replace(u'>', QStringLiteral("&gt;"));
    static const QRegularExpression breaks(QStringLiteral("\\s*\\n\\s*"));
    return escaped.replace(breaks, QStringLiteral("\n"));
}

} // namespace

QString vtt(const QList<Cue> &cues)
{
    QString out = QStringLiteral("WEBVTT\n");
    int number = 1;
    for (const Cue &c : cues) {
        out += u'\n' + QString::number(number++) + u'\n' + vttStamp(c.startMs) + QStringLiteral(" --> ")
            + vttStamp(c.endMs) + u'\n';
        if (c.speaker)
            out += QStringLiteral("<v ") + vttText(*c.speaker).replace(u'\n', u' ') + u'>';
        out += vttText(c.text) + u'\n';
    }
    return out;
}

} // namespace TextForms
