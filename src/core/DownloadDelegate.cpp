#include "core/DownloadDelegate.h"
#include "core/Tr.h"

#include "core/TranscriptionResult.h"
#include "core/TransferError.h"

#include <QCoreApplication>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUuid>

namespace {

// How long a transfer may stall before it fails.
constexpr int stallTimeoutMs = 60'000;

// The value of one parameter of a Content-Disposition header: a token, or a quoted
// string with its backslash escapes.
std::optional<QString> dispositionParameter(const QByteArray &header, const QByteArray &name)
{
    qsizetype i = 0;
    const qsizetype n = header.size();
    while (i < n) {
        // Past the next ';' outside quotes.
        bool quoted = false;
        while (i < n && (quoted || header.at(i) != ';')) {
            if (header.at(i) == '"')
                quoted = !quoted;
            else if (quoted && header.at(i) == '\\')
                ++i;
            ++i;
        }
        ++i;
        while (i < n && (header.at(i) == ' ' || header.at(i) == '\t'))
            ++i;
        const qsizetype eq = header.indexOf('=', i);
        if (eq < 0)
            return std::nullopt;
        if (header.mid(i, eq - i).trimmed().toLower() != name)
            continue;
        i = eq + 1;
        while (i < n && header.at(i) == ' ')
            ++i;
        QByteArray value;
        if (i < n && header.at(i) == '"') {
            for (++i; i < n && header.at(i) != '"'; ++i) {
                if (header.at(i) == '\\' && i + 1 < n)
                    ++i;
                value += header.at(i);
            }
        } else {
            while (i < n && header.at(i) != ';')
                value += header.at(i++);
            value = value.trimmed();
        }
        return QString::fromUtf8(value);
    }
    return std::nullopt;
}

// The file name an answer suggests: `filename*` (RFC 5987) before `filename` in its
// Content-Disposition, else the last component of its URL's path.
QString suggestedName(QNetworkReply *reply)
{
    const QByteArray disposition = reply->rawHeader("Content-Disposition");
    QString name;
    if (const std::optional<QString> extended = dispositionParameter(disposition, "filename*")) {
        // charset'language'percent-encoded
        const QStringList parts = extended->split(u'\'');
        if (parts.size() == 3)
            name = QString::fromUtf8(QByteArray::fromPercentEncoding(parts.at(2).toUtf8()));
    }
    if (name.isEmpty())
        name = dispositionParameter(disposition, "filename").value_or(QString());
    if (name.isEmpty())
        name = reply->url().path().section(u'/', -1);
    // A name, never a path.
    return name.section(u'/', -1).section(u'\\', -1);
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
    for (const auto &[name, value] : headers)
        request.setRawHeader(name, value);
    reply = session->get(request);
    connect(reply, &QNetworkReply::readyRead, this, &DownloadDelegate::receive);
    connect(reply, &QNetworkReply::finished, this, &DownloadDelegate::finish);
}

void DownloadDelegate::receive()
{
    const QByteArray bytes = reply->readAll();
    if (bytes.isEmpty())
        return;
    received += bytes.size();
    const bool tooLarge = maxBytes >= 0 && received > maxBytes;
    if (tooLarge || file.write(bytes) != bytes.size()) {
        const QString error = tooLarge ? Tr::tr("Die Datei ist zu groß zum Laden.")
                                       : file.errorString();
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
        fail(error);
        return;
    }
    // Counted here rather than from the transfer layer's progress signal, which it
    // holds back to ten a second and so may never send for the last bytes before a
    // pause. Without a length from the server there is no progress.
    const qint64 length = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (length > 0 && onProgress)
        onProgress(std::min(1.0, double(received) / double(length)));
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
        fail(Tr::tr("Die Verbindung brach ab, bevor die Datei vollständig war."));
        return;
    }
    if (!file.flush()) {
        fail(file.errorString());
        return;
    }
    file.close();
    m_mimeType = reply->header(QNetworkRequest::ContentTypeHeader).toString().section(u';', 0, 0).trimmed().toLower();
    m_suggestedFileName = suggestedName(reply);
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
