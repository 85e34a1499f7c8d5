#pragma once

#include <QPalette>

// The two looks the screens are checked in: Fusion's own light palette and a dark one.
namespace Palettes {

QPalette light();
QPalette dark();

} // namespace Palettes
