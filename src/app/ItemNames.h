#pragma once

#include <QMap>
#include <QString>

struct HistoryItem;

// The names the user gives: the speakers' names of an item and its display name.
namespace ItemNames {

// One line of plain text: a name stands in a header and in front of a colon.
QString oneLine(const QString &name);
// The item's speaker names with every speaker shown as `shown` renamed; a blank name gives
// them their labels back.
QMap<QString, QString> renamedSpeakers(const HistoryItem &item, const QString &shown, const QString &name);

} // namespace ItemNames
