#pragma once

#include <QMap>
#include <QString>

class AppModel;

// The names the user gives: the speakers' names of an item and its display name. Changed
// in the history and in `current` alike and written into the item's bundle.
class ItemNames {
public:
    // Replaces the item's speaker names as a whole (also the way back for an undo).
    static void setSpeakerNames(AppModel &app, QString itemId, const QMap<QString, QString> &names);
    // Renames every speaker shown as `shown`; a blank name gives them their labels back.
    static void renameSpeaker(AppModel &app, QString itemId, const QString &shown, const QString &name);
    // A blank name changes nothing.
    static void renameItem(AppModel &app, QString itemId, const QString &name);
};
