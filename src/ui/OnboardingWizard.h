#pragma once

#include <QDialog>

class AppModel;
class KeyField;
class QLabel;
class QPushButton;
class QStackedWidget;

// The first-run walk through welcome, speech model, AI keys and done. It cannot be
// dismissed: it ends only when the application's onboarding is finished.
class OnboardingWizard : public QDialog {
    Q_OBJECT

public:
    explicit OnboardingWizard(AppModel &app, QWidget *parent = nullptr);

    int step() const { return m_step; }
    // At least one speech model is installed.
    bool hasModel() const;

    void back();
    void later();
    void next();

public slots:
    // Escape and the window's close do nothing here.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void setStep(int step);
    void saveKeys();
    void refresh();

    AppModel &m_app;
    int m_step = 0;
    QStackedWidget *m_pages = nullptr;

    // Step 0
    QLabel *m_welcomeIcon = nullptr;
    QLabel *m_welcomeTitle = nullptr;
    QLabel *m_welcomeText = nullptr;
    QList<QLabel *> m_featureIcons;
    QList<QLabel *> m_featureTexts;
    // Step 1
    QLabel *m_modelTitle = nullptr;
    QLabel *m_modelText = nullptr;
    QLabel *m_modelStatusIcon = nullptr;
    QLabel *m_modelStatus = nullptr;
    // Step 2
    QLabel *m_aiTitle = nullptr;
    QLabel *m_aiText = nullptr;
    KeyField *m_anthropic = nullptr;
    KeyField *m_openai = nullptr;
    QLabel *m_activeHeading = nullptr;
    // Step 3
    QLabel *m_doneIcon = nullptr;
    QLabel *m_doneTitle = nullptr;
    QLabel *m_doneText = nullptr;

    QPushButton *m_back = nullptr;
    QPushButton *m_later = nullptr;
    QPushButton *m_next = nullptr;
};
