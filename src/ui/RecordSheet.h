#pragma once

#include <QDialog>

class AppModel;
class QLabel;
class QPushButton;
class RecordingJob;

// The sheet that records from the microphone: a level bar, the running time, and one
// button that stops the recording and hands the file to a transcription under
// "Aufnahme <date>". The recording starts as the sheet opens; after a refusal the button
// starts it again. Cancelling, by button or Escape, throws the recording away. The
// recording is the application state's; a sheet that goes cancels it.
class RecordSheet : public QDialog {
    Q_OBJECT

public:
    RecordSheet(AppModel &app, QWidget *parent = nullptr);
    ~RecordSheet() override;

    RecordingJob &recorder() const { return *m_recorder; }

    // "mm:ss" of whole seconds; the minutes go on past 59.
    static QString timeString(double elapsed);

    void reject() override;

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void startOrStop();
    void stopAndTranscribe();
    void refresh();
    void retranslate();

    AppModel &m_app;
    RecordingJob *m_recorder;
    QLabel *m_title;
    QWidget *m_levelBar;
    QLabel *m_time;
    QLabel *m_denied;
    QPushButton *m_cancel;
    QPushButton *m_go;
    // Stopped, and waiting for the encoder to close the file.
    bool m_stopping = false;
    bool m_started = false;
};
