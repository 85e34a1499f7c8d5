#include "core/CancelToken.h"

#include <signal.h>

void CancelToken::cancel()
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

bool CancelToken::isCancelled() const
{
    // The speech library asks between any two steps of its graphs, from every thread it
    // runs: a read without the lock.
    return cancelled.load(std::memory_order_acquire);
}

void CancelToken::setProcess(std::optional<qint64> pid)
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

quint64 CancelToken::onCancel(std::function<void()> hook)
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

void CancelToken::removeCancelHook(quint64 id)
{
    std::lock_guard guard(lock);
    hooks.erase(id);
}

void CancelToken::terminate(qint64 pid)
{
    // What QProcess::terminate() does, but callable from any thread.
    if (pid > 0)
        ::kill(static_cast<pid_t>(pid), SIGTERM);
}
