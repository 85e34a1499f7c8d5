#pragma once

#include "core/PendingItem.h"
#include "core/WhisperModel.h"

#include <QWidget>

#include <functional>

class AppModel;
class ModelStore;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

// The options of a staged job and its start: model, language and the speaker options of
// its kind, bound straight to the settings.
class TranscribeSetupView : public QWidget {
    Q_OBJECT

public:
    TranscribeSetupView(AppModel &app, const PendingItem &pending, QWidget *parent = nullptr);
    // The options of several files that start together; start and cancel are the caller's.
    TranscribeSetupView(AppModel &app, int files, std::function<void()> start, std::function<void()> cancel,
                        QWidget *parent = nullptr);
    void setFileCount(int files);

    const PendingItem &pending() const { return m_pending; }

    // The catalogue's models whose files are installed, in catalogue order.
    static QList<WhisperModel> installedModels(const ModelStore &store);
    // Chooses the first installed model when the selected one is not installed.
    static void ensureValidModel(AppModel &app);

    QComboBox *modelPicker() const { return m_model; }
    QLabel *noModelText() const { return m_noModel; }
    QComboBox *languagePicker() const { return m_language; }
    QCheckBox *speakerSwitch() const { return m_speakers; }
    QComboBox *speakerCountPicker() const { return m_count; }
    QPushButton *hintButton() const { return m_hint; }
    QPushButton *cancelButton() const { return m_cancel; }
    QPushButton *startButton() const { return m_start; }
    // The rows of the options card by their German labels, for the rows on show.
    bool rowShown(const QString &germanLabel) const;

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Row {
        const char *label;
        QString symbol;
        QWidget *row = nullptr;
        QLabel *icon = nullptr;
        QLabel *text = nullptr;
        QWidget *divider = nullptr;
    };

    QWidget *addRow(class QVBoxLayout *card, const char *label, const QString &symbol, QWidget *control);
    void start();
    void cancel();
    void retranslate();
    void restyle();
    void fillModels();
    void fillLanguages();
    void fillCounts();
    void updateRows();

    AppModel &m_app;
    const PendingItem m_pending;
    int m_files = 0; // of a batch; none for one staged item
    std::function<void()> m_onStart;
    std::function<void()> m_onCancel;
    QList<Row> m_rows;
    QLabel *m_icon = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_subtitle = nullptr;
    QWidget *m_card = nullptr;
    QComboBox *m_model = nullptr;
    QLabel *m_noModel = nullptr;
    QComboBox *m_language = nullptr;
    QCheckBox *m_speakers = nullptr;
    QCheckBox *m_liveSpeakers = nullptr;
    QComboBox *m_count = nullptr;
    QPushButton *m_hint = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_start = nullptr;
};
