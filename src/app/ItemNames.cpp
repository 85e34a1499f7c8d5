#include "app/ItemNames.h"

#include "app/AppModel.h"
#include "core/Text.h"
#include "review/TranscriptLines.h"
#include "storage/BundleStore.h"

namespace {

// One line of plain text: a name stands in a header and in front of a colon.
QString oneLine(const QString &name)
{
    QString line = name;
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    return line.trimmed();
}

const HistoryItem *find(const AppModel &app, const QString &itemId)
{
    for (const HistoryItem &h : app.history()) {
        if (h.id == itemId)
            return &h;
    }
    return app.current() && app.current()->id == itemId ? &*app.current() : nullptr;
}

} // namespace

void ItemNames::setSpeakerNames(AppModel &app, QString itemId, const QMap<QString, QString> &names)
{
    app.updateItem(itemId, [&](HistoryItem &item) { item.speakerNames = names; });
    if (const HistoryItem *item = find(app, itemId); item && item->bundleURL)
        BundleStore::saveSpeakerNames(*item->bundleURL, item->speakerNames);
}

void ItemNames::renameSpeaker(AppModel &app, QString itemId, const QString &shown, const QString &name)
{
    const HistoryItem *item = find(app, itemId);
    if (!item)
        return;
    const QString wanted = oneLine(name);
    QMap<QString, QString> names = item->speakerNames;
    for (const QString &label : TranscriptLines::labelsShownAs(*item, shown)) {
        if (wanted.isEmpty() || wanted == label)
            names.remove(label);
        else
            names.insert(label, wanted);
    }
    if (names != item->speakerNames)
        setSpeakerNames(app, itemId, names);
}

void ItemNames::renameItem(AppModel &app, QString itemId, const QString &name)
{
    const QString wanted = oneLine(name);
    const HistoryItem *item = find(app, itemId);
    if (!item || wanted.isEmpty() || wanted == item->fileName)
        return;
    app.updateItem(itemId, [&](HistoryItem &h) { h.fileName = wanted; });
    if (item = find(app, itemId); item && item->bundleURL)
        BundleStore::saveDisplayName(*item->bundleURL, wanted);
}
