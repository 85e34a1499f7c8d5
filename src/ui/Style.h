#pragma once

#include <QColor>
#include <QFont>
#include <QFrame>
#include <QMetaObject>

class QAbstractButton;
class QEvent;
class QLabel;
class QMessageBox;
class QPalette;
class QVBoxLayout;
class QWidget;

// The type sizes, colours and small layout pieces the screens share; symbols are in
// Icons. Sizes follow the application font, so that a desktop with larger text gets
// larger screens; colours follow the palette, so that light and dark both read well.
namespace Style {

enum class TextSize { largeTitle, title, title2, title3, headline, subheadline, body, callout, caption, caption2 };

// The application font at `size`; headlines are bold by nature.
QFont font(TextSize size, QFont::Weight weight = QFont::Normal);
// Digits of equal width, so that running times and counters do not jitter.
QFont withTabularDigits(QFont font);

enum class Tone { text, secondary, accent, green, orange, yellow };

bool isDark(const QPalette &palette);
// The contrast ratio of two colours, 1 to 21, as the accessibility guidelines define it.
double contrast(const QColor &a, const QColor &b);
QColor color(const QPalette &palette, Tone tone);
// `color` made `opacity` times as opaque.
QColor withAlpha(QColor color, double opacity);

// The chosen one of a row of buttons (a segmented choice) filled with the accent, so that
// it stands out in any theme, light or dark; call again when the palette changes.
void markChosen(QAbstractButton *button, bool chosen);

// Sets a label's text size and colour; call again when the palette changes.
void style(QLabel *label, TextSize size, Tone tone = Tone::text, QFont::Weight weight = QFont::Normal);
// Sets the text colour of a button, a label or a check box, from its window's palette.
void setTone(QWidget *widget, Tone tone);
void setTextColor(QWidget *widget, const QColor &color);

// A change of palette or style, after which colours and pictures are drawn anew.
bool isLookChange(const QEvent *event);

// Calls `restyle` on `widget` after a change of palette or style. Colours come from the
// window, and widgets learn of a new palette in no fixed order: so once all have it.
template <typename Widget>
void restyleOnLookChange(const QEvent *event, Widget *widget, void (Widget::*restyle)())
{
    if (isLookChange(event))
        QMetaObject::invokeMethod(widget, restyle, Qt::QueuedConnection);
}

// A thin horizontal line between sections.
QFrame *divider(QWidget *parent = nullptr);

// A column on `widget` whose parts touch its edges and each other.
QVBoxLayout *flushColumn(QWidget *widget);

// A message box as an alert: its title in bold, its message with room to breathe.
void styleAlert(QMessageBox *box);

// A quiet rounded surface behind a group of controls.
class RoundedBox : public QFrame {
public:
    RoundedBox(double opacity, int radius, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_opacity;
    int m_radius;
};

} // namespace Style
