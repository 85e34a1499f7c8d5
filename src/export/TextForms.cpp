#include "export/TextForms.h"

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

QString srt(const TranscriptionResult &result)
{
    QStringList blocks;
    blocks.reserve(result.segments.size());
    int number = 1;
    for (const TranscriptSegment &s : result.segments) {
        blocks << QString::number(number++) + u'\n' + subtitleStamp(s.startMs) + QStringLiteral(" --> ")
                      + subtitleStamp(s.endMs) + u'\n' + s.text + u'\n';
    }
    return blocks.join(u'\n');
}

} // namespace TextForms
