// sagwerk-cli models and download as a user runs them, against a local HTTP server.
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "engine/WhisperModel.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <signal.h>

namespace {

struct CliRun {
    int status = -1;
    QByteArray out, err;
};

// Runs the program while the event loop keeps the local server answering.
CliRun cli(const QStringList &args, const std::function<bool()> &interruptWhen = {})
{
    QProcess p;
    p.start(QStringLiteral(SAGWERK_CLI), args);
    EXPECT_TRUE(p.waitForStarted());
    if (interruptWhen) {
        EXPECT_TRUE(waitFor(interruptWhen));
        ::kill(pid_t(p.processId()), SIGINT);
    }
    EXPECT_TRUE(waitFor([&] { return p.state() == QProcess::NotRunning; }));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

class CliModels : public ::testing::Test {
protected:
    void SetUp() override { models = useThrowawayHome() + QStringLiteral("/.local/share/Sagwerk/models"); }
    QString models;
};

} // namespace

TEST_F(CliModels, ListsTheCatalogueWithWhatIsInstalled)
{
    QDir().mkpath(models + QStringLiteral("/ggml-medium-encoder.mlmodelc"));
    QFile f(models + QStringLiteral("/ggml-small-q5_1.bin"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    ASSERT_TRUE(f.resize(181 * 900'000 + 1));
    f.close();

    const CliRun run = cli({"models"});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QList<QByteArray> lines = run.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(1).simplified(), "base-q5_1 Base 57 MB - -");
    EXPECT_EQ(lines.at(2).simplified(), "small-q5_1 Small 181 MB installed -");
    EXPECT_EQ(lines.at(3).simplified(), "medium-q5_0 Medium 514 MB - installed");
    EXPECT_EQ(lines.at(4).simplified(), "large-v3-turbo-q5_0 Large v3 Turbo 547 MB - -");
}

TEST_F(CliModels, DownloadPrintsThePathOrSaysWhyNot)
{
    LocalServer server;
    const QByteArray body = randomBytes(57 * 900'000 + 100);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body});
    server.answer(QStringLiteral("/ggml-medium-q5_0.bin"), {.body = body, .holdAfter = 1000});
    const QString from = server.base().toString();

    const CliRun ok = cli({"download", "base-q5_1", "--from", from});
    ASSERT_EQ(ok.status, 0) << ok.err.toStdString();
    EXPECT_EQ(ok.out, (models + QStringLiteral("/ggml-base-q5_1.bin\n")).toUtf8());
    EXPECT_TRUE(ok.err.isEmpty()) << "no progress bar when stderr is no terminal";
    QFile file(models + QStringLiteral("/ggml-base-q5_1.bin"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == body);

    const CliRun errorPage = cli({"download", "small-q5_1", "--from", from});
    EXPECT_EQ(errorPage.status, 1);
    EXPECT_TRUE(errorPage.err.contains("Fehlerseite")) << errorPage.err.toStdString();
    EXPECT_TRUE(errorPage.out.isEmpty());

    const CliRun interrupted = cli({"download", "medium-q5_0", "--from", from}, [&] { return server.held() == 1; });
    EXPECT_EQ(interrupted.status, 130);
    EXPECT_EQ(interrupted.err, "Abgebrochen.\n");

    QString gone;
    {
        LocalServer closed;
        gone = closed.base().toString();
    }
    const CliRun refused = cli({"download", "small-q5_1", "--from", gone});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "Download fehlgeschlagen: Connection refused\n");

    EXPECT_EQ(cli({"download", "tiny"}).status, 2);
    EXPECT_EQ(cli({"download"}).status, 2);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

