#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

// Icons of the screens: a few drawn in a given colour, the rest from the desktop's
// icon theme with a drawn or empty fallback.
namespace Icons {

QIcon playCircle(const QColor &color, int size = 28);
QIcon pauseCircle(const QColor &color, int size = 28);
QIcon xmarkCircle(const QColor &color, int size = 14);
QIcon checkmark(const QColor &color, int size = 16);
// A theme icon by its freedesktop name.
QIcon themed(const QString &name);

} // namespace Icons
