// Start, settings, history, keys and staging of the application state, and the outcomes
// of its jobs, which live in objects of their own.
#include "app/AppModel.h"

#include <QtConcurrent/QtConcurrentRun>

#include "core/AIModel.h"
#include "app/InterviewCompletion.h"
#include "app/InterviewJob.h"
#include "app/ItemNames.h"
#include "app/RecordingJob.h"
#include "app/LanguageManager.h"
#include "app/LinkImport.h"
#include "app/Refinement.h"
#include "app/Settings.h"
#include "app/SpeakerJob.h"
#include "app/TranscriptionJob.h"
#include "app/TranscriptionQueue.h"
#include "core/Tr.h"
#include "app/ModelStore.h"
#include "app/PatchQueue.h"
#include "export/TextForms.h"
#include "review/TranscriptLines.h"
#include "storage/BundleStore.h"
#include "storage/KeychainStore.h"

#include <QFileInfo>

const QList<AppModel::LanguageOption> &AppModel::languages()
{
    static const QList<LanguageOption> list = {
        {QStringLiteral("de"), QString::fromUtf8(QT_TRANSLATE_NOOP("Sagwerk", "Deutsch"))},
        {QStringLiteral("auto"), QString::fromUtf8(QT_TRANSLATE_NOOP("Sagwerk", "Automatisch"))},
        {QStringLiteral("en"), QString::fromUtf8(QT_TRANSLATE_NOOP("Sagwerk", "Englisch"))},
        {QStringLiteral("fr"), QString::fromUtf8(QT_TRANSLATE_NOOP("Sagwerk", "Französisch"))},
        {QStringLiteral("sv"), QString::fromUtf8(QT_TRANSLATE_NOOP("Sagwerk", "Schwedisch"))},
    };
    return list;
}

AppModel::AppModel(QObject *parent, ModelStore *store)
    : QObject(parent)
    , m_settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"))
    , m_transcription(std::make_unique<TranscriptionJob>())
    , m_linkImport(std::make_unique<LinkImport>())
    , m_speakerJob(std::make_unique<SpeakerJob>())
    , m_refinement(std::make_unique<Refinement>())
    , m_interview(std::make_unique<InterviewJob>())
    , m_recording(std::make_unique<RecordingJob>())
    , m_queue(std::make_unique<TranscriptionQueue>(*this))
{
    connectJobs();
    // The order matters: the first window must see a complete state.
    m_modelStore = store ? store : new ModelStore(this);
    if (!m_modelStore->parent())
        m_modelStore->setParent(this);

    m_speechModelId = m_settings.value(Settings::speechModelId, Settings::Default::speechModelId).toString();
    m_language = m_settings.value(Settings::transcribeLanguage, Settings::Default::transcribeLanguage).toString();

    // The keys arrive a moment later and announce themselves. A key saved before its
    // answer came is newer than the stored one and stays.
    KeychainStore::load(QString(KeychainStore::anthropicAccount)).then(this, [this](const std::optional<QString> &key) {
        if (!m_anthropicKeySaved)
            m_anthropicKey = key.value_or(QString());
    });
    KeychainStore::load(QString(KeychainStore::openaiAccount)).then(this, [this](const std::optional<QString> &key) {
        if (!m_openaiKeySaved)
            m_openaiKey = key.value_or(QString());
    });

    m_aiModelId = m_settings.value(Settings::aiModelId, Settings::Default::aiModelId).toString();
    m_speakerDetection = m_settings.value(Settings::speakerDetection, false).toBool();
    m_speakerCount = m_settings.value(Settings::speakerCount, 0).toInt();
    m_appLanguage = m_settings.value(Settings::appLanguage, Settings::Default::appLanguage).toString();
    m_interviewLiveSpeakers = m_settings.value(Settings::interviewLiveSpeakers, false).toBool();

    LanguageManager::instance().setLanguage(m_appLanguage);

    // Segments are most of a document's bytes and only the opened item shows them.
    QList<HistoryItem> history;
    PatchQueue::drain();
    for (const LoadedBundle &bundle : BundleStore::listSummaries()) {
        history.append(BundleStore::historyItem(bundle));
        history.back().segmentsPending = true;
    }
    m_history.setValueBypassingBindings(history);

    // A machine that already has a model skips the first-run wizard.
    if (!m_settings.value(Settings::onboardingDone, false).toBool())
        m_showOnboarding = m_modelStore->installed().isEmpty();
}

