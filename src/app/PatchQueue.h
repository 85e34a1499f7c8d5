#pragma once

#include <QFuture>

#include <functional>

// The bundle patches of this process, written one after the other on a worker thread of
// their own: each re-reads, changes and rewrites a whole document, which takes a while
// for a long transcript, and the main thread must not wait for it. Whatever reads or
// removes bundles here waits for the queue first, so the process reads what it wrote; at
// the exit of the process the queue is written out.
namespace PatchQueue {

// Returns at once; the future ends when the patch is written (or dropped).
QFuture<void> add(std::function<void()> patch);
// Blocks until every patch added so far is written.
void drain();

} // namespace PatchQueue
