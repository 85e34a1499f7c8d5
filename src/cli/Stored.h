#pragma once

#include "core/AIModel.h"
#include "core/HistoryItem.h"

#include <QFuture>
#include <QString>

#include <optional>

class AppModel;

// What the commands over a stored transcription share.
namespace Cli {

// The history item of the bundle folder `folder`, or none after saying so on stderr.
std::optional<HistoryItem> storedItem(const AppModel &app, const QString &folder);

// The key for AI work with `provider`: the key store's, else the provider's own variable
// (ANTHROPIC_API_KEY, OPENAI_API_KEY). Never an argument, never printed.
QFuture<QString> apiKey(AIProvider provider);

} // namespace Cli
