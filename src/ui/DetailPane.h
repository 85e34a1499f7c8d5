#pragma once

#include <QString>
#include <QWidget>

class AppModel;
class QAction;
class QMessageBox;
class QToolBar;

// The right column: whichever screen the state calls for, and the toolbar above it.
class DetailPane : public QWidget {
    Q_OBJECT

public:
    enum class Screen { interview, busy, setup, result, queue, drop };

    // The screen for a state; the first condition that holds wins.
    static Screen screenFor(bool interviewActive, bool isBusy, bool hasPending, bool hasCurrent,
                            bool hasQueue = false);
    static Screen screenFor(const AppModel &app);

    explicit DetailPane(AppModel &app, QWidget *parent = nullptr);

    Screen screen() const { return m_screen; }
    QWidget *screenWidget() const { return m_widget; }
    // The toolbar of the detail area, for the window to place.
    QToolBar *toolbar() const { return m_toolbar; }

    QAction *newAction() const { return m_new; }
    QAction *deleteAction() const { return m_delete; }
    QAction *interviewAction() const { return m_interview; }
    QAction *recordAction() const { return m_record; }
    QAction *openAction() const { return m_open; }
    QAction *settingsAction() const { return m_settings; }
    QAction *helpAction() const { return m_help; }

    // The delete confirmation, while it shows.
    bool showDeleteConfirm() const { return m_confirm != nullptr; }
    QMessageBox *deleteConfirmation() const { return m_confirm; }
    void setShowDeleteConfirm(bool show);

signals:
    // "Hilfe" in the toolbar: the window "help" is to open.
    void helpRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void refresh();
    void updateActions();
    void retranslate();
    void restyle();

    AppModel &m_app;
    Screen m_screen = Screen::drop;
    QString m_identity; // the pending or current item the screen was made for
    QWidget *m_widget = nullptr;
    QToolBar *m_toolbar = nullptr;
    QAction *m_new = nullptr;
    QAction *m_delete = nullptr;
    QAction *m_interview = nullptr;
    QAction *m_record = nullptr;
    QAction *m_open = nullptr;
    QAction *m_settings = nullptr;
    QAction *m_help = nullptr;
    QMessageBox *m_confirm = nullptr;
};
