#include "ui/ProcessingScene.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ProcessingScene {

namespace {
double clamp01(double v)
{
    return std::clamp(v, 0.0, 1.0);
}
} // namespace

QColor loadColor(double load)
{
    const double a = clamp01(load);
    return QColor::fromHsvF(float((1 - a) * 0.33), 0.85f, 0.95f, 1.0f);
}

double activity(const QList<double> &cores, double gpu)
{
    double busiest = 0;
    for (double core : cores)
        busiest = std::max(busiest, core);
    return std::max(gpu, busiest);
}

QList<QList<double>> rows(const QList<double> &usages)
{
    const qsizetype perRow = std::max<qsizetype>(1, (usages.size() + 1) / 2);
    QList<QList<double>> result;
    for (qsizetype i = 0; i < usages.size(); i += perRow)
        result.append(usages.mid(i, perRow));
    return result;
}

double waveAmplitude(double fill)
{
    const double f = clamp01(fill);
    return f > 0.02 && f < 0.98 ? 4.0 : 0.0;
}

QPainterPath waveShape(const QSizeF &size, double fill, double phase)
{
    const double w = size.width();
    const double h = size.height();
    const double surface = (1 - clamp01(fill)) * h;
    const double amplitude = waveAmplitude(fill);
    QPainterPath path(QPointF(0, h));
    path.lineTo(0, surface);
    for (int i = 0; i < 45; ++i) {
        const double x = i / 44.0;
        path.lineTo(w * x, surface + amplitude * std::sin(phase * 2.2 + x * std::numbers::pi * 4));
    }
    path.lineTo(w, h);
    path.closeSubpath();
    return path;
}

QList<QLineF> textLines(const QSizeF &size, double fill)
{
    static constexpr double widths[] = {0.55, 0.75, 0.40, 0.65};
    const double w = size.width();
    const double h = size.height();
    const double top = (1 - clamp01(fill)) * h + 10;
    QList<QLineF> lines;
    int i = 0;
    for (double y = h - 12; y > top; y -= 11, ++i)
        lines.append(QLineF(12, y, 12 + (w - 24) * widths[i % 4], y));
    return lines;
}

std::array<Dot, 4> flowDots(const QSizeF &size, double phase, double intensity)
{
    const double c = clamp01(intensity);
    const double r = c * 3 + 2.5;
    std::array<Dot, 4> dots;
    for (int i = 0; i < 4; ++i) {
        double t = phase * (c * 0.8 + 0.4) + i * 0.25;
        t -= std::floor(t);
        dots[i] = {QPointF(size.width() * t, size.height() * 0.5 + std::sin(2 * std::numbers::pi * t) * 4), r,
                   c * 0.55 + 0.35};
    }
    return dots;
}

double phaseNow()
{
    static const qint64 reference = QDateTime(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::UTC).toMSecsSinceEpoch();
    return double(QDateTime::currentMSecsSinceEpoch() - reference) / 1000.0;
}

} // namespace ProcessingScene
