#include "app/SingleInstance.h"

#include "app/AppModel.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace {

// A running instance that does not answer within this time counts as none.
constexpr int connectTimeoutMs = 3000;

QByteArray encode(const QStringList &files)
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << files;
    return data;
}

} // namespace

SingleInstance::SingleInstance(const QString &socketPath, QObject *parent) : QObject(parent), m_path(socketPath)
{
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::defaultSocketPath()
{
    QString dir = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (dir.isEmpty())
        dir = QDir::tempPath();
    return dir + QStringLiteral("/org.morvane.sagwerk.socket");
}

QStringList SingleInstance::filesFromArguments(const QStringList &arguments, const QString &workingDir)
{
    QStringList files;
    const QDir base(workingDir);
    for (const QString &argument : arguments) {
        if (argument.isEmpty() || argument.startsWith(u'-'))
            continue;
        QString path;
        if (argument.startsWith(QLatin1String("file:"))) {
            const QUrl url(argument);
            if (!url.isLocalFile())
                continue;
            path = url.toLocalFile();
        } else if (argument.contains(QLatin1String("://"))) {
            continue;
        } else {
            path = argument;
        }
        files << QDir::cleanPath(base.absoluteFilePath(path));
    }
    return files;
}

void SingleInstance::start(const QStringList &files)
{
    m_files = files;
    m_client = new QLocalSocket(this);
    auto *timer = new QTimer(m_client);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this] {
        if (m_decided)
            return;
        m_client->abort();
        becomePrimary();
    });
    connect(m_client, &QLocalSocket::connected, this, [this] {
        m_client->write(encode(m_files));
        m_client->disconnectFromServer();
    });
    connect(m_client, &QLocalSocket::disconnected, this, [this] {
        if (m_decided)
            return;
        m_decided = true;
        emit handedOver();
    });
    connect(m_client, &QLocalSocket::errorOccurred, this, [this](QLocalSocket::LocalSocketError error) {
        // The running instance closing the connection after reading is the normal end.
        if (m_decided || error == QLocalSocket::PeerClosedError)
            return;
        becomePrimary();
    });
    timer->start(connectTimeoutMs);
    m_client->connectToServer(m_path);
}

void SingleInstance::becomePrimary()
{
    if (m_decided)
        return;
    m_decided = true;
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    // Nobody answered, so a socket file there is left from an instance that ended
    // without removing it.
    QLocalServer::removeServer(m_path);
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server->nextPendingConnection())
            receive(socket);
    });
    // Without the socket this instance still runs; later starts then open windows of
    // their own.
    m_server->listen(m_path);
    m_waiting = m_files;
    if (m_model)
        stageFirst(*m_model, std::exchange(m_waiting, {}));
    emit primary();
}

void SingleInstance::receive(QLocalSocket *socket)
{
    // The starting side writes its list and closes; the list is read whole at the close.
    auto *buffer = new QByteArray;
    socket->setParent(this);
    const auto finish = [this, socket, buffer] {
        *buffer += socket->readAll();
        QDataStream in(*buffer);
        in.setVersion(QDataStream::Qt_6_0);
        QStringList files;
        in >> files;
        delete buffer;
        socket->deleteLater();
        if (in.status() != QDataStream::Ok)
            files.clear();
        if (m_model)
            stageFirst(*m_model, files);
        else
            m_waiting = files;
        emit activationRequested();
    };
    connect(socket, &QLocalSocket::readyRead, socket, [socket, buffer] { *buffer += socket->readAll(); });
    if (socket->state() == QLocalSocket::UnconnectedState)
        finish();
    else
        connect(socket, &QLocalSocket::disconnected, this, finish, Qt::SingleShotConnection);
}

void SingleInstance::attach(AppModel &model)
{
    m_model = &model;
    if (!m_waiting.isEmpty())
        stageFirst(model, std::exchange(m_waiting, {}));
}

void SingleInstance::stageFirst(AppModel &model, const QStringList &files)
{
    if (files.isEmpty())
        return;
    // The first file is staged whatever its type; one that cannot be read fails in the
    // job with its message.
    model.stage(files.first());
}
