#include "cli/Interrupt.h"

#include <csignal>
#include <thread>
#include <unistd.h>

namespace Interrupt {

namespace {
int wakePipe[2] = {-1, -1};

extern "C" void onSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t n = ::write(wakePipe[1], &byte, 1);
}
} // namespace

void onSignal(std::function<void()> cancel)
{
    if (::pipe(wakePipe) != 0)
        return;
    // The handler only writes a byte; the watcher does the locking work outside it.
    std::thread([cancel = std::move(cancel)] {
        char byte;
        while (::read(wakePipe[0], &byte, 1) == 1)
            cancel();
    }).detach();
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace Interrupt
