#pragma once

#include "core/HistoryItem.h"
#include "app/Refinement.h"
#include "app/SpeakerJob.h"
#include "core/PendingItem.h"
#include "core/WhisperModel.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QProperty>
#include <QSet>
#include <QSettings>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class ModelStore;
class TranscriptionJob;
class TranscriptionQueue;
class LinkImport;
class InterviewJob;
class RecordingJob;
struct InterviewResult;

// The one observable state of the application: settings, history, the item on show and
// the staged work, and the jobs, reached through it. Created once before any window,
// owned by the main thread; every field changes there, and each change is announced by
// its signal. Each job (TranscriptionJob, LinkImport, SpeakerJob, Refinement) is an
// object of its own that owns its fields and tells its outcome by signals; this object
// starts them and puts their outcomes into the history.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString speechModelId READ speechModelId WRITE setSpeechModelId NOTIFY speechModelIdChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(bool showOnboarding READ showOnboarding NOTIFY showOnboardingChanged)
    Q_PROPERTY(QString anthropicKey READ anthropicKey NOTIFY anthropicKeyChanged)
    Q_PROPERTY(QString openaiKey READ openaiKey NOTIFY openaiKeyChanged)
    Q_PROPERTY(QString aiModelId READ aiModelId WRITE setAiModelId NOTIFY aiModelIdChanged)
    Q_PROPERTY(bool showSettings READ showSettings WRITE setShowSettings NOTIFY showSettingsChanged)
    Q_PROPERTY(bool showRecorder READ showRecorder WRITE setShowRecorder NOTIFY showRecorderChanged)
    Q_PROPERTY(bool speakerDetection READ speakerDetection WRITE setSpeakerDetection NOTIFY speakerDetectionChanged)
    Q_PROPERTY(int speakerCount READ speakerCount WRITE setSpeakerCount NOTIFY speakerCountChanged)
    Q_PROPERTY(QString appLanguage READ appLanguage WRITE setAppLanguage NOTIFY appLanguageChanged)
    Q_PROPERTY(bool interviewActive READ interviewActive WRITE setInterviewActive NOTIFY interviewActiveChanged)
    Q_PROPERTY(bool interviewLiveSpeakers READ interviewLiveSpeakers WRITE setInterviewLiveSpeakers NOTIFY
                   interviewLiveSpeakersChanged)

