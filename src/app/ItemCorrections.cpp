#include "app/ItemCorrections.h"

#include "app/AppModel.h"
#include "storage/BundleStore.h"

void ItemCorrections::add(AppModel &app, QString itemId, const QString &from, const QString &to,
                          bool caseSensitive, bool wholeWord)
{
    if (from.isEmpty())
        return;
    Correction rule;
    rule.from = from;
    rule.to = to;
    rule.caseSensitive = caseSensitive;
    rule.wholeWord = wholeWord;
    app.updateItem(itemId, [&](HistoryItem &item) { item.corrections.append(rule); });
    persist(app, itemId);
}

void ItemCorrections::remove(AppModel &app, QString itemId, const QUuid &correctionId)
{
    app.updateItem(itemId, [&](HistoryItem &item) {
        item.corrections.removeIf([&](const Correction &c) { return c.id == correctionId; });
    });
    persist(app, itemId);
}

void ItemCorrections::persist(const AppModel &app, const QString &itemId)
{
    const HistoryItem *item = nullptr;
    for (const HistoryItem &h : app.history()) {
        if (h.id == itemId) {
            item = &h;
            break;
        }
    }
    if (!item && app.current() && app.current()->id == itemId)
        item = &*app.current();
    if (item && item->bundleURL)
        BundleStore::saveCorrections(*item->bundleURL, item->corrections);
}
