#include "ui/FileManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace FileManager {

void reveal(const QString &path)
{
    const QString parent = QFileInfo(path).absolutePath();
    auto openParent = [parent] { QDesktopServices::openUrl(QUrl::fromLocalFile(parent)); };
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openParent();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString()} << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, openParent] {
        if (watcher->isError())
            openParent();
        watcher->deleteLater();
    });
}

} // namespace FileManager
