#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QLabel;
class QMessageBox;
class QPainter;
class QPalette;
class QRectF;
class QWidget;

// Type sizes, colours and symbols of the main window's screens. Sizes follow the
// application font, colours the palette, so that the desktop decides light or dark.
namespace ShellStyle {

enum class TextSize { title, title2, title3, body, callout, caption, caption2 };

QFont font(TextSize size, QFont::Weight weight = QFont::Normal);
// Digits of equal width, for counters that change while they show.
QFont withTabularDigits(QFont font);

bool isDark(const QPalette &palette);
QColor text(const QPalette &palette);
// The text colour softened towards the background, for quiet texts and symbols.
QColor secondary(const QPalette &palette);
QColor accent(const QPalette &palette);
QColor orange(const QPalette &palette);
QColor blue(const QPalette &palette);
QColor green(const QPalette &palette);
QColor withAlpha(QColor color, double opacity);

// Makes the desktop's icon theme the source of symbols, with Breeze behind it for the
// names the desktop's theme lacks (or when there is no desktop theme).
void useIconTheme();

// The icon-theme names tried for a symbol of the screens ("trash", "waveform", ...),
// best first.
QStringList themeNames(const QString &symbol);
// `symbol` drawn in one colour at `size` logical pixels; empty when no theme has it.
QPixmap symbolPixmap(const QString &symbol, int size, const QColor &color, qreal devicePixelRatio = 1.0);
// An icon in the palette's text colour, dimmed when its control is disabled.
QIcon symbolIcon(const QString &symbol, const QPalette &palette);
QIcon symbolIcon(const QString &symbol, const QColor &color);
// Drawn symbols: a processor chip for "cpu", bars of a sound wave for "waveform".
void paintChip(QPainter &painter, const QRectF &rect, const QColor &color);
void paintWaveform(QPainter &painter, const QRectF &rect, const QColor &color);

// A message box as an alert: its title in bold, its message with room to breathe.
void styleAlert(QMessageBox *box);

// Sets the colour of a label's text (or any widget's foreground text).
void setTextColor(QWidget *widget, const QColor &color);

} // namespace ShellStyle
