#include "core/JsonCoding.h"

#include <QJsonDocument>
#include <QRegularExpression>

namespace JsonCoding {

QByteArray encode(const QJsonObject &object)
{
    // Outside strings JSON has no slash, and UTF-8 never hides one inside a multi-byte
    // sequence, so a plain replacement escapes exactly the slashes in strings.
    return QJsonDocument(object).toJson(QJsonDocument::Indented).replace("/", "\\/");
}

std::optional<QJsonObject> decodeObject(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

QString dateText(const QDateTime &date)
{
    QDateTime utc = date.toUTC();
    utc = utc.addMSecs(-utc.time().msec());
    return utc.toString(Qt::ISODate);
}

std::optional<QDateTime> date(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    // Qt's own ISO reading would also take fractions and missing zones.
    static const QRegularExpression form(
        QStringLiteral("^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}(Z|[+-][0-9]{2}:[0-9]{2})$"));
    const QString text = value.toString();
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDateTime parsed = QDateTime::fromString(text, Qt::ISODate);
    if (!parsed.isValid())
        return std::nullopt;
    return parsed.toUTC();
}

std::optional<qint64> integer(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    // A fraction or an out-of-range value gives the default back, so two different
    // defaults tell it apart from a real integer.
    const qint64 a = value.toInteger(0);
    if (a != value.toInteger(1))
        return std::nullopt;
    return a;
}

std::optional<QString> string(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

} // namespace JsonCoding
