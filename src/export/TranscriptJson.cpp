#include "export/TranscriptJson.h"

#include "core/JsonCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace TranscriptJson {

namespace {

QJsonValue optionalString(const std::optional<QString> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

} // namespace

QByteArray encode(const Document &d)
{
    QJsonArray speakers; // in the order they first speak
    QJsonArray segments;
    for (const Segment &s : d.segments) {
        if (s.speaker && !speakers.contains(*s.speaker))
            speakers.append(*s.speaker);
        QJsonArray words;
        for (const Word &w : s.words) {
            if (w.speaker && !speakers.contains(*w.speaker))
                speakers.append(*w.speaker);
            words.append(QJsonObject{{"text", w.text},
                                     {"startMs", w.startMs},
                                     {"endMs", w.endMs},
                                     {"speaker", optionalString(w.speaker)}});
        }
        segments.append(QJsonObject{{"startMs", s.startMs},
                                    {"endMs", s.endMs},
                                    {"text", s.text},
                                    {"originalText", s.originalText},
                                    {"speaker", optionalString(s.speaker)},
                                    {"words", words}});
    }
    QJsonArray corrections;
    for (const Correction &c : d.corrections)
        corrections.append(c.toJson());
    const QJsonObject o{
        {"format", "sagwerk-transcript"},
        {"version", formatVersion},
        {"title", d.title},
        {"createdAt", d.createdAt.isValid() ? QJsonValue(JsonCoding::dateText(d.createdAt)) : QJsonValue()},
        {"language", d.language},
        {"model", d.model.isEmpty() ? QJsonValue() : QJsonValue(d.model)},
        {"processingSeconds", std::isfinite(d.processingSeconds) ? d.processingSeconds : 0.0},
        {"speakers", speakers},
        {"text", d.text},
        {"segments", segments},
        {"corrections", corrections},
    };
    return QJsonDocument(o).toJson(QJsonDocument::Indented);
}

} // namespace TranscriptJson
