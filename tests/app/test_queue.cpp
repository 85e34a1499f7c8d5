// Several files at once through the application state: a row each, one failing or
// cancelled while the others go on, and what was saved in the history. Real media made
// by ffmpeg and the generated model; a throw-away session with a real keyring.
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/TranscriptionQueue.h"
#include "speakers/DiarizationModels.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

using Media::dataDir;
using Media::installBase;
using State = TranscriptionQueue::State;
using Phase = TranscriptionQueue::Phase;

namespace {

class QueueTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        QDir(dataDir()).removeRecursively();
        installBase();
    }

    static QList<State> states(const TranscriptionQueue &queue)
    {
        QList<State> list;
        for (const TranscriptionQueue::Row &row : queue.rows())
            list.append(row.state);
        return list;
    }

    static QStringList historyNames(const AppModel &app)
    {
        QStringList names;
        for (const HistoryItem &item : app.history())
            names.append(item.fileName);
        return names;
    }
};

} // namespace

TEST_F(QueueTest, ABrokenFileFailsWithItsReasonAndTheOthersAreSaved)
{
    AppModel app;
    app.setSpeechModelId(QStringLiteral("base-q5_1"));
    TranscriptionQueue &queue = app.queue();
    const QString first = Media::tone(QStringLiteral("mp3")), broken = Media::textFileNamedMp3(),
                  third = Media::tone(QStringLiteral("wav"));

    // One file alone takes the single road, staged for its setup.
    queue.open({first});
    ASSERT_TRUE(app.pending().has_value());
    EXPECT_EQ(queue.phase(), Phase::Empty);

    // Several wait for their start; the setup's model is checked then, and a missing one
    // keeps them staged.
    queue.open({first, broken, third, first});
    EXPECT_FALSE(app.pending().has_value());
    EXPECT_EQ(queue.phase(), Phase::Staged);
    EXPECT_EQ(states(queue), QList<State>(3, State::Waiting)) << "the same file twice is one row";
    app.setSpeechModelId(QStringLiteral("small-q5_1"));
    queue.start();
    EXPECT_TRUE(app.errorMessage().has_value());
    EXPECT_EQ(queue.phase(), Phase::Staged);

    app.setSpeechModelId(QStringLiteral("base-q5_1"));
    queue.start();
    EXPECT_FALSE(app.errorMessage().has_value());
    EXPECT_EQ(queue.phase(), Phase::Running);
    ASSERT_TRUE(waitFor([&] { return queue.phase() == Phase::Ended; }, 120'000));

    EXPECT_EQ(states(queue), QList<State>({State::Done, State::Failed, State::Done}));
    EXPECT_TRUE(queue.rows()[1].reason.startsWith(QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden")))
        << queue.rows()[1].reason.toStdString();
    EXPECT_EQ(historyNames(app), QStringList({QFileInfo(third).fileName(), QFileInfo(first).fileName()}));
    for (const HistoryItem &item : app.history()) {
        ASSERT_TRUE(item.bundlePath.has_value());
        EXPECT_TRUE(BundleStore::load(*item.bundlePath).has_value());
        EXPECT_FALSE(item.segmentsPending);
    }
    EXPECT_FALSE(app.errorMessage().has_value()) << "a row's failure is the row's own";

    // The same files again are known: no second bundle.
    queue.clear();
    EXPECT_EQ(queue.phase(), Phase::Empty);
    queue.open({first, third});
    queue.start();
    ASSERT_TRUE(waitFor([&] { return queue.phase() == Phase::Ended; }, 120'000));
    EXPECT_TRUE(queue.rows()[0].known && queue.rows()[1].known);
    EXPECT_EQ(app.history().size(), 2);
    EXPECT_EQ(QDir(BundleStore::root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(u' ').toStdString();
}

TEST_F(QueueTest, CancellingOneRowLeavesTheOthersRunning)
{
    AppModel app;
    app.setSpeechModelId(QStringLiteral("base-q5_1"));
    TranscriptionQueue &queue = app.queue();
    const QString longAudio = Media::tone(QStringLiteral("opus"), 60.0),
                  waiting = Media::tone(QStringLiteral("wav"), 3.0), last = Media::tone(QStringLiteral("mp3"), 3.0);

    queue.open({longAudio, waiting, last});
    const int firstId = queue.rows()[0].id, waitingId = queue.rows()[1].id;
    // Staged, a row is only taken off the list.
    queue.cancel(waitingId);
    EXPECT_EQ(queue.rows().size(), 2);
    queue.open({waiting});
    ASSERT_EQ(queue.rows().size(), 3) << "while rows wait, one more file joins them";
    const int joinedId = queue.rows()[2].id;

    queue.start();
    queue.cancel(joinedId);
    EXPECT_EQ(queue.rows()[2].state, State::Cancelled);
    // A file added while the batch runs joins it.
    const QString added = Media::tone(QStringLiteral("wav"), 4.0);
    queue.open({added});
    ASSERT_EQ(queue.rows().size(), 4);

    // The running one, once its recognition shows progress.
    ASSERT_TRUE(waitFor([&] { return queue.rows()[0].state == State::Running && queue.rows()[0].progress > 0; }));
    queue.cancel(firstId);
    ASSERT_TRUE(waitFor([&] { return queue.phase() == Phase::Ended; }, 120'000));

    EXPECT_EQ(states(queue), QList<State>({State::Cancelled, State::Done, State::Cancelled, State::Done}));
    EXPECT_EQ(historyNames(app), QStringList({QFileInfo(added).fileName(), QFileInfo(last).fileName()}));
    EXPECT_EQ(QDir(BundleStore::root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);

    // Cancelling them all ends the running and the waiting ones; the finished rows stay.
    queue.open({Media::tone(QStringLiteral("opus"), 61.0), Media::tone(QStringLiteral("wav"), 6.0)});
    queue.start();
    ASSERT_TRUE(waitFor([&] { return queue.rows()[4].state == State::Running; }));
    queue.cancelAll();
    ASSERT_TRUE(waitFor([&] { return queue.phase() == Phase::Ended; }, 60'000));
    EXPECT_EQ(states(queue).mid(4), QList<State>({State::Cancelled, State::Cancelled}));
    EXPECT_EQ(states(queue)[1], State::Done);
    EXPECT_EQ(app.history().size(), 2);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(u' ').toStdString();
}

TEST_F(QueueTest, TheSpeakerSetupAppliesToEveryFileOfTheBatch)
{
    // The diarisation program played by a script that takes a moment, with its models in place.
    const QString program = QDir::homePath() + QStringLiteral("/Developer/SagwerkMac/vendor/sherpa-diarize");
    qputenv("SAGWERK_DIARIZE_PROGRAM", program.toUtf8());
    Media::writeFile(DiarizationModels::segPath(), "seg");
    Media::writeFile(DiarizationModels::embPath(), "emb");
    Media::writeFile(program, "#!/bin/sh\nprintf '%s\\n' \"$@\" >> \"$(dirname \"$0\")/args\"\nsleep 0.6\n"
                              "printf '0.0 -- 1.0 speaker_0\\n1.0 -- 9.0 speaker_1\\n'\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    AppModel app;
    app.setSpeechModelId(QStringLiteral("base-q5_1"));
    app.setSpeakerDetection(true);
    app.setSpeakerCount(2);
    TranscriptionQueue &queue = app.queue();
    bool separatingShown = false;
    QObject::connect(&queue, &TranscriptionQueue::rowsChanged, &queue, [&] {
        for (const TranscriptionQueue::Row &row : queue.rows())
            separatingShown = separatingShown || (row.state == State::Running && row.speakers);
    });
    queue.open({Media::tone(QStringLiteral("wav"), 3.0), Media::tone(QStringLiteral("mp3"), 3.0)});
    queue.start();
    // Changed after the start: the batch keeps the setup it started with.
    app.setSpeakerCount(3);
    ASSERT_TRUE(waitFor([&] { return queue.phase() == Phase::Ended; }, 120'000));

    EXPECT_EQ(states(queue), QList<State>({State::Done, State::Done}));
    EXPECT_TRUE(separatingShown);
    const QString arguments = QString::fromUtf8(Media::readFile(QFileInfo(program).path() + QStringLiteral("/args")));
    EXPECT_EQ(arguments.count(QStringLiteral("--clustering.num-clusters=2")), 2) << arguments.toStdString();
    ASSERT_EQ(app.history().size(), 2);
    for (const HistoryItem &item : app.history())
        EXPECT_TRUE(item.speakerText.has_value()) << item.fileName.toStdString();
    qunsetenv("SAGWERK_DIARIZE_PROGRAM");
}
