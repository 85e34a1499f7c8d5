// The player against a private sound server with a null sink.
#include "LocalServer.h"
#include "Media.h"

#include "review/AudioPlayer.h"

#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

TEST(AudioPlayer, PlaysToItsEndAndStandsReadyAtTheStart)
{
    ASSERT_FALSE(qEnvironmentVariable("PULSE_SERVER").isEmpty()) << "run under with-sound-server.sh";
    AudioPlayer player;
    player.togglePlay(); // nothing loaded: nothing happens
    player.seek(1);
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.currentTime(), 0);

    player.load(Media::tone(QStringLiteral("m4a"), 1.5));
    EXPECT_FALSE(player.isPlaying()) << "loading does not start playback";
    ASSERT_TRUE(waitFor([&] { return player.duration() > 0; }));
    EXPECT_NEAR(player.duration(), 1.5, 0.1);

    QList<std::pair<qint64, double>> ticks;
    QElapsedTimer clock;
    clock.start();
    const QMetaObject::Connection recording = QObject::connect(
        &player, &AudioPlayer::currentTimeChanged, [&] { ticks.append({clock.elapsed(), player.currentTime()}); });
    player.togglePlay();
    EXPECT_TRUE(player.isPlaying());
    ASSERT_TRUE(waitFor([&] { return !player.isPlaying(); }, 15000)) << "the end of the file never came";
    QObject::disconnect(recording);
    EXPECT_EQ(player.currentTime(), 0) << "back at the start";

    ASSERT_GE(ticks.size(), 20);
    double furthest = 0;
    QList<qint64> gaps;
    for (qsizetype i = 1; i < ticks.size(); ++i) {
        furthest = std::max(furthest, ticks[i].second);
        if (ticks[i].second > ticks[i - 1].second)
            gaps << ticks[i].first - ticks[i - 1].first;
    }
    EXPECT_GT(furthest, 1.2) << "it played (nearly) to the end";
    std::sort(gaps.begin(), gaps.end());
    EXPECT_LE(gaps[gaps.size() / 2], 40) << "the position moves every 30 ms";

    player.togglePlay();
    EXPECT_TRUE(player.isPlaying());
    ASSERT_TRUE(waitFor([&] { return player.currentTime() > 0.2; }));
    EXPECT_LT(player.currentTime(), 1.0);
    player.pause();
    EXPECT_FALSE(player.isPlaying());
}

TEST(AudioPlayer, SeeksAreExactClampedAndPublishedAtOnce)
{
    AudioPlayer player;
    const QString file = Media::tone(QStringLiteral("wav"), 4.0);
    player.load(file);
    ASSERT_TRUE(waitFor([&] { return player.duration() > 0; }));

    player.seek(-2);
    EXPECT_EQ(player.currentTime(), 0);
    player.seek(99);
    EXPECT_EQ(player.currentTime(), player.duration());
    // Within 0.05 s of the end, play starts from the start.
    player.seek(player.duration() - 0.03);
    player.togglePlay();
    EXPECT_TRUE(player.isPlaying());
    EXPECT_EQ(player.currentTime(), 0);

    // A seek while playing goes on playing from the new place, published at once.
    player.seek(2.25);
    EXPECT_TRUE(player.isPlaying());
    EXPECT_EQ(player.currentTime(), 2.25);
    QTest::qWait(300);
    EXPECT_GE(player.currentTime(), 2.25);
    EXPECT_LT(player.currentTime(), 2.9);

    // Loading the same file again keeps position and play state.
    player.pause();
    player.seek(1.5);
    player.load(file);
    EXPECT_EQ(player.currentTime(), 1.5);
    EXPECT_FALSE(player.isPlaying());
    QTest::qWait(100);
    EXPECT_EQ(player.currentTime(), 1.5) << "a paused player stands still";

    // A file that cannot play has no length, so a seek is bounded below only.
    player.load(Media::textFileNamedMp3());
    QTest::qWait(500);
    EXPECT_EQ(player.duration(), 0);
    player.seek(7.5);
    EXPECT_EQ(player.currentTime(), 7.5);
    player.seek(-1);
    EXPECT_EQ(player.currentTime(), 0);
}
