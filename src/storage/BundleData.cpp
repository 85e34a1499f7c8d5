#include "storage/BundleData.h"

#include <cstring>

#include "core/JsonCoding.h"

#include <QJsonArray>

#include <cmath>

using namespace JsonCoding;

namespace {

QJsonObject wordJson(const StoredWord &w)
{
    return QJsonObject{{"text", w.text}, {"startMs", w.startMs}, {"endMs", w.endMs}};
}

QJsonObject segmentJson(const StoredSegment &s)
{
    QJsonObject o{{"startMs", s.startMs}, {"endMs", s.endMs}, {"text", s.text}};
    if (s.words) {
        QJsonArray words;
        for (const StoredWord &w : *s.words)
            words.append(wordJson(w));
        o.insert("words", words);
    }
    return o;
}

std::optional<StoredWord> wordFrom(const QJsonValue &value)
{
    const QJsonObject o = value.toObject();
    const auto text = string(o.value("text"));
    const auto startMs = integer(o.value("startMs")), endMs = integer(o.value("endMs"));
    if (!value.isObject() || !text || !startMs || !endMs)
        return std::nullopt;
    return StoredWord{*text, *startMs, *endMs};
}

std::optional<StoredSegment> segmentFrom(const QJsonValue &value)
{
    const QJsonObject o = value.toObject();
    const auto startMs = integer(o.value("startMs")), endMs = integer(o.value("endMs"));
    const auto text = string(o.value("text"));
    if (!value.isObject() || !startMs || !endMs || !text)
        return std::nullopt;
    StoredSegment segment{*startMs, *endMs, *text, std::nullopt};
    const QJsonValue words = o.value("words");
    if (!isMissing(words)) {
        if (!words.isArray())
            return std::nullopt;
        segment.words.emplace();
        for (const QJsonValue &w : words.toArray()) {
            const auto word = wordFrom(w);
            if (!word)
                return std::nullopt;
            segment.words->append(*word);
        }
    }
    return segment;
}

// The JSON value starting at `p`: the position after it, or null when it does not end
// within [p, end). Strings are stepped over whole, so brackets inside them do not count.
const char *skipString(const char *p, const char *end)
{
    // `p` is at the opening quote; an escaped quote has an odd run of backslashes before it.
    for (const char *q = p + 1;;) {
        q = static_cast<const char *>(memchr(q, '"', size_t(end - q)));
        if (!q)
            return nullptr;
        const char *b = q;
        while (b > p + 1 && b[-1] == '\\')
            --b;
        if ((q - b) % 2 == 0)
            return q + 1;
        ++q;
    }
}

const char *skipBlanks(const char *p, const char *end)
{
    while (p < end && (*p == ' ' || *p == '\n' || *p == '\r' || *p == '\t'))
        ++p;
    return p;
}

const char *skipValue(const char *p, const char *end)
{
    if (p >= end)
        return nullptr;
    if (*p == '"')
        return skipString(p, end);
    if (*p != '[' && *p != '{') {
        while (p < end && *p != ',' && *p != '}' && *p != ']' && *p != ' ' && *p != '\n' && *p != '\r' && *p != '\t')
            ++p;
        return p;
    }
    qsizetype depth = 0;
    while (p < end) {
        switch (*p) {
        case '"':
            p = skipString(p, end);
            if (!p)
                return nullptr;
            continue;
        case '[':
        case '{':
            ++depth;
            break;
        case ']':
        case '}':
            if (--depth == 0)
                return p + 1;
            break;
        }
        ++p;
    }
    return nullptr;
}

// Where the value of the top-level `key` lies in an object document; none when the
// document is no object, the key is missing, or the JSON breaks off.
std::optional<std::pair<qsizetype, qsizetype>> topLevelValue(const QByteArray &bytes, QByteArrayView key)
{
    const char *const begin = bytes.constData(), *const end = begin + bytes.size();
    const char *p = skipBlanks(begin, end);
    if (p == end || *p != '{')
        return std::nullopt;
    p = skipBlanks(p + 1, end);
    while (p < end && *p == '"') {
        const char *keyEnd = skipString(p, end);
        if (!keyEnd)
            return std::nullopt;
        const QByteArrayView name(p + 1, keyEnd - 1);
        p = skipBlanks(keyEnd, end);
        if (p == end || *p != ':')
            return std::nullopt;
        const char *value = skipBlanks(p + 1, end);
        const char *after = skipValue(value, end);
        if (!after)
            return std::nullopt;
        if (name == key)
            return std::pair(value - begin, after - begin);
        p = skipBlanks(after, end);
        if (p < end && *p == ',')
            p = skipBlanks(p + 1, end);
    }
    return std::nullopt;
}

} // namespace

