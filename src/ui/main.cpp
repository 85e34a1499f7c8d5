#include "ui/MainWindow.h"
#include "ui/SagwerkApp.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Morvane"));
    QApplication::setApplicationName(QStringLiteral("Sagwerk"));
    QApplication::setApplicationVersion(QStringLiteral(SAGWERK_VERSION));

    SagwerkApp sagwerk;
    sagwerk.mainWindow()->show();
    return app.exec();
}
