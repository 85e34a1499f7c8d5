#include "core/Correction.h"

#include "core/TranscriptionResult.h"
#include "core/JsonCoding.h"

namespace {

std::optional<QUuid> uuid(const QJsonValue &value)
{
    // Exactly the 36-character hyphenated form, in either case; no braces.
    const std::optional<QString> text = JsonCoding::string(value);
    if (!text || text->size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(*text);
    if (id.isNull() && *text != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}

} // namespace

QJsonObject Correction::toJson() const
{
    return QJsonObject{{"id", uuidText(id)},
                       {"from", from},
                       {"to", to},
                       {"caseSensitive", caseSensitive},
                       {"wholeWord", wholeWord}};
}

std::optional<Correction> Correction::fromJson(const QJsonValue &value)
{
    const QJsonObject o = value.toObject();
    const std::optional<QUuid> id = uuid(o.value("id"));
    const std::optional<QString> from = JsonCoding::string(o.value("from"));
    const std::optional<QString> to = JsonCoding::string(o.value("to"));
    const QJsonValue caseSensitive = o.value("caseSensitive"), wholeWord = o.value("wholeWord");
    if (!value.isObject() || !id || !from || !to || !caseSensitive.isBool() || !wholeWord.isBool())
        return std::nullopt;
    return Correction{*id, *from, *to, caseSensitive.toBool(), wholeWord.toBool()};
}

size_t qHash(const Correction &c, size_t seed) noexcept
{
    return qHashMulti(seed, c.id, c.from, c.to, c.caseSensitive, c.wholeWord);
}
