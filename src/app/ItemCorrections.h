#pragma once

#include <QString>
#include <QUuid>

class AppModel;

// The find-and-replace rules of an item: changed in the history and in `current` alike,
// and written into the item's bundle, one patch after the other on the main thread.
class ItemCorrections {
public:
    // An empty `from` adds nothing. The ids are taken by value: they may be the current
    // item's, which the change replaces.
    static void add(AppModel &app, QString itemId, const QString &from, const QString &to,
                    bool caseSensitive, bool wholeWord);
    static void remove(AppModel &app, QString itemId, const QUuid &correctionId);

private:
    static void persist(const AppModel &app, const QString &itemId);
};
