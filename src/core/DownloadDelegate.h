#pragma once

#include <QFile>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;

// One download into a temporary file `<temp>/<UUID>.bin`, written as the bytes arrive.
// Its events come on the thread that owns it. `onFinish` gets either the finished
// file, which then belongs to the receiver, or the error's text. Deleting the
// delegate ends a running download and removes its temporary file.
class DownloadDelegate : public QObject {
    Q_OBJECT

public:
    explicit DownloadDelegate(QObject *parent = nullptr);
    ~DownloadDelegate() override;

    // The fraction written; called only while the server has named a length.
    std::function<void(double)> onProgress;
    std::function<void(const std::optional<QString> &file, const std::optional<QString> &error)> onFinish;
    // Request headers beyond the transfer layer's own; set before start().
    QList<std::pair<QByteArray, QByteArray>> headers;
    // A body that grows past this many bytes fails the download; negative for no bound.
    qint64 maxBytes = -1;

    void start(const QUrl &url);

    // What the answer said about its body, known once onFinish has a file: the
    // lower-cased media type without parameters, and the file name the server suggests
    // in Content-Disposition, else the last path component of the answer's URL.
    const QString &mimeType() const { return m_mimeType; }
    const QString &suggestedFileName() const { return m_suggestedFileName; }

private:
    void receive();
    void finish();
    void fail(const QString &error);

    QNetworkAccessManager *session;
    QPointer<QNetworkReply> reply;
    qint64 received = 0;
    QString m_mimeType;
    QString m_suggestedFileName;
    // Named only while it is this delegate's to remove.
    QFile file;
};