AppModel::~AppModel() = default;

void AppModel::connectJobs()
{
    // A queued file lands in the history without taking the screen from the queue.
    connect(m_queue.get(), &TranscriptionQueue::saved, this, [this](const HistoryItem &item) {
        if (itemOf(item.id)) {
            updateItem(item.id, [&](HistoryItem &h) { h = item; });
            return;
        }
        QList<HistoryItem> history = m_history.value();
        history.prepend(item);
        m_history.setValueBypassingBindings(std::move(history));
        m_history.notify();
    });
    connect(m_transcription.get(), &TranscriptionJob::finished, this, [this](const HistoryItem &item) {
        showNew(item);
        // After the job's busy state has ended, as a job of its own.
        if (m_speakerDetection)
            QMetaObject::invokeMethod(this, [this, item] { detectSpeakers(item); }, Qt::QueuedConnection);
    });
    connect(m_transcription.get(), &TranscriptionJob::failed, this,
            [this](const QString &message, const QString &details) { setErrorMessage(message, details); });

    connect(m_linkImport.get(), &LinkImport::failed, this, [this](const QString &message) { setErrorMessage(message); });
    // Refused without a word if a job has started meanwhile; the file then stays in the
    // temporary folder.
    connect(m_linkImport.get(), &LinkImport::downloaded, this,
            [this](const QString &path, const QString &title) { stage(path, title); });

    auto needKey = [this](const QString &message) {
        setErrorMessage(message);
        setShowSettings(true);
    };
    connect(m_speakerJob.get(), &SpeakerJob::keyMissing, this, needKey);
    connect(m_speakerJob.get(), &SpeakerJob::began, this,
            [this](const QString &id) { updateItem(id, [](HistoryItem &h) { h.speakerBusy = true; }); });
    connect(m_speakerJob.get(), &SpeakerJob::finished, this, [this](const QString &id, const QString &text) {
        updateItem(id, [&](HistoryItem &h) {
            h.speakerText = text;
            h.speakerBusy = false;
        });
    });
    connect(m_speakerJob.get(), &SpeakerJob::failed, this,
            [this](const QString &id, const QString &message, const QString &details, bool retryable) {
                updateItem(id, [](HistoryItem &h) { h.speakerBusy = false; });
                if (message.isEmpty())
                    return;
                std::function<void()> retry;
                if (retryable) {
                    retry = [this, id] {
                        if (const HistoryItem *item = itemOf(id))
                            detectSpeakers(HistoryItem(*item));
                    };
                }
                setErrorMessage(message, details, std::move(retry));
            });

    connect(m_refinement.get(), &Refinement::keyMissing, this, needKey);
    connect(m_refinement.get(), &Refinement::began, this, [this](const QString &id, qint64 level) {
        updateItem(id, [level](HistoryItem &h) { h.refiningLevel = level; });
    });
    connect(m_refinement.get(), &Refinement::finished, this,
            [this](const QString &id, qint64 level, const QString &text) {
                updateItem(id, [&](HistoryItem &h) {
                    h.refined.insert(level, text);
                    h.refiningLevel.reset();
                });
            });
    connect(m_refinement.get(), &Refinement::failed, this, [this](const QString &id, const QString &message) {
        updateItem(id, [](HistoryItem &h) { h.refiningLevel.reset(); });
        setErrorMessage(message);
    });
}

WhisperModel AppModel::speechModel() const
{
    return WhisperModel::withId(m_speechModelId).value_or(WhisperModel::all().at(1));
}

QString AppModel::aiKey() const
{
    return AIModel::by(m_aiModelId).provider == AIProvider::openai ? m_openaiKey.value() : m_anthropicKey.value();
}

void AppModel::setSpeechModelId(const QString &id)
{
    store(Settings::speechModelId, m_speechModelId, id);
}

void AppModel::setLanguage(const QString &code)
{
    store(Settings::transcribeLanguage, m_language, code);
}

void AppModel::setAiModelId(const QString &id)
{
    store(Settings::aiModelId, m_aiModelId, id);
}

void AppModel::setSpeakerDetection(bool on)
{
    store(Settings::speakerDetection, m_speakerDetection, on);
}

