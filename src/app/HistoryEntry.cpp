#include "app/HistoryEntry.h"

#include "storage/BundleStore.h"

HistoryEntry::Made HistoryEntry::create(const QString &displayName, const QDateTime &createdAt, const QString &audio,
                                        const TranscriptionResult &result)
{
    try {
        return {BundleStore::historyItem(BundleStore::create(displayName, createdAt, audio, result)), true};
    } catch (...) {
        // Said nowhere: the item on show is all the user needs now.
    }
    Made made;
    made.item.id = uuidText(QUuid::createUuid());
    made.item.fileName = displayName;
    made.item.date = createdAt;
    made.item.result = result;
    return made;
}
