#pragma once

#include <QColor>
#include <QFont>
#include <QFrame>
#include <QMetaObject>

class QEvent;
class QLabel;
class QPalette;
class QVBoxLayout;
class QWidget;

// The few type sizes and colours the screens share. Sizes follow the application font,
// so that a desktop with larger text gets larger screens; colours follow the palette,
// so that light and dark both read well.
namespace Look {

enum class TextSize { largeTitle, title, title2, title3, headline, subheadline, body, callout, caption, caption2 };

// The application font at `size`; headlines are bold by nature.
QFont font(TextSize size, bool bold = false);

enum class Tone { text, secondary, accent, green, orange, yellow };

bool isDark(const QPalette &palette);
QColor color(const QPalette &palette, Tone tone);
// The secondary colour at `opacity`, for quiet backgrounds.
QColor wash(const QPalette &palette, double opacity);

// Sets a label's text size and colour; call again when the palette changes.
void style(QLabel *label, TextSize size, Tone tone = Tone::text, bool bold = false);
// Sets the text colour of a button, a label or a check box.
void setTone(QWidget *widget, Tone tone);

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

} // namespace Look
