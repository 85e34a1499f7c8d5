#include "core/Network.h"

#include "core/TemporaryFiles.h"
#include "core/Tr.h"
#include "core/TranscriptionResult.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QPromise>
#include <QThread>
#include <QTimer>

#include <mutex>

namespace Network {

namespace {

QNetworkAccessManager *mainManager = nullptr;

// The main thread's manager goes as the application object begins to go, while that is
// still whole. As its child it would go only at the very end, too late for Qt's network
// thread to let go of the connections of transfers that ended last.
void dropMainManager()
{
    delete std::exchange(mainManager, nullptr);
}

// One manager per thread: the main thread's goes with the application object, another
// QThread's when that thread finishes.
QNetworkAccessManager *manager()
{
    thread_local QPointer<QNetworkAccessManager> local;
    if (!local) {
        QThread *thread = QThread::currentThread();
        QCoreApplication *app = QCoreApplication::instance();
        local = new QNetworkAccessManager;
        if (app && app->thread() == thread) {
            mainManager = local;
            qAddPostRoutine(dropMainManager);
        } else {
            QObject::connect(thread, &QThread::finished, local, &QObject::deleteLater);
        }
    }
    return local;
}

// Whether a finished reply failed in the transfer itself. An HTTP error status is an
// answer like any other: its body arrived.
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

// The transfer layer's texts are English and technical ("Host x not found"); the user
// reads what they mean, in the interface language.
QString plainWords(QNetworkReply *reply)
{
    switch (reply->error()) {
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::TimeoutError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
        return Tr::tr("Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen.");
    case QNetworkReply::SslHandshakeFailedError:
        return Tr::tr("Eine sichere Verbindung zum Server kam nicht zustande.");
    default:
        return reply->errorString();
    }
}

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

QString mimeType(const QString &contentType)
{
    return contentType.section(u';', 0, 0).trimmed().toLower();
}

// Lets a cancel from any thread reach a transfer on its own thread, for as long as
// the transfer exists.
struct CancelTarget {
    std::mutex lock;
    QObject *transfer = nullptr;
};

// One request on its way: its reply, what it has read, its timers and its promise. It
// deletes itself once its promise is finished; deleting it earlier ends the transfer.
class Transfer : public QObject {
public:
    Transfer(Request request, bool toFile, QObject *owner)
        : QObject(owner ? owner : manager()), request(std::move(request)), toFile(toFile)
    {
        promise.start();
    }

    ~Transfer() override
    {
        release();
        // A promise still unfinished cancels its future here.
    }

    QFuture<Response> future() { return promise.future(); }

    void start()
    {
        if (request.control) {
            if (request.control->isCancelled())
                return cancel();
            target = std::make_shared<CancelTarget>();
            target->transfer = this;
            cancelHook = request.control->onCancel([target = target] {
                std::lock_guard guard(target->lock);
                if (QObject *transfer = target->transfer)
                    QMetaObject::invokeMethod(
                        transfer, [transfer] { static_cast<Transfer *>(transfer)->cancel(); }, Qt::QueuedConnection);
            });
        }
        QNetworkRequest http(request.url);
        // A compressed body would not match the length the answer names, which is how a
        // cut connection is told from a whole answer.
        http.setRawHeader("Accept-Encoding", "identity");
        for (const auto &[name, value] : request.headers)
            http.setRawHeader(name, value);
        reply = request.body ? manager()->post(http, *request.body) : manager()->get(http);
        connect(reply, &QNetworkReply::metaDataChanged, this, &Transfer::headersArrived);
        connect(reply, &QNetworkReply::readyRead, this, &Transfer::receive);
        connect(reply, &QNetworkReply::finished, this, &Transfer::finish);

        if (request.stallTimeoutMs > 0) {
            stall.setSingleShot(true);
            stall.setInterval(request.stallTimeoutMs);
            connect(&stall, &QTimer::timeout, this, &Transfer::timedOut);
            connect(reply, &QNetworkReply::uploadProgress, this, &Transfer::restartStall);
            stall.start();
        }
        if (request.timeoutMs > 0)
            QTimer::singleShot(request.timeoutMs, this, &Transfer::timedOut);
    }

private:
    // Each of these ends in at most one call of succeed() or fail(), as its last step:
    // the continuations that finishing the promise runs may delete this object.

    void headersArrived()
    {
        if (!reply)
            return;
        restartStall();
        // Too large by its own word: no need to wait for the bytes.
        const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (request.maxBytes >= 0 && length.isValid() && length.toLongLong() > request.maxBytes)
            fail(tooLarge());
    }

