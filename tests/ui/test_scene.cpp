// The processing scene's geometry at its edges, and the monitor's handling of counters
// that cannot be read.
#include "ui/ProcessingScene.h"
#include "ui/SystemMonitor.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ProcessingScene;

TEST(ProcessingScene, JarsAreFlatWhenEmptyOrFullAndWaveInBetween)
{
    const QSizeF jar(96, 150);
    for (double fill : {0.0, 0.02, 0.98, 1.0, -0.5, 1.5})
        EXPECT_EQ(waveAmplitude(fill), 0.0) << fill;
    EXPECT_EQ(waveAmplitude(0.021), 4.0);
    EXPECT_EQ(waveAmplitude(0.5), 4.0);

    // Empty: the surface lies on the floor; full: at the top. Both flat at any phase.
    for (double phase : {0.0, 1.3, 1e9}) {
        EXPECT_EQ(waveShape(jar, 0, phase).boundingRect(), QRectF(0, 150, 96, 0));
        EXPECT_EQ(waveShape(jar, 1, phase).boundingRect(), QRectF(0, 0, 96, 150));
    }
    const QRectF half = waveShape(jar, 0.5, 0.3).boundingRect();
    EXPECT_GT(half.top(), 75 - 4.01);
    EXPECT_LT(half.top(), 75);

    // The text lines appear from the bottom as the jar fills, never above the surface.
    EXPECT_TRUE(textLines(jar, 0).isEmpty());
    const QList<QLineF> lines = textLines(jar, 1);
    ASSERT_EQ(lines.size(), 12); // y = 138, 127, ... 17 lie below the top at 10
    EXPECT_EQ(lines.first(), QLineF(12, 138, 12 + 72 * 0.55, 138));
    EXPECT_EQ(lines.at(4).x2(), lines.first().x2()) << "the widths repeat every four lines";
}

TEST(ProcessingScene, CoresInTwoRowsAndLoadColours)
{
    EXPECT_TRUE(rows({}).isEmpty());
    EXPECT_EQ(rows({0.5}), QList<QList<double>>({{0.5}}));
    EXPECT_EQ(rows({1, 2, 3, 4, 5}), QList<QList<double>>({{1, 2, 3}, {4, 5}}));
    const QList<QList<double>> eight = rows({1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_EQ(eight.size(), 2);
    EXPECT_EQ(eight[0].size(), 4);
    EXPECT_EQ(eight[1].size(), 4);

    // Idle is green, full load red; what lies beyond is clamped.
    EXPECT_NEAR(loadColor(0).hueF(), 0.33, 0.005);
    EXPECT_NEAR(loadColor(-1).hueF(), 0.33, 0.005);
    EXPECT_NEAR(loadColor(1).hueF(), 0.0, 0.005);
    EXPECT_NEAR(loadColor(7).hueF(), 0.0, 0.005);
    EXPECT_NEAR(loadColor(0.5).hueF(), 0.165, 0.005);

    EXPECT_EQ(activity({}, 0.0), 0.0);
    EXPECT_EQ(activity({0.2, 0.9, 0.4}, 0.5), 0.9);
    EXPECT_EQ(activity({0.2}, 0.7), 0.7);
    // Without its package the Neural Engine rests; with it, it pulses within 0.1 to 1.
    EXPECT_EQ(neuralEngineActivity(false, 0.52), 0.0);
    for (double phase = 0; phase < 3; phase += 0.01) {
        const double a = neuralEngineActivity(true, phase);
        EXPECT_GE(a, 0.1 - 1e-12);
        EXPECT_LE(a, 1.0 + 1e-12);
    }
}

TEST(SystemMonitor, UnreadableCountersKeepTheLastLoads)
{
    QTemporaryDir dir;
    const QString stat = dir.filePath(QStringLiteral("stat"));
    auto write = [&](const QByteArray &text) {
        QFile file(stat);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    };
    SystemMonitor monitor;
    write("cpu0 10 0 10 80\ncpu1 0 0 0 100\n");
    EXPECT_EQ(monitor.sampleCPU(stat), QList<double>({0, 0}));
    write("cpu0 20 0 20 140\ncpu1 0 0 50 150\n");
    EXPECT_EQ(monitor.sampleCPU(stat), QList<double>({0.25, 0.5}));

    // A failed read returns the loads on show and keeps the previous counters.
    monitor.start();
    const QList<double> shown = monitor.coreUsage();
    EXPECT_FALSE(shown.isEmpty()) << "this machine's counters";
    EXPECT_EQ(monitor.sampleCPU(dir.filePath(QStringLiteral("missing"))), shown);
    monitor.stop();
    EXPECT_FALSE(monitor.isSampling());
}
