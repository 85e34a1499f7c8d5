#include "app/TranscriptionJob.h"

#include "core/UserError.h"
#include "engine/Engine.h"
#include "engine/EngineError.h"
#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"
#include "storage/BundleStore.h"

#include <QPointer>
#include <QtConcurrent/QtConcurrentRun>

struct TranscriptionJob::Outcome {
    std::optional<TranscriptionResult> result;
    // Absent when the bundle could not be made; the item then lives in memory only.
    std::optional<LoadedBundle> bundle;
    QString error;
    bool cancelled = false;
    // What a program said itself, shown behind the error's details.
    QString details;
};

TranscriptionJob::TranscriptionJob(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(100);
    connect(&m_timer, &QTimer::timeout, this, [this] { m_busyElapsed = m_busyElapsed + 0.1; });
}

TranscriptionJob::~TranscriptionJob()
{
    if (m_control)
        m_control->cancel();
    if (m_task)
        m_task->waitForFinished();
}

int TranscriptionJob::threadCount()
{
    return WhisperEngine::threadCount();
}

void TranscriptionJob::start(const QString &path, const QString &displayName, const QString &modelPath,
                             const QString &language)
{
    if (m_isBusy)
        return;
    const QDateTime createdAt = QDateTime::currentDateTime();
    m_isBusy = true;
    m_busyElapsed = 0.0;
    m_busyProgress = 0.0;
    m_timer.start();

    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_control = control;

    // Progress comes from the library's threads and is only posted here.
    QPointer<TranscriptionJob> self(this);
    auto progress = [self](double fraction) {
        QMetaObject::invokeMethod(
            self.data(),
            [self, fraction] {
                if (self)
                    self->m_busyProgress = fraction;
            },
            Qt::QueuedConnection);
    };

    // The voice-activity model comes first, fetched on first use; without it recognition
    // runs all the same.
    VadModel::ensure(control).then(this, [=, this](const QString &) {
        if (control->isCancelled()) {
            Outcome cancelled;
            cancelled.cancelled = true;
            finish(cancelled, displayName, createdAt);
            return;
        }
        run(path, displayName, createdAt, modelPath, language, control, progress);
    });
}

void TranscriptionJob::run(const QString &path, const QString &displayName, const QDateTime &createdAt,
                           const QString &modelPath, const QString &language, const TranscribeControlPtr &control,
                           const std::function<void(double)> &progress)
{
    QPointer<TranscriptionJob> self(this);
    QFuture<Outcome> task = QtConcurrent::run([=]() -> Outcome {
        Outcome outcome;
        // Finding the device loads the library's backends: here, not on the GUI thread.
        const std::optional<WhisperEngine::Device> device = WhisperEngine::gpuDevice();
        const QString cpu = device ? QString() : WhisperEngine::cpuDevice().name;
        QMetaObject::invokeMethod(
            self.data(),
            [self, gpu = device ? device->name : QString(), cpu] {
                if (!self)
                    return;
                self->m_gpuDevice = gpu;
                self->m_cpuDevice = cpu;
            },
            Qt::QueuedConnection);
        try {
            outcome.result = Engine::transcribe(path, modelPath, language, control, progress);
        } catch (const UserError &e) {
            outcome.error = e.errorDescription();
            outcome.details = e.details();
            outcome.cancelled = e.isCancelled();
            return outcome;
        } catch (const std::exception &e) {
            outcome.error = QString::fromLocal8Bit(e.what());
            return outcome;
        }
        // Past recognition a cancel is no longer heard: the job finishes with its bundle.
        try {
            outcome.bundle = BundleStore::create(displayName, createdAt, path, *outcome.result);
        } catch (...) {
            // Dropped without a word: the transcript is kept in memory.
        }
        return outcome;
    });
    m_task = QFuture<void>(task);
    task.then(this, [this, displayName, createdAt](const Outcome &outcome) { finish(outcome, displayName, createdAt); });
}

void TranscriptionJob::finish(const Outcome &outcome, const QString &displayName, const QDateTime &createdAt)
{
    if (!outcome.result) {
        if (!outcome.cancelled)
            emit failed(outcome.error, outcome.details);
        finishBusy();
        return;
    }
    HistoryItem item;
    if (outcome.bundle) {
        item = BundleStore::historyItem(*outcome.bundle);
    } else {
        // Gone at the next start.
        item.id = uuidText(QUuid::createUuid());
        item.fileName = displayName;
        item.date = createdAt;
        item.result = *outcome.result;
    }
    emit finished(item);
    finishBusy();
}

void TranscriptionJob::finishBusy()
{
    m_isBusy = false;
    m_busyProgress = 0.0;
    m_timer.stop();
    m_task.reset();
    m_control.reset();
}

void TranscriptionJob::cancel()
{
    // The flag in the control is what ends the job. Cancelling the future instead would
    // skip the continuation that takes the app out of its busy state.
    if (m_control)
        m_control->cancel();
}
