#pragma once

#include <QtGlobal>
#include <memory>
#include <mutex>
#include <optional>

// The cancel handle of one job. The flag goes up once and stays; a child process
// registered here is terminated by a cancel, also one that came before it started.
// Shared between the interface thread (cancel), the job's thread and the speech
// library's threads, so every field access takes the lock, and no system call is
// made while holding it.
class TranscribeControl {
public:
    void cancel();
    bool isCancelled() const;
    // The child is identified by its process id; nullopt clears it.
    void setProcess(std::optional<qint64> pid);

private:
    static void terminate(qint64 pid);

    mutable std::mutex lock;
    std::optional<qint64> process;
    bool cancelled = false;
};

using TranscribeControlPtr = std::shared_ptr<TranscribeControl>;
