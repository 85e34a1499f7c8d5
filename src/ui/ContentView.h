#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include <functional>

class AppModel;
class DetailPane;
class QSplitter;
class Sidebar;

// The main window's content: the history on the left, the detail area on the right, and
// over them the error alert and the three sheets, each bound to its field of AppModel.
class ContentView : public QWidget {
    Q_OBJECT

public:
    explicit ContentView(AppModel &app, QWidget *parent = nullptr);

    Sidebar *sidebar() const { return m_sidebar; }
    DetailPane *detailPane() const { return m_detail; }
    QSplitter *splitter() const { return m_splitter; }
    // The alert "Fehler", while it shows.
    QMessageBox *errorAlert() const { return m_alert; }
    QDialog *settingsSheet() const { return m_settings.dialog; }
    QDialog *recordSheet() const { return m_recorder.dialog; }
    QDialog *onboardingSheet() const { return m_onboarding.dialog; }

protected:
    void changeEvent(QEvent *event) override;

private:
    // A sheet that shows while its flag is set, and clears the flag when it closes.
    struct Sheet {
        std::function<bool()> shown;
        std::function<void()> clear;
        std::function<QDialog *(AppModel &, QWidget *)> make;
        QPointer<QDialog> dialog;
    };
    void updateSheet(Sheet &sheet);
    void updateAlert();

    AppModel &m_app;
    QSplitter *m_splitter = nullptr;
    Sidebar *m_sidebar = nullptr;
    DetailPane *m_detail = nullptr;
    QPointer<QMessageBox> m_alert;
    Sheet m_settings;
    Sheet m_recorder;
    Sheet m_onboarding;
};
