#pragma once

#include <QWidget>

class AudioPlayer;
class QLabel;
class QSlider;
class QToolButton;

// The transport strip of the result screen: play/pause, position, slider and length.
class PlayerBar : public QWidget {
    Q_OBJECT

public:
    PlayerBar(AudioPlayer &player, QWidget *parent = nullptr);

    // "m:ss" with total minutes and no hour field: 1 h 5 min 3 s is 65:03.
    static QString timeText(double seconds);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showState();

    AudioPlayer &m_player;
    QToolButton *m_play;
    QLabel *m_position;
    QSlider *m_slider;
    QLabel *m_length;
};
