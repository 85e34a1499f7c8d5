#include "ui/ProcessingVisualizer.h"
#include "core/Tr.h"

#include "ui/Icons.h"
#include "ui/ProcessingScene.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QToolTip>

#include <cmath>
#include <numbers>
#include <numeric>

using namespace ProcessingScene;
using Style::withAlpha;

namespace {

constexpr double jarWidth = 96;
constexpr double jarHeight = 150;
constexpr double gap = 8; // between the members of the row
constexpr double dotsWidth = 56;
constexpr double centreMinWidth = 250;
constexpr double badgeWidth = 116;
constexpr double gridGap = 14; // between the badges and the grid
constexpr double chipGap = 6;
constexpr double maxWidth = 660;
constexpr double maxHeight = 300;

// The jars are brighter than the screens' green and blue: they are the scene's light.
QColor sourceTint(const QPalette &palette)
{
    return Style::isDark(palette) ? QColor(10, 132, 255) : QColor(0, 122, 255);
}

QColor resultTint(const QPalette &palette)
{
    return Style::isDark(palette) ? QColor(48, 209, 88) : QColor(52, 199, 89);
}

double stageHeight()
{
    return jarHeight + gap + QFontMetricsF(Style::font(Style::TextSize::caption)).height();
}

double badgeHeight()
{
    return 10 + 26 + 3 + QFontMetricsF(Style::font(Style::TextSize::caption, QFont::Bold)).height() + 3
        + QFontMetricsF(Style::font(Style::TextSize::caption2)).height() + 10;
}

// A soft halo of `color` around `rect`: a radial fade from the rectangle's edge outwards.
void glow(QPainter &painter, const QRectF &rect, const QColor &color, double opacity, double radius)
{
    if (opacity <= 0.01 || radius <= 0.1)
        return;
    const double inner = std::max(rect.width(), rect.height()) / 2;
    const double outer = inner + radius;
    QRadialGradient gradient(rect.center(), outer);
    gradient.setColorAt(0, withAlpha(color, opacity * 0.7));
    gradient.setColorAt(inner / outer, withAlpha(color, opacity * 0.45));
    gradient.setColorAt(1, withAlpha(color, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(rect.center(), outer, outer);
}

// A symbol scaled by `scale` about the centre of `rect`.
void symbol(QPainter &painter, const QString &name, const QRectF &rect, const QColor &color, double scale = 1.0)
{
    painter.save();
    painter.translate(rect.center());
    painter.scale(scale, scale);
    const QRectF box(-rect.width() / 2, -rect.height() / 2, rect.width(), rect.height());
    if (name == QLatin1String("cpu")) {
        Icons::paintChip(painter, box, color);
    } else {
        const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
        const QPixmap pixmap = Icons::pixmap(name, qRound(rect.height()), color, dpr);
        painter.drawPixmap(box.topLeft(), pixmap);
    }
    painter.restore();
}

void liquidJar(QPainter &painter, const QRectF &rect, double fill, const QColor &tint, double phase, bool showText,
               const QColor &primary)
{
    QPainterPath jar;
    jar.addRoundedRect(rect, 18, 18);

    // The glow, thrown outwards from the jar's edge.
    painter.setBrush(Qt::NoBrush);
    for (int k = 1; k <= 8; ++k) {
        const double fade = 1.0 - k / 9.0;
        painter.setPen(QPen(withAlpha(tint, 0.35 * fade * fade * 0.35), 2));
        painter.drawRoundedRect(rect.adjusted(-k, -k, k, k), 18 + k, 18 + k);
    }

    painter.save();
    painter.setClipPath(jar);
    painter.translate(rect.topLeft());
    const QSizeF size = rect.size();

    QLinearGradient liquid(0, 0, 0, size.height());
    liquid.setColorAt(0, withAlpha(tint, 0.9));
    liquid.setColorAt(1, withAlpha(tint, 0.55));
    painter.setPen(Qt::NoPen);
    painter.setBrush(liquid);
    painter.drawPath(waveShape(size, fill, phase));

    if (showText) {
        QPen pen(withAlpha(Qt::white, 0.6), 2);
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        painter.drawLines(textLines(size, fill));
    }

    QLinearGradient gloss(0, 0, size.width() * 0.6, size.height());
    gloss.setColorAt(0, withAlpha(Qt::white, 0.12));
    gloss.setColorAt(1, Qt::transparent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gloss);
    painter.drawRect(QRectF(QPointF(0, 0), size));
    painter.restore();

    painter.setPen(QPen(withAlpha(primary, 0.28), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 18, 18);
}

void flow(QPainter &painter, const QRectF &rect, double phase, double intensity, const QColor &accent)
{
    painter.setPen(Qt::NoPen);
    for (const Dot &dot : flowDots(rect.size(), phase, intensity)) {
        painter.setBrush(withAlpha(accent, dot.opacity));
        painter.drawEllipse(rect.topLeft() + dot.centre, dot.radius, dot.radius);
    }
}

void badge(QPainter &painter, const QRectF &rect, const QString &title, const QString &subtitle, const QString &icon,
           double activity, double phase, bool dim, const QPalette &palette)
{
    const double a = dim ? 0.0 : std::clamp(activity, 0.0, 1.0);
    const QColor color = dim ? Style::color(palette, Style::Tone::secondary) : loadColor(a);

    painter.setPen(QPen(withAlpha(color, a * 0.5 + 0.3), 1));
    painter.setBrush(withAlpha(color, (a + 0.3) * 0.1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 12, 12);

    const QRectF symbolRect(rect.center().x() - 13, rect.top() + 10, 26, 26);
    glow(painter, symbolRect, color, a, a * 12);
    symbol(painter, icon, symbolRect, color, a * 0.06 * std::sin(phase * 6) + 1);

    const QFont titleFont = Style::font(Style::TextSize::caption, QFont::Bold);
    const QFont subtitleFont = Style::font(Style::TextSize::caption2);
    const double titleHeight = QFontMetricsF(titleFont).height();
    const double subtitleHeight = QFontMetricsF(subtitleFont).height();
    double y = symbolRect.bottom() + 3;
    painter.setFont(titleFont);
    painter.setPen(Style::color(palette, Style::Tone::text));
    painter.drawText(QRectF(rect.left(), y, rect.width(), titleHeight), Qt::AlignCenter, title);
    y += titleHeight + 3;
    painter.setFont(subtitleFont);
    painter.setPen(Style::color(palette, Style::Tone::secondary));
    // A device name can be longer than the badge is wide.
    const QString shown = QFontMetricsF(subtitleFont).elidedText(subtitle, Qt::ElideRight, rect.width() - 12);
    painter.drawText(QRectF(rect.left(), y, rect.width(), subtitleHeight), Qt::AlignCenter, shown);
}

void chip(QPainter &painter, const QRectF &rect, double u, double phase)
{
    const double scale = rect.width() / 30.0;
    const QColor color = loadColor(u);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withAlpha(color, u * 0.14));
    painter.drawRoundedRect(rect, 6 * scale, 6 * scale);
    const double side = 19 * scale;
    const QRectF symbolRect(rect.center().x() - side / 2, rect.center().y() - side / 2, side, side);
    glow(painter, symbolRect, color, u * 0.9, u * 7 * scale);
    symbol(painter, QStringLiteral("cpu"), symbolRect, withAlpha(color, u * 0.65 + 0.35),
           u * 0.1 * std::sin(u * 6 + phase * 9) + 1);
}

void spinner(QPainter &painter, const QPointF &centre, double phase, const QColor &color)
{
    // Twelve spokes, the brightest one turning once a second.
    const int lead = int(std::floor(phase * 12)) % 12;
    for (int i = 0; i < 12; ++i) {
        const int age = (lead - i + 12) % 12;
        QPen pen(withAlpha(color, 1.0 - age / 13.0), 2);
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        const double angle = i * std::numbers::pi / 6;
        const QPointF dir(std::sin(angle), -std::cos(angle));
        painter.drawLine(centre + dir * 4.5, centre + dir * 9);
    }
}

void stageLabel(QPainter &painter, const QRectF &rect, const QString &icon, const QString &text,
                const QPalette &palette)
{
    const QFont font = Style::font(Style::TextSize::caption);
    const QFontMetricsF metrics(font);
    const double iconSize = std::round(metrics.height() * 0.9);
    const double width = iconSize + 4 + metrics.horizontalAdvance(text);
    const double left = rect.center().x() - width / 2;
    const QColor color = Style::color(palette, Style::Tone::secondary);
    symbol(painter, icon, QRectF(left, rect.center().y() - iconSize / 2, iconSize, iconSize), color);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QRectF(left + iconSize + 4, rect.top(), width, rect.height()), Qt::AlignVCenter | Qt::AlignLeft,
                     text);
}

} // namespace

ProcessingVisualizer::ProcessingVisualizer(QWidget *parent) : QWidget(parent)
{
    m_frames = new QTimer(this);
    m_frames->setTimerType(Qt::PreciseTimer);
    connect(m_frames, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_source = Tr::tr("Quelle");
}

void ProcessingVisualizer::setProgress(double progress)
{
    m_progress = progress;
}

void ProcessingVisualizer::setDevice(const QString &gpuName, const QString &cpuName, int threads)
{
    m_gpuDevice = gpuName;
    m_cpuDevice = cpuName;
    m_threads = threads;
}

bool ProcessingVisualizer::onGpu() const
{
    // Until a job has found out, the badge waits as the GPU's, without a name.
    return !m_gpuDevice.isEmpty() || m_cpuDevice.isEmpty();
}

QString ProcessingVisualizer::deviceTitle() const
{
    return onGpu() ? QStringLiteral("GPU") : QStringLiteral("CPU");
}

QString ProcessingVisualizer::deviceSubtitle() const
{
    if (onGpu())
        return m_gpuDevice.isEmpty() ? QStringLiteral("…") : m_gpuDevice;
    return Tr::tr("%n Threads", nullptr, m_threads);
}

QString ProcessingVisualizer::deviceToolTip() const
{
    if (onGpu())
        return m_gpuDevice;
    return m_cpuDevice + QStringLiteral(" · ") + deviceSubtitle();
}

double ProcessingVisualizer::deviceActivity() const
{
    if (onGpu())
        return m_gpu;
    // The processor's load is that of all its cores together.
    return m_cores.isEmpty() ? 0.0 : std::accumulate(m_cores.begin(), m_cores.end(), 0.0) / double(m_cores.size());
}

void ProcessingVisualizer::setCores(const QList<double> &cores)
{
    m_cores = cores;
}

void ProcessingVisualizer::setGpu(double gpu)
{
    m_gpu = gpu;
}

double ProcessingVisualizer::coreChip() const
{
    // Many cores share the room that the centre may take; chips shrink to fit it.
    const double room = maxWidth - 2 * (jarWidth + gap + dotsWidth + gap);
    const qsizetype perRow = std::max<qsizetype>(1, (m_cores.size() + 1) / 2);
    const double natural = perRow * 30 + (perRow - 1) * chipGap;
    return natural <= room ? 30.0 : 30.0 * room / natural;
}

QSizeF ProcessingVisualizer::naturalSize() const
{
    const double chipSide = coreChip();
    const qsizetype perRow = std::max<qsizetype>(1, (m_cores.size() + 1) / 2);
    const double gridWidth = perRow * chipSide + (perRow - 1) * chipGap * chipSide / 30;
    const double centreWidth = std::max({centreMinWidth, badgeWidth, gridWidth});
    const double gridHeight = m_cores.isEmpty() ? 20 : (m_cores.size() > 1 ? 2 * chipSide + chipGap : chipSide);
    const double height = std::max(stageHeight(), badgeHeight() + gridGap + gridHeight);
    return {2 * (jarWidth + gap + dotsWidth + gap) + centreWidth, height};
}

QSize ProcessingVisualizer::sizeHint() const
{
    return naturalSize().toSize();
}

QSize ProcessingVisualizer::minimumSizeHint() const
{
    return (naturalSize() * 0.5).toSize();
}

QTransform ProcessingVisualizer::sceneTransform(const QRectF &rect) const
{
    const QSizeF natural = naturalSize();
    const double fit = std::min({1.0, rect.width() / natural.width(), rect.height() / natural.height(),
                                 maxWidth / natural.width(), maxHeight / natural.height()});
    QTransform transform;
    transform.translate(rect.center().x(), rect.center().y());
    transform.scale(fit, fit);
    transform.translate(-natural.width() / 2, -natural.height() / 2);
    return transform;
}

QRectF ProcessingVisualizer::centreRect() const
{
    const QSizeF natural = naturalSize();
    const double left = jarWidth + gap + dotsWidth + gap;
    const double chipSide = coreChip();
    const qsizetype rowCount = rows(m_cores).size();
    const double gridHeight = m_cores.isEmpty() ? 20 : rowCount * chipSide + (rowCount - 1) * chipGap;
    const double height = badgeHeight() + gridGap + gridHeight;
    return {left, (natural.height() - height) / 2, natural.width() - 2 * left, height};
}

QRectF ProcessingVisualizer::badgeRect() const
{
    const QRectF centre = centreRect();
    return {centre.center().x() - badgeWidth / 2, centre.top(), badgeWidth, badgeHeight()};
}

QRect ProcessingVisualizer::badgeArea() const
{
    return sceneTransform(rect()).mapRect(badgeRect()).toAlignedRect();
}

bool ProcessingVisualizer::event(QEvent *event)
{
    // The badge names the device shortened; its tooltip holds the whole name.
    if (event->type() == QEvent::ToolTip) {
        auto *help = static_cast<QHelpEvent *>(event);
        const QRect badge = badgeArea();
        if (badge.contains(help->pos()) && !deviceToolTip().isEmpty())
            QToolTip::showText(help->globalPos(), deviceToolTip(), this, badge);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void ProcessingVisualizer::paintScene(QPainter &painter, const QRectF &rect, double phase) const
{
    const QSizeF natural = naturalSize();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(sceneTransform(rect), true);

    const QPalette &pal = palette();
    const QColor primary = Style::color(pal, Style::Tone::text);
    const double activityNow = activity(m_cores, m_gpu);
    const double height = natural.height();
    const double stageTop = (height - stageHeight()) / 2;
    const double labelHeight = stageHeight() - jarHeight - gap;
    double x = 0;

    // "Quelle": draining.
    liquidJar(painter, QRectF(x, stageTop, jarWidth, jarHeight), 1 - m_progress, sourceTint(pal), phase, false,
              primary);
    stageLabel(painter, QRectF(x - 20, stageTop + jarHeight + gap, jarWidth + 40, labelHeight),
               QStringLiteral("waveform"), m_source, pal);
    x += jarWidth + gap;

    const QRectF dotsBand(x, stageTop + jarHeight / 2 - 15, dotsWidth, 30);
    flow(painter, dotsBand, phase, activityNow, Style::color(pal, Style::Tone::accent));
    x += dotsWidth + gap;

    // The centre: the badge of the device that recognises, over the core grid.
    const QRectF centre = centreRect();
    const double centreWidth = centre.width();
    const double chipSide = coreChip();
    const QList<QList<double>> coreRows = rows(m_cores);
    badge(painter, badgeRect(), deviceTitle(), deviceSubtitle(), QStringLiteral("cpu"), deviceActivity(), phase,
          false, pal);
    double y = centre.top() + badgeHeight() + gridGap;
    if (m_cores.isEmpty()) {
        spinner(painter, QPointF(x + centreWidth / 2, y + 10), phase, Style::color(pal, Style::Tone::secondary));
    } else {
        const double step = chipSide + chipGap * chipSide / 30;
        for (const QList<double> &row : coreRows) {
            const double rowWidth = row.size() * step - chipGap * chipSide / 30;
            double cx = x + (centreWidth - rowWidth) / 2;
            for (double u : row) {
                chip(painter, QRectF(cx, y, chipSide, chipSide), std::clamp(u, 0.0, 1.0), phase);
                cx += step;
            }
            y += chipSide + chipGap;
        }
    }
    x += centreWidth + gap;

    flow(painter, QRectF(x, dotsBand.top(), dotsWidth, dotsBand.height()), phase, activityNow,
         Style::color(pal, Style::Tone::accent));
    x += dotsWidth + gap;

    // "Sagwerk": filling with text.
    liquidJar(painter, QRectF(x, stageTop, jarWidth, jarHeight), m_progress, resultTint(pal), phase, true,
              primary);
    stageLabel(painter, QRectF(x - 20, stageTop + jarHeight + gap, jarWidth + 40, labelHeight),
               QStringLiteral("doc.text"), QStringLiteral("Sagwerk"), pal);
    painter.restore();
}

void ProcessingVisualizer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintScene(painter, rect(), phaseNow());
}

void ProcessingVisualizer::showEvent(QShowEvent *event)
{
    // One frame per refresh of the screen the scene is on.
    const QScreen *display = screen();
    const double rate = display && display->refreshRate() > 1 ? display->refreshRate() : 60.0;
    m_frames->setInterval(std::max(1, int(1000.0 / rate)));
    m_frames->start();
    QWidget::showEvent(event);
}

void ProcessingVisualizer::hideEvent(QHideEvent *event)
{
    m_frames->stop();
    QWidget::hideEvent(event);
}

void ProcessingVisualizer::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_source = Tr::tr("Quelle");
    QWidget::changeEvent(event);
}
