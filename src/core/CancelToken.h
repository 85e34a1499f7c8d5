#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

// The cancel handle of one job. The flag goes up once and stays; a child process
// registered here is terminated by a cancel, also one that came before it started.
// Shared between the interface thread (cancel), the job's thread and the speech
// library's threads, so every field access takes the lock (the flag is also readable
// without it), and no system call is made while holding it.
class CancelToken {
public:
    void cancel();
    bool isCancelled() const;
    // The child is identified by its process id; nullopt clears it.
    void setProcess(std::optional<qint64> pid);

    // Work that waits on events rather than on a thread (a network transfer) hears of a
    // cancel through a hook: it runs once, on the cancelling thread and outside the
    // lock, or at once when the flag is up already. It must be quick, and may still be
    // running, or about to, when it is removed.
    quint64 onCancel(std::function<void()> hook);
    void removeCancelHook(quint64 id);

private:
    static void terminate(qint64 pid);

    mutable std::mutex lock;
    std::optional<qint64> process;
    std::atomic<bool> cancelled = false;
    std::map<quint64, std::function<void()>> hooks;
    quint64 lastHook = 0;
};

using CancelTokenPtr = std::shared_ptr<CancelToken>;
