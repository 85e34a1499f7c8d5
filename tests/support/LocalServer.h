#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QUrl>
#include <functional>

class QTcpSocket;

// A small HTTP/1.1 server on 127.0.0.1 with fixed answers per path. It is served by
// the test's own event loop, so a test waits with waitFor() while a request runs.
// Every answer closes its connection; a path without an answer gets a 404 HTML page.
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
    };

    LocalServer();

    // "http://127.0.0.1:PORT/", a repository base for the model store.
    QUrl base() const;
    void answer(const QString &path, const Answer &answer);
    int hits(const QString &path) const;
    // Answers waiting at their hold point.
    int held() const { return int(waiting.size()); }
    void release();

private:
    void serve(QTcpSocket *socket);

    QTcpServer server;
    QHash<QString, Answer> answers;
    QHash<QString, int> counts;
    QList<std::pair<QPointer<QTcpSocket>, QByteArray>> waiting;
};

// Runs the event loop until `done` holds or `timeoutMs` passes; returns `done()`.
bool waitFor(const std::function<bool()> &done, int timeoutMs = 30'000);

// Random bytes, so that a mix-up of two files shows.
QByteArray randomBytes(qint64 size);
