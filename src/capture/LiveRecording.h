#pragma once

#include <QFile>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QAudioSource;

// The microphone into a growing WAV file in the temporary folder (16 kHz mono 16-bit,
// samples from byte 44 on). Its samples are read back in memory while it grows; the
// reading functions open the file on their own and may run on any thread.
class LiveRecording : public QObject {
    Q_OBJECT

public:
    static constexpr int sampleRate = 16000;

    explicit LiveRecording(QObject *parent = nullptr);
    // Removes a file that is still being recorded.
    ~LiveRecording() override;

    enum class Start { recording, noMicrophone, failed };
    // Opens the file and starts the default input; `error` says why it failed.
    Start start(QString *error);
    bool isRecording() const { return m_source != nullptr; }
    // The file while and after it was recorded; empty before.
    const std::optional<QString> &path() const { return m_path; }
    // Stops the input and writes the sizes into the header; the file stays.
    void stop();
    // Stops and removes the file.
    void discard();
    // Forgets the file, which is the caller's from now on.
    void release() { m_path.reset(); }

    // The recording's length by its size alone: (size − 44) / 2 samples, 0 below 45 bytes.
    static qint64 durationMs(const QString &path, int rate = sampleRate);
    // The samples from `fromMs` to `toMs` (fewer where the file ends sooner) as floats.
    // Throws std::runtime_error when the recording cannot be read.
    static std::vector<float> samples(const QString &path, qint64 fromMs, qint64 toMs, int rate = sampleRate);
    // A new "chunk-UUID.wav" in the temporary folder holding the same samples behind a
    // header of their own, for readers that want a file. Throws std::runtime_error when
    // the recording cannot be read or the chunk written.
    static QString extractRange(const QString &path, qint64 fromMs, qint64 toMs, int rate = sampleRate);

private:
    std::unique_ptr<QAudioSource> m_source;
    QFile m_file;
    std::optional<QString> m_path;
};
