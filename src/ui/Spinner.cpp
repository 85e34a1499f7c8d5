#include "ui/Spinner.h"

#include <QPainter>

#include <algorithm>

Spinner::Spinner(int size, QWidget *parent) : QWidget(parent)
{
    setFixedSize(size, size);
    m_timer.setInterval(80);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % strokes;
        update();
    });
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(width() / 2.0, height() / 2.0);
    const double radius = width() / 2.0;
    QColor color = palette().color(QPalette::WindowText);
    for (int i = 0; i < strokes; ++i) {
        color.setAlphaF(float(0.15 + 0.85 * double((i - m_step + strokes) % strokes) / (strokes - 1)));
        p.setPen(QPen(color, std::max(1.5, radius / 4), Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(0, -radius * 0.45), QPointF(0, -radius * 0.9));
        p.rotate(360.0 / strokes);
    }
}
