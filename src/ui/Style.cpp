#include "ui/Style.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPalette>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

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

// Relative luminance as the accessibility guidelines define it.
double luminance(const QColor &c)
{
    auto channel = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

// The palette's accent where it reads as a colour on the window. A desktop theme may
// leave the accent unset (black) or give one as dark as the window in dark mode; then
// the highlight's hue, else the system blue, brightened or darkened until it reads.
QColor accent(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    QColor chosen = isDark(palette) ? QColor(10, 132, 255) : QColor(0, 122, 255);
    for (const QColor &candidate : {palette.color(QPalette::Accent), palette.color(QPalette::Highlight)}) {
        if (candidate.hsvSaturationF() >= 0.25 && candidate.valueF() >= 0.2) {
            chosen = candidate;
            break;
        }
    }
    const QColor toward = isDark(palette) ? QColor(Qt::white) : QColor(Qt::black);
    for (int step = 0; step < 10 && contrast(chosen, window) < 3.0; ++step)
        chosen = mix(chosen, toward, 0.15);
    return chosen;
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

double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
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
    case Tone::accent: return accent(palette);
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

void markChosen(QAbstractButton *button, bool chosen)
{
    // An empty palette sets no role: the button takes its parent's again.
    QPalette own;
    if (chosen) {
        const QWidget *parent = button->parentWidget();
        const QColor fill = color(parent ? parent->palette() : QApplication::palette(), Tone::accent);
        const QColor white(Qt::white), black(Qt::black);
        own.setColor(QPalette::Button, fill);
        own.setColor(QPalette::ButtonText, contrast(fill, white) >= contrast(fill, black) ? white : black);
    }
    button->setPalette(own);
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
