#pragma once

#include "core/AIModel.h"
#include "core/HistoryItem.h"
#include "core/TranscribeControl.h"
#include "core/TranscriptionResult.h"
#include "core/WhisperModel.h"

#include <QFuture>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

// What the command line does beside the application's own roads: stored transcripts read
// whole, stored keys, recognition without a bundle, model imports.
namespace Scripted {

// The transcript in `folder`, read whole; none when its document does not read.
std::optional<HistoryItem> read(const QString &folder);
// Every stored transcript, whole, newest first.
QList<HistoryItem> readAll();

// The stored key of `provider`; none when the key store holds none.
QFuture<std::optional<QString>> storedKey(AIProvider provider);

// Which backend and device recognise, and with how many threads. Loads the library's
// backends: never on the main thread.
QString deviceReport();
// Fetches the voice-activity model on first use, as the application's jobs do. Call it on
// the main thread; it returns at once and never fails: recognition runs without it.
QFuture<void> prepareRecognition(const TranscribeControlPtr &control);
// Recognises `path` with the model file at `modelPath`; blocks. Throws UserError.
TranscriptionResult transcribe(const QString &path, const QString &modelPath, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress);

struct ImportedModel {
    WhisperModel model;
    QString path;
};
// Installs a model file or folder as the catalogue model of its size into `modelsDir`;
// blocks. Throws UserError.
ImportedModel importModel(const QString &source, const QString &modelsDir, const TranscribeControlPtr &control,
                          const std::function<void(double)> &progress);

} // namespace Scripted
