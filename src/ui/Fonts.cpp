#include "ui/Fonts.h"

#include <algorithm>

namespace Fonts {

namespace {

QFont scaled(const QFont &base, double factor, double minimum)
{
    QFont f = base;
    if (base.pointSizeF() > 0)
        f.setPointSizeF(std::max(minimum, base.pointSizeF() * factor));
    return f;
}

} // namespace

QFont small(const QFont &base)
{
    return scaled(base, 0.85, 8);
}

QFont caption(const QFont &base)
{
    return scaled(base, 0.8, 7.5);
}

QFont monospacedDigits(QFont font)
{
    font.setFeature(QFont::Tag("tnum"), 1);
    return font;
}

QFont headline(const QFont &base)
{
    QFont f = base;
    f.setBold(true);
    return f;
}

} // namespace Fonts
