#pragma once

#include "core/Network.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

template <typename T> class QPromise;

// Loads one linked media file into the temporary folder as `<UUID>.<extension>`, the
// extension taken from the server's answer. The bytes go straight to disk; the HTTP
// status is not looked at, so an error page arrives like a media file and fails only
// when it is decoded. A transfer that stalls for 60 seconds fails.
//
// One object per download, living on the thread that runs its events. Deleting it ends
// a running download, cancels its future and removes what was written.
class MediaDownloader : public QObject {
    Q_OBJECT

public:
    inline static const QByteArray userAgent = QByteArrayLiteral("Sagwerk/1.0 (Linux)");
    // Far beyond any episode; it keeps an endless answer from filling the disk.
    static constexpr qint64 defaultMaxBytes = 8LL * 1024 * 1024 * 1024;

    // `onProgress` gets the fraction done, on this object's thread, and only while the
    // server has named a length.
    explicit MediaDownloader(std::function<void(double)> onProgress, QObject *parent = nullptr);
    ~MediaDownloader() override;

    // Starts the one download of this object and returns at once. The future ends with
    // the local file, which then belongs to the caller, or fails with Network::Error,
    // whose text is the transfer layer's own.
    QFuture<QString> download(const QUrl &url);

    // The extension, without a dot, for an answer: that of the suggested file name, else
    // one for the media type, else "mp3".
    static QString fileExtension(const std::optional<Network::Response> &response);

    qint64 maxBytes = defaultMaxBytes;

private:
    std::function<void(double)> onProgress;
    // Finished exactly once; an unfinished one cancels its future when this object goes.
    std::shared_ptr<QPromise<QString>> continuation;
};
