#include "core/TemporaryFiles.h"

#include "core/TranscriptionResult.h"

#include <QDir>
#include <QUuid>

#include <cerrno>
#include <mutex>

#include <signal.h>
#include <unistd.h>

namespace TemporaryFiles {

namespace {

bool isGone(qint64 pid)
{
    return pid > 0 && pid != qint64(::getpid()) && ::kill(pid_t(pid), 0) != 0 && errno == ESRCH;
}

} // namespace

void removeLeftovers()
{
    QDir temp(QDir::tempPath());
    for (const QString &name : temp.entryList({QStringLiteral("sagwerk-*-*")}, QDir::Files | QDir::Hidden)) {
        bool ok = false;
        const qint64 pid = name.section(u'-', 1, 1).toLongLong(&ok);
        if (ok && isGone(pid))
            temp.remove(name);
    }
}

QString newPath(QStringView suffix)
{
    static std::once_flag swept;
    std::call_once(swept, removeLeftovers);
    return QDir::tempPath() + QStringLiteral("/sagwerk-%1-").arg(qint64(::getpid())) + uuidText(QUuid::createUuid())
        + suffix;
}

} // namespace TemporaryFiles