void AppModel::setSpeakerCount(int count)
{
    store(Settings::speakerCount, m_speakerCount, count);
}

void AppModel::setAppLanguage(const QString &code)
{
    store(Settings::appLanguage, m_appLanguage, code);
    LanguageManager::instance().setLanguage(code);
}

void AppModel::setInterviewLiveSpeakers(bool on)
{
    store(Settings::interviewLiveSpeakers, m_interviewLiveSpeakers, on);
}

void AppModel::setCurrent(const std::optional<HistoryItem> &item)
{
    m_current.setValueBypassingBindings(item);
    m_current.notify();
    if (item && item->segmentsPending && item->bundlePath)
        loadSegments(item->id, *item->bundlePath);
}

void AppModel::loadSegments(const QString &id, const QString &bundle)
{
    if (m_segmentsLoading.contains(id))
        return;
    m_segmentsLoading.insert(id);
    QtConcurrent::run([bundle]() -> QList<TranscriptSegment> {
        PatchQueue::drain();
        const std::optional<LoadedBundle> whole = BundleStore::load(bundle);
        return whole ? BundleStore::historyItem(*whole).result.segments : QList<TranscriptSegment>();
    }).then(this, [this, id](const QList<TranscriptSegment> &segments) {
        m_segmentsLoading.remove(id);
        // A document that no longer reads leaves the item as it was listed.
        updateItem(id, [&](HistoryItem &item) {
            if (!item.segmentsPending)
                return;
            item.result.segments = segments;
            item.segmentsPending = false;
        });
    });
}

void AppModel::setPending(const std::optional<PendingItem> &item)
{
    m_pending.setValueBypassingBindings(item);
    m_pending.notify();
}

void AppModel::showNew(const HistoryItem &item)
{
    QList<HistoryItem> history = m_history.value();
    history.prepend(item);
    m_history.setValueBypassingBindings(std::move(history));
    m_history.notify();
    setCurrent(item);
}

const HistoryItem *AppModel::itemOf(const QString &id) const
{
    for (const HistoryItem &h : m_history.value()) {
        if (h.id == id)
            return &h;
    }
    return current() && current()->id == id ? &*current() : nullptr;
}

void AppModel::patchBundle(const QString &id, std::function<void(const QString &bundle)> patch)
{
    const HistoryItem *item = itemOf(id);
    if (item && item->bundlePath)
        PatchQueue::add([bundle = *item->bundlePath, patch = std::move(patch)] { patch(bundle); });
}

void AppModel::deleteItem(const HistoryItem &item)
{
    if (item.bundlePath) {
        // A patch under way would write into the folder as it goes.
        PatchQueue::drain();
        BundleStore::remove(*item.bundlePath);
    }
    QList<HistoryItem> rest = m_history.value();
    rest.removeIf([&](const HistoryItem &h) { return h.id == item.id; });
    m_history.setValueBypassingBindings(std::move(rest));
    m_history.notify();
    if (current() && current()->id == item.id)
        setCurrent(std::nullopt);
}

void AppModel::updateItem(QString id, const std::function<void(HistoryItem &)> &change)
{
    QList<HistoryItem> history = m_history.value();
    for (HistoryItem &h : history) {
        if (h.id != id)
            continue;
        change(h);
        const HistoryItem changed = h;
        m_history.setValueBypassingBindings(std::move(history));
        m_history.notify();
        if (current() && current()->id == id)
            setCurrent(changed);
        return;
    }
    if (current() && current()->id == id) {
        HistoryItem copy = *current();
        change(copy);
        setCurrent(copy);
    }
}

void AppModel::saveAnthropicKey(const QString &key)
{
    const QString trimmed = key.trimmed();
    m_anthropicKeySaved = true;
    m_anthropicKey = trimmed;
    if (trimmed.isEmpty())
        KeychainStore::remove(QString(KeychainStore::anthropicAccount));
    else
        KeychainStore::save(trimmed, QString(KeychainStore::anthropicAccount));
}

void AppModel::saveOpenAIKey(const QString &key)
{
    const QString trimmed = key.trimmed();
    m_openaiKeySaved = true;
    m_openaiKey = trimmed;
    if (trimmed.isEmpty())
        KeychainStore::remove(QString(KeychainStore::openaiAccount));
    else
        KeychainStore::save(trimmed, QString(KeychainStore::openaiAccount));
}

