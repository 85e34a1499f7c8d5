#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QUrl>
#include <functional>
#include <optional>

class QTcpSocket;

// A small HTTP/1.1 server on 127.0.0.1 with fixed answers per path. It is served by
// the test's own event loop, so a test waits with waitFor() while a request runs.
// Every answer closes its connection; a path without an answer gets a 404 HTML page.
// A path is the request target as sent: with its query, or a whole URL for a proxy.
class LocalServer : public QObject {
public:
    struct Answer {
        int status = 200;
        QByteArray body;
        // Without a length the end of the body is the end of the connection.
        bool sendLength = true;
        // After this many bytes of the body the connection is cut.
        qint64 dropAfter = -1;
        // After this many bytes of the body the answer waits for release().
        qint64 holdAfter = -1;
        // The body sent again and again until the client goes away.
        bool endless = false;
        // Replaces the default Content-Type; an empty value sends none.
        std::optional<QByteArray> contentType = std::nullopt;
        // Further header lines, "Name: value".
        QList<QByteArray> headers = {};
    };

    LocalServer();

    // "http://127.0.0.1:PORT/", a repository base for the model store.
    QUrl base() const;
    void answer(const QString &path, const Answer &answer) { answers.insert(path, answer); }
    // Answers `path` by what `respond` makes of each request's head and body.
    using Responder = std::function<Answer(const QByteArray &head, const QByteArray &body)>;
    void respond(const QString &path, Responder respond) { responders.insert(path, std::move(respond)); }
    // The bodies of every request for `path`, in order.
    QList<QByteArray> bodies(const QString &path) const { return received.value(path); }
    int hits(const QString &path) const { return counts.value(path); }
    // Requests of any path, also those that came through as a proxy's.
    int totalHits() const { return total; }
    // The head of the last request for `path`, lines separated by CRLF, and its body.
    QByteArray lastRequest(const QString &path) const { return requests.value(path); }
    QByteArray lastBody(const QString &path) const { return received.value(path).value(received.value(path).size() - 1); }
    // Answers waiting at their hold point.
    int held() const { return int(waiting.size()); }
    void release();

private:
    void serve(QTcpSocket *socket);

    QTcpServer server;
    QHash<QString, Answer> answers;
    QHash<QString, int> counts;
    QHash<QString, QByteArray> requests;
    QHash<QString, Responder> responders;
    QHash<QString, QList<QByteArray>> received;
    int total = 0;
    QList<std::pair<QPointer<QTcpSocket>, QByteArray>> waiting;
};

// Runs the event loop until `done` holds or `timeoutMs` passes; returns `done()`.
bool waitFor(const std::function<bool()> &done, int timeoutMs = 30'000);

// Random bytes, so that a mix-up of two files shows.
QByteArray randomBytes(qint64 size);
