#pragma once

#include "LocalServer.h"

#include "storage/KeychainStore.h"

// What the key store holds for `account`, waited for in the test's own event loop. A store
// that never answers reads as a text no key has, so that every check on it fails.
inline std::optional<QString> storedKey(const QString &account)
{
    const QFuture<std::optional<QString>> answer = KeychainStore::load(account);
    if (!waitFor([&] { return answer.isFinished(); }))
        return QStringLiteral("(no answer from the key store)");
    return answer.result();
}
