#include "speakers/DiarizationModels.h"

#include "core/Network.h"
#include "core/Tr.h"
#include "speakers/DiarizerError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QPromise>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTimer>

#include <memory>

namespace DiarizationModels {

namespace {

const char segFolder[] = "sherpa-onnx-pyannote-segmentation-3-0";
const char segSourcePath[] =
    "/k2-fsa/sherpa-onnx/releases/download/speaker-segmentation-models/sherpa-onnx-pyannote-segmentation-3-0.tar.bz2";
const char embFile[] = "3dspeaker_speech_campplus_sv_en_voxceleb_16k.onnx";
const char embSourcePath[] =
    "/k2-fsa/sherpa-onnx/releases/download/speaker-recongition-models/3dspeaker_speech_campplus_sv_en_voxceleb_16k.onnx";
const char publicHost[] = "https://github.com";

QUrl onHost(const char *path)
{
    QUrl url = host();
    url.setPath(QString::fromLatin1(path));
    return url;
}

template <typename T>
void fail(QPromise<T> &promise, const auto &error)
{
    promise.setException(std::make_exception_ptr(error));
    promise.finish();
}

// The one place that fetches a file: a temporary file, or TransferFailed.
QFuture<QString> download(const QUrl &url, const CancelTokenPtr &control)
{
    Network::Request request;
    request.url = url;
    request.control = control;
    // Offline, a transfer may hang without ever failing by itself.
    request.stallTimeoutMs = 60'000;
    auto promise = std::make_shared<QPromise<QString>>();
    promise->start();
    Network::download(request)
        .then([promise](const Network::Response &response) {
            // A server that has no such file answers with a page; that is no model.
            if (response.mimeType == QStringLiteral("text/html") || response.status.value_or(200) >= 400) {
                QFile::remove(response.file);
                return fail(*promise, TransferFailed(Tr::tr("Der Server lieferte keine Modelldatei.")));
            }
            promise->addResult(response.file);
            promise->finish();
        })
        .onFailed([promise](const Cancelled &) { fail(*promise, TransferFailed(Tr::tr("Abgebrochen."))); })
        .onFailed([promise](const Network::Error &error) {
            fail(*promise, TransferFailed(Tr::tr("Sprecher-Modelle konnten nicht geladen werden: %1")
                                              .arg(error.errorDescription()),
                                          error.details()));
        });
    return promise->future();
}

// Puts a finished download at `target`; runs off the main thread, since the temporary
// folder may lie on another file system and the move is then a copy.
void moveInto(const QString &temporary, const QString &target)
{
    QFile::remove(target);
    QFile file(temporary);
    if (!file.rename(target)) {
        const QString error = file.errorString();
        QFile::remove(temporary);
        throw TransferFailed(error);
    }
}

} // namespace

QString dir()
{
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk/models");
    QDir().mkpath(path);
    return path;
}

QString segPath()
{
    return dir() + u'/' + QLatin1String(segFolder) + QStringLiteral("/model.onnx");
}

QString embPath()
{
    return dir() + u'/' + QLatin1String(embFile);
}

bool installed()
{
    return QFile::exists(segPath()) && QFile::exists(embPath());
}

QUrl host()
{
    const QString chosen = qEnvironmentVariable("SAGWERK_SPEAKER_MODEL_HOST");
    QUrl url(chosen.isEmpty() ? QString::fromLatin1(publicHost) : chosen);
    // Only scheme, host and port count; the paths are the release's own.
    url.setPath({});
    url.setQuery(QString());
    url.setFragment(QString());
    return url;
}

QUrl segArchive()
{
    return onHost(segSourcePath);
}

QUrl embURL()
{
    return onHost(embSourcePath);
}

QFuture<void> runTar(const QString &archive, const QString &into)
{
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    auto *tar = new QProcess(QCoreApplication::instance());
    tar->setProgram(QStringLiteral("/usr/bin/tar"));
    tar->setArguments({QStringLiteral("xjf"), archive, QStringLiteral("-C"), into});
    tar->setProcessChannelMode(QProcess::SeparateChannels);
    QObject::connect(tar, &QProcess::errorOccurred, tar, [promise, tar](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        fail(*promise, TransferFailed(tar->errorString()));
        tar->deleteLater();
    });
    QObject::connect(tar, &QProcess::finished, tar, [promise, tar](int code, QProcess::ExitStatus how) {
        tar->deleteLater();
        const int status = how == QProcess::NormalExit ? code : (code != 0 ? code : 1);
        if (status == 0) {
            promise->finish();
            return;
        }
        QStringDecoder utf8(QStringDecoder::Utf8);
        QString text = utf8.decode(tar->readAllStandardError());
        if (utf8.hasError())
            text = QStringLiteral("tar ") + QString::number(status);
        fail(*promise, DiarizerError::failed(text.trimmed()));
    });
    tar->start();
    return promise->future();
}

QFuture<Paths> ensure(const std::function<void(const QString &)> &status, const CancelTokenPtr &control)
{
    if (installed())
        return QtFuture::makeReadyValueFuture(Paths{segPath(), embPath()});
    if (status)
        status(Tr::tr("Lade Sprecher-Modelle (einmalig)…"));
    QObject *mainThread = QCoreApplication::instance();

    QFuture<void> segmentation = QtFuture::makeReadyVoidFuture();
    if (!QFile::exists(segPath())) {
        const QString archive = dir() + QStringLiteral("/seg.tar.bz2");
        segmentation = download(segArchive(), control)
                           .then(QtFuture::Launch::Async,
                                 [archive](const QString &temporary) { moveInto(temporary, archive); })
                           .then(mainThread, [archive] { return runTar(archive, dir()); })
                           .unwrap()
                           .then([archive] { QFile::remove(archive); });
    }
    // Segmentation first, then the embedding; one after the other.
    return segmentation
        .then(mainThread,
              [control] {
                  if (QFile::exists(embPath()))
                      return QtFuture::makeReadyVoidFuture();
                  return download(embURL(), control).then(QtFuture::Launch::Async, [](const QString &temporary) {
                      moveInto(temporary, embPath());
                  });
              })
        .unwrap()
        .then([] {
            if (!installed())
                throw DiarizerError::failed(Tr::tr("Sprecher-Modelle konnten nicht geladen werden."));
            return Paths{segPath(), embPath()};
        });
}

} // namespace DiarizationModels
