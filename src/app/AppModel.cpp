// Start, settings, history and keys of the application state. The transcription job
// lives in TranscriptionJob.cpp, the correction rules in ItemCorrections.cpp.
#include "app/AppModel.h"

#include "app/LanguageManager.h"
#include "app/Settings.h"
#include "engine/ModelStore.h"
#include "storage/BundleStore.h"
#include "storage/KeychainStore.h"

#include <QCoreApplication>

namespace {

template <typename T>
bool assign(T &field, const T &value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}

} // namespace

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
    : QObject(parent), m_settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"))
{
    // The order matters: the first window must see a complete state.
    m_modelStore = store ? store : new ModelStore(this);
    if (!m_modelStore->parent())
        m_modelStore->setParent(this);

    m_selectedModelId = m_settings.value(Settings::selectedModelId, Settings::Default::selectedModelId).toString();
    m_language = m_settings.value(Settings::transcribeLanguage, Settings::Default::transcribeLanguage).toString();

    m_anthropicKey = KeychainStore::load(QString(KeychainStore::anthropicAccount)).value_or(QString());
    m_openaiKey = KeychainStore::load(QString(KeychainStore::openaiAccount)).value_or(QString());

    m_activeModelId = m_settings.value(Settings::activeModelId, Settings::Default::activeModelId).toString();
    m_speakerDetection = m_settings.value(Settings::speakerDetection, false).toBool();
    m_speakerCount = m_settings.value(Settings::speakerCount, 0).toInt();
    m_appLanguage = m_settings.value(Settings::appLanguage, Settings::Default::appLanguage).toString();
    m_interviewLiveSpeakers = m_settings.value(Settings::interviewLiveSpeakers, false).toBool();

    LanguageManager::instance().setLanguage(m_appLanguage);

    for (const LoadedBundle &bundle : BundleStore::list())
        m_history.append(HistoryItem(bundle));

    // A machine that already has a model skips the first-run wizard.
    if (!m_settings.value(Settings::onboardingDone, false).toBool())
        m_showOnboarding = m_modelStore->installed().isEmpty();
}

AppModel::~AppModel()
{
    // A running job reports back into this object: stop it and wait for it first.
    if (m_control)
        m_control->cancel();
    if (m_transcribeTask)
        m_transcribeTask->waitForFinished();
    if (m_linkControl)
        m_linkControl->cancel();
    if (m_linkTask)
        m_linkTask->waitForFinished();
}

WhisperModel AppModel::selectedModel() const
{
    return WhisperModel::withId(m_selectedModelId).value_or(WhisperModel::all().at(1));
}

void AppModel::setSelectedModelId(const QString &id)
{
    m_settings.setValue(Settings::selectedModelId, id);
    if (assign(m_selectedModelId, id))
        emit selectedModelIdChanged();
}

void AppModel::setLanguage(const QString &code)
{
    m_settings.setValue(Settings::transcribeLanguage, code);
    if (assign(m_language, code))
        emit languageChanged();
}

void AppModel::setActiveModelId(const QString &id)
{
    m_settings.setValue(Settings::activeModelId, id);
    if (assign(m_activeModelId, id))
        emit activeModelIdChanged();
}

void AppModel::setSpeakerDetection(bool on)
{
    m_settings.setValue(Settings::speakerDetection, on);
    if (assign(m_speakerDetection, on))
        emit speakerDetectionChanged();
}

void AppModel::setSpeakerCount(int count)
{
    m_settings.setValue(Settings::speakerCount, count);
    if (assign(m_speakerCount, count))
        emit speakerCountChanged();
}

void AppModel::setAppLanguage(const QString &code)
{
    m_settings.setValue(Settings::appLanguage, code);
    if (assign(m_appLanguage, code))
        emit appLanguageChanged();
    LanguageManager::instance().setLanguage(code);
}

void AppModel::setInterviewLiveSpeakers(bool on)
{
    m_settings.setValue(Settings::interviewLiveSpeakers, on);
    if (assign(m_interviewLiveSpeakers, on))
        emit interviewLiveSpeakersChanged();
}

void AppModel::setShowSettings(bool show)
{
    if (assign(m_showSettings, show))
        emit showSettingsChanged();
}

void AppModel::setShowRecorder(bool show)
{
    if (assign(m_showRecorder, show))
        emit showRecorderChanged();
}

void AppModel::setInterviewActive(bool active)
{
    if (assign(m_interviewActive, active))
        emit interviewActiveChanged();
}

void AppModel::setErrorMessage(const std::optional<QString> &message)
{
    if (assign(m_errorMessage, message))
        emit errorMessageChanged();
}

void AppModel::setCurrent(const std::optional<HistoryItem> &item)
{
    // Items change by replacement, so every assignment is news.
    m_current = item;
    emit currentChanged();
}

void AppModel::setPending(const std::optional<PendingItem> &item)
{
    m_pending = item;
    emit pendingChanged();
}

void AppModel::setShowOnboarding(bool show)
{
    if (assign(m_showOnboarding, show))
        emit showOnboardingChanged();
}

void AppModel::setHistory(const QList<HistoryItem> &history)
{
    m_history = history;
    emit historyChanged();
}

void AppModel::deleteItem(const HistoryItem &item)
{
    if (item.bundleURL)
        BundleStore::remove(*item.bundleURL);
    QList<HistoryItem> rest = m_history;
    rest.removeIf([&](const HistoryItem &h) { return h.id == item.id; });
    setHistory(rest);
    if (m_current && m_current->id == item.id)
        setCurrent(std::nullopt);
}

void AppModel::updateItem(const QString &id, const std::function<void(HistoryItem &)> &change)
{
    for (HistoryItem &h : m_history) {
        if (h.id != id)
            continue;
        change(h);
        emit historyChanged();
        if (m_current && m_current->id == id)
            setCurrent(h);
        return;
    }
    if (m_current && m_current->id == id) {
        HistoryItem copy = *m_current;
        change(copy);
        setCurrent(copy);
    }
}

void AppModel::saveAnthropicKey(const QString &key)
{
    const QString trimmed = key.trimmed();
    if (assign(m_anthropicKey, trimmed))
        emit anthropicKeyChanged();
    if (trimmed.isEmpty())
        KeychainStore::remove(QString(KeychainStore::anthropicAccount));
    else
        KeychainStore::save(trimmed, QString(KeychainStore::anthropicAccount));
}

void AppModel::saveOpenAIKey(const QString &key)
{
    const QString trimmed = key.trimmed();
    if (assign(m_openaiKey, trimmed))
        emit openaiKeyChanged();
    if (trimmed.isEmpty())
        KeychainStore::remove(QString(KeychainStore::openaiAccount));
    else
        KeychainStore::save(trimmed, QString(KeychainStore::openaiAccount));
}

void AppModel::finishOnboarding()
{
    m_settings.setValue(Settings::onboardingDone, true);
    const QSet<QString> &installed = m_modelStore->installed();
    if (!installed.contains(m_selectedModelId)) {
        for (const WhisperModel &model : WhisperModel::all()) {
            if (installed.contains(model.id)) {
                setSelectedModelId(model.id);
                break;
            }
        }
    }
    if (assign(m_showOnboarding, false))
        emit showOnboardingChanged();
}

void AppModel::setBusy(bool busy)
{
    if (assign(m_isBusy, busy))
        emit isBusyChanged();
}

void AppModel::setBusyElapsed(double seconds)
{
    if (assign(m_busyElapsed, seconds))
        emit busyElapsedChanged();
}

void AppModel::setBusyProgress(double fraction)
{
    if (assign(m_busyProgress, fraction))
        emit busyProgressChanged();
}
