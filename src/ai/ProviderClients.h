#pragma once

#include "core/CancelToken.h"

#include <QByteArray>
#include <QFuture>
#include <QString>

#include <optional>

// The AI providers' HTTP interfaces: one request each, the answer trimmed and never empty.
// A cancel through `control` ends the request under way.
namespace ProviderClients {

QFuture<QString> callAnthropic(const QString &system, const QString &user, const QString &apiKey,
                               const QString &modelId, int maxTokens, const CancelTokenPtr &control = {});
QFuture<QString> callOpenAI(const QString &system, const QString &user, const QString &apiKey,
                            const QString &modelId, int maxTokens, const CancelTokenPtr &control = {});
// The answer's text, or an AIError for a status outside 2xx, a refusal or an answer of
// another shape.
QString readAnthropicAnswer(int status, const QByteArray &body);
QString readOpenAIAnswer(int status, const QByteArray &body);
// The `error.message` of an error body; none for every other shape.
std::optional<QString> extractErrorMessage(const QByteArray &body);

} // namespace ProviderClients
