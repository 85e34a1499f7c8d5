// sagwerk-cli transcribe with a link in place of a file, served from 127.0.0.1: the
// link is resolved and downloaded as the application does, and the download goes away.
#include "LocalServer.h"
#include "Media.h"

#include "links/PodcastError.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <signal.h>

namespace {

struct CliRun {
    int status = -1;
    QByteArray out, err;
};

// Runs the program while this process's event loop serves its requests; `interruptWhen`
// sends it Ctrl-C once it holds.
CliRun cli(const QStringList &args, const std::function<bool()> &interruptWhen = {})
{
    QProcess p;
    p.start(QStringLiteral(SAGWERK_CLI), args);
    if (interruptWhen) {
        EXPECT_TRUE(waitFor(interruptWhen));
        ::kill(pid_t(p.processId()), SIGINT);
    }
    EXPECT_TRUE(waitFor([&] { return p.state() == QProcess::NotRunning; }, 300'000));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

LocalServer::Answer answer(const QByteArray &type, const QByteArray &body)
{
    LocalServer::Answer a;
    a.contentType = type;
    a.body = body;
    return a;
}

} // namespace

TEST(CliLink, ALinkIsResolvedDownloadedAndTranscribed)
{
    ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
    LocalServer server;
    const QString media = server.base().resolved(QUrl("media/folge")).toString();
    server.answer("/feed", answer("application/rss+xml", "<rss><channel><item><title>Die Folge</title><enclosure url=\""
                                                             + media.toUtf8() + "\"/></item></channel></rss>"));
    server.answer("/media/folge", answer("audio/mpeg", fileBytes(Media::tone(QStringLiteral("mp3")))));
    const QString feed = server.base().resolved(QUrl("feed")).toString();

    const CliRun json = cli({"transcribe", feed, "--model", Media::tinyModel(), "--language", "de"});
    ASSERT_EQ(json.status, 0) << json.err.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(json.out).object().value("language").toString(), "de");
    EXPECT_EQ(server.hits("/media/folge"), 1);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();

    // Stored, the transcript carries the episode's title.
    const QString models = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                           + QStringLiteral("/Sagwerk/models");
    Media::installTinyModel(models, QStringLiteral("ggml-base-q5_1.bin"));
    const CliRun saved = cli({"transcribe", feed, "--save", "--model", "base-q5_1"});
    ASSERT_EQ(saved.status, 0) << saved.err.toStdString();
    const QList<LoadedBundle> bundles = BundleStore::list();
    ASSERT_EQ(bundles.size(), 1);
    EXPECT_EQ(bundles.first().data.displayName, QStringLiteral("Die Folge"));
    EXPECT_EQ(saved.out.trimmed(), bundles.first().url.toUtf8());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();
}

TEST(CliLink, FailuresSpeakTheUsersText)
{
    LocalServer server;
    LocalServer::Answer cut = answer("audio/mpeg", randomBytes(100'000));
    cut.dropAfter = 1000;
    server.answer("/cut.mp3", cut);

    const CliRun spotify = cli({"transcribe", "https://open.spotify.com/episode/x", "--model", Media::tinyModel()});
    EXPECT_EQ(spotify.status, 1);
    EXPECT_EQ(spotify.err, PodcastError::spotify().errorDescription().toUtf8() + "\n");
    EXPECT_TRUE(spotify.out.isEmpty());

    const CliRun broken = cli({"transcribe", server.base().resolved(QUrl("cut.mp3")).toString(), "--model",
                               Media::tinyModel()});
    EXPECT_EQ(broken.status, 1);
    EXPECT_FALSE(broken.err.trimmed().isEmpty());
    EXPECT_TRUE(broken.out.isEmpty());

    // Ctrl-C while the server stalls the resolution, and while it stalls the download.
    LocalServer::Answer stalled = answer("audio/mpeg", randomBytes(100'000));
    stalled.holdAfter = 100;
    server.answer("/stalled.mp3", stalled);
    QElapsedTimer clock;
    clock.start();
    const CliRun resolving = cli({"transcribe", server.base().resolved(QUrl("stalled.mp3")).toString(), "--model",
                                  Media::tinyModel()},
                                 [&] { return server.held() == 1; });
    EXPECT_EQ(resolving.status, 130);
    EXPECT_EQ(resolving.err, "Abgebrochen.\n");
    LocalServer::Answer slow = answer("audio/mpeg", randomBytes(100'000));
    slow.holdAfter = 50'000;
    server.answer("/slow.mp3", slow);
    const CliRun downloading = cli({"transcribe", server.base().resolved(QUrl("slow.mp3")).toString(), "--model",
                                    Media::tinyModel()},
                                   [&] { return server.held() == 3 && !Media::temporaryEntries().isEmpty(); });
    EXPECT_EQ(downloading.status, 130);
    EXPECT_EQ(downloading.err, "Abgebrochen.\n");
    EXPECT_LT(clock.elapsed(), 20'000);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();

    // A missing file answers with an HTML page, which names no feed.
    const CliRun missing = cli({"transcribe", server.base().resolved(QUrl("weg.mp3")).toString(), "--model",
                                Media::tinyModel()});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Netzwerkfehler: HTTP 404\n");
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();
}
