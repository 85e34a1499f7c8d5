#pragma once

#include "core/CancelToken.h"

#include <QFuture>
#include <QString>
#include <QUrl>

// The voice-activity model (Silero, in whisper.cpp's ggml form) that recognition runs
// before the speech model, so that silence reaches no window and times follow the speech.
// It is fetched once into the models folder from where whisper.cpp's project publishes
// it. Recognition without it runs as before: every window is decoded, silence included.
namespace VadModel {

inline constexpr char kFileName[] = "ggml-silero-v6.2.0.bin";

// In the models folder; the file system is the only state.
QString path();
bool installed();

// The public host, or the scheme, host and port that SAGWERK_VAD_MODEL_HOST names; the
// path stays the same on any host.
QUrl host();
QUrl url();

// True where `head`, the first bytes of a file, can start a ggml model; a server's error
// page cannot.
bool looksLikeModel(const QByteArray &head);

// Makes sure the model is there. Call it on the main thread; it returns at once. The
// future gives the path, or an empty text where the model could not be had (no network,
// a refusal, a cancel through `control`): recognition then goes on without it, and the
// next run tries again. It never fails.
QFuture<QString> ensure(const CancelTokenPtr &control = {});

} // namespace VadModel
