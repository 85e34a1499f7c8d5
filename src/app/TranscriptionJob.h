#pragma once

#include "core/TranscribeControl.h"

#include <QDateTime>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

class AppModel;
struct LoadedBundle;
struct TranscriptionResult;

// The road of one transcription: decoding and recognition on the task pool, the bundle
// written there too (its audio copy can take long), and the finished item put into the
// history on the main thread. It owns `isBusy`, `busyElapsed` and `busyProgress` of
// the model; at most one runs at a time.
class TranscriptionJob : public QObject {
    Q_OBJECT

public:
    explicit TranscriptionJob(AppModel &app);
    // Cancels a running job and waits for its background work, which reports into the model.
    ~TranscriptionJob() override;

    // Returns at once; does nothing while a job runs. `modelPath` and `language` are fixed
    // for this job.
    void start(const QString &url, const QString &displayName, const QString &modelPath, const QString &language);
    void cancel();

private:
    // What the background work hands back to the main thread.
    struct Outcome;

    void run(const QString &url, const QString &displayName, const QDateTime &createdAt, const QString &modelPath,
             const QString &language, const TranscribeControlPtr &control, const std::function<void(double)> &progress);
    void finish(const Outcome &outcome, const QString &displayName, const QDateTime &createdAt);
    void finishBusy();

    AppModel &m_app;
    // The shown time counts ticks and reads no clock.
    QTimer m_timer;
    // The background work itself, not its continuation, which needs the main thread.
    std::optional<QFuture<void>> m_task;
    TranscribeControlPtr m_control;
};
