// The processing scene at its edges, and the monitor with counters that cannot be read.
#include "ui/ProcessingScene.h"
#include "ui/SystemMonitor.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ProcessingScene;

TEST(ProcessingScene, EdgesOfFillLoadAndCores)
{
    const QSizeF jar(96, 150);
    for (double fill : {0.0, 0.02, 0.98, 1.0, -0.5, 1.5})
        EXPECT_EQ(waveAmplitude(fill), 0.0) << fill;
    EXPECT_GT(waveAmplitude(0.5), 0.0);
    for (double phase : {0.0, 1.3, 1e9}) {
        EXPECT_EQ(waveShape(jar, 0, phase).boundingRect(), QRectF(0, 150, 96, 0));
        EXPECT_EQ(waveShape(jar, 1, phase).boundingRect(), QRectF(0, 0, 96, 150));
    }
    EXPECT_TRUE(textLines(jar, 0).isEmpty());
    const QList<QLineF> half = textLines(jar, 0.5);
    EXPECT_FALSE(half.isEmpty());
    for (const QLineF &line : half)
        EXPECT_GT(line.y1(), 75) << "text never stands above the surface";

    EXPECT_EQ(rows({1, 2, 3, 4, 5}), QList<QList<double>>({{1, 2, 3}, {4, 5}}));
    EXPECT_TRUE(rows({}).isEmpty());
    // Loads beyond the scale take the colour of its end.
    for (auto [load, hue] : {std::pair{-1.0, 0.33}, {7.0, 0.0}})
        EXPECT_NEAR(loadColor(load).hueF(), hue, 0.005) << load;
    EXPECT_EQ(neuralEngineActivity(false, 0.52), 0.0);
    for (double phase = 0; phase < 3; phase += 0.01) {
        const double a = neuralEngineActivity(true, phase);
        EXPECT_TRUE(a >= 0.1 - 1e-12 && a <= 1.0 + 1e-12) << phase;
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

    monitor.start();
    const QList<double> shown = monitor.coreUsage();
    EXPECT_FALSE(shown.isEmpty());
    EXPECT_EQ(monitor.sampleCPU(dir.filePath(QStringLiteral("missing"))), shown);
    monitor.stop();
    EXPECT_FALSE(monitor.isSampling());
}
