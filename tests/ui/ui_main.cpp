// Main of the widget tests: a widget application in the Fusion style, and a fresh
// temporary folder (TMPDIR, set by CTest) that tests may inspect.
#include <QApplication>
#include <QDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    const QByteArray tmp = qgetenv("SAGWERK_TEST_TMP");
    if (!tmp.isEmpty()) {
        QDir(QString::fromLocal8Bit(tmp)).removeRecursively();
        QDir().mkpath(QString::fromLocal8Bit(tmp));
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Morvane"));
    QApplication::setApplicationName(QStringLiteral("Sagwerk"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
