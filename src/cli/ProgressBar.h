#pragma once

#include <atomic>

// A one-line progress bar on stderr, drawn only when stderr is a terminal. Safe to
// call from the speech library's threads.
class ProgressBar {
public:
    explicit ProgressBar(const char *label);
    ~ProgressBar();
    void update(double fraction);

private:
    const char *label;
    bool enabled;
    std::atomic<int> shown{-1};
};
