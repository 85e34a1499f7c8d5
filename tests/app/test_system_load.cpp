// The machine's load: per-core figures from recorded /proc/stat contents, and the GPU
// counter of the kernel's graphics drivers in a folder laid out as /sys/class/drm.
#include "app/SystemLoad.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace SystemLoad;

namespace {

// Two samples of a four-core machine, a quarter of a second apart, as the kernel wrote
// them (the summary line first, then one line per core, then the rest).
const char *const before = R"(cpu  2255 34 2290 22625563 6290 127 456 0 0 0
cpu0 1132 34 1441 11311718 3675 127 438 0 0 0
cpu1 1123 0 849 11313845 2614 0 18 0 0 0
cpu2 500 0 300 1000 0 0 0 0 0 0
cpu3 700 10 90 4000 0 0 0 0 0 0
intr 114930548 113199788 3 0 5 263 0 4 [... 1000 more fields ...]
ctxt 1990473
btime 1062191376
processes 2915
procs_running 1
procs_blocked 0
softirq 183433 0 21755 12 39 1137 231 21459 2263
)";
const char *const after = R"(cpu  2300 34 2320 22625600 6290 127 456 0 0 0
cpu0 1157 34 1441 11311718 3675 127 438 0 0 0
cpu1 1123 0 849 11313845 2614 0 18 0 0 0
cpu2 510 0 305 1005 0 0 0 0 0 0
cpu3 900 10 90 3900 0 0 0 0 0 0
intr 114930700 113199800 3 0 5 263 0 4
)";

} // namespace

TEST(SystemLoad, CoreLoadsFromTwoSamples)
{
    const auto first = parseProcStat(before);
    ASSERT_TRUE(first.has_value());
    // The summary line is not a core; user + nice + system are busy, idle is the rest.
    ASSERT_EQ(first->size(), 4);
    EXPECT_EQ(first->at(0), (CoreTicks{1132 + 34 + 1441, 1132 + 34 + 1441 + 11311718}));
    EXPECT_EQ(first->at(3), (CoreTicks{800, 4800}));

    // The first sample has nothing to compare with: zeros for every core.
    EXPECT_EQ(coreLoads({}, *first), QList<double>({0, 0, 0, 0}));

    const auto second = parseProcStat(after);
    ASSERT_TRUE(second.has_value());
    const QList<double> loads = coreLoads(*first, *second);
    ASSERT_EQ(loads.size(), 4);
    EXPECT_DOUBLE_EQ(loads[0], 1.0); // 25 busy ticks, 25 in all
    EXPECT_DOUBLE_EQ(loads[1], 0.0); // counters did not move: no division by zero
    EXPECT_DOUBLE_EQ(loads[2], 15.0 / 20.0);
    // An idle counter that ran backwards puts the busy ticks above the total: full load.
    EXPECT_DOUBLE_EQ(loads[3], 1.0);

    // A previous sample with fewer cores gives zeros for the new ones.
    EXPECT_EQ(coreLoads(first->mid(0, 2), *second), QList<double>({1.0, 0.0, 0.0, 0.0}));
}

TEST(SystemLoad, UnreadableCountersGiveNothing)
{
    EXPECT_FALSE(parseProcStat("").has_value());
    EXPECT_FALSE(parseProcStat("cpu  1 2 3 4\nintr 5\n").has_value());
    // A cut or garbled core line is left out; the others stay.
    const auto some = parseProcStat("cpu0 1 2\ncpu1 a b c d\ncpu2 1 1 1 1\ncpux 1 1 1 1\n");
    ASSERT_TRUE(some.has_value());
    EXPECT_EQ(*some, QList<CoreTicks>({{3, 4}}));
    EXPECT_FALSE(readProcStat(QStringLiteral("/nonexistent/stat")).has_value());
    // The real file of this machine has at least one core.
    const auto real = readProcStat();
    ASSERT_TRUE(real.has_value());
    EXPECT_GE(real->size(), 1);
}

TEST(SystemLoad, GpuCounterOfTheFirstCardThatHasOne)
{
    QTemporaryDir drm;
    ASSERT_TRUE(drm.isValid());
    auto write = [&](const QString &relative, const QByteArray &content) {
        const QString path = drm.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    EXPECT_FALSE(drmBusyPercent(drm.path()).has_value());

    // card0 has no counter (an integrated chip without one), a connector folder is not a
    // card, card2 comes after card10 in number order only.
    QDir(drm.path()).mkpath(QStringLiteral("card0/device"));
    write(QStringLiteral("card0-DP-1/device/gpu_busy_percent"), "5\n");
    write(QStringLiteral("card10/device/gpu_busy_percent"), "7\n");
    write(QStringLiteral("card2/device/gpu_busy_percent"), "130\n");
    EXPECT_EQ(drmBusyPercent(drm.path()), 100.0) << "clamped to 100";

    write(QStringLiteral("card2/device/gpu_busy_percent"), "garbage\n");
    EXPECT_EQ(drmBusyPercent(drm.path()), 7.0);
}
