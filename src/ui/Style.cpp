#include "ui/Style.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPalette>
#include <QVBoxLayout>

#include <algorithm>

namespace Style {

namespace {

// Steps of the type scale, relative to the body text.
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

QFont font(TextSize size, QFont::Weight weight)
{
    QFont f = QApplication::font();
    const double base = f.pointSizeF() > 0 ? f.pointSizeF() : 10.0;
    // Small text stays legible on screens with a small base font.
    f.setPointSizeF(std::max(7.5, base * scale(size)));
    f.setWeight(size == TextSize::headline ? std::max(weight, QFont::Bold) : weight);
    return f;
}

QFont withTabularDigits(QFont font)
{
    font.setFeature(QFont::Tag("tnum"), 1);
    return font;
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

QColor withAlpha(QColor color, double opacity)
{
    color.setAlphaF(float(std::clamp(opacity, 0.0, 1.0) * color.alphaF()));
    return color;
}

void style(QLabel *label, TextSize size, Tone tone, QFont::Weight weight)
{
    label->setFont(font(size, weight));
    setTone(label, tone);
}

void setTone(QWidget *widget, Tone tone)
{
    // The window's palette, not the widget's own: the widget may carry an older tone.
    const QPalette base = widget->window() == widget ? QApplication::palette() : widget->window()->palette();
    setTextColor(widget, color(base, tone));
}

void setTextColor(QWidget *widget, const QColor &color)
{
    QPalette p = widget->palette();
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        p.setColor(role, color);
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

void styleAlert(QMessageBox *box)
{
    if (auto *title = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
    }
    if (auto *message = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")))
        message->setMinimumWidth(300);
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
    painter.setBrush(withAlpha(color(palette(), Tone::secondary), m_opacity));
    painter.drawRoundedRect(QRectF(rect()), m_radius, m_radius);
}

} // namespace Style
