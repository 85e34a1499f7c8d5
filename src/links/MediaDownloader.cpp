#include "links/MediaDownloader.h"

#include "core/DownloadDelegate.h"
#include "core/TranscriptionResult.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QPromise>
#include <QRegularExpression>
#include <QUuid>

MediaDownloader::MediaDownloader(std::function<void(double)> onProgress, QObject *parent)
    : QObject(parent), onProgress(std::move(onProgress))
{
}

// A download still running ends here: its delegate, a child, goes with this object and
// takes the partial file along, and the promise left unfinished cancels its future.
MediaDownloader::~MediaDownloader() = default;

QFuture<QString> MediaDownloader::download(const QUrl &url)
{
    continuation = std::make_shared<QPromise<QString>>();
    continuation->start();
    const QFuture<QString> future = continuation->future();

    auto *delegate = new DownloadDelegate(this);
    session = delegate;
    delegate->headers = {{QByteArrayLiteral("User-Agent"), userAgent}};
    delegate->maxBytes = maxBytes;
    delegate->onProgress = [this](double fraction) {
        if (onProgress)
            onProgress(fraction);
    };
    delegate->onFinish = [this](const std::optional<QString> &file, const std::optional<QString> &error) {
        finish(file, error);
    };
    delegate->start(url);
    return future;
}

void MediaDownloader::finish(const std::optional<QString> &file, const std::optional<QString> &error)
{
    if (!continuation)
        return;
    const std::shared_ptr<QPromise<QString>> promise = std::exchange(continuation, nullptr);
    if (error || !file) {
        promise->setException(std::make_exception_ptr(Error(error.value_or(QString()))));
    } else {
        const Response response{session->suggestedFileName(), session->mimeType()};
        const QString destination
            = QDir::tempPath() + u'/' + uuidText(QUuid::createUuid()) + u'.' + fileExtension(response);
        QFile::remove(destination);
        QFile downloaded(*file);
        if (downloaded.rename(destination)) {
            promise->addResult(destination);
        } else {
            const QString message = downloaded.errorString();
            downloaded.remove();
            promise->setException(std::make_exception_ptr(Error(message)));
        }
    }
    promise->finish();
    if (session)
        session->deleteLater();
}

QString MediaDownloader::fileExtension(const std::optional<Response> &response)
{
    if (response) {
        const QString name = response->suggestedFileName;
        const qsizetype dot = name.lastIndexOf(u'.');
        const QString extension = dot > 0 ? name.mid(dot + 1).toLower() : QString();
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
