// One Sagwerk per session: a later start hands its files to the running one, through a
// real local socket and the real sagwerk program as the later start.
#include "Home.h"
#include "LocalServer.h"

#include "app/AppModel.h"
#include "app/SingleInstance.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class SingleInstanceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        useThrowawayHome();
        // A runtime folder of our own, as the session would give: the socket lives there.
        runtime = QDir::tempPath() + QStringLiteral("/runtime");
        QDir(runtime).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(runtime));
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
    }

    static QString stagedFile(const AppModel &app)
    {
        if (!app.pending())
            return {};
        const auto *file = std::get_if<PendingItem::File>(&app.pending()->kind);
        return file ? file->url : QString();
    }

    // Runs the real program as a later start; true when it ended by itself, successfully.
    static bool laterStart(const QStringList &arguments, const QString &workingDir)
    {
        QProcess sagwerk;
        sagwerk.setWorkingDirectory(workingDir);
        sagwerk.setProcessChannelMode(QProcess::ForwardedChannels);
        sagwerk.start(QStringLiteral(SAGWERK_APP), arguments);
        if (!waitFor([&] { return sagwerk.state() == QProcess::NotRunning; }, 60'000)) {
            sagwerk.kill();
            sagwerk.waitForFinished();
            return false;
        }
        return sagwerk.exitStatus() == QProcess::NormalExit && sagwerk.exitCode() == 0;
    }

    QString runtime;
};

TEST(SingleInstanceArguments, FilesAreAbsoluteLocalPaths)
{
    const QStringList files = SingleInstance::filesFromArguments(
        {QStringLiteral("Vortrag.mp3"), QStringLiteral("-style"), QStringLiteral("../b/c.wav"),
         QStringLiteral("/abs/d e.mkv"), QStringLiteral("file:///abs/f%20g.m4a"),
         QStringLiteral("https://example.invalid/x.mp3"), QString()},
        QStringLiteral("/home/anna/Audio"));
    EXPECT_EQ(files, (QStringList{QStringLiteral("/home/anna/Audio/Vortrag.mp3"), QStringLiteral("/home/anna/b/c.wav"),
                                  QStringLiteral("/abs/d e.mkv"), QStringLiteral("/abs/f g.m4a")}));
}

// The running instance stages the first file of a later start, relative to where that
// start ran, and is asked to come forward; the later start ends without a window.
TEST_F(SingleInstanceTest, LaterStartsHandTheirFilesToTheRunningOne)
{
    AppModel app;
    SingleInstance running;
    QSignalSpy primary(&running, &SingleInstance::primary);
    QSignalSpy activated(&running, &SingleInstance::activationRequested);
    running.start({});
    ASSERT_TRUE(waitFor([&] { return primary.count() == 1; }));
    running.attach(app);
    EXPECT_FALSE(app.pending().has_value());

    const QString folder = QDir::tempPath() + QStringLiteral("/Aufnahmen");
    QDir().mkpath(folder);
    ASSERT_TRUE(laterStart({QStringLiteral("Gespräch 1.m4a"), QStringLiteral("zweite.mp3")}, folder));
    ASSERT_TRUE(waitFor([&] { return activated.count() == 1; }));
    EXPECT_EQ(stagedFile(app), folder + QStringLiteral("/Gespräch 1.m4a"));

    // Without files a later start only brings the window forward.
    ASSERT_TRUE(laterStart({}, folder));
    ASSERT_TRUE(waitFor([&] { return activated.count() == 2; }));
    EXPECT_EQ(stagedFile(app), folder + QStringLiteral("/Gespräch 1.m4a"));
}

// A socket file left by an instance that died is no running instance; the new one takes
// its place, stages its own files once the model is there, and hands later files on.
TEST_F(SingleInstanceTest, LeftoverSocketAndOwnFiles)
{
    const QString path = SingleInstance::defaultSocketPath();
    ASSERT_TRUE(path.startsWith(runtime));
    {
        QFile leftover(path);
        ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    }

    SingleInstance first;
    QSignalSpy primary(&first, &SingleInstance::primary);
    first.start({QStringLiteral("/x/eins.wav"), QStringLiteral("/x/zwei.wav")});
    ASSERT_TRUE(waitFor([&] { return primary.count() == 1; }));
    AppModel app;
    first.attach(app);
    EXPECT_EQ(stagedFile(app), QStringLiteral("/x/eins.wav"));

    SingleInstance second;
    QSignalSpy handedOver(&second, &SingleInstance::handedOver);
    QSignalSpy secondPrimary(&second, &SingleInstance::primary);
    second.start({QStringLiteral("/x/drei.flac")});
    ASSERT_TRUE(waitFor([&] { return handedOver.count() == 1; }));
    EXPECT_TRUE(waitFor([&] { return stagedFile(app) == QStringLiteral("/x/drei.flac"); }));
    EXPECT_EQ(secondPrimary.count(), 0);
}

} // namespace
