// sagwerk-cli transcribe with a link in place of a file, served from 127.0.0.1: the
// link is resolved and downloaded as the application does, and the download goes away.
#include "Cli.h"
#include "Media.h"

#include "storage/BundleStore.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

class CliLink : public ::testing::Test {
protected:
    CliRun transcribe(const QString &path, const std::function<bool()> &interruptWhen = {})
    {
        return cli({"transcribe", at(path), "--model", Media::tinyModel()}, interruptWhen);
    }
    QString at(const QString &path) const { return server.base().resolved(QUrl(path)).toString(); }
    LocalServer server;
};

TEST_F(CliLink, ALinkIsResolvedDownloadedAndTranscribed)
{
    ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
    server.answer("/feed", {.body = "<rss><channel><item><title>Die Folge</title><enclosure url=\""
                                    + at("media/folge").toUtf8() + "\"/></item></channel></rss>",
                            .contentType = "application/rss+xml"});
    server.answer("/media/folge", {.body = Media::readFile(Media::tone(QStringLiteral("mp3"))), .contentType = "audio/mpeg"});

    const CliRun json = cli({"transcribe", at("feed"), "--model", Media::tinyModel(), "--language", "de"});
    ASSERT_EQ(json.status, 0) << json.err.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(json.out).object().value("language").toString(), "de");
    EXPECT_EQ(server.hits("/media/folge"), 1);
    EXPECT_NO_TEMPORARY_FILES();

    // Stored, the transcript carries the episode's title.
    Media::installBase();
    const CliRun saved = cli({"transcribe", at("feed"), "--save", "--model", "base-q5_1"});
    ASSERT_EQ(saved.status, 0) << saved.err.toStdString();
    const QList<LoadedBundle> bundles = BundleStore::list();
    ASSERT_EQ(bundles.size(), 1);
    EXPECT_EQ(bundles.first().data.displayName, QStringLiteral("Die Folge"));
    EXPECT_EQ(saved.out.trimmed(), bundles.first().url.toUtf8());
    EXPECT_NO_TEMPORARY_FILES();
}

TEST_F(CliLink, FailuresSpeakTheUsersText)
{
    // Ctrl-C while the server stalls the resolution, and while it stalls the download.
    server.answer("/stalled.mp3", {.body = randomBytes(100'000), .holdAfter = 100, .contentType = "audio/mpeg"});
    server.answer("/slow.mp3", {.body = randomBytes(100'000), .holdAfter = 50'000, .contentType = "audio/mpeg"});
    QElapsedTimer clock;
    clock.start();
    const CliRun resolving = transcribe("stalled.mp3", [&] { return server.held() == 1; });
    EXPECT_EQ(resolving.status, 130);
    EXPECT_EQ(resolving.err, "Abgebrochen.\n");
    const CliRun downloading
        = transcribe("slow.mp3", [&] { return server.held() == 3 && !Media::temporaryEntries().isEmpty(); });
    EXPECT_EQ(downloading.status, 130);
    EXPECT_EQ(downloading.err, "Abgebrochen.\n");
    EXPECT_LT(clock.elapsed(), 20'000);
    EXPECT_NO_TEMPORARY_FILES();

    // A missing file answers with an HTML page, which names no feed.
    const CliRun missing = transcribe("weg.mp3");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Netzwerkfehler: HTTP 404\n");
    EXPECT_NO_TEMPORARY_FILES();
}
