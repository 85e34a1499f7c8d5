#pragma once

#include <QFile>
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

    void start(const QUrl &url);

private:
    void receive();
    void finish();
    void fail(const QString &error);

    QNetworkAccessManager *session;
    QPointer<QNetworkReply> reply;
    qint64 received = 0;
    // Named only while it is this delegate's to remove.
    QFile file;
};
