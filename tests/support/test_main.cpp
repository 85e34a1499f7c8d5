// Shared main of the test programs: a Qt application object for the code under test,
// and a fresh temporary folder (TMPDIR, set by CTest) that tests may inspect.
#include <QCoreApplication>
#include <QDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    const QByteArray tmp = qgetenv("SAGWERK_TEST_TMP");
    if (!tmp.isEmpty()) {
        QDir(QString::fromLocal8Bit(tmp)).removeRecursively();
        QDir().mkpath(QString::fromLocal8Bit(tmp));
    }
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
