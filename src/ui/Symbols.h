#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

// Pictures for the symbol names the screens are described with ("trash", "cpu", ...),
// taken from the desktop's icon theme and drawn in one colour, as symbols are: in the
// text colour unless a screen asks for another. A name the theme cannot serve gives
// an empty picture, and the layout stays as it is.
namespace Symbols {

// The theme names tried for a symbol, best first.
QStringList themeNames(const QString &symbol);

// `symbol` at `size` logical pixels in `color`, for a screen of `devicePixelRatio`.
QPixmap pixmap(const QString &symbol, int size, const QColor &color, qreal devicePixelRatio = 1.0);

// An icon for buttons and lists: `color` normally, `selected` on a selected row.
QIcon icon(const QString &symbol, const QColor &color, const QColor &selected = QColor());

} // namespace Symbols
