// Shared main of the widget tests: as test_main.cpp, with a widget application object
// (offscreen, as the test registration sets it).
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
    QApplication app(argc, argv);
    // One style everywhere, so that pictures and sizes do not depend on the desktop.
    QApplication::setStyle(QStringLiteral("Fusion"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