    void receive()
    {
        if (!reply)
            return;
        restartStall();
        const qint64 wanted = request.readLimit >= 0 ? request.readLimit - received : reply->bytesAvailable();
        const QByteArray bytes = wanted > 0 ? reply->read(wanted) : QByteArray();
        received += bytes.size();
        if (request.maxBytes >= 0 && received > request.maxBytes)
            return fail(tooLarge());
        if (toFile && !bytes.isEmpty() && !openFile())
            return fail(Error(Error::Kind::file, fileError));
        if (toFile && !bytes.isEmpty() && file.write(bytes) != bytes.size())
            return fail(Error(Error::Kind::file, file.errorString()));
        if (!toFile)
            body += bytes;
        if (request.readLimit >= 0 && received >= request.readLimit)
            return succeed();
        // Counted here rather than from the transfer layer's progress signal, which it
        // holds back to ten a second and so may never send for the last bytes before a
        // pause. Without a length there is no progress.
        const qint64 length = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
        if (!bytes.isEmpty() && length > 0 && request.onProgress)
            request.onProgress(std::min(1.0, double(received) / double(length)));
    }

    void finish()
    {
        const QPointer<Transfer> self(this);
        receive();
        if (!self || !reply)
            return;
        if (isTransferError(reply))
            return fail(Error(Error::Kind::transfer, plainWords(reply), reply->errorString()));
        // The transfer layer takes a connection closed too early for the end of the
        // answer; only the length it named tells.
        const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
        if (length.isValid() && (encoding.isEmpty() || encoding == "identity") && received != length.toLongLong())
            return fail(Error(Error::Kind::incomplete, Tr::tr("Die Verbindung brach ab, bevor die Datei vollständig war.")));
        succeed();
    }

    // Made with the first bytes rather than at the start: a refused or unanswered request,
    // the common case for an optional fetch, then never leaves a file behind when the
    // process is killed while it waits.
    bool openFile()
    {
        if (file.isOpen())
            return true;
        file.setFileName(TemporaryFiles::newPath(u".part"));
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return true;
        fileError = file.errorString();
        file.setFileName({});
        return false;
    }

    // Runs while the transfer moves; stopped once it has ended.
    void restartStall()
    {
        if (stall.isActive())
            stall.start();
    }

    void timedOut()
    {
        if (!ended)
            fail(Error(Error::Kind::timedOut, Tr::tr("Der Server hat nicht rechtzeitig geantwortet.")));
    }

    void cancel()
    {
        if (!ended)
            fail(Cancelled());
    }

    void succeed()
    {
        if (toFile && !openFile())
            return fail(Error(Error::Kind::file, fileError));
        if (toFile && !file.flush())
            return fail(Error(Error::Kind::file, file.errorString()));
        Response response;
        response.url = reply->url();
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (status.isValid())
            response.status = status.toInt();
        response.mimeType = mimeType(reply->header(QNetworkRequest::ContentTypeHeader).toString());
        response.suggestedFileName = suggestedFileName(reply->rawHeader("Content-Disposition"), reply->url());
        response.body = std::move(body);
        if (toFile) {
            file.close();
            response.file = file.fileName();
            // The caller's now: not removed on the way out.
            file.setFileName({});
        }
        QPromise<Response> done = end();
        done.addResult(std::move(response));
        done.finish();
    }

    template <typename E> void fail(const E &error)
    {
        QPromise<Response> done = end();
        done.setException(std::make_exception_ptr(error));
        done.finish();
    }

    Error tooLarge() const { return Error(Error::Kind::tooLarge, Tr::tr("Die Datei ist zu groß zum Laden.")); }

    // Lets go of everything but the promise, which the caller finishes after this
    // object is done with its fields.
    QPromise<Response> end()
    {
        ended = true;
        release();
        deleteLater();
        QPromise<Response> done;
        done.swap(promise);
        return done;
    }

    void release()
    {
        if (target) {
            {
                std::lock_guard guard(target->lock);
                target->transfer = nullptr;
            }
            request.control->removeCancelHook(cancelHook);
            target.reset();
        }
        stall.stop();
        if (reply) {
            reply->disconnect(this);
            if (!reply->isFinished())
                reply->abort();
            reply->deleteLater();
            reply = nullptr;
        }
        if (!file.fileName().isEmpty()) {
            file.remove();
            file.setFileName({});
        }
    }

    Request request;
    const bool toFile;
    QPromise<Response> promise;
    bool ended = false;
    QPointer<QNetworkReply> reply;
    qint64 received = 0;
    QByteArray body;
    // Named only while its removal is this transfer's business.
    QFile file;
    QString fileError;
    QTimer stall;
    std::shared_ptr<CancelTarget> target;
    quint64 cancelHook = 0;
};

QFuture<Response> begin(const Request &request, bool toFile, QObject *owner)
{
    auto *transfer = new Transfer(request, toFile, owner);
    QFuture<Response> future = transfer->future();
    transfer->start();
    return future;
}

} // namespace

QFuture<Response> fetch(const Request &request, QObject *owner)
{
    return begin(request, false, owner);
}

QFuture<Response> download(const Request &request, QObject *owner)
{
    return begin(request, true, owner);
}

QString suggestedFileName(const QByteArray &disposition, const QUrl &url)
{
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
        name = url.path().section(u'/', -1);
    // A name, never a path.
    return name.section(u'/', -1).section(u'\\', -1);
}

} // namespace Network
