// A pasted link through the application state: resolution, download with progress,
// staging under the episode's title and the transcript in the history; and the links
// that are refused or fail. Runs in a throw-away session with a real keyring.
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/LinkImport.h"
#include "app/TranscriptionJob.h"
#include "links/PodcastError.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSettings>
#include <QSignalSpy>
#include <QThreadPool>

#include <gtest/gtest.h>

namespace {

class LinkImports : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        QDir(Media::dataDir()).removeRecursively();
        for (const QString &name : Media::temporaryEntries())
            QFile::remove(QDir::tempPath() + u'/' + name);
    }

    static void waitLinkDone(AppModel &app)
    {
        ASSERT_TRUE(waitFor([&] { return !app.linkImport().isBusy(); }, 120'000)) << "link import did not end";
    }

    static HistoryItem someItem()
    {
        HistoryItem item;
        item.id = QStringLiteral("in-memory");
        item.fileName = QStringLiteral("Vorher");
        return item;
    }

    LocalServer server;
    QString at(const QString &path) const { return server.base().resolved(QUrl(path)).toString(); }
};

} // namespace

TEST_F(LinkImports, AFeedLinkBecomesAStagedJobAndThenATranscript)
{
    Media::installBase();
    const QByteArray audio = Media::readFile(Media::tone(QStringLiteral("mp3")));
    ASSERT_GT(audio.size(), 10'000);
    server.answer("/feed", {.body = "<rss><channel><title>Sendung</title><item><title>Folge 7: Gäste</title>"
                                    "<enclosure url=\"" + at("media/episode").toUtf8() + "\" type=\"audio/mpeg\"/>"
                                    "</item></channel></rss>",
                            .contentType = "application/rss+xml"});
    // Half the file, then a pause in which the progress can be seen.
    server.answer("/media/episode", {.body = audio, .holdAfter = audio.size() / 2, .contentType = "audio/mpeg"});

    AppModel app;
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    app.setCurrent(someItem());
    app.setErrorMessage(QStringLiteral("alt"));
    QStringList statuses;
    QObject::connect(&app.linkImport(), &LinkImport::statusChanged,
                     [&] { statuses << app.linkImport().status().value_or(QStringLiteral("<none>")); });

    app.stageLink(QStringLiteral("  \n") + at("feed") + QStringLiteral("\n"));
    EXPECT_TRUE(app.linkImport().isBusy());
    EXPECT_EQ(app.linkImport().status(), QStringLiteral("Link wird aufgelöst…"));
    EXPECT_EQ(app.linkImport().progress(), 0.0);
    EXPECT_FALSE(app.current().has_value());
    EXPECT_FALSE(app.errorMessage().has_value());
    // One link at a time: a second paste is ignored.
    app.stageLink(at("other"));

    ASSERT_TRUE(waitFor([&] { return app.linkImport().progress() >= 0.499; }));
    EXPECT_NEAR(app.linkImport().progress(), 0.5, 0.001);
    EXPECT_EQ(app.linkImport().status(), QStringLiteral("Episode wird geladen…"));
    EXPECT_TRUE(app.linkImport().isBusy());
    server.release();
    waitLinkDone(app);

    EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or("").toStdString();
    EXPECT_EQ(statuses, (QStringList{"Link wird aufgelöst…", "Episode wird geladen…", "<none>"}));
    EXPECT_EQ(app.linkImport().progress(), 0.0);
    EXPECT_EQ(server.hits("/other"), 0);
    ASSERT_TRUE(app.pending().has_value());
    const auto *file = std::get_if<PendingItem::File>(&app.pending()->kind);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->name, QStringLiteral("Folge 7: Gäste"));
    EXPECT_TRUE(file->url.startsWith(QDir::tempPath() + u'/')) << file->url.toStdString();
    EXPECT_TRUE(file->url.endsWith(QStringLiteral(".mp3")));
    EXPECT_TRUE(Media::readFile(file->url) == audio);

    app.startPending();
    ASSERT_TRUE(app.transcription().isBusy());
    ASSERT_TRUE(waitFor([&] { return !app.transcription().isBusy(); }, 180'000));
    EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or("").toStdString();
    ASSERT_EQ(app.history().size(), 1);
    const HistoryItem &item = app.history().first();
    EXPECT_EQ(item.fileName, QStringLiteral("Folge 7: Gäste"));
    ASSERT_TRUE(item.audioURL.has_value());
    EXPECT_TRUE(Media::readFile(*item.audioURL) == audio);
    EXPECT_EQ(app.current()->id, item.id);
}

TEST_F(LinkImports, RefusedAndFailedLinks)
{
    // An application that closes while a server stalls the resolution closes at once:
    // the resolution is stopped, not awaited for its time limit.
    server.answer("/stalled.mp3", {.body = randomBytes(100'000), .holdAfter = 100, .contentType = "audio/mpeg"});
    {
        AppModel closing;
        closing.stageLink(at("stalled.mp3"));
        ASSERT_TRUE(waitFor([&] { return server.held() == 1; }));
    }
    QElapsedTimer clock;
    clock.start();
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_LT(clock.elapsed(), 2'000);

    AppModel app;
    QSignalSpy busy(&app.linkImport(), &LinkImport::isBusyChanged);

    // Blanks and line breaks only: nothing happens.
    app.stageLink(QStringLiteral(" \n\t\n"));
    EXPECT_EQ(busy.count(), 0);

    // A failed resolution clears the status and the item on show, and says why.
    app.setCurrent(someItem());
    app.stageLink(QStringLiteral("https://open.spotify.com/episode/abc"));
    waitLinkDone(app);
    EXPECT_EQ(app.errorMessage(), PodcastError::spotify().errorDescription());
    EXPECT_FALSE(app.linkImport().status().has_value());
    EXPECT_FALSE(app.current().has_value());
    EXPECT_FALSE(app.pending().has_value());

    // A broken download reaches the user with the transfer's own text, and leaves no
    // file behind.
    server.answer("/cut.mp3", {.body = randomBytes(300'000), .dropAfter = 100'000, .contentType = "audio/mpeg"});
    app.stageLink(at("cut.mp3"));
    waitLinkDone(app);
    ASSERT_TRUE(app.errorMessage().has_value());
    EXPECT_FALSE(app.errorMessage()->isEmpty());
    EXPECT_FALSE(app.errorMessage()->startsWith(QStringLiteral("Netzwerkfehler"))) << app.errorMessage()->toStdString();
    EXPECT_EQ(app.linkImport().progress(), 0.0);
    EXPECT_FALSE(app.pending().has_value());
    EXPECT_NO_TEMPORARY_FILES();

    // While a transcription runs, a pasted link does nothing and says nothing.
    Media::installBase();
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    app.transcribe(Media::tone(QStringLiteral("opus"), 60.0));
    ASSERT_TRUE(app.transcription().isBusy());
    const int before = busy.count();
    app.stageLink(at("cut.mp3"));
    EXPECT_EQ(busy.count(), before);
    EXPECT_FALSE(app.errorMessage().has_value());
    app.cancelTranscription();
    ASSERT_TRUE(waitFor([&] { return !app.transcription().isBusy(); }, 60'000));
}