public:
    struct LanguageOption {
        QString code;
        QString label; // German; the key of its translation
    };
    // The speech languages the interface offers.
    static const QList<LanguageOption> &languages();

    // Starts in a fixed order: model store, settings, keys, interface language, history,
    // onboarding. The keys are asked for there and arrive a moment later, announced by
    // anthropicKeyChanged and openaiKeyChanged. `store` replaces the model store (tests
    // point it at a local server).
    explicit AppModel(QObject *parent = nullptr, ModelStore *store = nullptr);
    ~AppModel() override;

    ModelStore *modelStore() const { return m_modelStore; }

    // --- State ---
    QString speechModelId() const { return m_speechModelId; }
    QString language() const { return m_language; }
    const std::optional<QString> &errorMessage() const { return m_errorMessage.value(); }
    // What a program or library said itself about the error, shown only on request.
    const QString &errorDetails() const { return m_errorDetails; }
    // Starts the failed work again; empty where trying again makes no sense.
    const std::function<void()> &errorRetry() const { return m_errorRetry; }
    const std::optional<HistoryItem> &current() const { return m_current.value(); }
    const QList<HistoryItem> &history() const { return m_history.value(); }
    const std::optional<PendingItem> &pending() const { return m_pending.value(); }
    bool showOnboarding() const { return m_showOnboarding; }
    QString anthropicKey() const { return m_anthropicKey; }
    QString openaiKey() const { return m_openaiKey; }
    QString aiModelId() const { return m_aiModelId; }
    bool showSettings() const { return m_showSettings; }
    bool showRecorder() const { return m_showRecorder; }
    bool speakerDetection() const { return m_speakerDetection; }
    int speakerCount() const { return m_speakerCount; }
    QString appLanguage() const { return m_appLanguage; }
    bool interviewActive() const { return m_interviewActive; }
    bool interviewLiveSpeakers() const { return m_interviewLiveSpeakers; }

    // The jobs, owned here; started through the operations below.
    TranscriptionJob &transcription() const { return *m_transcription; }
    LinkImport &linkImport() const { return *m_linkImport; }
    SpeakerJob &speakerJob() const { return *m_speakerJob; }
    InterviewJob &interview() const { return *m_interview; }
    RecordingJob &recording() const { return *m_recording; }
    // Several files opened or dropped at once, each in a row of its own.
    TranscriptionQueue &queue() const { return *m_queue; }

    // The catalogue entry of `speechModelId`, or the second entry when it names none.
    WhisperModel speechModel() const;
    // The key of the active AI model's provider; empty when none is stored for it.
    QString aiKey() const;

    // --- Settings: each is stored at once, the signal only tells a change ---
    void setSpeechModelId(const QString &id);
    void setLanguage(const QString &code);
    void setAiModelId(const QString &id);
    void setSpeakerDetection(bool on);
    void setSpeakerCount(int count);
    void setAppLanguage(const QString &code);
    void setInterviewLiveSpeakers(bool on);

    // --- Screen state ---
    void setShowSettings(bool show) { m_showSettings = show; }
    void setShowRecorder(bool show) { m_showRecorder = show; }
    void setInterviewActive(bool active) { m_interviewActive = active; }
    void setShowOnboarding(bool show) { m_showOnboarding = show; }
    // The details and the retry are set first, so that whoever hears of the message finds
    // them. A retry starts the failed work again (a download that can succeed later).
    void setErrorMessage(const std::optional<QString> &message, const QString &details = {},
                         std::function<void()> retry = {})
    {
        m_errorDetails = details;
        m_errorRetry = std::move(retry);
        m_errorMessage = message;
    }
    // Items change by replacement, so every assignment is news.
    void setCurrent(const std::optional<HistoryItem> &item);
    void setPending(const std::optional<PendingItem> &item);

    // --- History and keys ---
    void deleteItem(const HistoryItem &item);
    void saveAnthropicKey(const QString &key);
    void saveOpenAIKey(const QString &key);
    void finishOnboarding();

    // --- The transcription job ---
    // What a scripted job may choose instead of the settings, which it leaves untouched.
    struct JobOverrides {
        std::optional<QString> modelId;
        std::optional<QString> language;
        // A model file run as given, in place of any catalogue model.
        std::optional<QString> modelPath;
    };
    void stage(const QString &url, const std::optional<QString> &displayName = std::nullopt);
    void stageRecording();
    void stageInterview();
    void startPending(const JobOverrides &overrides = {});
    void transcribe(const QString &url, const std::optional<QString> &displayName = std::nullopt,
                    const JobOverrides &overrides = {});
    void cancelTranscription();
    void reTranscribe(const HistoryItem &item);
    // What a job says when its catalogue model is not installed.
    static QString notInstalledMessage(const WhisperModel &model);

    // The file chooser: audio or video files, none when the user cancels. The desktop
    // application installs a dialog; without one, openPanel does nothing.
    using FilePanel = std::function<QStringList()>;
    void setFilePanel(FilePanel panel) { m_filePanel = std::move(panel); }
    // A chooser of one file.
    void setFilePanel(std::function<std::optional<QString>()> panel)
    {
        m_filePanel = [panel = std::move(panel)] {
            const std::optional<QString> path = panel();
            return path ? QStringList{*path} : QStringList{};
        };
    }
    // Asks the chooser for files: one is staged under its own name, several queue.
    void openPanel();
    // Resolves a pasted podcast or audio link, downloads the media file with progress in
    // linkStatus and linkProgress, and stages it under the episode's title. Returns at
    // once; does nothing while a job or another link runs. Failures end in errorMessage.
    void stageLink(const QString &link);
    // Refines the item's text (its speaker text where it has one) at `level` with the
    // active AI model, into the item's `refined` and its bundle. Returns at once; the
    // future ends when the item is at rest again. A scripted run may name another model
    // and bring its key.
    QFuture<void> refine(const HistoryItem &item, qint64 level, const Refinement::Overrides &overrides = {});
    // Starts the live interview with the settings' model and language, unless a scripted
    // run names others; see InterviewJob::start.
    void startInterview(const std::optional<QString> &language = std::nullopt,
                        std::optional<bool> liveSpeakers = std::nullopt);
    // Ends the recording, stores the interview and shows it. The future gives false when
    // nothing was recorded.
    QFuture<bool> stopInterview();
    // Ends the recording and drops it.
    void cancelInterview();
    // Stores a finished interview and shows it; see InterviewCompletion.
    QFuture<void> finishInterview(const InterviewResult &interview);
    // Separates the item's speakers into its `speakerText` and its bundle: by voice when
    // its audio is there, else by an AI model alone. Returns at once; does nothing while
    // a job runs for the item. Failures end in errorMessage, a cancel in silence. The
    // future gives what was found, or fails when nothing was. A scripted run may choose
    // the count and the AI model and bring its key.
    QFuture<SpeakerJob::Result> detectSpeakers(const HistoryItem &item, const SpeakerJob::Overrides &overrides = {});
    void cancelSpeakers();

    // --- Corrections ---
    void addCorrection(const QString &itemId, const QString &from, const QString &to, bool caseSensitive,
                       bool wholeWord);
    void removeCorrection(const QString &itemId, const QUuid &correctionId);

    // --- Names ---
    void setSpeakerNames(const QString &itemId, const QMap<QString, QString> &names);
    void renameSpeaker(const QString &itemId, const QString &shown, const QString &name);
    void renameItem(const QString &itemId, const QString &name);

    // --- Text forms ---
    static QString plainText(const HistoryItem &item, bool withTimestamps);
    // Subtitles carry the corrections; with `withSpeakers` SubRip puts the speaker's name in
    // front of each line, and WebVTT tags its voices whenever the speakers are known.
    static QString srt(const HistoryItem &item, bool withSpeakers = false);
    static QString vtt(const HistoryItem &item);
    // The whole transcript for other tools (docs/transcript-json.md).
    static QByteArray transcriptJson(const HistoryItem &item);

