#include "app/AppModel.h"
#include "app/SingleInstance.h"
#include "ui/MainWindow.h"
#include "ui/SagwerkApp.h"

#include <QApplication>
#include <QDir>

#include <memory>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Morvane"));
    QApplication::setApplicationName(QStringLiteral("Sagwerk"));
    QApplication::setApplicationVersion(QStringLiteral(SAGWERK_VERSION));
    // The desktop entry's name, which Wayland compositors take as the window's app id.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.morvane.sagwerk"));

    // Files on the command line go to a running Sagwerk when there is one; otherwise
    // this process opens the window and stages them there.
    const QStringList files = SingleInstance::filesFromArguments(QApplication::arguments().mid(1), QDir::currentPath());
    SingleInstance instance;
    std::unique_ptr<SagwerkApp> sagwerk;
    QObject::connect(&instance, &SingleInstance::handedOver, &app, &QApplication::quit, Qt::QueuedConnection);
    QObject::connect(&instance, &SingleInstance::primary, &app, [&] {
        sagwerk = std::make_unique<SagwerkApp>();
        instance.attach(sagwerk->model());
        sagwerk->mainWindow()->show();
        QObject::connect(&instance, &SingleInstance::activationRequested, sagwerk->mainWindow(), [main = sagwerk->mainWindow()] {
            main->showNormal();
            main->raise();
            main->activateWindow();
        });
    });
    instance.start(files);
    const int status = app.exec();
    sagwerk.reset();
    return status;
}
