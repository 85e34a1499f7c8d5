#pragma once

#include <QFont>

// The text sizes of the screens, relative to the interface font.
namespace Fonts {

// A little smaller than the body: the time column.
QFont small(const QFont &base);
// Smaller still: metadata, times of the player, chips, previews.
QFont caption(const QFont &base);
// Digits of equal width, so that running times do not jitter.
QFont monospacedDigits(QFont font);
// A headline: the body size, bold.
QFont headline(const QFont &base);

} // namespace Fonts
