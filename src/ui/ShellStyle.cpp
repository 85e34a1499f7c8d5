#include "ui/ShellStyle.h"

#include <QApplication>
#include <QHash>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QWidget>

namespace ShellStyle {

QFont font(TextSize size, QFont::Weight weight)
{
    QFont f = QApplication::font();
    double scale = 1.0;
    switch (size) {
    case TextSize::title: scale = 1.6; break;
    case TextSize::title2: scale = 1.35; break;
    case TextSize::title3: scale = 1.2; break;
    case TextSize::body: scale = 1.0; break;
    case TextSize::callout: scale = 0.95; break;
    case TextSize::caption: scale = 0.88; break;
    case TextSize::caption2: scale = 0.82; break;
    }
    if (f.pointSizeF() > 0)
        f.setPointSizeF(f.pointSizeF() * scale);
    else
        f.setPixelSize(qRound(f.pixelSize() * scale));
    f.setWeight(weight);
    return f;
}

QFont withTabularDigits(QFont font)
{
    font.setFeature(QFont::Tag("tnum"), 1);
    return font;
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF() < 0.5;
}

QColor text(const QPalette &palette)
{
    return palette.color(QPalette::WindowText);
}

QColor secondary(const QPalette &palette)
{
    const QColor fg = palette.color(QPalette::WindowText);
    const QColor bg = palette.color(QPalette::Window);
    const double t = 0.45;
    return QColor::fromRgbF(fg.redF() * (1 - t) + bg.redF() * t, fg.greenF() * (1 - t) + bg.greenF() * t,
                            fg.blueF() * (1 - t) + bg.blueF() * t);
}

QColor accent(const QPalette &palette)
{
    return palette.color(QPalette::Accent);
}

QColor orange(const QPalette &palette)
{
    return isDark(palette) ? QColor(255, 159, 10) : QColor(230, 126, 0);
}

QColor blue(const QPalette &palette)
{
    return isDark(palette) ? QColor(10, 132, 255) : QColor(0, 122, 255);
}

QColor green(const QPalette &palette)
{
    return isDark(palette) ? QColor(48, 209, 88) : QColor(52, 199, 89);
}

QColor withAlpha(QColor color, double opacity)
{
    color.setAlphaF(float(std::clamp(opacity, 0.0, 1.0) * color.alphaF()));
    return color;
}

void useIconTheme()
{
    // Platforms without a desktop theme (offscreen, bare X servers) search only the
    // resources; the desktop's data folders hold the themes.
    QStringList paths = QIcon::themeSearchPaths();
    for (const QString &dir : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                                        QStandardPaths::LocateDirectory)) {
        if (!paths.contains(dir))
            paths.append(dir);
    }
    QIcon::setThemeSearchPaths(paths);
    const QString theme = QIcon::themeName();
    if (theme.isEmpty() || theme == QLatin1String("hicolor"))
        QIcon::setThemeName(QStringLiteral("breeze"));
    QIcon::setFallbackThemeName(QStringLiteral("breeze"));
}

QStringList themeNames(const QString &symbol)
{
    static const QHash<QString, QStringList> names = {
        {QStringLiteral("gearshape"), {QStringLiteral("configure"), QStringLiteral("preferences-system")}},
        {QStringLiteral("trash"), {QStringLiteral("edit-delete"), QStringLiteral("user-trash")}},
        {QStringLiteral("square.and.pencil"), {QStringLiteral("document-new"), QStringLiteral("document-edit")}},
        {QStringLiteral("person.2.wave.2"),
         {QStringLiteral("view-conversation-balloon"), QStringLiteral("system-users"), QStringLiteral("user-group")}},
        {QStringLiteral("mic"), {QStringLiteral("audio-input-microphone"), QStringLiteral("mic-on")}},
        {QStringLiteral("mic.circle"), {QStringLiteral("audio-input-microphone"), QStringLiteral("mic-on")}},
        {QStringLiteral("mic.circle.fill"), {QStringLiteral("audio-input-microphone"), QStringLiteral("mic-on")}},
        {QStringLiteral("folder"), {QStringLiteral("document-open"), QStringLiteral("folder-open")}},
        {QStringLiteral("questionmark.circle"), {QStringLiteral("help-contents"), QStringLiteral("help-about")}},
        {QStringLiteral("exclamationmark.circle"),
         {QStringLiteral("data-warning"), QStringLiteral("dialog-warning"), QStringLiteral("emblem-important")}},
        {QStringLiteral("play.fill"), {QStringLiteral("media-playback-start")}},
        {QStringLiteral("record.circle"), {QStringLiteral("media-record")}},
        {QStringLiteral("globe"), {QStringLiteral("globe"), QStringLiteral("preferences-desktop-locale")}},
        {QStringLiteral("number"), {QStringLiteral("format-list-ordered"), QStringLiteral("draw-number")}},
        {QStringLiteral("xmark.circle"), {QStringLiteral("dialog-cancel"), QStringLiteral("process-stop")}},
        {QStringLiteral("doc.text"), {QStringLiteral("view-list-text"), QStringLiteral("text-x-generic")}},
        {QStringLiteral("brain"), {QStringLiteral("games-hint"), QStringLiteral("tools-wizard")}},
        {QStringLiteral("link"), {QStringLiteral("insert-link")}},
    };
    return names.value(symbol, {symbol});
}

