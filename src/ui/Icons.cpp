#include "ui/Icons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace Icons {

namespace {

// Draws at twice the size, so that the icon stays sharp on high-density screens.
template <typename Draw>
QIcon drawn(int size, Draw draw)
{
    QPixmap pixmap(size * 2, size * 2);
    pixmap.fill(Qt::transparent);
    pixmap.setDevicePixelRatio(2);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    draw(p, QRectF(0, 0, size, size));
    p.end();
    return QIcon(pixmap);
}

// A filled disc over all of `r`; gives its width, the unit of what goes on it.
double disc(QPainter &p, const QRectF &r, const QColor &color)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawEllipse(r.adjusted(0.5, 0.5, -0.5, -0.5));
    return r.width();
}

} // namespace

QIcon playCircle(const QColor &color, int size)
{
    return drawn(size, [&](QPainter &p, const QRectF &r) {
        const double s = disc(p, r, color);
        QPainterPath triangle;
        triangle.moveTo(s * 0.40, s * 0.30);
        triangle.lineTo(s * 0.72, s * 0.50);
        triangle.lineTo(s * 0.40, s * 0.70);
        triangle.closeSubpath();
        p.setBrush(Qt::white);
        p.drawPath(triangle);
    });
}

QIcon pauseCircle(const QColor &color, int size)
{
    return drawn(size, [&](QPainter &p, const QRectF &r) {
        const double s = disc(p, r, color);
        p.setBrush(Qt::white);
        p.drawRoundedRect(QRectF(s * 0.35, s * 0.30, s * 0.10, s * 0.40), s * 0.03, s * 0.03);
        p.drawRoundedRect(QRectF(s * 0.55, s * 0.30, s * 0.10, s * 0.40), s * 0.03, s * 0.03);
    });
}

QIcon xmarkCircle(const QColor &color, int size)
{
    return drawn(size, [&](QPainter &p, const QRectF &r) {
        const double s = disc(p, r, color);
        p.setCompositionMode(QPainter::CompositionMode_Clear);
        p.setPen(QPen(Qt::black, s * 0.11, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(s * 0.34, s * 0.34), QPointF(s * 0.66, s * 0.66));
        p.drawLine(QPointF(s * 0.66, s * 0.34), QPointF(s * 0.34, s * 0.66));
    });
}

QIcon checkmark(const QColor &color, int size)
{
    return drawn(size, [&](QPainter &p, const QRectF &r) {
        const double s = r.width();
        p.setPen(QPen(color, s * 0.12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath tick;
        tick.moveTo(s * 0.20, s * 0.52);
        tick.lineTo(s * 0.42, s * 0.74);
        tick.lineTo(s * 0.80, s * 0.28);
        p.drawPath(tick);
    });
}

QIcon themed(const QString &name)
{
    return QIcon::fromTheme(name);
}

} // namespace Icons
