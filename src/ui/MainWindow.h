#pragma once

#include <QMainWindow>

class AppModel;
class ContentView;
class QAction;
class QMenu;

// The main window "Sagwerk": the content view, the detail area's toolbar, and the menu
// commands.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(AppModel &app, QWidget *parent = nullptr);

    ContentView *content() const { return m_content; }
    QAction *aboutAction() const { return m_about; }
    QAction *helpAction() const { return m_help; }

signals:
    void aboutRequested();
    void helpRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    ContentView *m_content = nullptr;
    QMenu *m_fileMenu = nullptr;
    QMenu *m_helpMenu = nullptr;
    QAction *m_quit = nullptr;
    QAction *m_help = nullptr;
    QAction *m_about = nullptr;
};
