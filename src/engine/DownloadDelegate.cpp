#include "engine/DownloadDelegate.h"

#include "engine/TranscriptionResult.h"

#include <QCoreApplication>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUuid>

namespace {

// How long a transfer may stall before it fails.
constexpr int stallTimeoutMs = 60'000;

// An HTTP error status is an answer like any other: its body is what was downloaded,
// and the caller judges the file. Only failures of the transfer itself count.
bool isTransferError(QNetworkReply *reply)
{
    const QNetworkReply::NetworkError error = reply->error();
    if (error == QNetworkReply::NoError)
        return false;
    if (!reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        return true;
    const bool contentError = error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError;
    const bool serverError = error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError;
    return !(contentError || serverError || error == QNetworkReply::ProtocolInvalidOperationError);
}

} // namespace

DownloadDelegate::DownloadDelegate(QObject *parent) : QObject(parent), session(new QNetworkAccessManager(this)) {}

DownloadDelegate::~DownloadDelegate()
{
    if (reply) {
        reply->disconnect(this);
        reply->abort();
    }
    if (!file.fileName().isEmpty())
        file.remove();
}

void DownloadDelegate::start(const QUrl &url)
{
    file.setFileName(QDir::tempPath() + u'/' + uuidText(QUuid::createUuid()) + QStringLiteral(".bin"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        const QString error = file.errorString();
        file.setFileName({});
        // Reported later, so that the caller's start returns first as with a network failure.
        QTimer::singleShot(0, this, [this, error] { fail(error); });
        return;
    }
    QNetworkRequest request(url);
    request.setTransferTimeout(stallTimeoutMs);
    // Unpacked bytes would not match the length the server names, which is how a cut
    // connection is told from a complete answer.
    request.setRawHeader("Accept-Encoding", "identity");
    reply = session->get(request);
    connect(reply, &QNetworkReply::readyRead, this, &DownloadDelegate::receive);
    connect(reply, &QNetworkReply::downloadProgress, this, [this](qint64 written, qint64 expected) {
        // Without a length from the server there is no progress, also not the
        // closing report of the transfer layer.
        if (expected < 1 || !reply->header(QNetworkRequest::ContentLengthHeader).isValid())
            return;
        if (onProgress)
            onProgress(double(written) / double(expected));
    });
    connect(reply, &QNetworkReply::finished, this, &DownloadDelegate::finish);
}

void DownloadDelegate::receive()
{
    const QByteArray bytes = reply->readAll();
    received += bytes.size();
    if (file.write(bytes) != bytes.size()) {
        const QString error = file.errorString();
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
        fail(error);
    }
}

void DownloadDelegate::finish()
{
    receive();
    if (!reply)
        return;
    reply->deleteLater();
    if (isTransferError(reply)) {
        fail(reply->errorString());
        return;
    }
    // The transfer layer takes a connection closed too early for the end of the answer.
    const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
    if (length.isValid() && received != length.toLongLong()) {
        fail(QCoreApplication::translate("Sagwerk", "Die Verbindung brach ab, bevor die Datei vollständig war."));
        return;
    }
    if (!file.flush()) {
        fail(file.errorString());
        return;
    }
    file.close();
    const QString path = file.fileName();
    file.setFileName({});
    if (onFinish)
        onFinish(path, std::nullopt);
}

void DownloadDelegate::fail(const QString &error)
{
    reply = nullptr;
    if (!file.fileName().isEmpty())
        file.remove();
    file.setFileName({});
    if (onFinish)
        onFinish(std::nullopt, error);
}
