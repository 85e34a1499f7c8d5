#include "app/PatchQueue.h"

#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

namespace PatchQueue {

namespace {

QThreadPool &queue()
{
    struct Queue {
        // One thread, so that the patches run in the order they came.
        Queue() { pool.setMaxThreadCount(1); }
        // Destroying the pool waits for what it holds.
        QThreadPool pool;
    };
    static Queue queue;
    return queue.pool;
}

} // namespace

QFuture<void> add(std::function<void()> patch)
{
    return QtConcurrent::run(&queue(), std::move(patch));
}

void drain()
{
    queue().waitForDone();
}

} // namespace PatchQueue
