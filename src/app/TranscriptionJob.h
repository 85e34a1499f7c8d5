#pragma once

#include "core/HistoryItem.h"
#include "core/TranscribeControl.h"

#include <QDateTime>
#include <QFuture>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

// The road of one transcription: decoding and recognition on the task pool, the bundle
// written there too (its audio copy can take long). It owns its busy state; the finished
// item and the failure go out through its signals, and the application state puts them
// into the history. At most one runs at a time.
class TranscriptionJob : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(double busyElapsed READ busyElapsed NOTIFY busyElapsedChanged)
    Q_PROPERTY(double busyProgress READ busyProgress NOTIFY busyProgressChanged)
    Q_PROPERTY(QString gpuDevice READ gpuDevice NOTIFY gpuDeviceChanged)
    Q_PROPERTY(QString cpuDevice READ cpuDevice NOTIFY cpuDeviceChanged)

public:
    explicit TranscriptionJob(QObject *parent = nullptr);
    // Cancels a running job and waits for its background work.
    ~TranscriptionJob() override;

    bool isBusy() const { return m_isBusy; }
    double busyElapsed() const { return m_busyElapsed; }
    double busyProgress() const { return m_busyProgress; }
    // The graphics device that recognises the running job, known shortly after it
    // starts; empty while the processor does the work.
    QString gpuDevice() const { return m_gpuDevice; }
    // The processor, when recognition runs on it; empty while a GPU does, or before the
    // first job has found out.
    QString cpuDevice() const { return m_cpuDevice; }

    // The threads recognition runs on the processor with.
    static int threadCount();

    // Returns at once; does nothing while a job runs. `modelPath` and `language` are fixed
    // for this job.
    void start(const QString &path, const QString &displayName, const QString &modelPath, const QString &language);
    void cancel();

signals:
    void isBusyChanged();
    void busyElapsedChanged();
    void busyProgressChanged();
    void gpuDeviceChanged();
    void cpuDeviceChanged();
    // Both come while the job is still busy, so that whoever waits for its end finds the
    // item (or the message) in place. A cancel ends it without either.
    void finished(const HistoryItem &item);
    // `details` is what a program said itself, shown only on request.
    void failed(const QString &message, const QString &details);

private:
    // What the background work hands back to the main thread.
    struct Outcome;

    void run(const QString &path, const QString &displayName, const QDateTime &createdAt, const QString &modelPath,
             const QString &language, const TranscribeControlPtr &control, const std::function<void(double)> &progress);
    void finish(const Outcome &outcome, const QString &displayName, const QDateTime &createdAt);
    void finishBusy();

    // The shown time counts ticks and reads no clock.
    QTimer m_timer;
    // The background work itself, not its continuation, which needs the main thread.
    std::optional<QFuture<void>> m_task;
    TranscribeControlPtr m_control;

    Q_OBJECT_BINDABLE_PROPERTY(TranscriptionJob, bool, m_isBusy, &TranscriptionJob::isBusyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TranscriptionJob, double, m_busyElapsed, &TranscriptionJob::busyElapsedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TranscriptionJob, double, m_busyProgress, &TranscriptionJob::busyProgressChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TranscriptionJob, QString, m_gpuDevice, &TranscriptionJob::gpuDeviceChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TranscriptionJob, QString, m_cpuDevice, &TranscriptionJob::cpuDeviceChanged)
};
