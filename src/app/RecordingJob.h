#pragma once

#include <QFuture>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class Recorder;

// A plain recording from the microphone, for the record sheet: the recorder's state as
// the screens read it. The finished file goes to AppModel::transcribe.
class RecordingJob : public QObject {
    Q_OBJECT

public:
    explicit RecordingJob(QObject *parent = nullptr);
    // A recording still running is cancelled: nobody is left to take its file.
    ~RecordingJob() override;

    bool isRecording() const;
    double elapsed() const;
    // The meter's value, 0 to 1.
    float level() const;
    bool permissionDenied() const;
    const std::optional<QString> &filePath() const;

    void start();
    // The file once it is whole; the caller owns it.
    QFuture<std::optional<QString>> stop();
    void cancel();

signals:
    void isRecordingChanged();
    void elapsedChanged();
    void levelChanged();
    void permissionDeniedChanged();

private:
    std::unique_ptr<Recorder> m_recorder;
};
