#pragma once

#include <QDialog>

class AppModel;
class KeyField;
class ModelList;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

// Speech models, API keys, the active AI model, the interface language and the beta
// switches. Every change takes effect at once; a typed key is stored when the sheet
// closes, whether by "Fertig", Return, Escape or the window's close button.
class SettingsSheet : public QDialog {
    Q_OBJECT

public:
    explicit SettingsSheet(AppModel &app, QWidget *parent = nullptr);

    // Stores the non-empty key drafts, then closes.
    void done(int result) override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void refresh();

    AppModel &m_app;
    QLabel *m_title = nullptr;
    QLabel *m_modelsHeading = nullptr;
    QLabel *m_modelsText = nullptr;
    ModelList *m_models = nullptr;
    QLabel *m_aiHeading = nullptr;
    QLabel *m_aiText = nullptr;
    KeyField *m_anthropic = nullptr;
    KeyField *m_openai = nullptr;
    QLabel *m_activeHeading = nullptr;
    QLabel *m_keyWarning = nullptr;
    QLabel *m_languageHeading = nullptr;
    QComboBox *m_language = nullptr;
    QLabel *m_betaHeading = nullptr;
    QCheckBox *m_liveSpeakers = nullptr;
    QLabel *m_betaText = nullptr;
    QLabel *m_appliesNote = nullptr;
    QPushButton *m_done = nullptr;
};
