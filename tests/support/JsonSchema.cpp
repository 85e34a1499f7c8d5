#include "JsonSchema.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

bool hasType(const QJsonValue &value, const QString &type)
{
    if (type == "integer")
        return value.isDouble() && value.toDouble() == double(qint64(value.toDouble()));
    return (type == "object" && value.isObject()) || (type == "array" && value.isArray())
        || (type == "string" && value.isString()) || (type == "number" && value.isDouble())
        || (type == "boolean" && value.isBool()) || (type == "null" && value.isNull());
}

void check(const QJsonObject &schema, const QJsonValue &value, const QString &at, QStringList &out)
{
    static const QStringList known{"$schema", "title",    "type",  "const",   "required", "properties",
                                   "additionalProperties", "items", "pattern", "minimum"};
    for (const QString &key : schema.keys()) {
        if (!known.contains(key))
            out << at + ": schema keyword " + key + " is not checked here";
    }
    if (schema.contains("type")) {
        const QJsonValue type = schema["type"];
        QStringList types;
        for (const QJsonValue &t : type.isArray() ? type.toArray() : QJsonArray{type})
            types << t.toString();
        if (std::none_of(types.begin(), types.end(), [&](const QString &t) { return hasType(value, t); })) {
            out << at + ": not " + types.join('|');
            return;
        }
    }
    if (schema.contains("const") && schema["const"] != value)
        out << at + ": not the constant";
    if (schema.contains("pattern") && value.isString()
        && !QRegularExpression(schema["pattern"].toString()).match(value.toString()).hasMatch())
        out << at + ": " + value.toString() + " does not match " + schema["pattern"].toString();
    if (schema.contains("minimum") && value.isDouble() && value.toDouble() < schema["minimum"].toDouble())
        out << at + ": below the minimum";
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (const QJsonValue &key : schema["required"].toArray()) {
            if (!object.contains(key.toString()))
                out << at + ": lacks " + key.toString();
        }
        const QJsonObject properties = schema["properties"].toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (properties.contains(it.key()))
                check(properties[it.key()].toObject(), it.value(), at + '/' + it.key(), out);
            else if (schema["additionalProperties"] == QJsonValue(false))
                out << at + ": unexpected key " + it.key();
        }
    }
    if (value.isArray() && schema.contains("items")) {
        const QJsonArray items = value.toArray();
        for (qsizetype i = 0; i < items.size(); ++i)
            check(schema["items"].toObject(), items[i], at + '/' + QString::number(i), out);
    }
}

} // namespace

QStringList JsonSchema::violations(const QJsonValue &schema, const QJsonValue &value)
{
    QStringList out;
    check(schema.toObject(), value, QString(), out);
    return out;
}
