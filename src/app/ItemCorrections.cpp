// The correction rules of an item and its text forms.
#include "app/AppModel.h"

#include "export/TextForms.h"
#include "storage/BundleStore.h"

void AppModel::addCorrection(const QString &itemId, const QString &from, const QString &to, bool caseSensitive,
                             bool wholeWord)
{
    if (from.isEmpty())
        return;
    Correction rule;
    rule.from = from;
    rule.to = to;
    rule.caseSensitive = caseSensitive;
    rule.wholeWord = wholeWord;
    updateItem(itemId, [&](HistoryItem &item) { item.corrections.append(rule); });
    persistCorrections(itemId);
}

void AppModel::removeCorrection(const QString &itemId, const QUuid &correctionId)
{
    updateItem(itemId, [&](HistoryItem &item) {
        item.corrections.removeIf([&](const Correction &c) { return c.id == correctionId; });
    });
    persistCorrections(itemId);
}

void AppModel::persistCorrections(const QString &id)
{
    const HistoryItem *item = nullptr;
    for (const HistoryItem &h : m_history) {
        if (h.id == id) {
            item = &h;
            break;
        }
    }
    if (!item && m_current && m_current->id == id)
        item = &*m_current;
    if (item && item->bundleURL)
        BundleStore::saveCorrections(*item->bundleURL, item->corrections);
}

QString AppModel::plainText(const HistoryItem &item, bool withTimestamps)
{
    return TextForms::plainText(item.result, withTimestamps);
}

QString AppModel::srt(const HistoryItem &item)
{
    return TextForms::srt(item.result);
}
