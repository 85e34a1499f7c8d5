#include "engine/VadModel.h"

#include "core/Network.h"

#include <QDir>
#include <QFile>
#include <QPromise>
#include <QStandardPaths>
#include <QtConcurrent/QtConcurrentRun>

namespace VadModel {

namespace {

const char sourcePath[] = "/ggml-org/whisper-vad/resolve/main/ggml-silero-v6.2.0.bin";
const char publicHost[] = "https://huggingface.co";

// The model is under a megabyte; anything much larger is not it.
constexpr qint64 kMaxBytes = 16 * 1024 * 1024;

// Moves a finished download into place; off the main thread, since the temporary folder
// may lie on another file system and the move is then a copy. A model is never seen half
// written: it is copied beside its place and renamed there.
QString install(const QString &temporary)
{
    QFile file(temporary);
    QByteArray head;
    if (file.open(QIODevice::ReadOnly))
        head = file.read(4);
    file.close();
    if (!looksLikeModel(head)) {
        QFile::remove(temporary);
        return {};
    }
    const QString target = path();
    QDir().mkpath(QFileInfo(target).absolutePath());
    const QString beside = target + QStringLiteral(".part");
    QFile::remove(beside);
    const bool placed = QFile::rename(temporary, beside) || QFile::copy(temporary, beside);
    QFile::remove(temporary);
    if (!placed || !QFile::rename(beside, target)) {
        QFile::remove(beside);
        return QFile::exists(target) ? target : QString();
    }
    return target;
}

} // namespace

QString path()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk/models/") +
           QLatin1String(kFileName);
}

bool installed()
{
    return QFile::exists(path());
}

QUrl host()
{
    const QString chosen = qEnvironmentVariable("SAGWERK_VAD_MODEL_HOST");
    QUrl url(chosen.isEmpty() ? QString::fromLatin1(publicHost) : chosen);
    url.setPath({});
    url.setQuery(QString());
    url.setFragment(QString());
    return url;
}

QUrl url()
{
    QUrl u = host();
    u.setPath(QString::fromLatin1(sourcePath));
    return u;
}

bool looksLikeModel(const QByteArray &head)
{
    // GGML_FILE_MAGIC, written as a little-endian 32-bit number.
    return head.startsWith(QByteArrayLiteral("lmgg"));
}

QFuture<QString> ensure(const CancelTokenPtr &control)
{
    if (installed())
        return QtFuture::makeReadyValueFuture(path());
    Network::Request request;
    request.url = url();
    request.control = control;
    request.maxBytes = kMaxBytes;
    request.stallTimeoutMs = 30000;
    auto promise = std::make_shared<QPromise<QString>>();
    promise->start();
    // Handed the whole transfer, so that a failed or cancelled one ends the wait too.
    Network::download(request).then([promise](const QFuture<Network::Response> &transfer) {
        const auto give = [promise](const QString &placed) {
            promise->addResult(placed);
            promise->finish();
        };
        if (transfer.isCanceled() || transfer.resultCount() == 0)
            return give({});
        const Network::Response response = transfer.result();
        if (response.status && *response.status != 200) {
            QFile::remove(response.file);
            return give({});
        }
        QtConcurrent::run(install, response.file).then([give](const QString &placed) { give(placed); });
    });
    return promise->future();
}

} // namespace VadModel
