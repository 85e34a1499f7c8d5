#include "ui/FileManager.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace FileManager {

void reveal(const QString &path)
{
    // A trailing slash would make some file managers open the folder instead of
    // selecting it in its parent.
    const QFileInfo target(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    // Without a file manager on the bus, a folder opens itself, so that the user lands
    // in the item's own folder rather than among all the others.
    const QString fallback = target.isDir() ? target.absoluteFilePath() : target.absolutePath();
    auto open = [fallback] { QDesktopServices::openUrl(QUrl::fromLocalFile(fallback)); };
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        open();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(target.absoluteFilePath()).toString()} << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, open] {
        // A file manager that is slow to start still shows the item; opening a second
        // window then would be wrong.
        if (watcher->isError() && watcher->error().type() != QDBusError::NoReply
            && watcher->error().type() != QDBusError::Timeout)
            open();
        watcher->deleteLater();
    });
}

} // namespace FileManager
