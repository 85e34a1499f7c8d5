#include "links/AppleLookup.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

// Reads `key` into `field`; false on a value of the wrong type. Null counts as absent.
bool readString(const QJsonObject &object, const char *key, std::optional<QString> &field)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull())
        return true;
    if (!value.isString())
        return false;
    field = value.toString();
    return true;
}

bool readInteger(const QJsonObject &object, const char *key, std::optional<qint64> &field)
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull())
        return true;
    if (!value.isDouble())
        return false;
    const double number = value.toDouble();
    // Whole numbers only, and within the range a double holds exactly.
    if (number != std::floor(number) || std::fabs(number) > 9007199254740992.0)
        return false;
    field = qint64(number);
    return true;
}

} // namespace

std::optional<AppleLookup> AppleLookup::decode(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonValue results = document.object().value(QLatin1String("results"));
    if (!results.isArray())
        return std::nullopt;

    AppleLookup lookup;
    for (const QJsonValue &entry : results.toArray()) {
        if (!entry.isObject())
            return std::nullopt;
        const QJsonObject object = entry.toObject();
        Item item;
        if (!readString(object, "kind", item.kind) || !readInteger(object, "trackId", item.trackId)
            || !readString(object, "trackName", item.trackName) || !readString(object, "episodeUrl", item.episodeUrl)
            || !readString(object, "feedUrl", item.feedUrl))
            return std::nullopt;
        lookup.results.append(item);
    }
    return lookup;
}
