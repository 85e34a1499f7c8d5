#pragma once

#include "core/HistoryItem.h"

#include <QDateTime>
#include <QString>

// A finished transcript becomes an item of the history, the same way for every job: its
// bundle is written with a copy of the audio, and the item is read from it. Where the
// bundle cannot be made (a full disk), the item lives in memory only and is gone at the
// next start; the text is on show all the same. Blocks: call it on the pool.
namespace HistoryEntry {

struct Made {
    HistoryItem item;
    // False for an item in memory only.
    bool stored = false;
};

Made create(const QString &displayName, const QDateTime &createdAt, const QString &audio,
            const TranscriptionResult &result);

} // namespace HistoryEntry
