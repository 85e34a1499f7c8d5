#pragma once

#include <QColor>
#include <QLineF>
#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QSizeF>

#include <array>

// The geometry and colours of the processing scene: functions of the inputs and the
// frame's time alone, so that every frame is drawn from scratch.
namespace ProcessingScene {

// One scale for every load, 0 (idle, green) to 1 (full, red).
QColor loadColor(double load);

// The larger of the GPU load and the busiest core; 0 with neither.
double activity(const QList<double> &cores, double gpu);

// The cores in two rows of equal length, the first one longer when the count is odd.
QList<QList<double>> rows(const QList<double> &usages);

// A flat surface for an empty or a full jar, a wave in between.
double waveAmplitude(double fill);
// The liquid in a jar of `size`, filled to `fill`.
QPainterPath waveShape(const QSizeF &size, double fill, double phase);
// Lines of symbolic text under the liquid's surface, from the bottom up.
QList<QLineF> textLines(const QSizeF &size, double fill);

struct Dot {
    QPointF centre;
    double radius = 0;
    double opacity = 0;
};
// Four dots streaming from left to right, faster, larger and stronger with `intensity`.
std::array<Dot, 4> flowDots(const QSizeF &size, double phase, double intensity);

// Seconds of wall-clock time since the first day of 2001, the scene's only clock.
double phaseNow();

} // namespace ProcessingScene
