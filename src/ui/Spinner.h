#pragma once

#include <QTimer>
#include <QWidget>

// A small indeterminate spinner: a ring of fading strokes that turns while shown.
class Spinner : public QWidget {
public:
    explicit Spinner(int size, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *) override { m_timer.start(); }
    void hideEvent(QHideEvent *) override { m_timer.stop(); }
    void paintEvent(QPaintEvent *) override;

private:
    static constexpr int strokes = 8;
    int m_step = 0;
    QTimer m_timer;
};
