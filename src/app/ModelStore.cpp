#include "app/ModelStore.h"

#include "core/Network.h"
#include "core/Tr.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QStandardPaths>
#include <QtConcurrent/QtConcurrentRun>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

QString defaultModelsDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk/models");
}

// How long a download may stall before it fails.
constexpr int stallTimeoutMs = 60'000;

} // namespace

ModelStore::ModelStore(QObject *parent) : ModelStore(WhisperModel::repositoryBase(), parent) {}

ModelStore::ModelStore(const QUrl &repositoryBase, QObject *parent)
    : QObject(parent), m_repositoryBase(repositoryBase), m_modelsDir(defaultModelsDir())
{
    QDir().mkpath(m_modelsDir);
    // A file that appears, goes or is renamed into place changes the folder; a download
    // of ours lands by a rename too.
    m_watcher = new QFileSystemWatcher(this);
    m_watcher->addPath(m_modelsDir);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &ModelStore::refresh);
    refresh();
    importBundledOrDevModel();
}

QString ModelStore::pathOf(const QString &name) const
{
    return m_modelsDir + u'/' + name;
}

void ModelStore::refresh()
{
    QSet<QString> installed;
    for (const WhisperModel &model : WhisperModel::all())
        if (isInstalled(model))
            installed.insert(model.id);
    if (installed != m_installed) {
        m_installed = installed;
        emit installedChanged();
    }
}

bool ModelStore::isInstalled(const WhisperModel &model) const
{
    const QFileInfo info(pathOf(model.fileName));
    return info.exists() && info.size() > qint64(model.approxSizeMB) * 900'000;
}

namespace {

// Moves a finished download to `target`: first beside it under a hidden name, which the
// store never counts, then over it in one rename, so that the old model stays usable
// until the new one is whole, also when the disk fills or the program dies on the way.
// The failure's text, or empty.
QString installDownload(const QString &file, const QString &target)
{
    const QFileInfo info(target);
    const QString staging = info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".part");
    QFile::remove(staging);
    QFile downloaded(file);
    if (!downloaded.rename(staging)) {
        const QString error = downloaded.errorString();
        downloaded.remove();
        QFile::remove(staging);
        return error;
    }
    if (std::rename(QFile::encodeName(staging).constData(), QFile::encodeName(target).constData()) != 0) {
        const QString error = QString::fromLocal8Bit(std::strerror(errno));
        QFile::remove(staging);
        return error;
    }
    return {};
}

} // namespace

void ModelStore::download(const WhisperModel &model)
{
    if (m_downloading.contains(model.id))
        return;
    const QString id = model.id;
    const QString target = pathOf(model.fileName);
    if (m_failures.remove(id))
        emit failuresChanged();
    setFraction(id, 0.0);

    Network::Request request;
    request.url = WhisperModel::fileURL(m_repositoryBase, model.fileName);
    request.stallTimeoutMs = stallTimeoutMs;
    request.onProgress = [this, id](double fraction) { setFraction(id, fraction); };
    // The transfer belongs to this store: when the store goes, it ends and takes its
    // temporary file along.
    Network::download(request, this)
        .then(this,
              [this, id, target, model](const Network::Response &response) {
                  // A missing file answers with a page; it never replaces a model.
                  if (response.status.value_or(200) >= 400) {
                      QFile::remove(response.file);
                      return endDownload(id, Tr::tr("Der Server lieferte statt des Modells eine Fehlerseite "
                                                    "(HTTP %1).")
                                                 .arg(*response.status));
                  }
                  const qint64 bytes = QFileInfo(response.file).size();
                  if (bytes <= qint64(model.approxSizeMB) * 900'000) {
                      QFile::remove(response.file);
                      return endDownload(id, Tr::tr("Die geladene Datei ist zu klein für dieses Modell; der Server "
                                                    "lieferte wohl eine Fehlerseite."));
                  }
                  // Moving the file may copy it from another file system: off this thread.
                  QtConcurrent::run(installDownload, response.file, target)
                      .then(this, [this, id](const QString &error) {
                          if (error.isEmpty())
                              refresh();
                          endDownload(id, error);
                      });
              })
        .onFailed(this, [this, id](const Network::Error &error) { endDownload(id, error.errorDescription()); });
}

void ModelStore::deleteModel(const WhisperModel &model)
{
    QFile::remove(pathOf(model.fileName));
    refresh();
}

void ModelStore::importBundledOrDevModel()
{
    const QString source = QDir::homePath() + QStringLiteral("/Developer/SagwerkMac/models/ggml-small-q5_1.bin");
    const QString target = pathOf(QStringLiteral("ggml-small-q5_1.bin"));
    if (QFileInfo::exists(target) || !QFileInfo::exists(source))
        return;
    QFile::copy(source, target);
    refresh();
}

void ModelStore::setErrorMessage(const QString &message)
{
    m_errorMessage = message;
    emit errorMessageChanged();
}

void ModelStore::setFraction(const QString &id, double fraction)
{
    m_downloading[id] = fraction;
    emit downloadingChanged();
}

void ModelStore::endDownload(const QString &id, const QString &failure)
{
    if (!failure.isEmpty()) {
        setErrorMessage(failure);
        m_failures[id] = failure;
        emit failuresChanged();
    }
    if (m_downloading.remove(id))
        emit downloadingChanged();
}
