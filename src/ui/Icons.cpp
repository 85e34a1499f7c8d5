#include "ui/Icons.h"

#include "ui/Style.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace Icons {

namespace {

// Symbols whose name ends in ".circle.fill" are drawn as a filled disc with the inner
// symbol cut out in white; the table names only the inner symbol.
const QHash<QString, QStringList> &table()
{
    // The symbolic name first: Adwaita has no microphone-symbolic, and the lookup then
    // settles on its full-colour "microphone", whose shape is a square.
    static const QStringList microphone{QStringLiteral("audio-input-microphone-symbolic"),
                                        QStringLiteral("microphone-symbolic"),
                                        QStringLiteral("audio-input-microphone"), QStringLiteral("mic-on")};
    static const QHash<QString, QStringList> names{
        {QStringLiteral("trash"),
         {QStringLiteral("edit-delete-symbolic"), QStringLiteral("edit-delete"), QStringLiteral("user-trash")}},
        {QStringLiteral("checkmark.seal"), {QStringLiteral("dialog-ok-symbolic"), QStringLiteral("dialog-ok")}},
        {QStringLiteral("checkmark"), {QStringLiteral("dialog-ok-symbolic"), QStringLiteral("dialog-ok")}},
        {QStringLiteral("arrow.down.circle"), {QStringLiteral("download-symbolic"), QStringLiteral("download")}},
        {QStringLiteral("mic"), microphone},
        {QStringLiteral("mic.fill"), microphone},
        {QStringLiteral("mic.circle"), microphone},
        {QStringLiteral("person.2.wave.2"),
         {QStringLiteral("system-users-symbolic"), QStringLiteral("system-users"),
          QStringLiteral("view-conversation-balloon")}},
        {QStringLiteral("wand.and.stars"), {QStringLiteral("tools-wizard-symbolic"), QStringLiteral("tools-wizard")}},
        {QStringLiteral("sparkles"), {QStringLiteral("kstars_stars-symbolic"), QStringLiteral("draw-star")}},
        {QStringLiteral("play.circle"),
         {QStringLiteral("media-playback-start-symbolic"), QStringLiteral("media-playback-start")}},
        {QStringLiteral("play.fill"), {QStringLiteral("media-playback-start")}},
        {QStringLiteral("record.circle"), {QStringLiteral("media-record")}},
        {QStringLiteral("stop.circle.fill"),
         {QStringLiteral("media-playback-stop-symbolic"), QStringLiteral("media-playback-stop")}},
        {QStringLiteral("mic.slash"),
         {QStringLiteral("microphone-sensitivity-muted-symbolic"), QStringLiteral("audio-input-microphone-muted")}},
        {QStringLiteral("globe"),
         {QStringLiteral("globe-symbolic"), QStringLiteral("globe"), QStringLiteral("preferences-desktop-locale")}},
        {QStringLiteral("play.rectangle"),
         {QStringLiteral("media-playlist-play-symbolic"), QStringLiteral("media-playlist-play")}},
        {QStringLiteral("square.and.arrow.up"),
         {QStringLiteral("document-share-symbolic"), QStringLiteral("document-share")}},
        {QStringLiteral("square.and.pencil"), {QStringLiteral("document-new"), QStringLiteral("document-edit")}},
        {QStringLiteral("folder"),
         {QStringLiteral("folder-symbolic"), QStringLiteral("folder"), QStringLiteral("document-open")}},
        {QStringLiteral("gearshape"),
         {QStringLiteral("configure-symbolic"), QStringLiteral("configure"), QStringLiteral("preferences-system")}},
        {QStringLiteral("lock.shield"), {QStringLiteral("security-high-symbolic"), QStringLiteral("security-high")}},
        {QStringLiteral("shippingbox"), {QStringLiteral("package-symbolic"), QStringLiteral("package")}},
        {QStringLiteral("info.circle"), {QStringLiteral("help-about-symbolic"), QStringLiteral("help-about")}},
        {QStringLiteral("questionmark.circle"), {QStringLiteral("help-contents"), QStringLiteral("help-about")}},
        {QStringLiteral("exclamationmark.circle"),
         {QStringLiteral("data-warning"), QStringLiteral("dialog-warning"), QStringLiteral("emblem-important")}},
        {QStringLiteral("xmark.circle"), {QStringLiteral("dialog-cancel"), QStringLiteral("process-stop")}},
        {QStringLiteral("lightbulb"), {QStringLiteral("games-hint-symbolic"), QStringLiteral("games-hint")}},
        {QStringLiteral("brain"), {QStringLiteral("games-hint"), QStringLiteral("tools-wizard")}},
        {QStringLiteral("number"), {QStringLiteral("format-list-ordered"), QStringLiteral("draw-number")}},
        {QStringLiteral("doc.text"), {QStringLiteral("view-list-text"), QStringLiteral("text-x-generic")}},
    };
    return names;
}

const QString discSuffix = QStringLiteral(".circle.fill");

// A transparent square of `size` logical pixels to draw a symbol on.
QPixmap blank(int size, qreal dpr)
{
    QPixmap out(QSize(size, size) * dpr);
    out.setDevicePixelRatio(dpr);
    out.fill(Qt::transparent);
    return out;
}

// A symbol drawn on a grid of 16 units across the square at the centre of `rect`.
template <typename Draw>
void onGrid(QPainter &painter, const QRectF &rect, Draw draw)
{
    const qreal side = std::min(rect.width(), rect.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center() - QPointF(side / 2, side / 2));
    draw(side / 16.0);
    painter.restore();
}

// A warning triangle with its mark cut out, where the themes offer only coloured ones.
void paintWarning(QPainter &painter, const QRectF &rect, const QColor &color)
{
    onGrid(painter, rect, [&](qreal unit) {
        QPainterPath triangle;
        triangle.moveTo(8 * unit, 1.5 * unit);
        triangle.lineTo(15 * unit, 14.5 * unit);
        triangle.lineTo(1 * unit, 14.5 * unit);
        triangle.closeSubpath();
        painter.setPen(QPen(color, 1.2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(triangle);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF(7.3 * unit, 5.5 * unit, 1.4 * unit, 5 * unit), 0.7 * unit, 0.7 * unit);
        painter.drawEllipse(QPointF(8 * unit, 12.3 * unit), 0.85 * unit, 0.85 * unit);
    });
}

// Rounded bars of a sound wave; fewer of them when small, so that they stay apart.
void paintWaveform(QPainter &painter, const QRectF &rect, const QColor &color)
{
    static const QList<double> many = {0.28, 0.5, 0.78, 0.56, 1.0, 0.7, 0.88, 0.46, 0.62, 0.3};
    static const QList<double> few = {0.4, 0.75, 1.0, 0.65, 0.4};
    const double s = std::min(rect.width(), rect.height());
    const QList<double> &heights = s < 24 ? few : many;
    const double step = s / heights.size();
    const double width = std::max(1.0, step * 0.55);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
    const double left = rect.center().x() - s / 2 + step / 2;
    for (qsizetype i = 0; i < heights.size(); ++i) {
        const double half = std::max(0.0, (s - width) * heights[i] / 2);
        const double x = left + i * step;
        painter.drawLine(QPointF(x, rect.center().y() - half), QPointF(x, rect.center().y() + half));
    }
    painter.restore();
}

// Symbols drawn here: themes have no one-colour processor, their sound waves and
// warnings are pixel art or coloured.
using Painting = void (*)(QPainter &, const QRectF &, const QColor &);
Painting drawing(const QString &symbol)
{
    if (symbol == QLatin1String("cpu"))
        return paintChip;
    if (symbol == QLatin1String("waveform"))
        return paintWaveform;
    if (symbol == QLatin1String("exclamationmark.triangle"))
        return paintWarning;
    return nullptr;
}

QIcon themeIcon(const QString &symbol)
{
    useIconTheme();
    for (const QString &name : table().value(symbol, {symbol})) {
        const QIcon icon = QIcon::fromTheme(name);
        if (!icon.isNull())
            return icon;
    }
    return {};
}

// The theme's picture reduced to its shape and filled with `color`.
QPixmap tinted(const QIcon &icon, int size, const QColor &color, qreal dpr)
{
    QPixmap shape = icon.pixmap(QSize(size, size), dpr);
    if (shape.isNull())
        return shape;
    QPixmap out(shape.size());
    out.setDevicePixelRatio(shape.devicePixelRatio());
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.drawPixmap(0, 0, shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(out.rect(), color);
    return out;
}

QPixmap render(const QString &symbol, int size, const QColor &color, qreal dpr)
{
    if (!symbol.endsWith(discSuffix)) {
        if (const Painting paint = drawing(symbol)) {
            QPixmap out = blank(size, dpr);
            QPainter painter(&out);
            paint(painter, QRectF(0, 0, size, size), color);
            return out;
        }
        const QIcon icon = themeIcon(symbol);
        return icon.isNull() ? QPixmap() : tinted(icon, size, color, dpr);
    }

    // A disc in `color` with the inner symbol in white at its centre.
    const QString inner = symbol.chopped(discSuffix.size());
    const bool tick = inner == QLatin1String("checkmark");
    const int markSize = qRound(size * 0.56);
    const QPixmap mark = tick ? QPixmap() : pixmap(inner, markSize, Qt::white, dpr);
    if (!tick && mark.isNull())
        return {};
    QPixmap out = blank(size, dpr);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(0, 0, size, size));
    if (tick) {
        // The theme's tick is drawn for small sizes; on a large disc it needs weight.
        QPainterPath path;
        path.moveTo(size * 0.28, size * 0.52);
        path.lineTo(size * 0.44, size * 0.68);
        path.lineTo(size * 0.73, size * 0.36);
        painter.setPen(QPen(Qt::white, size * 0.09, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(path);
        return out;
    }
    const qreal offset = (size - markSize) / 2.0;
    painter.drawPixmap(QPointF(offset, offset), mark);
    return out;
}

QIcon iconIn(const QString &symbol, std::initializer_list<std::pair<QIcon::Mode, QColor>> modes)
{
    QIcon result;
    for (int size : {16, 22, 32})
        for (qreal dpr : {1.0, 2.0})
            for (const auto &[mode, color] : modes)
                if (color.isValid())
                    result.addPixmap(pixmap(symbol, size, color, dpr), mode);
    return result;
}

// Draws at twice the size, so that the icon stays sharp on high-density screens.
template <typename Draw>
QIcon drawn(int size, Draw draw)
{
    QPixmap pixmap = blank(size, 2);
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

void useIconTheme()
{
    // Where the platform offers no icon theme of its own (a bare window system, the
    // offscreen one of tests), the desktop's icon folders are searched all the same;
    // and a name the user's theme lacks is looked up in Breeze, which the program
    // depends on.
    static const bool done = [] {
        QStringList paths = QIcon::themeSearchPaths();
        for (const QString &dir : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                            QStringLiteral("icons"), QStandardPaths::LocateDirectory))
            if (!paths.contains(dir))
                paths << dir;
        QIcon::setThemeSearchPaths(paths);
        const auto unset = [](const QString &theme) { return theme.isEmpty() || theme == QLatin1String("hicolor"); };
        if (unset(QIcon::themeName()))
            QIcon::setThemeName(QStringLiteral("breeze"));
        if (unset(QIcon::fallbackThemeName()))
            QIcon::setFallbackThemeName(QStringLiteral("breeze"));
        return true;
    }();
    Q_UNUSED(done);
}

QPixmap pixmap(const QString &symbol, int size, const QColor &color, qreal dpr)
{
    // Lists and scenes ask for the same symbols at every paint.
    const QString key = QStringLiteral("symbol:%1:%2:%3:%4").arg(symbol).arg(size).arg(color.rgba(), 8, 16).arg(dpr);
    QPixmap out;
    if (QPixmapCache::find(key, &out))
        return out;
    out = render(symbol, size, color, dpr);
    if (!out.isNull())
        QPixmapCache::insert(key, out);
    return out;
}

QIcon icon(const QString &symbol, const QColor &color, const QColor &selected)
{
    return iconIn(symbol, {{QIcon::Normal, color}, {QIcon::Selected, selected}});
}

QIcon icon(const QString &symbol, const QPalette &palette)
{
    const QColor dimmed = Style::withAlpha(Style::color(palette, Style::Tone::secondary), 0.55);
    return iconIn(symbol, {{QIcon::Normal, palette.color(QPalette::Active, QPalette::WindowText)},
                           {QIcon::Disabled, dimmed}});
}

void paintChip(QPainter &painter, const QRectF &rect, const QColor &color)
{
    // A die with a core and three pins on each side.
    onGrid(painter, rect, [&](qreal unit) {
        const QRectF body(3.5 * unit, 3.5 * unit, 9 * unit, 9 * unit);
        painter.setPen(QPen(color, 1.2 * unit));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(body, 1.5 * unit, 1.5 * unit);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRect(QRectF(6 * unit, 6 * unit, 4 * unit, 4 * unit));
        for (const qreal at : {5.5, 8.0, 10.5}) {
            const qreal c = at * unit - 0.5 * unit;
            painter.drawRect(QRectF(c, 0.8 * unit, unit, 2 * unit));
            painter.drawRect(QRectF(c, 13.2 * unit, unit, 2 * unit));
            painter.drawRect(QRectF(0.8 * unit, c, 2 * unit, unit));
            painter.drawRect(QRectF(13.2 * unit, c, 2 * unit, unit));
        }
    });
}

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
    useIconTheme();
    return QIcon::fromTheme(name);
}

} // namespace Icons
