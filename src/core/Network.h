#pragma once

#include "core/CancelToken.h"
#include "core/UserError.h"

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

class QObject;

// Every HTTP request of the application. A transfer runs on the event loop of the
// thread that starts it (the main thread), through one QNetworkAccessManager per
// thread; nothing here blocks. Its future ends on that thread with the Response, or
// fails with Network::Error, or with Cancelled once its control is cancelled. A
// transfer also ends when its owner is deleted, and its future is then cancelled;
// without an owner it runs until it ends or the application object goes.
namespace Network {

struct Request {
    QUrl url;
    // Extra header lines (User-Agent, Range, Content-Type...).
    QList<std::pair<QByteArray, QByteArray>> headers;
    // With a body the request is a POST, else a GET.
    std::optional<QByteArray> body;
    // A transfer fails once nothing has moved for this long; 0: never.
    int stallTimeoutMs = 0;
    // A transfer fails once it has taken this long in all; 0: never.
    int timeoutMs = 0;
    // Reads at most this many bytes of the body, then ends the transfer as a success;
    // negative: all of it.
    qint64 readLimit = -1;
    // A body longer than this fails the transfer; negative: no bound.
    qint64 maxBytes = -1;
    // Ends the transfer at once when cancelled, from any thread.
    CancelTokenPtr control;
    // The fraction of the body received, on the transfer's thread; called only while
    // the answer names its length.
    std::function<void(double)> onProgress;
};

struct Response {
    QUrl url;                  // the answer's address, after redirects
    std::optional<int> status; // none where the answer was no HTTP answer (file:)
    QString mimeType;          // lower-cased, without parameters; may be empty
    // From Content-Disposition, else the last path component of `url`; never a path.
    QString suggestedFileName;
    QByteArray body;           // fetch(): the body, up to readLimit
    QString file;              // download(): the temporary file, now the caller's
};

// A transfer that did not give a whole answer. An HTTP error status is no failure: its
// answer is the caller's to judge.
class Error : public UserError {
public:
    enum class Kind {
        transfer,   // the transfer layer's failure: plain words, its own text as details
        incomplete, // the connection ended before the length the answer named
        tooLarge,   // the body grew past maxBytes
        timedOut,   // stallTimeoutMs or timeoutMs passed
        file,       // the temporary file could not be written
    };

    Error(Kind kind, QString message, QString details = {})
        : m_kind(kind), m_message(std::move(message)), m_details(std::move(details))
    {
    }
    Kind kind() const { return m_kind; }
    QString errorDescription() const override { return m_message; }
    QString details() const override { return m_details; }

private:
    Kind m_kind;
    QString m_message;
    QString m_details;
};

// Both start the transfer and return at once; `owner` belongs to the calling thread.

// The body into memory.
QFuture<Response> fetch(const Request &request, QObject *owner = nullptr);
// The body into `<temp>/<UUID>.bin`, written as the bytes arrive. A failed, cancelled
// or abandoned transfer removes what it wrote.
QFuture<Response> download(const Request &request, QObject *owner = nullptr);

// `filename*` (RFC 5987) before `filename` in a Content-Disposition header, else the last
// component of `url`'s path; never a path.
QString suggestedFileName(const QByteArray &disposition, const QUrl &url);

} // namespace Network
