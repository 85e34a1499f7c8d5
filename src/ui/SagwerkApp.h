#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class AppModel;
class MainWindow;
class QWidget;

// The application: the one AppModel for the life of the process, the main window, and
// the windows "about" and "help", each opened at most once. Create it after the
// QApplication; everything it opens follows the interface language at once.
class SagwerkApp : public QObject {
    Q_OBJECT

public:
    explicit SagwerkApp(QObject *parent = nullptr);
    ~SagwerkApp() override;

    AppModel &model() const { return *m_model; }
    MainWindow *mainWindow() const { return m_main; }

    // Opens the window "about" or "help", or brings it to the front when it is open.
    void openWindow(const QString &id);
    QWidget *window(const QString &id) const;

private:
    void retranslate();
    void applyLocale();

    std::unique_ptr<AppModel> m_model;
    QPointer<MainWindow> m_main;
    QPointer<QWidget> m_about;
    QPointer<QWidget> m_help;
};
