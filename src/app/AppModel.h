#pragma once

#include "app/HistoryItem.h"
#include "app/PendingItem.h"
#include "engine/TranscribeControl.h"
#include "engine/WhisperModel.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QSettings>
#include <QTimer>

#include <functional>
#include <optional>

class ModelStore;

// The one observable state of the application: settings, history, the item on show,
// the staged work and the running transcription job. Created once before any window,
// owned by the main thread; every field changes there, and each change is announced.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString selectedModelId READ selectedModelId WRITE setSelectedModelId NOTIFY selectedModelIdChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(double busyElapsed READ busyElapsed NOTIFY busyElapsedChanged)
    Q_PROPERTY(double busyProgress READ busyProgress NOTIFY busyProgressChanged)
    Q_PROPERTY(bool showOnboarding READ showOnboarding NOTIFY showOnboardingChanged)
    Q_PROPERTY(bool linkBusy READ linkBusy NOTIFY linkBusyChanged)
    Q_PROPERTY(double linkProgress READ linkProgress NOTIFY linkProgressChanged)
    Q_PROPERTY(QString anthropicKey READ anthropicKey NOTIFY anthropicKeyChanged)
    Q_PROPERTY(QString openaiKey READ openaiKey NOTIFY openaiKeyChanged)
    Q_PROPERTY(QString activeModelId READ activeModelId WRITE setActiveModelId NOTIFY activeModelIdChanged)
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
    // onboarding. `store` replaces the model store (tests point it at a local server).
    explicit AppModel(QObject *parent = nullptr, ModelStore *store = nullptr);
    ~AppModel() override;

    ModelStore *modelStore() const { return m_modelStore; }

    // --- State ---
    QString selectedModelId() const { return m_selectedModelId; }
    QString language() const { return m_language; }
    bool isBusy() const { return m_isBusy; }
    double busyElapsed() const { return m_busyElapsed; }
    double busyProgress() const { return m_busyProgress; }
    const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    const std::optional<HistoryItem> &current() const { return m_current; }
    const QList<HistoryItem> &history() const { return m_history; }
    const std::optional<PendingItem> &pending() const { return m_pending; }
    bool showOnboarding() const { return m_showOnboarding; }
    bool linkBusy() const { return m_linkBusy; }
    const std::optional<QString> &linkStatus() const { return m_linkStatus; }
    double linkProgress() const { return m_linkProgress; }
    QString anthropicKey() const { return m_anthropicKey; }
    QString openaiKey() const { return m_openaiKey; }
    QString activeModelId() const { return m_activeModelId; }
    bool showSettings() const { return m_showSettings; }
    bool showRecorder() const { return m_showRecorder; }
    bool speakerDetection() const { return m_speakerDetection; }
    int speakerCount() const { return m_speakerCount; }
    QString appLanguage() const { return m_appLanguage; }
    const std::optional<QString> &speakerStatus() const { return m_speakerStatus; }
    bool interviewActive() const { return m_interviewActive; }
    bool interviewLiveSpeakers() const { return m_interviewLiveSpeakers; }

    // The catalogue entry of `selectedModelId`, or the second entry when it names none.
    WhisperModel selectedModel() const;
    // The key of the active AI model's provider; empty when none is stored for it.
    QString activeKey() const;

    // --- Settings: each change is stored at once ---
    void setSelectedModelId(const QString &id);
    void setLanguage(const QString &code);
    void setActiveModelId(const QString &id);
    void setSpeakerDetection(bool on);
    void setSpeakerCount(int count);
    void setAppLanguage(const QString &code);
    void setInterviewLiveSpeakers(bool on);
    void setShowSettings(bool show);
    void setShowRecorder(bool show);
    void setInterviewActive(bool active);
    void setErrorMessage(const std::optional<QString> &message);
    void setCurrent(const std::optional<HistoryItem> &item);
    void setPending(const std::optional<PendingItem> &item);
    void setShowOnboarding(bool show);

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
    };
    void stage(const QString &url, const std::optional<QString> &displayName = std::nullopt);
    void stageRecording();
    void stageInterview();
    void startPending(const JobOverrides &overrides = {});
    void transcribe(const QString &url, const std::optional<QString> &displayName = std::nullopt,
                    const JobOverrides &overrides = {});
    void cancelTranscription();
    void reTranscribe(const HistoryItem &item);

    // The file chooser: one audio or video file, or nothing when the user cancels. The
    // desktop application installs a dialog; without one, openPanel does nothing.
    using FilePanel = std::function<std::optional<QString>()>;
    void setFilePanel(FilePanel panel);
    // Asks the chooser for a file and stages it under its own name.
    void openPanel();
    // Resolves a pasted podcast or audio link, downloads the media file with progress in
    // linkStatus and linkProgress, and stages it under the episode's title. Returns at
    // once; does nothing while a job or another link runs. Failures end in errorMessage.
    void stageLink(const QString &link);
    // The speaker job's entry; it arrives with the speaker subsystem and does nothing yet.
    void detectSpeakers(const HistoryItem &item);

    // --- Corrections ---
    void addCorrection(const QString &itemId, const QString &from, const QString &to, bool caseSensitive,
                       bool wholeWord);
    void removeCorrection(const QString &itemId, const QUuid &correctionId);

    // --- Text forms ---
    static QString plainText(const HistoryItem &item, bool withTimestamps);
    static QString srt(const HistoryItem &item);

