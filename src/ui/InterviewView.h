#pragma once

#include <QWidget>

class AppModel;
class InterviewJob;
class QCheckBox;
class QLabel;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

// The live screen of an interview: it starts the interview when it first appears and
// shows the text as it grows.
class InterviewView : public QWidget {
    Q_OBJECT

public:
    InterviewView(AppModel &app, QWidget *parent = nullptr);
    ~InterviewView() override;

    InterviewJob &session() const { return *m_session; }
    void stop();
    void cancel();

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showState();
    void showText();
    void retranslate();

    AppModel &m_app;
    InterviewJob *m_session;
    bool m_started = false;
    bool m_showSpeaker = false;
    qsizetype m_rowsShown = 0;
    // Set when rows came in; the next range of the scroll bar brings them into view.
    bool m_followRows = false;

    QWidget *m_dot = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_time = nullptr;
    QCheckBox *m_speakerSwitch = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_stop = nullptr;
    QLabel *m_notice = nullptr;
    QStackedWidget *m_text = nullptr;
    QLabel *m_speakerText = nullptr;
    QScrollArea *m_scroll = nullptr;
    QVBoxLayout *m_rows = nullptr;
    QLabel *m_waiting = nullptr;
    QWidget *m_statusRow = nullptr;
    QLabel *m_status = nullptr;
};
