#include "core/TranscribeControl.h"

#include <signal.h>

void TranscribeControl::cancel()
{
    std::optional<qint64> pid;
    std::map<quint64, std::function<void()>> pending;
    {
        std::lock_guard guard(lock);
        cancelled = true;
        pid = process;
        pending.swap(hooks);
    }
    if (pid)
        terminate(*pid);
    for (const auto &[id, hook] : pending)
        hook();
}

bool TranscribeControl::isCancelled() const
{
    // The speech library asks between any two steps of its graphs, from every thread it
    // runs: a read without the lock.
    return cancelled.load(std::memory_order_acquire);
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

quint64 TranscribeControl::onCancel(std::function<void()> hook)
{
    {
        std::lock_guard guard(lock);
        if (!cancelled) {
            hooks.emplace(++lastHook, std::move(hook));
            return lastHook;
        }
    }
    hook();
    return 0;
}

void TranscribeControl::removeCancelHook(quint64 id)
{
    std::lock_guard guard(lock);
    hooks.erase(id);
}

void TranscribeControl::terminate(qint64 pid)
{
    // What QProcess::terminate() does, but callable from any thread.
    if (pid > 0)
        ::kill(static_cast<pid_t>(pid), SIGTERM);
}
