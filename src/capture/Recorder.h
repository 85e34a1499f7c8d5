#pragma once

#include <QFuture>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>

class QTimer;

// The plain microphone recorder behind the record sheet: AAC in an MPEG-4 file
// "aufnahme-<UUID>.m4a" in the temporary folder, 44.1 kHz, mono, high quality. While it
// runs it publishes the recorded time and a level for the meter ten times a second.
// Lives on the main thread; owned by the sheet that shows it.
class Recorder : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(double elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(float level READ level NOTIFY levelChanged)
    Q_PROPERTY(bool permissionDenied READ permissionDenied NOTIFY permissionDeniedChanged)

public:
    explicit Recorder(QObject *parent = nullptr);
    // A recording still running or still being closed is cancelled: nobody is left to
    // take its file.
    ~Recorder() override;

    bool isRecording() const { return m_isRecording; }
    double elapsed() const { return m_elapsed; }
    float level() const { return m_level; }
    bool permissionDenied() const { return m_permissionDenied; }
    const std::optional<QString> &filePath() const { return m_filePath; }

    // Asks for the microphone where the answer is still open, then records. Returns at
    // once; a refusal, or no input device at all, sets permissionDenied. Other failures
    // leave the recorder idle without a word.
    void start();
    // Ends the recording at once; `elapsed` keeps its length. The encoder closes the file
    // on its own thread, so the file comes through the future once it is whole (or after
    // ten seconds at the most); the caller owns it. Without a recording the future holds
    // the last file, or nothing.
    QFuture<std::optional<QString>> stop();
    // Ends the recording and removes its file, also one still being closed after stop(),
    // whose future then delivers nothing.
    void cancel();

    // The meter's value for an average power in dB relative to full scale: linear
    // amplitude with a fixed gain of 1.6, within 0 and 1.
    static float levelFor(float powerDb);

signals:
    void isRecordingChanged();
    void elapsedChanged();
    void levelChanged();
    void permissionDeniedChanged();

private:
    struct Capture;
    class Closing;

    void begin();
    void tick();
    void abandon();
    void setRecording(bool on);
    void setElapsed(double seconds);
    void setLevel(float level);
    void setPermissionDenied(bool denied);

    bool m_isRecording = false;
    double m_elapsed = 0;
    float m_level = 0;
    bool m_permissionDenied = false;
    std::unique_ptr<Capture> m_recorder;
    // The last stopped recording while its file is being closed.
    QPointer<Closing> m_closing;
    QTimer *m_timer = nullptr;
    std::optional<QString> m_filePath;
};
