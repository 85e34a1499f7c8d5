// Media downloads from a real HTTP server on 127.0.0.1: the local file's name, progress,
// and every way a transfer can fail, each without a file left behind.
#include "LocalServer.h"
#include "Media.h"

#include "links/MediaDownloader.h"
#include "links/PodcastResolver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTcpServer>
#include <QtConcurrent/QtConcurrentRun>

#include <gtest/gtest.h>

namespace {

struct Download {
    std::optional<QString> file;
    std::optional<QString> error;
    bool cancelled = false;
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
    // A failure is a future with an exception, which also counts as cancelled.
    try {
        future.waitForFinished();
        if (future.resultCount() > 0)
            d.file = future.result();
        else
            d.cancelled = true;
    } catch (const MediaDownloader::Error &e) {
        d.error = e.message();
    }
    return d;
}

QByteArray contents(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

LocalServer::Answer answer(const QByteArray &type, const QByteArray &body, const QList<QByteArray> &headers = {})
{
    LocalServer::Answer a;
    a.contentType = type;
    a.body = body;
    a.headers = headers;
    return a;
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
    LocalServer::Answer noLength = answer("application/x-unknown", body);
    noLength.sendLength = false;
    server.answer("/blob", noLength);

    const QRegularExpression name(QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.(\\w+)$"));
    const auto extensionOf = [&](const QString &path) {
        EXPECT_EQ(QFileInfo(path).absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
        const QRegularExpressionMatch m = name.match(QFileInfo(path).fileName());
        EXPECT_TRUE(m.hasMatch()) << path.toStdString();
        return m.captured(1);
    };

    const Download talk = download(server.base().resolved(QUrl("files/vortrag")));
    ASSERT_TRUE(talk.file) << talk.error.value_or("").toStdString();
    EXPECT_EQ(extensionOf(*talk.file), "mp3");
    EXPECT_TRUE(contents(*talk.file) == body);
    ASSERT_FALSE(talk.progress.isEmpty());
    EXPECT_TRUE(std::is_sorted(talk.progress.begin(), talk.progress.end()));
    EXPECT_DOUBLE_EQ(talk.progress.last(), 1.0);
    EXPECT_TRUE(server.lastRequest("/files/vortrag").contains("\r\nUser-Agent: Sagwerk/1.0 (macOS)\r\n"));

    const std::pair<const char *, const char *> cases[] = {
        {"files/folge", "ogg"}, {"dl/stream", "wav"}, {"ep.m4a", "m4a"}, {"dl/weird", "mov"}, {"missing.flac", "flac"}};
    for (const auto &[path, extension] : cases) {
        SCOPED_TRACE(path);
        const Download d = download(server.base().resolved(QUrl(path)));
        ASSERT_TRUE(d.file) << d.error.value_or("").toStdString();
        EXPECT_EQ(extensionOf(*d.file), extension);
        QFile::remove(*d.file);
    }
    // Without a length there is no progress to report; the unknown type gives mp3.
    const Download blob = download(server.base().resolved(QUrl("blob")));
    ASSERT_TRUE(blob.file);
    EXPECT_TRUE(blob.progress.isEmpty());
    EXPECT_EQ(extensionOf(*blob.file), "mp3");
    EXPECT_TRUE(contents(*blob.file) == body);

    QFile::remove(*talk.file);
    QFile::remove(*blob.file);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();
}

TEST(Downloader, FailuresLeaveNoFile)
{
    LocalServer server;
    LocalServer::Answer cut = answer("audio/mpeg", randomBytes(200'000));
    cut.dropAfter = 50'000;
    server.answer("/cut.mp3", cut);
    LocalServer::Answer endless = answer("audio/mpeg", randomBytes(64 * 1024));
    endless.endless = true;
    server.answer("/endless.mp3", endless);
    LocalServer::Answer held = answer("audio/mpeg", randomBytes(200'000));
    held.holdAfter = 100'000;
    server.answer("/held.mp3", held);

    // A cut connection, with the transfer layer's own text.
    const Download broken = download(server.base().resolved(QUrl("cut.mp3")));
    ASSERT_TRUE(broken.error);
    EXPECT_FALSE(broken.error->isEmpty());

    const Download huge = download(server.base().resolved(QUrl("endless.mp3")), 1024 * 1024);
    EXPECT_EQ(huge.error, "Die Datei ist zu groß zum Laden.");

    QUrl closed;
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost);
        closed = QUrl(QStringLiteral("http://127.0.0.1:%1/x.mp3").arg(probe.serverPort()));
    }
    const Download refused = download(closed);
    ASSERT_TRUE(refused.error);
    EXPECT_FALSE(refused.error->isEmpty());

    const Download ftp = download(QUrl("ftp://127.0.0.1/x.mp3"));
    ASSERT_TRUE(ftp.error);
    EXPECT_FALSE(ftp.error->isEmpty());

    // Deleting the downloader ends the transfer and its future.
    {
        auto *downloader = new MediaDownloader({});
        QFuture<QString> future = downloader->download(server.base().resolved(QUrl("held.mp3")));
        ASSERT_TRUE(waitFor([&] { return server.held() == 1; }));
        ASSERT_TRUE(waitFor([&] { return !Media::temporaryEntries().isEmpty(); }));
        delete downloader;
        EXPECT_TRUE(future.isFinished());
        EXPECT_TRUE(future.isCanceled());
    }
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(' ').toStdString();
}

// A server that stops sending: the resolver gives up after 30 seconds, the download
// after 60, both measured side by side.
TEST(DownloaderSlow, StalledTransfersEndAtTheirLimits)
{
    LocalServer server;
    LocalServer::Answer stall = answer("audio/mpeg", randomBytes(100'000));
    stall.holdAfter = 1000;
    server.answer("/stall.mp3", stall);
    LocalServer::Answer page = answer("text/html", "<html>" + QByteArray(10'000, ' '));
    page.holdAfter = 100;
    server.answer("/stall.html", page);
    const QUrl mediaUrl = server.base().resolved(QUrl("stall.mp3"));
    const QUrl pageUrl = server.base().resolved(QUrl("stall.html"));

    QElapsedTimer clock;
    clock.start();
    std::atomic<qint64> resolverMs = -1;
    QFuture<QString> resolution = QtConcurrent::run([&]() -> QString {
        try {
            PodcastResolver::resolve(pageUrl.toString());
            return {};
        } catch (const PodcastError &e) {
            resolverMs = clock.elapsed();
            return e.errorDescription();
        }
    });
    const Download d = download(mediaUrl);
    ASSERT_TRUE(waitFor([&] { return resolution.isFinished(); }, 10'000));

    EXPECT_TRUE(resolution.result().startsWith("Netzwerkfehler: ")) << resolution.result().toStdString();
    EXPECT_GE(resolverMs, 29'000);
    EXPECT_LT(resolverMs, 45'000);
    ASSERT_TRUE(d.error);
    EXPECT_GE(d.ms, 59'000);
    EXPECT_LT(d.ms, 75'000);
    server.release();
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
