#pragma once

#include <QWidget>

class AppModel;
class ProcessingVisualizer;
class QLabel;
class QPushButton;
class SystemMonitor;

// The detail area while a transcription runs: the animated scene, the percentage and
// elapsed seconds, and the cancel button. Samples the machine's load while it shows.
class BusyView : public QWidget {
    Q_OBJECT

public:
    explicit BusyView(AppModel &app, QWidget *parent = nullptr);

    ProcessingVisualizer *visualizer() const { return m_visualizer; }
    SystemMonitor *monitor() const { return m_monitor; }
    QString statusText() const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void updateStatus();
    void updateScene();

    AppModel &m_app;
    SystemMonitor *m_monitor = nullptr;
    int m_threads = 0;
    ProcessingVisualizer *m_visualizer = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_cancel = nullptr;
};