signals:
    void speechModelIdChanged();
    void languageChanged();
    void errorMessageChanged();
    void currentChanged();
    void historyChanged();
    void pendingChanged();
    void showOnboardingChanged();
    void anthropicKeyChanged();
    void openaiKeyChanged();
    void aiModelIdChanged();
    void showSettingsChanged();
    void showRecorderChanged();
    void speakerDetectionChanged();
    void speakerCountChanged();
    void appLanguageChanged();
    void interviewActiveChanged();
    void interviewLiveSpeakersChanged();

private:
    void stageKind(PendingItem::Kind kind);
    // Applies `change` to the item of `id` in the history and in `current`, keeping both
    // in step; an item that is gone stays gone. `id` is taken by value: a caller may pass
    // the id of `current`, which the update replaces.
    void updateItem(QString id, const std::function<void(HistoryItem &)> &change);
    // Puts a finished item at the top of the history and on show.
    void showNew(const HistoryItem &item);
    // The item in the history or on show; null when it is gone.
    const HistoryItem *itemOf(const QString &id) const;
    // Writes a change into the bundle of the item, if it has one, off the main thread.
    void patchBundle(const QString &id, std::function<void(const QString &bundle)> patch);
    // Changes an item's corrections and writes them into its bundle. `itemId` is taken by
    // value: it may be the current item's, which the change replaces.
    void changeCorrections(QString itemId, const std::function<void(QList<Correction> &)> &change);
    void connectJobs();
    // Reads the segments of a listed item on the pool and puts them into it.
    void loadSegments(const QString &id, const QString &bundle);
    // Stores a setting under its key, then the field, which tells a change.
    template <typename Property, typename T>
    void store(const QString &key, Property &field, const T &value)
    {
        m_settings.setValue(key, value);
        field = value;
    }

    ModelStore *m_modelStore = nullptr;
    QSettings m_settings;
    QSet<QString> m_segmentsLoading;

    // Every field announces a change through its signal. Items and lists have no cheap
    // equality and are announced on every assignment instead.
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_speechModelId, &AppModel::speechModelIdChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_language, &AppModel::languageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<QString>, m_errorMessage, &AppModel::errorMessageChanged)
    QString m_errorDetails;
    std::function<void()> m_errorRetry;
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<HistoryItem>, m_current, &AppModel::currentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QList<HistoryItem>, m_history, &AppModel::historyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<PendingItem>, m_pending, &AppModel::pendingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_showOnboarding, &AppModel::showOnboardingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_anthropicKey, &AppModel::anthropicKeyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_openaiKey, &AppModel::openaiKeyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_aiModelId, &AppModel::aiModelIdChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_showSettings, &AppModel::showSettingsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_showRecorder, &AppModel::showRecorderChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_speakerDetection, &AppModel::speakerDetectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, int, m_speakerCount, &AppModel::speakerCountChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_appLanguage, &AppModel::appLanguageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_interviewActive, &AppModel::interviewActiveChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, bool, m_interviewLiveSpeakers, &AppModel::interviewLiveSpeakersChanged)

    FilePanel m_filePanel;
    // Set by a save, so that the key store's late answer at start does not undo it.
    bool m_anthropicKeySaved = false;
    bool m_openaiKeySaved = false;
    // Declared last, so they stop and are gone before the fields their outcomes reach.
    std::unique_ptr<TranscriptionJob> m_transcription;
    std::unique_ptr<LinkImport> m_linkImport;
    std::unique_ptr<SpeakerJob> m_speakerJob;
    std::unique_ptr<Refinement> m_refinement;
    std::unique_ptr<InterviewJob> m_interview;
    std::unique_ptr<RecordingJob> m_recording;
    std::unique_ptr<TranscriptionQueue> m_queue;
};
