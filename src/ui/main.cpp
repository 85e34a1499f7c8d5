#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Morvane"));
    QApplication::setApplicationName(QStringLiteral("Sagwerk"));
    QApplication::setApplicationVersion(QStringLiteral(SAGWERK_VERSION));

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Sagwerk"));
    window.resize(1100, 720);
    window.show();
    return app.exec();
}
