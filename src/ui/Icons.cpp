#include "ui/Icons.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStandardPaths>

namespace Icons {

namespace {

// Symbols whose name ends in ".circle.fill" are drawn as a filled disc with the inner
// symbol cut out in white; the table names only the inner symbol.
const QHash<QString, QStringList> &table()
{
    static const QHash<QString, QStringList> names{
        {QStringLiteral("trash"), {QStringLiteral("edit-delete-symbolic"), QStringLiteral("edit-delete")}},
        {QStringLiteral("checkmark.seal"), {QStringLiteral("dialog-ok-symbolic"), QStringLiteral("dialog-ok")}},
        {QStringLiteral("checkmark"), {QStringLiteral("dialog-ok-symbolic"), QStringLiteral("dialog-ok")}},
        {QStringLiteral("arrow.down.circle"), {QStringLiteral("download-symbolic"), QStringLiteral("download")}},
        {QStringLiteral("waveform"), {QStringLiteral("waveform-symbolic"), QStringLiteral("waveform")}},
        {QStringLiteral("mic.fill"), {QStringLiteral("microphone-symbolic"), QStringLiteral("audio-input-microphone")}},
        {QStringLiteral("person.2.wave.2"), {QStringLiteral("system-users-symbolic"), QStringLiteral("system-users")}},
        {QStringLiteral("wand.and.stars"), {QStringLiteral("tools-wizard-symbolic"), QStringLiteral("tools-wizard")}},
        {QStringLiteral("sparkles"), {QStringLiteral("kstars_stars-symbolic"), QStringLiteral("draw-star")}},
        {QStringLiteral("play.circle"),
         {QStringLiteral("media-playback-start-symbolic"), QStringLiteral("media-playback-start")}},
        {QStringLiteral("globe"), {QStringLiteral("globe-symbolic"), QStringLiteral("globe")}},
        {QStringLiteral("play.rectangle"),
         {QStringLiteral("media-playlist-play-symbolic"), QStringLiteral("media-playlist-play")}},
        {QStringLiteral("square.and.arrow.up"),
         {QStringLiteral("document-share-symbolic"), QStringLiteral("document-share")}},
        {QStringLiteral("folder"), {QStringLiteral("folder-symbolic"), QStringLiteral("folder")}},
        {QStringLiteral("gearshape"), {QStringLiteral("configure-symbolic"), QStringLiteral("configure")}},
        {QStringLiteral("lock.shield"), {QStringLiteral("security-high-symbolic"), QStringLiteral("security-high")}},
        {QStringLiteral("shippingbox"), {QStringLiteral("package-symbolic"), QStringLiteral("package")}},
        {QStringLiteral("info.circle"), {QStringLiteral("help-about-symbolic"), QStringLiteral("help-about")}},
        {QStringLiteral("lightbulb"), {QStringLiteral("games-hint-symbolic"), QStringLiteral("games-hint")}},
    };
    return names;
}

const QString discSuffix = QStringLiteral(".circle.fill");

// Where the platform offers no icon theme of its own (a bare window system, the
// offscreen one of tests), the desktop's icon folders are searched all the same; and a
// name the user's theme lacks is looked up in Breeze, which the program depends on.
void findThemes()
{
    static const bool done = [] {
        QStringList paths = QIcon::themeSearchPaths();
        for (const QString &dir : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                            QStringLiteral("icons"), QStandardPaths::LocateDirectory))
            if (!paths.contains(dir))
                paths << dir;
        QIcon::setThemeSearchPaths(paths);
        const QString fallback = QIcon::fallbackThemeName();
        if (fallback.isEmpty() || fallback == QLatin1String("hicolor"))
            QIcon::setFallbackThemeName(QStringLiteral("breeze"));
        return true;
    }();
    Q_UNUSED(done);
}

// A transparent square of `size` logical pixels to draw a symbol on.
QPixmap blank(int size, qreal dpr)
{
    QPixmap out(QSize(size, size) * dpr);
    out.setDevicePixelRatio(dpr);
    out.fill(Qt::transparent);
    return out;
}

// A symbol drawn on a grid of 16 units across `size` logical pixels.
template <typename Draw>
QPixmap onGrid(int size, qreal dpr, Draw draw)
{
    QPixmap out = blank(size, dpr);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, size / 16.0);
    return out;
}

// Themes have no one-colour processor picture; this one is drawn: a chip with pins.
QPixmap chip(int size, const QColor &color, qreal dpr)
{
    return onGrid(size, dpr, [&](QPainter &painter, qreal unit) {
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

// A warning triangle with its mark cut out, where the themes offer only coloured ones.
QPixmap warning(int size, const QColor &color, qreal dpr)
{
    return onGrid(size, dpr, [&](QPainter &painter, qreal unit) {
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

QIcon themeIcon(const QString &symbol)
{
    findThemes();
    for (const QString &name : themeNames(symbol)) {
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

QStringList themeNames(const QString &symbol)
{
    QString inner = symbol;
    if (inner.endsWith(discSuffix))
        inner.chop(discSuffix.size());
    return table().value(inner, {inner});
}

QPixmap pixmap(const QString &symbol, int size, const QColor &color, qreal dpr)
{
    if (symbol == QLatin1String("cpu"))
        return chip(size, color, dpr);
    if (symbol == QLatin1String("exclamationmark.triangle"))
        return warning(size, color, dpr);
    const QIcon icon = themeIcon(symbol);
    if (icon.isNull())
        return {};
    if (!symbol.endsWith(discSuffix))
        return tinted(icon, size, color, dpr);

    // A disc in `color` with the symbol in white at its centre.
    QPixmap out = blank(size, dpr);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(0, 0, size, size));
    if (symbol.startsWith(QLatin1String("checkmark"))) {
        // The theme's tick is drawn for small sizes; on a large disc it needs weight.
        QPainterPath tick;
        tick.moveTo(size * 0.28, size * 0.52);
        tick.lineTo(size * 0.44, size * 0.68);
        tick.lineTo(size * 0.73, size * 0.36);
        painter.setPen(QPen(Qt::white, size * 0.09, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
        return out;
    }
    const int inner = qRound(size * 0.56);
    const QPixmap mark = tinted(icon, inner, Qt::white, dpr);
    const qreal offset = (size - inner) / 2.0;
    painter.drawPixmap(QPointF(offset, offset), mark);
    return out;
}

QIcon icon(const QString &symbol, const QColor &color, const QColor &selected)
{
    QIcon result;
    for (int size : {16, 22, 32}) {
        for (qreal dpr : {1.0, 2.0}) {
            result.addPixmap(pixmap(symbol, size, color, dpr), QIcon::Normal);
            if (selected.isValid())
                result.addPixmap(pixmap(symbol, size, selected, dpr), QIcon::Selected);
        }
    }
    return result;
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
    return QIcon::fromTheme(name);
}

} // namespace Icons
