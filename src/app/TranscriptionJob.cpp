// The road of one transcription: staging, start, progress, cancel, and the finished
// item at the top of the history.
#include "app/AppModel.h"

#include "engine/Engine.h"
#include "engine/ModelStore.h"
#include "engine/WhisperEngine.h"
#include "storage/BundleStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent/QtConcurrentRun>

namespace {

// What the background task hands back to the main thread.
struct Outcome {
    std::optional<TranscriptionResult> result;
    QString error;
    bool cancelled = false;
};

QString lastComponent(const QString &url)
{
    return QFileInfo(url).fileName();
}

} // namespace

void AppModel::stage(const QString &url, const std::optional<QString> &displayName)
{
    if (m_isBusy)
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    setPending(PendingItem{QUuid::createUuid(), PendingItem::File{url, displayName.value_or(lastComponent(url))}});
}

void AppModel::stageRecording()
{
    if (m_isBusy)
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    setPending(PendingItem{QUuid::createUuid(), PendingItem::Recording{}});
}

void AppModel::stageInterview()
{
    if (m_isBusy)
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    setPending(PendingItem{QUuid::createUuid(), PendingItem::Interview{}});
}

void AppModel::startPending(const JobOverrides &overrides)
{
    if (!m_pending)
        return;
    const PendingItem item = *m_pending;
    setPending(std::nullopt);
    if (const auto *file = std::get_if<PendingItem::File>(&item.kind))
        transcribe(file->url, file->name, overrides);
    else if (std::holds_alternative<PendingItem::Recording>(item.kind))
        setShowRecorder(true);
    else
        setInterviewActive(true);
}

void AppModel::transcribe(const QString &url, const std::optional<QString> &displayName,
                          const JobOverrides &overrides)
{
    if (m_isBusy)
        return;
    setErrorMessage(std::nullopt);

    const std::optional<WhisperModel> chosen
        = overrides.modelId ? WhisperModel::withId(*overrides.modelId) : std::nullopt;
    const WhisperModel model = chosen.value_or(selectedModel());
    if (!m_modelStore->isInstalled(model)) {
        // Kept German on purpose: it names the model as the catalogue does.
        setErrorMessage(QStringLiteral("Modell ") + model.name
                        + QStringLiteral(" ist nicht installiert. Bitte in den Einstellungen herunterladen."));
        return;
    }
    // Fixed for this job: later changes of the settings don't reach it.
    const QString modelPath = m_modelStore->modelsDir() + u'/' + model.fileName;
    const QString language = overrides.language.value_or(m_language);
    const QString name = displayName.value_or(lastComponent(url));
    const QDateTime createdAt = QDateTime::currentDateTime();

    setBusy(true);
    setBusyElapsed(0);
    setBusyProgress(0);

    // The shown time counts ticks and reads no clock.
    m_timer = new QTimer(this);
    m_timer->setInterval(100);
    connect(m_timer, &QTimer::timeout, this, [this] { setBusyElapsed(m_busyElapsed + 0.1); });
    m_timer->start();

    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_control = control;

    // Progress comes from the library's threads and is only posted here.
    QPointer<AppModel> self(this);
    auto progress = [self](double fraction) {
        QMetaObject::invokeMethod(
            self.data(),
            [self, fraction] {
                if (self)
                    self->setBusyProgress(fraction);
            },
            Qt::QueuedConnection);
    };

    QFuture<Outcome> task = QtConcurrent::run([url, modelPath, language, control, progress]() -> Outcome {
        try {
            return {Engine::transcribe(url, modelPath, language, control, progress), {}, false};
        } catch (const EngineError &e) {
            return {std::nullopt, e.errorDescription(), e.isCancelled()};
        } catch (const std::exception &e) {
            return {std::nullopt, QString::fromLocal8Bit(e.what()), false};
        }
    });
    m_transcribeTask = task;
    task.then(this, [this, url, name, createdAt](const Outcome &outcome) {
        if (outcome.result)
            finishJob(*outcome.result, url, name, createdAt);
        else
            failJob(outcome.error, outcome.cancelled);
    });
}

void AppModel::finishJob(const TranscriptionResult &result, const QString &url, const QString &displayName,
                         const QDateTime &createdAt)
{
    HistoryItem item;
    try {
        item = HistoryItem(BundleStore::create(displayName, createdAt, url, result));
    } catch (...) {
        // The transcript is kept in memory; it is gone at the next start.
        item.id = uuidText(QUuid::createUuid());
        item.fileName = displayName;
        item.date = createdAt;
        item.result = result;
    }
    m_history.prepend(item);
    emit historyChanged();
    setCurrent(item);
    finishBusy();
    if (m_speakerDetection)
        detectSpeakers(item);
}

void AppModel::failJob(const QString &message, bool cancelled)
{
    if (!cancelled)
        setErrorMessage(message);
    finishBusy();
}

void AppModel::finishBusy()
{
    setBusy(false);
    setBusyProgress(0);
    if (m_timer) {
        m_timer->stop();
        m_timer->deleteLater();
        m_timer = nullptr;
    }
    m_transcribeTask.reset();
    m_control.reset();
}

void AppModel::cancelTranscription()
{
    // The flag in the control is what ends the job. Cancelling the future instead would
    // skip the continuation that takes the app out of its busy state.
    if (m_control)
        m_control->cancel();
}

void AppModel::reTranscribe(const HistoryItem &item)
{
    if (item.audioURL && QFileInfo::exists(*item.audioURL))
        stage(*item.audioURL, item.fileName);
    else
        setErrorMessage(QCoreApplication::translate("Sagwerk", "Audiodatei nicht gefunden."));
}

void AppModel::detectSpeakers(const HistoryItem &)
{
}
