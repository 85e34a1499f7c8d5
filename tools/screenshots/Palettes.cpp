#include "Palettes.h"

#include <QApplication>
#include <QStyle>

namespace Palettes {

QPalette light()
{
    return QApplication::style()->standardPalette();
}

QPalette dark()
{
    QPalette p;
    const QColor window(45, 45, 48), base(30, 30, 32), text(235, 235, 240), accent(10, 132, 255);
    const QColor disabled(130, 130, 136);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, QColor(52, 52, 56));
    p.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, disabled);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, QColor(58, 58, 62));
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, Qt::white);
    p.setColor(QPalette::Light, QColor(80, 80, 84));
    p.setColor(QPalette::Midlight, QColor(66, 66, 70));
    p.setColor(QPalette::Mid, QColor(40, 40, 42));
    p.setColor(QPalette::Dark, QColor(25, 25, 27));
    p.setColor(QPalette::Shadow, Qt::black);
    p.setColor(QPalette::Highlight, accent);
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Accent, accent);
    p.setColor(QPalette::Link, accent);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, disabled);
    p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(70, 70, 74));
    return p;
}

} // namespace Palettes
