// Draws MorvaneLogo.png, the maker's mark in the About window: a white "M" over a faint
// waveform on a deep blue-to-teal tile. Run once; the picture is kept
// in the sources:  make-morvane-logo src/ui/resources/MorvaneLogo.png
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-morvane-logo OUT.png\n");
        return 2;
    }
    constexpr int side = 512;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    // The tile.
    const QRectF tile(16, 16, side - 32, side - 32);
    QPainterPath shape;
    shape.addRoundedRect(tile, 112, 112);
    QLinearGradient sea(tile.topLeft(), tile.bottomRight());
    sea.setColorAt(0.0, QColor(0x2b, 0x3a, 0x8c));
    sea.setColorAt(0.55, QColor(0x1f, 0x6f, 0xa8));
    sea.setColorAt(1.0, QColor(0x19, 0xa8, 0x9d));
    painter.fillPath(shape, sea);
    // A soft light from the upper left.
    QRadialGradient light(tile.topLeft() + QPointF(120, 90), 380);
    light.setColorAt(0.0, QColor(255, 255, 255, 70));
    light.setColorAt(1.0, QColor(255, 255, 255, 0));
    painter.fillPath(shape, light);

    // A quiet waveform behind: nine bars, mirrored about the middle line.
    const double heights[] = {0.16, 0.30, 0.46, 0.34, 0.58, 0.34, 0.46, 0.30, 0.16};
    const double barWidth = 22;
    const double gap = 18;
    const double total = 9 * barWidth + 8 * gap;
    const double left = (side - total) / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 56));
    for (int i = 0; i < 9; ++i) {
        const double height = heights[i] * (side - 32);
        const QRectF bar(left + i * (barWidth + gap), side / 2.0 - height / 2, barWidth, height);
        painter.drawRoundedRect(bar, barWidth / 2, barWidth / 2);
    }

    // In front, the maker's "M" in one white stroke with round ends.
    QPainterPath m;
    m.moveTo(150, 352);
    m.lineTo(150, 168);
    m.lineTo(256, 292);
    m.lineTo(362, 168);
    m.lineTo(362, 352);
    QPen pen(QColor(255, 255, 255, 245), 46, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(m);
    painter.end();
    return image.save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
