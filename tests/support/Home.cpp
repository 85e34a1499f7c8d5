#include "Home.h"

#include <QDir>

QString useThrowawayHome()
{
    const QString tmp = QString::fromLocal8Bit(qgetenv("SAGWERK_TEST_TMP"));
    const QString home = (tmp.isEmpty() ? QDir::tempPath() + QStringLiteral("/sagwerk-test") : tmp)
                         + QStringLiteral("-home");
    QDir(home).removeRecursively();
    QDir().mkpath(home);
    qputenv("HOME", home.toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home + QStringLiteral("/.local/share")).toLocal8Bit());
    return home;
}
