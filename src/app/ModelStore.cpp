#include "app/ModelStore.h"

#include "core/Network.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
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
    refresh();
    importBundledOrDevModel();
}

QString ModelStore::pathOf(const QString &name) const
{
    return m_modelsDir + u'/' + name;
}

void ModelStore::refresh()
{
    QSet<QString> installed, coreML;
    for (const WhisperModel &model : WhisperModel::all()) {
        if (isInstalled(model))
            installed.insert(model.id);
        if (QFileInfo::exists(pathOf(model.coreMLName)))
            coreML.insert(model.id);
    }
    if (installed != m_installed) {
        m_installed = installed;
        emit installedChanged();
    }
    if (coreML != m_coreMLInstalled) {
        m_coreMLInstalled = coreML;
        emit coreMLInstalledChanged();
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
    setFraction(m_downloading, &ModelStore::downloadingChanged, id, 0.0);

    Network::Request request;
    request.url = WhisperModel::fileURL(m_repositoryBase, model.fileName);
    request.stallTimeoutMs = stallTimeoutMs;
    request.onProgress = [this, id](double fraction) {
        setFraction(m_downloading, &ModelStore::downloadingChanged, id, fraction);
    };
    // The transfer belongs to this store: when the store goes, it ends and takes its
    // temporary file along.
    Network::download(request, this)
        .then(this,
              [this, id, target](const Network::Response &response) {
                  // Moving the file may copy it from another file system: off this thread.
                  QtConcurrent::run(installDownload, response.file, target)
                      .then(this, [this, id](const QString &error) {
                          if (error.isEmpty())
                              refresh();
                          else
                              setErrorMessage(error);
                          endDownload(m_downloading, &ModelStore::downloadingChanged, id);
                      });
              })
        .onFailed(this, [this, id](const Network::Error &error) {
            setErrorMessage(error.errorDescription());
            endDownload(m_downloading, &ModelStore::downloadingChanged, id);
        });
}

void ModelStore::downloadCoreML(const WhisperModel &model)
{
    if (m_coreMLDownloading.contains(model.id))
        return;
    const QString id = model.id;
    setFraction(m_coreMLDownloading, &ModelStore::coreMLDownloadingChanged, id, 0.0);

    Network::Request request;
    request.url = WhisperModel::fileURL(m_repositoryBase, model.coreMLName + QStringLiteral(".zip"));
    request.stallTimeoutMs = stallTimeoutMs;
    request.onProgress = [this, id](double fraction) {
        setFraction(m_coreMLDownloading, &ModelStore::coreMLDownloadingChanged, id, fraction);
    };
    Network::download(request, this)
        .then(this,
              [this, id](const Network::Response &response) {
                  // The download ends when the package is unpacked.
                  unpackCoreML(response.file, id);
              })
        .onFailed(this, [this, id](const Network::Error &error) {
            setErrorMessage(error.errorDescription());
            endDownload(m_coreMLDownloading, &ModelStore::coreMLDownloadingChanged, id);
        });
}

void ModelStore::unpackCoreML(const QString &archive, const QString &id)
{
    // Each archive holds the package folder at its top level, so it lands beside the
    // model file; "-o" replaces an earlier package without asking. A package can be a
    // gigabyte, so unzip runs beside the event loop and reports when it is done.
    auto *unzip = new QProcess(this);
    connect(unzip, &QProcess::errorOccurred, this, [this, unzip, id](QProcess::ProcessError error) {
        // A crash also ends in finished(); only a failed launch ends here.
        if (error != QProcess::FailedToStart)
            return;
        setErrorMessage(unzip->errorString());
        endDownload(m_coreMLDownloading, &ModelStore::coreMLDownloadingChanged, id);
        unzip->deleteLater();
    });
    connect(unzip, &QProcess::finished, this, [this, unzip, archive, id](int exitCode, QProcess::ExitStatus status) {
        QFile::remove(archive);
        if (status != QProcess::NormalExit || exitCode != 0)
            setErrorMessage(QStringLiteral("Entpacken des ANE-Encoders fehlgeschlagen."));
        else
            refresh();
        endDownload(m_coreMLDownloading, &ModelStore::coreMLDownloadingChanged, id);
        unzip->deleteLater();
    });
    unzip->setStandardOutputFile(QProcess::nullDevice());
    unzip->setStandardErrorFile(QProcess::nullDevice());
    unzip->start(QStringLiteral("/usr/bin/unzip"), {QStringLiteral("-o"), QStringLiteral("-q"), archive,
                                                    QStringLiteral("-d"), m_modelsDir});
}

void ModelStore::deleteModel(const WhisperModel &model)
{
    QFile::remove(pathOf(model.fileName));
    refresh();
}

void ModelStore::deleteCoreML(const WhisperModel &model)
{
    const QFileInfo package(pathOf(model.coreMLName));
    // A link is removed itself, never what it points to.
    if (package.isDir() && !package.isSymLink())
        QDir(package.filePath()).removeRecursively();
    else
        QFile::remove(package.filePath());
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

void ModelStore::setFraction(Fractions &map, void (ModelStore::*changed)(), const QString &id, double fraction)
{
    map[id] = fraction;
    emit(this->*changed)();
}

void ModelStore::endDownload(Fractions &map, void (ModelStore::*changed)(), const QString &id)
{
    if (map.remove(id))
        emit(this->*changed)();
}
