#pragma once

#include <functional>

// Ctrl-C and SIGTERM cancel the running work instead of killing the process, so that
// temporary files are cleaned up on the way out. `cancel` runs on a watcher thread, not
// in the signal handler, so it may lock; it must hop to the main thread where needed.
namespace Interrupt {
void onSignal(std::function<void()> cancel);
}
