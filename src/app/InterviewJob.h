#pragma once

#include "core/TranscribeControl.h"
#include "core/TranscriptionResult.h"

#include <QFuture>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class LiveRecording;
struct KeptModel;
struct SpeakerModels;

// What a finished interview hands over: the recording (a temporary file, now the
// receiver's), the transcript and the last speaker text.
struct InterviewResult {
    QString audio;
    TranscriptionResult result;
    std::optional<QString> speakerText;
};

// A live interview: the microphone into a growing recording, and while it grows, each
// new stretch of at least five seconds read back in memory and recognised on the task
// pool. Lives on the main thread; every field changes there.
//
// Rolling passes fail silently and are tried again from the same position, with a longer
// range. With live speakers, the whole recording so far is separated by voice again every
// fifteen seconds once the speaker models are there, beside the recognition.
class InterviewJob : public QObject {
    Q_OBJECT
    Q_PROPERTY(double elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
    Q_PROPERTY(bool isFinalizing READ isFinalizing NOTIFY isFinalizingChanged)
    Q_PROPERTY(bool permissionDenied READ permissionDenied NOTIFY permissionDeniedChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)

public:
    static constexpr int sampleRate = 16000;
    static constexpr qint64 transcribeIntervalMs = 5000;
    static constexpr qint64 diarIntervalMs = 15000;

    explicit InterviewJob(QObject *parent = nullptr);
    // Cancels: a job that goes away mid-recording leaves no file.
    ~InterviewJob() override;

    const QList<TranscriptSegment> &segments() const { return m_segments.value(); }
    const std::optional<QString> &speakerText() const { return m_speakerText.value(); }
    double elapsed() const { return m_elapsed; }
    bool isRecording() const { return m_isRecording; }
    bool isFinalizing() const { return m_isFinalizing; }
    bool permissionDenied() const { return m_permissionDenied; }
    QString status() const { return m_status; }
    // All audio before this position has been recognised.
    qint64 transcribedMs() const { return m_lastMs; }
    // The segments' texts in order, joined by one space.
    QString fullText() const;

    // Never fails loudly: a refused or missing microphone sets `permissionDenied`, a
    // recorder that cannot start says so in `status`.
    void start(const QString &modelPath, const QString &language, bool liveSpeakers);
    // Recognises what is left after the last pass and hands everything over; none when the
    // job never recorded. A pass still running is awaited first, so the value holds
    // every stretch of audio once and in time order.
    QFuture<std::optional<InterviewResult>> stop();
    // Ends the recording and removes its file.
    void cancel();
    // Forgets the last interview's text and state, for a new screen; not while one runs.
    void reset();

signals:
    void segmentsChanged();
    void speakerTextChanged();
    void elapsedChanged();
    void isRecordingChanged();
    void isFinalizingChanged();
    void permissionDeniedChanged();
    void statusChanged();
    // A stretch of the recording has been recognised (its words, if any, are in
    // `segments`); rolling passes and the tail alike.
    void rangeHeard(qint64 fromMs, qint64 toMs);

private:
    struct Pass;

    void begin();
    void tick();
    void transcribeNext(qint64 upToMs);
    void diarizeAll(qint64 upToMs);
    void endRecording();
    void append(const QList<TranscriptSegment> &segments, qint64 upToMs);
    QFuture<std::optional<InterviewResult>> finish();

    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, QList<TranscriptSegment>, m_segments, &InterviewJob::segmentsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, std::optional<QString>, m_speakerText,
                               &InterviewJob::speakerTextChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, double, m_elapsed, &InterviewJob::elapsedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, bool, m_isRecording, &InterviewJob::isRecordingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, bool, m_isFinalizing, &InterviewJob::isFinalizingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, bool, m_permissionDenied, &InterviewJob::permissionDeniedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InterviewJob, QString, m_status, &InterviewJob::statusChanged)

    std::unique_ptr<LiveRecording> m_recording;
    std::optional<QString> m_wavPath;
    std::optional<QString> m_modelPath;
    std::shared_ptr<KeptModel> m_model;
    QString m_language = QStringLiteral("de");
    bool m_liveSpeakers = false;
    QTimer m_timer;
    qint64 m_lastMs = 0;
    // Ends the passes still running when the job is cancelled or goes away.
    TranscribeControlPtr m_control;
    // The rolling pass in flight, if any: stop waits for it.
    std::optional<QFuture<void>> m_pass;
    // The speaker models once they are there, the position the last separation reached,
    // and the separation in flight.
    std::shared_ptr<const SpeakerModels> m_models;
    qint64 m_lastDiarMs = 0;
    std::optional<QFuture<void>> m_diarization;
};
