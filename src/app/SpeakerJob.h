#pragma once

#include "core/TranscribeControl.h"
#include "core/SpeakerSpan.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QProperty>
#include <QString>

#include <optional>

struct HistoryItem;

// The speaker separation of an item. With audio: the models, a 16 kHz WAV, the
// diarisation child and the labelled text, which an AI model may then put names on when
// a key is at hand. Without audio the AI alone divides the text. It owns its status and
// writes the speaker text into the bundle; what becomes of the item goes out through its
// signals. At most one runs per item. The steps chain on the main thread; the heavy ones
// run elsewhere.
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

    explicit SpeakerJob(QObject *parent = nullptr);
    // Stops a running child and waits for the background work.
    ~SpeakerJob() override;

    // What the running job is doing; empty when none runs.
    const std::optional<QString> &status() const { return m_status.value(); }
    // What the last job of the item has to tell beside its text (one voice found where the
    // count was left open); empty for none.
    QString notice(const QString &itemId) const
    {
        return m_notice.value().first == itemId ? m_notice.value().second : QString();
    }

    // Returns at once. The future gives the stored text, or fails with the job's error
    // (also when the job did not start); the signals have been sent before it ends.
    // `key` and `modelId` name the AI model that divides or names; no key, no naming.
    QFuture<Result> start(const HistoryItem &item, int speakerCount, const QString &key, const QString &modelId);
    void cancel();

signals:
    void statusChanged();
    void noticeChanged();
    void began(const QString &itemId);
    void finished(const QString &itemId, const QString &text);
    // An empty message is a cancel, which ends in silence. `details` is what a program
    // said itself; `retryable` where the same job may work later (a failed download).
    void failed(const QString &itemId, const QString &message, const QString &details, bool retryable);
    // Without audio the AI alone can divide the text, and it needs a key.
    void keyMissing(const QString &message);

private:
    QFuture<Result> acoustic(const HistoryItem &item, QString audio, int speakerCount, const QString &key,
                             const QString &modelId);
    QFuture<Result> textOnly(const HistoryItem &item, const QString &key, const QString &modelId);
    // A status from any thread; dropped once the job it belongs to is over.
    void postStatus(const TranscribeControlPtr &job, const QString &text);
    // The future ends when the bundle has the text.
    QFuture<void> finish(const TranscribeControlPtr &job, const QString &id, const QString &text,
                const std::optional<QString> &bundle);
    void fail(const TranscribeControlPtr &job, const QString &id, std::exception_ptr error);

    // The cancel handle of the job that took the fields last; cleared at its end.
    TranscribeControlPtr m_control;
    // The pool work of running jobs, waited for at the end of the process.
    QList<QFuture<void>> m_pool;

    Q_OBJECT_BINDABLE_PROPERTY(SpeakerJob, std::optional<QString>, m_status, &SpeakerJob::statusChanged)
    using ItemText = std::pair<QString, QString>; // item id, text
    Q_OBJECT_BINDABLE_PROPERTY(SpeakerJob, ItemText, m_notice, &SpeakerJob::noticeChanged)
};
