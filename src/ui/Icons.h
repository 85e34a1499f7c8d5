#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QPalette;
class QRectF;

// Symbols and icons of the screens. Symbols go by the names the screens are described
// with ("trash", "cpu", ...): taken from the desktop's icon theme and drawn in one
// colour, in the text colour unless a screen asks for another; a name the theme cannot
// serve gives an empty picture, and the layout stays as it is. A few symbols are drawn
// here, so that they look the same on every desktop, and so are a few icons.
namespace Icons {

// Makes the desktop's icon theme the source of symbols, with Breeze behind it for the
// names the desktop's theme lacks (or when there is no desktop theme).
void useIconTheme();

// `symbol` at `size` logical pixels in `color`, for a screen of `devicePixelRatio`.
QPixmap pixmap(const QString &symbol, int size, const QColor &color, qreal devicePixelRatio = 1.0);

// An icon for buttons and lists: `color` normally, `selected` on a selected row.
QIcon icon(const QString &symbol, const QColor &color, const QColor &selected = QColor());
// An icon in the palette's text colour, dimmed when its control is disabled.
QIcon icon(const QString &symbol, const QPalette &palette);

// The drawn processor chip, at any scale: for scenes that zoom it.
void paintChip(QPainter &painter, const QRectF &rect, const QColor &color);

QIcon playCircle(const QColor &color, int size = 28);
QIcon pauseCircle(const QColor &color, int size = 28);
QIcon xmarkCircle(const QColor &color, int size = 14);
QIcon checkmark(const QColor &color, int size = 16);
// A theme icon by its freedesktop name.
QIcon themed(const QString &name);

} // namespace Icons
