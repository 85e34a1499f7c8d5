#pragma once

#include "core/AIModel.h"

#include <QWidget>

class AppModel;
class QLabel;
class QLineEdit;
class QPushButton;

// One provider's API key: its title, whether a key is stored, and a field for a new one.
// The field never shows the stored key; what it holds is a draft that the owner saves.
class KeyField : public QWidget {
    Q_OBJECT

public:
    // With `removable`, a button removes the stored key at once.
    KeyField(AppModel &app, AIProvider provider, bool removable, QWidget *parent = nullptr);

    QString draft() const;
    void clearDraft();
    // Saves a non-empty draft as the provider's key; an empty one changes nothing.
    void saveDraft();

protected:
    void changeEvent(QEvent *event) override;

private:
    bool hasStoredKey() const;
    void refresh();
    void remove();

    AppModel &m_app;
    AIProvider m_provider;
    QLabel *m_title = nullptr;
    QLabel *m_storedIcon = nullptr;
    QLabel *m_stored = nullptr;
    QPushButton *m_remove = nullptr;
    QLineEdit *m_field = nullptr;
};