void AppModel::finishOnboarding()
{
    m_settings.setValue(Settings::onboardingDone, true);
    const QSet<QString> &installed = m_modelStore->installed();
    if (!installed.contains(m_speechModelId)) {
        for (const WhisperModel &model : WhisperModel::all()) {
            if (installed.contains(model.id)) {
                setSpeechModelId(model.id);
                break;
            }
        }
    }
    m_showOnboarding = false;
}

// --- Staging and the transcription job ---

void AppModel::stageKind(PendingItem::Kind kind)
{
    if (m_transcription->isBusy())
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    setPending(PendingItem{QUuid::createUuid(), std::move(kind)});
}

void AppModel::stage(const QString &url, const std::optional<QString> &displayName)
{
    stageKind(PendingItem::File{url, displayName.value_or(QFileInfo(url).fileName())});
}

void AppModel::stageRecording()
{
    stageKind(PendingItem::Recording{});
}

void AppModel::stageInterview()
{
    stageKind(PendingItem::Interview{});
}

void AppModel::startPending(const JobOverrides &overrides)
{
    if (!pending())
        return;
    const PendingItem item = *pending();
    setPending(std::nullopt);
    if (const auto *file = std::get_if<PendingItem::File>(&item.kind))
        transcribe(file->url, file->name, overrides);
    else if (std::holds_alternative<PendingItem::Recording>(item.kind))
        setShowRecorder(true);
    else {
        // The screen that comes shows no text of an earlier interview.
        m_interview->reset();
        setInterviewActive(true);
    }
}

void AppModel::transcribe(const QString &url, const std::optional<QString> &displayName,
                          const JobOverrides &overrides)
{
    if (m_transcription->isBusy())
        return;
    setErrorMessage(std::nullopt);

    // A model file named for this job runs as given; the job reports one that is missing.
    QString modelPath = overrides.modelPath.value_or(QString());
    if (!overrides.modelPath) {
        const std::optional<WhisperModel> chosen
            = overrides.modelId ? WhisperModel::withId(*overrides.modelId) : std::nullopt;
        const WhisperModel model = chosen.value_or(speechModel());
        if (!m_modelStore->isInstalled(model)) {
            setErrorMessage(notInstalledMessage(model));
            return;
        }
        modelPath = m_modelStore->path(model);
    }
    // Fixed for this job: later changes of the settings don't reach it.
    m_transcription->start(url, displayName.value_or(QFileInfo(url).fileName()), modelPath,
                           overrides.language.value_or(m_language));
}

QString AppModel::notInstalledMessage(const WhisperModel &model)
{
    // Kept German on purpose: it names the model as the catalogue does.
    return QStringLiteral("Modell ") + model.name
           + QStringLiteral(" ist nicht installiert. Bitte in den Einstellungen herunterladen.");
}

void AppModel::cancelTranscription()
{
    m_transcription->cancel();
}

void AppModel::reTranscribe(const HistoryItem &item)
{
    if (item.audioPath && QFileInfo::exists(*item.audioPath))
        stage(*item.audioPath, item.fileName);
    else
        setErrorMessage(Tr::tr("Audiodatei nicht gefunden."));
}

void AppModel::openPanel()
{
    if (!m_filePanel)
        return;
    // A cancelled chooser is no failure: nothing happens.
    m_queue->open(m_filePanel());
}

void AppModel::stageLink(const QString &link)
{
    const QString text = link.trimmed();
    if (m_transcription->isBusy() || m_linkImport->isBusy() || text.isEmpty())
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    m_linkImport->start(text);
}

QFuture<void> AppModel::refine(const HistoryItem &item, qint64 level, const Refinement::Overrides &overrides)
{
    // Fixed for this run: later changes of the settings don't reach it.
    return m_refinement->start(item, level, overrides.apiKey.value_or(aiKey()),
                               overrides.modelId.value_or(m_aiModelId));
}

void AppModel::startInterview(const std::optional<QString> &language, std::optional<bool> liveSpeakers)
{
    m_interview->start(m_modelStore->path(speechModel()), language.value_or(m_language),
                       liveSpeakers.value_or(m_interviewLiveSpeakers));
}

