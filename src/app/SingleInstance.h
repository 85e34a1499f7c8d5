#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class AppModel;
class QLocalServer;
class QLocalSocket;

// One running application per user session. A start first offers its files to a
// running instance through a local socket in the runtime folder; when one takes them,
// that start has nothing more to do. Otherwise it becomes the running instance and
// listens, and files of later starts are staged in its model as a drop would stage them.
// Nothing here waits: the outcome arrives as a signal from the event loop.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString &socketPath = defaultSocketPath(), QObject *parent = nullptr);
    ~SingleInstance() override;

    // The socket in the user's runtime folder.
    static QString defaultSocketPath();

    // The command line's files as absolute local paths, taken relative to `workingDir`;
    // file: URLs count, options (a leading '-') and other URLs do not.
    static QStringList filesFromArguments(const QStringList &arguments, const QString &workingDir);

    // Offers `files` to a running instance; ends in handedOver() or primary().
    void start(const QStringList &files);

    // The model that received files are staged in, from now on; files that arrived
    // before are staged at once.
    void attach(AppModel &model);

    // Stages the first of `files` as a drop on the window does; none, nothing.
    static void stageFirst(AppModel &model, const QStringList &files);

signals:
    // A running instance took the files; this process can end.
    void handedOver();
    // No instance was running; this one is it now.
    void primary();
    // A later start asked for the window, with or without files.
    void activationRequested();

private:
    void becomePrimary();
    void receive(QLocalSocket *socket);

    QString m_path;
    QStringList m_files;
    QLocalSocket *m_client = nullptr;
    QLocalServer *m_server = nullptr;
    QPointer<AppModel> m_model;
    QStringList m_waiting;
    bool m_decided = false;
};
