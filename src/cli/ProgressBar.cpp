#include "cli/ProgressBar.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

ProgressBar::ProgressBar(const char *label) : label(label), enabled(::isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar()
{
    if (enabled && shown.load() >= 0)
        std::fputs("\n", stderr);
}

void ProgressBar::update(double fraction)
{
    if (!enabled)
        return;
    const int percent = std::clamp(int(fraction * 100.0 + 0.5), 0, 100);
    int previous = shown.load();
    // Redraw only when the number moves, and never backwards across threads.
    while (percent > previous) {
        if (shown.compare_exchange_weak(previous, percent)) {
            constexpr int width = 30;
            char bar[width + 1];
            const int filled = percent * width / 100;
            for (int i = 0; i < width; ++i)
                bar[i] = i < filled ? '#' : '-';
            bar[width] = '\0';
            std::fprintf(stderr, "\r%s [%s] %3d%%", label, bar, percent);
            std::fflush(stderr);
            return;
        }
    }
}
