#include "links/MediaDownloader.h"

#include "core/FileNames.h"
#include "core/TemporaryFiles.h"
#include "core/TranscriptionResult.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QPromise>
#include <QRegularExpression>

MediaDownloader::MediaDownloader(std::function<void(double)> onProgress, QObject *parent)
    : QObject(parent), onProgress(std::move(onProgress))
{
}

// A download still running ends here: its transfer belongs to this object and takes the
// partial file along, and the promise left unfinished cancels its future.
MediaDownloader::~MediaDownloader() = default;

QFuture<QString> MediaDownloader::download(const QUrl &url)
{
    continuation = std::make_shared<QPromise<QString>>();
    continuation->start();
    const QFuture<QString> future = continuation->future();

    Network::Request request;
    request.url = url;
    request.headers = {{QByteArrayLiteral("User-Agent"), userAgent}};
    request.stallTimeoutMs = 60'000;
    request.maxBytes = maxBytes;
    request.onProgress = [this](double fraction) {
        if (onProgress)
            onProgress(fraction);
    };
    Network::download(request, this).then(this, [this](const QFuture<Network::Response> &transfer) {
        const std::shared_ptr<QPromise<QString>> promise = std::exchange(continuation, nullptr);
        try {
            const Network::Response response = transfer.result();
            const QString destination
                = TemporaryFiles::newPath(QString(u'.' + fileExtension(response)));
            QFile::remove(destination);
            QFile downloaded(response.file);
            if (!downloaded.rename(destination)) {
                const QString message = downloaded.errorString();
                downloaded.remove();
                throw Network::Error(Network::Error::Kind::file, message);
            }
            promise->addResult(destination);
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    });
    return future;
}

QString MediaDownloader::fileExtension(const std::optional<Network::Response> &response)
{
    if (response) {
        const QString extension = FileNames::pathExtension(response->suggestedFileName).toLower();
        // Only a plain extension becomes part of a local file name.
        static const QRegularExpression plain(QStringLiteral("^[a-z0-9]{1,16}$"));
        if (plain.match(extension).hasMatch())
            return extension;
    }
    static const QHash<QString, QString> byType = {
        {QStringLiteral("audio/mpeg"), QStringLiteral("mp3")}, {QStringLiteral("audio/mp3"), QStringLiteral("mp3")},
        {QStringLiteral("audio/mp4"), QStringLiteral("m4a")},  {QStringLiteral("audio/x-m4a"), QStringLiteral("m4a")},
        {QStringLiteral("audio/m4a"), QStringLiteral("m4a")},  {QStringLiteral("audio/aac"), QStringLiteral("aac")},
        {QStringLiteral("audio/ogg"), QStringLiteral("ogg")},  {QStringLiteral("audio/opus"), QStringLiteral("ogg")},
        {QStringLiteral("audio/wav"), QStringLiteral("wav")},  {QStringLiteral("audio/x-wav"), QStringLiteral("wav")},
        {QStringLiteral("video/mp4"), QStringLiteral("mp4")},  {QStringLiteral("video/quicktime"), QStringLiteral("mov")},
    };
    const QString mime = response ? response->mimeType.toLower() : QString();
    return byType.value(mime, QStringLiteral("mp3"));
}
