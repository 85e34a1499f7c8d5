#include "links/HttpFetch.h"

#include "core/UserError.h"
#include "core/TransferError.h"
#include "links/PodcastError.h"
#include "links/PodcastResolver.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <memory>

namespace Http {

QString mimeType(const QString &contentType)
{
    return contentType.section(u';', 0, 0).trimmed().toLower();
}

Answer fetch(const QUrl &url, qint64 limit, const QByteArray &range, const TranscribeControlPtr &control)
{
    if (control && control->isCancelled())
        throw Cancelled();
    QNetworkAccessManager session;
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, PodcastResolver::userAgent);
    request.setTransferTimeout(PodcastResolver::requestTimeoutMs);
    if (!range.isEmpty())
        request.setRawHeader("Range", range);

    const std::unique_ptr<QNetworkReply> reply(session.get(request));
    QByteArray body;
    bool enough = false;
    bool cancelled = false;
    QEventLoop loop;
    const auto take = [&] {
        if (!reply->isOpen())
            return;
        body += reply->read(limit - body.size());
        if (body.size() >= limit) {
            enough = true;
            loop.quit();
        }
    };
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, take);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    // A cancel comes from another thread as a flag; it is looked at here.
    QTimer watch;
    if (control) {
        QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
            if (control->isCancelled()) {
                cancelled = true;
                loop.quit();
            }
        });
        watch.start(100);
    }
    if (!reply->isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!enough && !cancelled)
        take();
    reply->disconnect(&loop);
    if (cancelled) {
        reply->abort();
        throw Cancelled();
    }

    Answer answer;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (status.isValid())
        answer.status = status.toInt();
    answer.mime = mimeType(reply->header(QNetworkRequest::ContentTypeHeader).toString());
    answer.body = body;

    if (!enough && isTransferError(reply.get()))
        throw PodcastError::network(reply->errorString());
    if (!reply->isFinished())
        reply->abort();
    return answer;
}

} // namespace Http