std::optional<BundleData> BundleData::decodeSummary(const QByteArray &bytes)
{
    const auto segments = topLevelValue(bytes, "segments");
    if (!segments)
        return std::nullopt;
    const auto [from, to] = *segments;
    if (bytes.at(from) != '[')
        return std::nullopt;
    return decode(bytes.left(from) + "[]" + bytes.mid(to));
}

std::optional<QByteArray> BundleData::encode() const
{
    if (!createdAt.isValid() || !std::isfinite(processingSeconds))
        return std::nullopt;
    QJsonArray segs;
    for (const StoredSegment &s : segments)
        segs.append(segmentJson(s));
    QJsonObject levels;
    for (auto it = refined.cbegin(); it != refined.cend(); ++it)
        levels.insert(it.key(), it.value());
    QJsonObject o{{"displayName", displayName},
                  {"createdAt", dateText(createdAt)},
                  {"language", language},
                  {"processingSeconds", processingSeconds},
                  {"audioFileName", audioFileName},
                  {"segments", segs},
                  {"fullText", fullText},
                  {"smoothed", levels}};
    if (speakerText)
        o.insert("speakerText", *speakerText);
    if (corrections) {
        QJsonArray rules;
        for (const Correction &c : *corrections)
            rules.append(c.toJson());
        o.insert("corrections", rules);
    }
    if (sourceContent)
        o.insert("sourceContent", QJsonObject{{"size", sourceContent->size}, {"sha256", sourceContent->sha256}});
    if (model)
        o.insert("model", *model);
    if (speakerNames) {
        QJsonObject names;
        for (auto it = speakerNames->cbegin(); it != speakerNames->cend(); ++it)
            names.insert(it.key(), it.value());
        o.insert("speakerNames", names);
    }
    return JsonCoding::encode(o);
}

std::optional<BundleData> BundleData::decode(const QByteArray &bytes)
{
    const std::optional<QJsonObject> doc = decodeObject(bytes);
    if (!doc)
        return std::nullopt;
    const QJsonObject &o = *doc;

    BundleData d;
    const auto displayName = string(o.value("displayName"));
    const auto createdAt = date(o.value("createdAt"));
    const auto language = string(o.value("language"));
    const QJsonValue processingSeconds = o.value("processingSeconds");
    const auto audioFileName = string(o.value("audioFileName"));
    const QJsonValue segments = o.value("segments");
    const auto fullText = string(o.value("fullText"));
    const QJsonValue refined = o.value("smoothed");
    if (!displayName || !createdAt || !language || !processingSeconds.isDouble() || !audioFileName
        || !segments.isArray() || !fullText || !refined.isObject())
        return std::nullopt;
    d.displayName = *displayName;
    d.createdAt = *createdAt;
    d.language = *language;
    d.processingSeconds = processingSeconds.toDouble();
    d.audioFileName = *audioFileName;
    d.fullText = *fullText;

    for (const QJsonValue &s : segments.toArray()) {
        const auto segment = segmentFrom(s);
        if (!segment)
            return std::nullopt;
        d.segments.append(*segment);
    }
    const QJsonObject levels = refined.toObject();
    for (auto it = levels.constBegin(); it != levels.constEnd(); ++it) {
        if (!it.value().isString())
            return std::nullopt;
        d.refined.insert(it.key(), it.value().toString());
    }

    const QJsonValue speakerText = o.value("speakerText");
    if (!isMissing(speakerText)) {
        if (!speakerText.isString())
            return std::nullopt;
        d.speakerText = speakerText.toString();
    }
    const QJsonValue corrections = o.value("corrections");
    if (!isMissing(corrections)) {
        if (!corrections.isArray())
            return std::nullopt;
        d.corrections.emplace();
        for (const QJsonValue &c : corrections.toArray()) {
            const auto rule = Correction::fromJson(c);
            if (!rule)
                return std::nullopt;
            d.corrections->append(*rule);
        }
    }
    const QJsonObject content = o.value("sourceContent").toObject();
    const auto size = integer(content.value("size"));
    const auto sha256 = string(content.value("sha256"));
    if (size && *size >= 0 && sha256 && sha256->size() == 64)
        d.sourceContent = SourceContent{*size, sha256->toLower()};
    const QJsonValue model = o.value("model");
    if (!isMissing(model)) {
        if (!model.isString())
            return std::nullopt;
        d.model = model.toString();
    }
    const QJsonValue names = o.value("speakerNames");
    if (!isMissing(names)) {
        if (!names.isObject())
            return std::nullopt;
        d.speakerNames.emplace();
        const QJsonObject map = names.toObject();
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            if (!it.value().isString())
                return std::nullopt;
            d.speakerNames->insert(it.key(), it.value().toString());
        }
    }
    return d;
}