signals:
    void selectedModelIdChanged();
    void languageChanged();
    void isBusyChanged();
    void busyElapsedChanged();
    void busyProgressChanged();
    void errorMessageChanged();
    void currentChanged();
    void historyChanged();
    void pendingChanged();
    void showOnboardingChanged();
    void linkBusyChanged();
    void linkStatusChanged();
    void linkProgressChanged();
    void anthropicKeyChanged();
    void openaiKeyChanged();
    void activeModelIdChanged();
    void showSettingsChanged();
    void showRecorderChanged();
    void speakerDetectionChanged();
    void speakerCountChanged();
    void appLanguageChanged();
    void speakerStatusChanged();
    void interviewActiveChanged();
    void interviewLiveSpeakersChanged();

private:
    // Applies `change` to the item of `id` in the history and in `current`, keeping both
    // in step; an item that is gone stays gone.
    void updateItem(const QString &id, const std::function<void(HistoryItem &)> &change);
    void persistCorrections(const QString &id);
    void finishJob(const TranscriptionResult &result, const QString &url, const QString &displayName,
                   const QDateTime &createdAt);
    void failJob(const QString &message, bool cancelled);
    void finishBusy();
    void setBusy(bool busy);
    void setBusyElapsed(double seconds);
    void setBusyProgress(double fraction);
    void setHistory(const QList<HistoryItem> &history);
    void setLinkBusy(bool busy);
    void setLinkStatus(const std::optional<QString> &status);
    void setLinkProgress(double fraction);
    void downloadLink(const QUrl &url, const QString &title);
    void endLink(const std::optional<QString> &error);

    ModelStore *m_modelStore = nullptr;
    QSettings m_settings;

    QString m_selectedModelId;
    QString m_language;
    bool m_isBusy = false;
    double m_busyElapsed = 0;
    double m_busyProgress = 0;
    std::optional<QString> m_errorMessage;
    std::optional<HistoryItem> m_current;
    QList<HistoryItem> m_history;
    std::optional<PendingItem> m_pending;
    bool m_showOnboarding = false;
    bool m_linkBusy = false;
    std::optional<QString> m_linkStatus;
    double m_linkProgress = 0;
    QString m_anthropicKey;
    QString m_openaiKey;
    QString m_activeModelId;
    bool m_showSettings = false;
    bool m_showRecorder = false;
    bool m_speakerDetection = false;
    int m_speakerCount = 0;
    QString m_appLanguage;
    std::optional<QString> m_speakerStatus;
    bool m_interviewActive = false;
    bool m_interviewLiveSpeakers = false;

    QTimer *m_timer = nullptr;
    // The recognition itself (not its continuation, which needs this thread's event loop).
    std::optional<QFuture<void>> m_transcribeTask;
    TranscribeControlPtr m_control;
    FilePanel m_filePanel;
    // The running link resolution, stopped and awaited when this object goes.
    std::optional<QFuture<void>> m_linkTask;
    TranscribeControlPtr m_linkControl;
};
