#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>

// The one JSON form of the documents the application writes, and the strict reading of
// their values: a value of the wrong type reads as none, so a caller can reject the
// whole document.
namespace JsonCoding {

// Pretty-printed text with every slash written as "\/".
QByteArray encode(const QJsonObject &object);

// The object at the top of `bytes`; none for broken JSON or another top-level value.
std::optional<QJsonObject> decodeObject(const QByteArray &bytes);

// ISO 8601 in UTC with whole seconds and a trailing "Z"; the fraction is dropped.
QString dateText(const QDateTime &date);

// A date written as above, or with a "+hh:mm" offset; a fraction of a second is refused.
std::optional<QDateTime> date(const QJsonValue &value);

// A number without a fraction, within the 64-bit range.
std::optional<qint64> integer(const QJsonValue &value);

std::optional<QString> string(const QJsonValue &value);

// Absent and null both read as none.
inline bool isMissing(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

} // namespace JsonCoding
