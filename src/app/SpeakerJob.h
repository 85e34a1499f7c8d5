#pragma once

#include "core/TranscribeControl.h"
#include "speakers/SpeakerSpan.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

class AppModel;
struct HistoryItem;

// The speaker separation of an item. With audio: the models, a 16 kHz WAV, the
// diarisation child and the labelled text, which an AI model may then put names on when
// a key is at hand. Without audio the AI alone divides the text. It owns `speakerStatus`
// and the items' `speakerBusy` and `speakerText`; at most one runs per item. The steps
// chain on the main thread; the heavy ones run elsewhere.
class SpeakerJob : public QObject {
    Q_OBJECT

public:
    // What a scripted run may choose instead of the settings, which stay untouched.
    struct Overrides {
        std::optional<int> speakerCount;
        std::optional<QString> modelId;
        std::optional<QString> apiKey;
    };
    // What a finished job found; `spans` stay empty on the text-only road.
    struct Result {
        QList<SpeakerSpan> spans;
        QString text;
    };

    explicit SpeakerJob(AppModel &app);
    // Stops a running child and waits for the background work.
    ~SpeakerJob() override;

    // Returns at once. The future gives the stored text, or fails with the job's error
    // (also when the job did not start); the model's state is settled before it ends.
    QFuture<Result> start(const HistoryItem &item, const Overrides &overrides = {});
    void cancel();

private:
    QFuture<Result> acoustic(const HistoryItem &item, QString audio, int speakerCount, const QString &key,
                             const QString &modelId);
    QFuture<Result> textOnly(const HistoryItem &item, const QString &key, const QString &modelId);
    // A status from any thread; dropped once the job it belongs to is over.
    void postStatus(const TranscribeControlPtr &job, const QString &text);
    void finish(const TranscribeControlPtr &job, const QString &id, const QString &text,
                const std::optional<QString> &bundle);
    void fail(const TranscribeControlPtr &job, const QString &id, std::exception_ptr error);

    AppModel &m_app;
    // The cancel handle of the job that took the fields last; cleared at its end.
    TranscribeControlPtr m_control;
    // The pool work of running jobs, waited for at the end of the process.
    QList<QFuture<void>> m_pool;
};
