#pragma once

#include <QWidget>

class AppModel;
class QLabel;
class QDropEvent;
class QPushButton;

// The resting state of the detail area: a dashed frame that takes a dropped file, the
// buttons that open or stage work, and a hint while no speech model is installed.
class DropZone : public QWidget {
    Q_OBJECT

public:
    explicit DropZone(AppModel &app, QWidget *parent = nullptr);

    // A drag hovers over the zone.
    bool targeted() const { return m_targeted; }

    QPushButton *openButton() const { return m_open; }
    QPushButton *interviewButton() const { return m_interview; }
    QPushButton *recordButton() const { return m_record; }
    QPushButton *hintButton() const { return m_hint; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void setTargeted(bool targeted);
    void retranslate();
    void restyle();
    void updateHint();

    AppModel &m_app;
    bool m_targeted = false;
    QLabel *m_icon = nullptr;
    QLabel *m_heading = nullptr;
    QLabel *m_text = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_interview = nullptr;
    QPushButton *m_record = nullptr;
    QPushButton *m_hint = nullptr;
};

// Takes the local files of a drop: one is staged, several queue. The drop counts as taken
// at once; the files are handed on from the event loop.
void openDropped(AppModel &app, QDropEvent *event);

// The plain, orange button that sends a user without a speech model to the settings.
QPushButton *makeModelHint(AppModel &app, QWidget *parent);
void retranslateModelHint(QPushButton *hint);
void restyleModelHint(QPushButton *hint);
