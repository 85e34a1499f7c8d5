#include "core/TranscriptionResult.h"

#include <QJsonArray>

QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QJsonObject TranscriptionResult::toJson() const
{
    QJsonArray segs;
    for (const TranscriptSegment &s : segments) {
        QJsonArray ws;
        for (const TranscriptWord &w : s.words)
            ws.append(QJsonObject{{"text", w.text}, {"startMs", w.startMs}, {"endMs", w.endMs}});
        segs.append(QJsonObject{{"id", uuidText(s.id)},
                                {"startMs", s.startMs},
                                {"endMs", s.endMs},
                                {"text", s.text},
                                {"words", ws}});
    }
    return QJsonObject{{"fullText", fullText},
                       {"segments", segs},
                       {"language", language},
                       {"processingSeconds", processingSeconds},
                       {"model", model}};
}