void paintChip(QPainter &painter, const QRectF &rect, const QColor &color)
{
    // A square die with four pins on each side and a mark in the middle.
    const double s = std::min(rect.width(), rect.height());
    const QRectF box(rect.center().x() - s / 2, rect.center().y() - s / 2, s, s);
    const double pin = s * 0.14;
    const QRectF body = box.adjusted(pin, pin, -pin, -pin);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(color, std::max(1.0, s * 0.075));
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(body, s * 0.1, s * 0.1);
    for (int i = 0; i < 4; ++i) {
        const double at = body.left() + body.width() * (0.2 + 0.2 * i);
        const double down = body.top() + body.height() * (0.2 + 0.2 * i);
        painter.drawLine(QPointF(at, box.top() + pen.widthF() / 2), QPointF(at, body.top()));
        painter.drawLine(QPointF(at, body.bottom()), QPointF(at, box.bottom() - pen.widthF() / 2));
        painter.drawLine(QPointF(box.left() + pen.widthF() / 2, down), QPointF(body.left(), down));
        painter.drawLine(QPointF(body.right(), down), QPointF(box.right() - pen.widthF() / 2, down));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double core = body.width() * 0.4;
    painter.drawRoundedRect(QRectF(body.center().x() - core / 2, body.center().y() - core / 2, core, core),
                            core * 0.15, core * 0.15);
    painter.restore();
}

void paintWaveform(QPainter &painter, const QRectF &rect, const QColor &color)
{
    // Rounded bars of a sound wave; fewer of them when small, so that they stay apart.
    static const QList<double> many = {0.28, 0.5, 0.78, 0.56, 1.0, 0.7, 0.88, 0.46, 0.62, 0.3};
    static const QList<double> few = {0.4, 0.75, 1.0, 0.65, 0.4};
    const double s = std::min(rect.width(), rect.height());
    const QList<double> &heights = s < 24 ? few : many;
    const double step = s / heights.size();
    const double width = std::max(1.0, step * 0.55);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(color, width);
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    const double left = rect.center().x() - s / 2 + step / 2;
    for (qsizetype i = 0; i < heights.size(); ++i) {
        const double half = std::max(0.0, (s - width) * heights[i] / 2);
        const double x = left + i * step;
        painter.drawLine(QPointF(x, rect.center().y() - half), QPointF(x, rect.center().y() + half));
    }
    painter.restore();
}

QPixmap symbolPixmap(const QString &symbol, int size, const QColor &color, qreal devicePixelRatio)
{
    const QString key = QStringLiteral("shell-symbol:%1:%2:%3:%4")
                            .arg(symbol)
                            .arg(size)
                            .arg(color.rgba(), 8, 16)
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;

    const int device = qRound(size * devicePixelRatio);
    if (symbol == QLatin1String("cpu") || symbol.startsWith(QLatin1String("waveform"))) {
        // Drawn: the theme's pictures of these are pixel art that does not scale.
        QImage image(device, device, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF all(0, 0, device, device);
        if (symbol == QLatin1String("cpu")) {
            paintChip(p, all, color);
        } else if (symbol == QLatin1String("waveform.circle.fill")) {
            p.setPen(Qt::NoPen);
            p.setBrush(color);
            p.drawEllipse(all.adjusted(0.5, 0.5, -0.5, -0.5));
            p.setCompositionMode(QPainter::CompositionMode_DestinationOut);
            paintWaveform(p, all.adjusted(device * 0.24, device * 0.24, -device * 0.24, -device * 0.24), Qt::black);
        } else {
            paintWaveform(p, all, color);
        }
        p.end();
        pixmap = QPixmap::fromImage(image);
    } else {
        QIcon icon;
        for (const QString &name : themeNames(symbol)) {
            icon = QIcon::fromTheme(name);
            if (!icon.isNull())
                break;
        }
        if (icon.isNull())
            return {};
        // One colour, as symbols are: the icon's shape, filled with `color`.
        QImage image = icon.pixmap(QSize(device, device), 1.0).toImage().convertToFormat(
            QImage::Format_ARGB32_Premultiplied);
        if (image.size() != QSize(device, device))
            image = image.scaled(device, device, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QPainter p(&image);
        p.setCompositionMode(QPainter::CompositionMode_SourceIn);
        p.fillRect(image.rect(), color);
        p.end();
        pixmap = QPixmap::fromImage(image);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QIcon symbolIcon(const QString &symbol, const QColor &color)
{
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64}) {
        const QPixmap pixmap = symbolPixmap(symbol, size, color);
        if (pixmap.isNull())
            return {};
        icon.addPixmap(pixmap, QIcon::Normal);
    }
    return icon;
}

QIcon symbolIcon(const QString &symbol, const QPalette &palette)
{
    QIcon icon;
    const QColor normal = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor disabled = withAlpha(secondary(palette), 0.55);
    for (int size : {16, 22, 24, 32, 48, 64}) {
        const QPixmap pixmap = symbolPixmap(symbol, size, normal);
        if (pixmap.isNull())
            return {};
        icon.addPixmap(pixmap, QIcon::Normal);
        icon.addPixmap(symbolPixmap(symbol, size, disabled), QIcon::Disabled);
    }
    return icon;
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

void setTextColor(QWidget *widget, const QColor &color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::ButtonText, color);
    palette.setColor(QPalette::Text, color);
    widget->setPalette(palette);
}

} // namespace ShellStyle
