// The machine's load: per-core figures from recorded /proc/stat contents, and the GPU
// counter of the kernel's graphics drivers in a folder laid out as /sys/class/drm.
#include "Media.h"

#include "app/SystemLoad.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace SystemLoad;

TEST(SystemLoad, CoreLoadsFromTwoSamples)
{
    // Two samples of a four-core machine as the kernel wrote them: the summary line is
    // not a core, user + nice + system are busy, idle is the rest.
    const auto first = parseProcStat("cpu  2255 34 2290 22625563 6290 127 456 0 0 0\n"
                                     "cpu0 1132 34 1441 11311718 3675 127 438 0 0 0\n"
                                     "cpu1 1123 0 849 11313845 2614 0 18 0 0 0\n"
                                     "cpu2 500 0 300 1000 0 0 0 0 0 0\ncpu3 700 10 90 4000 0 0 0 0 0 0\n"
                                     "intr 114930548 113199788 3 0 5 263 0 4\nctxt 1990473\nprocs_running 1\n");
    const auto second = parseProcStat("cpu  2300 34 2320 22625600 6290 127 456 0 0 0\n"
                                      "cpu0 1157 34 1441 11311718 3675 127 438 0 0 0\n"
                                      "cpu1 1123 0 849 11313845 2614 0 18 0 0 0\n"
                                      "cpu2 510 0 305 1005 0 0 0 0 0 0\ncpu3 900 10 90 3900 0 0 0 0 0 0\n"
                                      "intr 114930700 113199800 3 0 5 263 0 4\n");
    ASSERT_TRUE(first && second);
    ASSERT_EQ(first->size(), 4);
    EXPECT_EQ(first->at(0), (CoreTicks{1132 + 34 + 1441, 1132 + 34 + 1441 + 11311718}));
    EXPECT_EQ(first->at(3), (CoreTicks{800, 4800}));

    // The first sample has nothing to compare with: zeros for every core. Then: 25 busy
    // ticks of 25; counters that did not move (no division by zero); 15 of 20; an idle
    // counter that ran backwards, which puts the busy ticks above the total.
    EXPECT_EQ(coreLoads({}, *first), QList<double>({0, 0, 0, 0}));
    EXPECT_EQ(coreLoads(*first, *second), QList<double>({1.0, 0.0, 15.0 / 20.0, 1.0}));
    // A previous sample with fewer cores gives zeros for the new ones.
    EXPECT_EQ(coreLoads(first->mid(0, 2), *second), QList<double>({1.0, 0.0, 0.0, 0.0}));

    // Unreadable counters give nothing; a cut or garbled core line is left out.
    EXPECT_FALSE(parseProcStat("").has_value());
    EXPECT_FALSE(parseProcStat("cpu  1 2 3 4\nintr 5\n").has_value());
    EXPECT_EQ(parseProcStat("cpu0 1 2\ncpu1 a b c d\ncpu2 1 1 1 1\ncpux 1 1 1 1\n"), QList<CoreTicks>({{3, 4}}));
    EXPECT_FALSE(readProcStat(QStringLiteral("/nonexistent/stat")).has_value());
    ASSERT_TRUE(readProcStat().has_value());
    EXPECT_GE(readProcStat()->size(), 1);
}

TEST(SystemLoad, GpuCounterOfTheFirstCardThatHasOne)
{
    QTemporaryDir drm;
    EXPECT_FALSE(drmBusyPercent(drm.path()).has_value());

    // card0 has no counter (an integrated chip without one), a connector folder is not a
    // card, card2 comes after card10 in number order only.
    QDir(drm.path()).mkpath(QStringLiteral("card0/device"));
    Media::writeFile(drm.filePath(QStringLiteral("card0-DP-1/device/gpu_busy_percent")), "5\n");
    Media::writeFile(drm.filePath(QStringLiteral("card10/device/gpu_busy_percent")), "7\n");
    Media::writeFile(drm.filePath(QStringLiteral("card2/device/gpu_busy_percent")), "130\n");
    EXPECT_EQ(drmBusyPercent(drm.path()), 100.0) << "clamped to 100";

    Media::writeFile(drm.filePath(QStringLiteral("card2/device/gpu_busy_percent")), "garbage\n");
    EXPECT_EQ(drmBusyPercent(drm.path()), 7.0);
}
