#pragma once

#include "core/CancelToken.h"
#include "core/UserError.h"

#include <QFuture>
#include <QString>
#include <QUrl>

#include <functional>

// The two model files of the diarisation program, fetched once from the sherpa-onnx
// release downloads into the models folder: the segmentation model comes as a bzip2 tar
// archive holding its folder, the embedding model as a plain file. The file system is
// the only state; each model is fetched by itself, so one left by an interrupted run is
// not fetched again.
namespace DiarizationModels {

struct Paths {
    QString seg;
    QString emb;
};

// A download or a move into the models folder failed; the text is the transfer's or
// the file system's own.
class TransferFailed : public UserError {
public:
    explicit TransferFailed(QString text, QString details = {}) : m_text(std::move(text)), m_details(std::move(details)) {}
    QString errorDescription() const override { return m_text; }
    QString details() const override { return m_details; }

private:
    QString m_text;
    QString m_details;
};

// The models folder, created on demand (a failure to create it is dropped).
QString dir();
QString segPath();
QString embPath();
// Both final files exist; their size and content play no part.
bool installed();

// The release host: the public one, or the scheme, host and port that the environment
// variable SAGWERK_SPEAKER_MODEL_HOST names. The paths stay the same on any host.
QUrl host();
QUrl segArchive();
QUrl embURL();

// Makes sure both files are there and gives their paths. Call it on the main thread; it
// returns at once and does its waiting elsewhere. `status` gets the one status text of
// a run that has to fetch something. A cancel through `control` stops a download under
// way, which then fails as a transfer error. Fails with TransferFailed or DiarizerError.
QFuture<Paths> ensure(const std::function<void(const QString &)> &status, const CancelTokenPtr &control = {});

// Unpacks a bzip2 tar archive into `into` with /usr/bin/tar; fails with DiarizerError
// holding tar's own message. Call it on a thread with an event loop.
QFuture<void> runTar(const QString &archive, const QString &into);

} // namespace DiarizationModels