QFuture<bool> AppModel::stopInterview()
{
    return m_interview->stop()
        .then(this,
              [this](const std::optional<InterviewResult> &value) {
                  if (!value) {
                      setInterviewActive(false);
                      return QtFuture::makeReadyValueFuture(false);
                  }
                  return finishInterview(*value).then([] { return true; });
              })
        .unwrap();
}

void AppModel::cancelInterview()
{
    m_interview->cancel();
    setInterviewActive(false);
}

QFuture<void> AppModel::finishInterview(const InterviewResult &interview)
{
    setInterviewActive(false);
    return InterviewCompletion::store(interview).then(this, [this](const std::optional<HistoryItem> &item) {
        if (item)
            showNew(*item);
    });
}

QFuture<SpeakerJob::Result> AppModel::detectSpeakers(const HistoryItem &item, const SpeakerJob::Overrides &overrides)
{
    // Fixed for this run: later changes of the settings don't reach it.
    return m_speakerJob->start(item, overrides.speakerCount.value_or(m_speakerCount),
                               overrides.apiKey.value_or(aiKey()), overrides.modelId.value_or(m_aiModelId));
}

void AppModel::cancelSpeakers()
{
    m_speakerJob->cancel();
}

// --- Names ---

// The id is copied first: it may be the current item's, which the change replaces.

void AppModel::setSpeakerNames(const QString &itemId, const QMap<QString, QString> &names)
{
    const QString id = itemId;
    updateItem(id, [&](HistoryItem &item) { item.speakerNames = names; });
    patchBundle(id, [names](const QString &bundle) { BundleStore::saveSpeakerNames(bundle, names); });
}

void AppModel::renameSpeaker(const QString &itemId, const QString &shown, const QString &name)
{
    const QString id = itemId;
    const HistoryItem *item = itemOf(id);
    if (!item)
        return;
    const QMap<QString, QString> names = ItemNames::renamedSpeakers(*item, shown, name);
    if (names != item->speakerNames)
        setSpeakerNames(id, names);
}

void AppModel::renameItem(const QString &itemId, const QString &name)
{
    const QString id = itemId;
    const QString wanted = ItemNames::oneLine(name);
    const HistoryItem *item = itemOf(id);
    if (!item || wanted.isEmpty() || wanted == item->fileName)
        return;
    updateItem(id, [&](HistoryItem &h) { h.fileName = wanted; });
    patchBundle(id, [wanted](const QString &bundle) { BundleStore::saveDisplayName(bundle, wanted); });
}

// --- Corrections and text forms ---

void AppModel::addCorrection(const QString &itemId, const QString &from, const QString &to, bool caseSensitive,
                             bool wholeWord)
{
    if (from.isEmpty())
        return;
    Correction rule;
    rule.from = from;
    rule.to = to;
    rule.caseSensitive = caseSensitive;
    rule.wholeWord = wholeWord;
    changeCorrections(itemId, [&](QList<Correction> &rules) { rules.append(rule); });
}

void AppModel::removeCorrection(const QString &itemId, const QUuid &correctionId)
{
    changeCorrections(itemId, [&](QList<Correction> &rules) {
        rules.removeIf([&](const Correction &c) { return c.id == correctionId; });
    });
}

void AppModel::changeCorrections(QString itemId, const std::function<void(QList<Correction> &)> &change)
{
    std::optional<QList<Correction>> changed;
    updateItem(itemId, [&](HistoryItem &item) {
        change(item.corrections);
        changed = item.corrections;
    });
    if (changed)
        patchBundle(itemId, [rules = *changed](const QString &bundle) { BundleStore::saveCorrections(bundle, rules); });
}

QString AppModel::plainText(const HistoryItem &item, bool withTimestamps)
{
    return TextForms::plainText(item.result, withTimestamps);
}

QString AppModel::srt(const HistoryItem &item, bool withSpeakers)
{
    return TextForms::srt(TranscriptLines::subtitleCues(item, withSpeakers));
}

QString AppModel::vtt(const HistoryItem &item)
{
    return TextForms::vtt(TranscriptLines::subtitleCues(item, true));
}

QByteArray AppModel::transcriptJson(const HistoryItem &item)
{
    return TranscriptJson::encode(TranscriptLines::jsonDocument(item));
}
