// Shared main of the test programs that need a GUI application object (widgets, fonts,
// documents, playback); they run on the offscreen platform. Otherwise as test_main.cpp.
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
    QApplication::setStyle(QStringLiteral("Fusion"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
