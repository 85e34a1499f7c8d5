#pragma once

#include <QDateTime>
#include <QString>

namespace Format {

// The one date form of the interface, "dd.MM.yyyy HH:mm" in German notation and local
// time, whatever the interface language.
QString date(const QDateTime &date);

} // namespace Format
