// Media downloads from a real HTTP server on 127.0.0.1: the local file's name, progress,
// and every way a transfer can fail, each without a file left behind.
#include "LocalServer.h"
#include "Media.h"

#include "links/MediaDownloader.h"
#include "links/LinkResolver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTcpServer>

#include <gtest/gtest.h>

namespace {

struct Download {
    std::optional<QString> file;
    std::optional<QString> error;
    QList<double> progress;
    qint64 ms = 0;
};

Download download(const QUrl &url, qint64 maxBytes = MediaDownloader::defaultMaxBytes)
{
    Download d;
    QElapsedTimer clock;
    clock.start();
    MediaDownloader downloader([&d](double fraction) { d.progress.append(fraction); });
    downloader.maxBytes = maxBytes;
    QFuture<QString> future = downloader.download(url);
    EXPECT_TRUE(waitFor([&] { return future.isFinished(); }, 120'000));
    d.ms = clock.elapsed();
    try {
        future.waitForFinished();
        if (future.resultCount() > 0)
            d.file = future.result();
    } catch (const Network::Error &e) {
        d.error = e.errorDescription();
    }
    return d;
}

LocalServer::Answer answer(const QByteArray &type, const QByteArray &body, const QList<QByteArray> &headers = {})
{
    return {.body = body, .contentType = type, .headers = headers};
}

} // namespace

TEST(Downloader, NamesTheLocalFileByTheAnswer)
{
    LocalServer server;
    const QByteArray body = randomBytes(3 * 1024 * 1024 + 17);
    // The name the server suggests wins over the link and the type.
    server.answer("/files/vortrag", answer("audio/x-wav", body, {"Content-Disposition: attachment; filename=\"Talk.MP3\""}));
    server.answer("/files/folge", answer("audio/mpeg", body,
                                         {"Content-Disposition: attachment; filename*=UTF-8''Folge%20%C3%A4.OGG; "
                                          "filename=\"fallback.bin\""}));
    server.answer("/dl/stream", answer("Audio/X-WAV; codecs=1", body));
    server.answer("/ep.m4a", answer("text/html", body));
    server.answer("/dl/weird", answer("video/quicktime", body, {"Content-Disposition: inline; filename=\"a.m p3\""}));
    server.answer("/blob", {.body = body, .sendLength = false, .contentType = "application/x-unknown"});

    const QRegularExpression name(QStringLiteral("^sagwerk-[0-9]+-[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.(\\w+)$"));
    const std::pair<const char *, const char *> cases[] = {{"files/vortrag", "mp3"}, {"files/folge", "ogg"},
        {"dl/stream", "wav"}, {"ep.m4a", "m4a"}, {"dl/weird", "mov"}, {"missing.flac", "flac"},
        {"blob", "mp3"}}; // the unknown type gives mp3
    for (const auto &[path, extension] : cases) {
        SCOPED_TRACE(path);
        const Download d = download(server.base().resolved(QUrl(path)));
        ASSERT_TRUE(d.file) << d.error.value_or("").toStdString();
        EXPECT_EQ(QFileInfo(*d.file).absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
        EXPECT_EQ(name.match(QFileInfo(*d.file).fileName()).captured(1), extension) << d.file->toStdString();
        EXPECT_EQ(Media::readFile(*d.file) == body, QByteArray(path) != "missing.flac");
        QFile::remove(*d.file);
        if (QByteArray(path) == "files/vortrag") {
            ASSERT_FALSE(d.progress.isEmpty());
            EXPECT_TRUE(std::is_sorted(d.progress.begin(), d.progress.end()));
            EXPECT_DOUBLE_EQ(d.progress.last(), 1.0);
        } else if (QByteArray(path) == "blob") {
            EXPECT_TRUE(d.progress.isEmpty()) << "no progress without a length";
        }
    }
    EXPECT_TRUE(server.lastRequest("/files/vortrag").contains("\r\nUser-Agent: Sagwerk/1.0 (Linux)\r\n"));
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(Downloader, FailuresLeaveNoFile)
{
    LocalServer server;
    server.answer("/cut.mp3", {.body = randomBytes(200'000), .dropAfter = 50'000, .contentType = "audio/mpeg"});
    server.answer("/endless.mp3", {.body = randomBytes(64 * 1024), .endless = true, .contentType = "audio/mpeg"});
    server.answer("/held.mp3", {.body = randomBytes(200'000), .holdAfter = 100'000, .contentType = "audio/mpeg"});

    EXPECT_EQ(download(server.base().resolved(QUrl("endless.mp3")), 1024 * 1024).error,
              "Die Datei ist zu groß zum Laden.");
    // A cut connection, a closed port, another scheme: the transfer layer's own text.
    QUrl closed;
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost);
        closed = QUrl(QStringLiteral("http://127.0.0.1:%1/x.mp3").arg(probe.serverPort()));
    }
    for (const QUrl &url : {server.base().resolved(QUrl("cut.mp3")), closed, QUrl("ftp://127.0.0.1/x.mp3")}) {
        const Download failed = download(url);
        ASSERT_TRUE(failed.error) << url.toString().toStdString();
        EXPECT_FALSE(failed.error->isEmpty());
    }

    // Deleting the downloader ends the transfer and its future.
    auto *downloader = new MediaDownloader({});
    QFuture<QString> future = downloader->download(server.base().resolved(QUrl("held.mp3")));
    ASSERT_TRUE(waitFor([&] { return server.held() == 1; }));
    ASSERT_TRUE(waitFor([&] { return !Media::temporaryEntries().isEmpty(); }));
    delete downloader;
    EXPECT_TRUE(future.isFinished());
    EXPECT_TRUE(future.isCanceled());
    EXPECT_NO_TEMPORARY_FILES();
}

// A server that stops sending: the resolver gives up after 30 seconds, the download
// after 60, both measured side by side.
TEST(DownloaderSlow, StalledTransfersEndAtTheirLimits)
{
    LocalServer server;
    server.answer("/stall.mp3", {.body = randomBytes(100'000), .holdAfter = 1000, .contentType = "audio/mpeg"});
    server.answer("/stall.html", {.body = "<html>" + QByteArray(10'000, ' '), .holdAfter = 100, .contentType = "text/html"});
    const QString pageUrl = server.base().resolved(QUrl("stall.html")).toString();

    QElapsedTimer clock;
    clock.start();
    qint64 resolverMs = -1;
    QFuture<QString> resolution
        = LinkResolver::resolve(pageUrl).then([](const ResolvedMedia &) { return QString(); })
              .onFailed([&](const LinkError &e) {
                  resolverMs = clock.elapsed();
                  return e.errorDescription();
              });
    const Download d = download(server.base().resolved(QUrl("stall.mp3")));
    ASSERT_TRUE(waitFor([&] { return resolution.isFinished(); }, 10'000));

    EXPECT_TRUE(resolution.result().startsWith("Netzwerkfehler: ")) << resolution.result().toStdString();
    EXPECT_GE(resolverMs, 29'000);
    EXPECT_LT(resolverMs, 45'000);
    ASSERT_TRUE(d.error);
    EXPECT_GE(d.ms, 59'000);
    EXPECT_LT(d.ms, 75'000);
    server.release();
    EXPECT_NO_TEMPORARY_FILES();
}
