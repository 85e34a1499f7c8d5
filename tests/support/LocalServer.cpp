#include "LocalServer.h"

#include <QEventLoop>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <QTimer>

LocalServer::LocalServer()
{
    server.listen(QHostAddress::LocalHost);
    connect(&server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        }
    });
}

QUrl LocalServer::base() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort()));
}

void LocalServer::release()
{
    for (auto &[socket, rest] : std::exchange(waiting, {})) {
        if (!socket)
            continue;
        socket->write(rest);
        socket->disconnectFromHost();
    }
}

void LocalServer::serve(QTcpSocket *socket)
{
    // A request is whole with its head and the body its Content-Length names.
    QByteArray request = socket->property("request").toByteArray() + socket->readAll();
    socket->setProperty("request", request);
    const qsizetype headEnd = request.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    qsizetype bodyLength = 0;
    for (const QByteArray &headerLine : request.left(headEnd).split('\n')) {
        if (headerLine.toLower().startsWith("content-length:"))
            bodyLength = headerLine.mid(15).trimmed().toLongLong();
    }
    if (request.size() < headEnd + 4 + bodyLength)
        return;
    const QByteArray body = request.mid(headEnd + 4, bodyLength);
    socket->disconnect(this);
    const QByteArray requestHead = request.left(headEnd);
    const QList<QByteArray> line = requestHead.left(requestHead.indexOf("\r\n")).split(' ');
    const QString path = QString::fromUtf8(line.value(1));
    counts[path] += 1;
    requests[path] = requestHead;
    total += 1;

    received[path].append(body);
    Answer a = responders.contains(path)
        ? responders.value(path)(requests[path], body)
        : answers.value(path, Answer{404, "<!DOCTYPE html><html><body><h1>404 Not Found</h1></body></html>"});
    QByteArray head = "HTTP/1.1 " + QByteArray::number(a.status) + (a.status == 200 ? " OK" : " Error")
                      + "\r\nConnection: close\r\n";
    const QByteArray type = a.contentType.value_or(a.status == 200 ? "application/octet-stream" : "text/html");
    if (!type.isEmpty())
        head += "Content-Type: " + type + "\r\n";
    for (const QByteArray &line : a.headers)
        head += line + "\r\n";
    if (a.sendLength && !a.endless)
        head += "Content-Length: " + QByteArray::number(a.body.size()) + "\r\n";
    socket->write(head + "\r\n");

    if (a.endless && !a.body.isEmpty()) {
        // Kept a little ahead of the client, which decides when it has had enough.
        const auto more = [socket, chunk = a.body] {
            while (socket->state() == QAbstractSocket::ConnectedState && socket->bytesToWrite() < 256 * 1024)
                socket->write(chunk);
        };
        connect(socket, &QTcpSocket::bytesWritten, socket, more);
        more();
    } else if (a.dropAfter >= 0) {
        socket->write(a.body.left(a.dropAfter));
        socket->disconnectFromHost();
    } else if (a.holdAfter >= 0) {
        socket->write(a.body.left(a.holdAfter));
        waiting.append({QPointer<QTcpSocket>(socket), a.body.mid(a.holdAfter)});
    } else {
        socket->write(a.body);
        socket->disconnectFromHost();
    }
}

bool waitFor(const std::function<bool()> &done, int timeoutMs)
{
    if (done())
        return true;
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    poll.start(5);
    loop.exec();
    return done();
}

QByteArray randomBytes(qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), size / 4);
    for (qint64 i = size / 4 * 4; i < size; ++i)
        bytes[i] = char(QRandomGenerator::global()->bounded(256));
    return bytes;
}
