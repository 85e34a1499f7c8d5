#pragma once

#include <QJsonValue>
#include <QStringList>

// Checks a JSON value against a JSON Schema, for the keywords our schemas use: type,
// const, required, properties, additionalProperties (false), items, pattern, minimum.
// Any other keyword is reported, so that a schema never passes by being half read.
namespace JsonSchema {

// Where the value breaks the schema, one line each ("/segments/0/speaker: ..."); empty
// when it conforms.
QStringList violations(const QJsonValue &schema, const QJsonValue &value);

} // namespace JsonSchema
