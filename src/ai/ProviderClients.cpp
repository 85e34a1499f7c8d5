// The two providers' interfaces: one POST each, the answer read field by field.
#include "ai/ProviderClients.h"

#include "ai/AIError.h"
#include "core/Network.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ProviderClients {

namespace {

constexpr int requestTimeoutMs = 180'000;

// The provider's address; the variables its own client libraries read replace it.
QUrl endpoint(const char *variable, const QString &fallback, const QString &path)
{
    QString base = qEnvironmentVariable(variable);
    if (base.isEmpty())
        base = fallback;
    while (base.endsWith(u'/'))
        base.chop(1);
    return QUrl(base + path);
}

using Reader = QString (*)(int, const QByteArray &);

QFuture<QString> post(const QUrl &url, const QList<std::pair<QByteArray, QByteArray>> &headers,
                      const QJsonObject &body, Reader read, const CancelTokenPtr &control)
{
    Network::Request request;
    request.url = url;
    request.headers = headers;
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    // The request's timeout counts silence, as the providers' own clients do.
    request.stallTimeoutMs = requestTimeoutMs;
    request.control = control;
    return Network::fetch(request)
        .then([read](const Network::Response &response) {
            if (!response.status)
                throw AIError::badResponse();
            return read(*response.status, response.body);
        })
        .onFailed([](const Network::Error &error) -> QString {
            throw AIError::network(error.errorDescription());
        });
}

// The body's root object; a status outside 2xx is an error with the body's message.
QJsonObject answerObject(int status, const QByteArray &body)
{
    if (status < 200 || status > 299)
        throw AIError::http(status, extractErrorMessage(body).value_or(QStringLiteral("unbekannt")));
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        throw AIError::badResponse();
    return document.object();
}

QString nonEmpty(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        throw AIError::badResponse();
    return trimmed;
}

} // namespace

std::optional<QString> extractErrorMessage(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    const QJsonValue message = document.object().value(u"error").toObject().value(u"message");
    if (!document.isObject() || !document.object().value(u"error").isObject() || !message.isString())
        return std::nullopt;
    return message.toString();
}

QString readAnthropicAnswer(int status, const QByteArray &body)
{
    const QJsonObject root = answerObject(status, body);
    if (root.value(u"stop_reason") == QJsonValue(QStringLiteral("refusal")))
        throw AIError::refusal();
    const QJsonValue content = root.value(u"content");
    if (!content.isArray())
        throw AIError::badResponse();
    QString text;
    for (const QJsonValue &block : content.toArray()) {
        if (!block.isObject())
            throw AIError::badResponse();
        const QJsonObject object = block.toObject();
        if (object.value(u"type") == QJsonValue(QStringLiteral("text")) && object.value(u"text").isString())
            text += object.value(u"text").toString();
    }
    return nonEmpty(text);
}

QString readOpenAIAnswer(int status, const QByteArray &body)
{
    const QJsonObject root = answerObject(status, body);
    const QJsonValue choices = root.value(u"choices");
    if (!choices.isArray() || choices.toArray().isEmpty())
        throw AIError::badResponse();
    for (const QJsonValue &choice : choices.toArray()) {
        if (!choice.isObject())
            throw AIError::badResponse();
    }
    const QJsonObject first = choices.toArray().first().toObject();
    if (first.value(u"finish_reason") == QJsonValue(QStringLiteral("content_filter")))
        throw AIError::refusal();
    const QJsonValue content = first.value(u"message").toObject().value(u"content");
    if (!first.value(u"message").isObject() || !content.isString())
        throw AIError::badResponse();
    return nonEmpty(content.toString());
}

QFuture<QString> callAnthropic(const QString &system, const QString &user, const QString &apiKey,
                               const QString &modelId, int maxTokens, const CancelTokenPtr &control)
{
    const QJsonObject body{
        {QStringLiteral("model"), modelId},
        {QStringLiteral("max_tokens"), maxTokens},
        {QStringLiteral("system"), system},
        {QStringLiteral("messages"),
         QJsonArray{QJsonObject{{QStringLiteral("role"), QStringLiteral("user")}, {QStringLiteral("content"), user}}}},
    };
    return post(endpoint("ANTHROPIC_BASE_URL", QStringLiteral("https://api.anthropic.com"), QStringLiteral("/v1/messages")),
                {{"x-api-key", apiKey.toUtf8()},
                 {"anthropic-version", "2023-06-01"},
                 {"content-type", "application/json"}},
                body, readAnthropicAnswer, control);
}

QFuture<QString> callOpenAI(const QString &system, const QString &user, const QString &apiKey,
                            const QString &modelId, int maxTokens, const CancelTokenPtr &control)
{
    const QJsonObject body{
        {QStringLiteral("model"), modelId},
        {QStringLiteral("max_tokens"), maxTokens},
        {QStringLiteral("messages"),
         QJsonArray{QJsonObject{{QStringLiteral("role"), QStringLiteral("system")}, {QStringLiteral("content"), system}},
                    QJsonObject{{QStringLiteral("role"), QStringLiteral("user")}, {QStringLiteral("content"), user}}}},
    };
    return post(endpoint("OPENAI_BASE_URL", QStringLiteral("https://api.openai.com/v1"), QStringLiteral("/chat/completions")),
                {{"Authorization", "Bearer " + apiKey.toUtf8()}, {"content-type", "application/json"}}, body,
                readOpenAIAnswer, control);
}

} // namespace ProviderClients
