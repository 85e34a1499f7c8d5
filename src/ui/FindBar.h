#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

// The find bar over the result screen's text: the field, the count, next and previous,
// a jump of the player to the match, and a close. It only reports; the screen finds.
class FindBar : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget *parent = nullptr);

    QLineEdit *field() const { return m_field; }
    QString query() const;
    // `current` counts from 0; -1 with matches means none chosen yet.
    void showCount(qsizetype current, qsizetype count);
    void setCanPlay(bool can);
    // Shows the bar with the field focused and its text selected.
    void open();

signals:
    void queryChanged(const QString &query);
    void step(bool forward);
    void playRequested();
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    QLineEdit *m_field = nullptr;
    QLabel *m_count = nullptr;
    QToolButton *m_previous = nullptr;
    QToolButton *m_next = nullptr;
    QToolButton *m_play = nullptr;
    QToolButton *m_close = nullptr;
    qsizetype m_current = -1;
    qsizetype m_total = 0;
};
