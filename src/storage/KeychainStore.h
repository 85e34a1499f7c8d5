#pragma once

#include <QFuture>
#include <QLatin1StringView>
#include <QString>

#include <optional>

// The user's API keys in the desktop's secret store (the Secret Service, through
// QtKeychain): one secret per account name, all under one service name. Nothing is
// reported from here: a key that cannot be stored is simply missing at the next start.
// No key is ever written to a settings file, a log or an output stream.
//
// Called on the main thread, which never waits for the store: each call returns at once
// and its future finishes when the store has answered (follow it with a continuation on
// a context object). The calls take effect one after the other in the order they were
// made, so a load or removal never overtakes the write of an earlier save.
namespace KeychainStore {

inline constexpr QLatin1StringView service{"org.morvane.sagwerk"};
inline constexpr QLatin1StringView anthropicAccount{"anthropic-api-key"};
inline constexpr QLatin1StringView openaiAccount{"openai-api-key"};

// Replaces the account's secret with `value` trimmed of white space and line breaks.
// The old secret is removed first, so a failed write leaves none at all; a value of
// blanks only just removes it.
QFuture<void> save(const QString &value, const QString &account);

// The account's secret, or nothing when there is none, the store cannot be reached, or
// the secret is not valid UTF-8.
QFuture<std::optional<QString>> load(const QString &account);

// Removes the account's secret; a missing one is no failure.
QFuture<void> remove(const QString &account);

} // namespace KeychainStore
