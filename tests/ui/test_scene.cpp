// The processing scene at its edges, its device badge, and the monitor with counters that
// cannot be read.
#include "ui/ProcessingScene.h"
#include "ui/ProcessingVisualizer.h"
#include "ui/SystemMonitor.h"

#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

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
}

// The badge names what recognises: the GPU by its name, else the CPU with its threads; the
// tooltip over the badge holds the whole name, which the badge may shorten.
TEST(ProcessingScene, TheBadgeNamesTheDeviceThatRecognises)
{
    ProcessingVisualizer scene;
    scene.resize(660, 300);
    scene.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&scene));
    const QString gpu = QStringLiteral("NVIDIA GeForce RTX 4070 Laptop GPU with a name longer than the badge");
    const QString cpu = QStringLiteral("AMD Ryzen 7 7840U w/ Radeon 780M Graphics");
    auto tipAt = [&](QPoint at) {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        QHelpEvent help(QEvent::ToolTip, at, scene.mapToGlobal(at));
        QApplication::sendEvent(&scene, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };

    scene.setDevice(gpu, {}, 6);
    EXPECT_EQ(scene.deviceTitle(), QStringLiteral("GPU"));
    EXPECT_EQ(scene.deviceSubtitle(), gpu);
    EXPECT_EQ(tipAt(scene.badgeArea().center()), gpu);
    EXPECT_EQ(tipAt(QPoint(2, 2)), QString()) << "only the badge has a tooltip";

    scene.setDevice({}, cpu, 6);
    EXPECT_EQ(scene.deviceTitle(), QStringLiteral("CPU"));
    EXPECT_EQ(scene.deviceSubtitle(), QStringLiteral("6 Threads"));
    EXPECT_EQ(tipAt(scene.badgeArea().center()), cpu + QStringLiteral(" · 6 Threads"));
    // With many cores the grid grows and the badge moves; its tooltip goes along.
    scene.setCores(QList<double>(32, 0.5));
    EXPECT_EQ(tipAt(scene.badgeArea().center()), cpu + QStringLiteral(" · 6 Threads"));

    // Before a job has found out, no device is claimed.
    scene.setDevice({}, {}, 6);
    EXPECT_EQ(scene.deviceSubtitle(), QStringLiteral("…"));
    EXPECT_EQ(tipAt(scene.badgeArea().center()), QString());
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
