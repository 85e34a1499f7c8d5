#include "ui/Look.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QVBoxLayout>

namespace Look {

namespace {

// Steps of the system type scale, relative to the body text.
double scale(TextSize size)
{
    switch (size) {
    case TextSize::largeTitle: return 2.0;
    case TextSize::title: return 1.7;
    case TextSize::title2: return 1.3;
    case TextSize::title3: return 1.15;
    case TextSize::headline: return 1.0;
    case TextSize::subheadline: return 0.95;
    case TextSize::body: return 1.0;
    case TextSize::callout: return 0.95;
    case TextSize::caption: return 0.88;
    case TextSize::caption2: return 0.82;
    }
    return 1.0;
}

QColor mix(const QColor &a, const QColor &b, double t)
{
    return QColor::fromRgbF(float(a.redF() * (1 - t) + b.redF() * t), float(a.greenF() * (1 - t) + b.greenF() * t),
                            float(a.blueF() * (1 - t) + b.blueF() * t));
}

} // namespace

QFont font(TextSize size, bool bold)
{
    QFont f = QApplication::font();
    const double base = f.pointSizeF() > 0 ? f.pointSizeF() : 10.0;
    // Small text stays legible on screens with a small base font.
    f.setPointSizeF(std::max(7.5, base * scale(size)));
    if (bold || size == TextSize::headline)
        f.setBold(true);
    return f;
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor color(const QPalette &palette, Tone tone)
{
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::text: return palette.color(QPalette::WindowText);
    case Tone::secondary: return mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.42);
    case Tone::accent: return palette.color(QPalette::Accent);
    case Tone::green: return dark ? QColor(48, 209, 88) : QColor(28, 140, 58);
    case Tone::orange: return dark ? QColor(255, 159, 10) : QColor(196, 98, 0);
    case Tone::yellow: return dark ? QColor(255, 214, 10) : QColor(230, 170, 0);
    }
    return palette.color(QPalette::WindowText);
}

QColor wash(const QPalette &palette, double opacity)
{
    QColor c = color(palette, Tone::secondary);
    c.setAlphaF(float(opacity));
    return c;
}

void style(QLabel *label, TextSize size, Tone tone, bool bold)
{
    label->setFont(font(size, bold));
    setTone(label, tone);
}

void setTone(QWidget *widget, Tone tone)
{
    // The window's palette, not the widget's own: the widget may carry an older tone.
    const QPalette base = widget->window() == widget ? QApplication::palette() : widget->window()->palette();
    QPalette p = widget->palette();
    const QColor c = color(base, tone);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        p.setColor(role, c);
    widget->setPalette(p);
}

bool isLookChange(const QEvent *event)
{
    return event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
}

QFrame *divider(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    return line;
}

QVBoxLayout *flushColumn(QWidget *widget)
{
    auto *column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

RoundedBox::RoundedBox(double opacity, int radius, QWidget *parent)
    : QFrame(parent), m_opacity(opacity), m_radius(radius)
{
}

void RoundedBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(wash(palette(), m_opacity));
    painter.drawRoundedRect(QRectF(rect()), m_radius, m_radius);
}

} // namespace Look
