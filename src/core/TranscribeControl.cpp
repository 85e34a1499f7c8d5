#include "core/TranscribeControl.h"

#include <signal.h>

void TranscribeControl::cancel()
{
    std::optional<qint64> pid;
    {
        std::lock_guard guard(lock);
        cancelled = true;
        pid = process;
    }
    if (pid)
        terminate(*pid);
}

bool TranscribeControl::isCancelled() const
{
    std::lock_guard guard(lock);
    return cancelled;
}

void TranscribeControl::setProcess(std::optional<qint64> pid)
{
    bool wasCancelled;
    {
        std::lock_guard guard(lock);
        process = pid;
        wasCancelled = cancelled;
    }
    if (wasCancelled && pid)
        terminate(*pid);
}

void TranscribeControl::terminate(qint64 pid)
{
    // What QProcess::terminate() does, but callable from any thread.
    if (pid > 0)
        ::kill(static_cast<pid_t>(pid), SIGTERM);
}
