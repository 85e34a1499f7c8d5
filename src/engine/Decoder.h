#pragma once

#include "engine/EngineError.h"
#include "core/CancelToken.h"
#include "core/TranscriptionResult.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

// Brings any audio or video file to 16 kHz mono: in process through the FFmpeg
// libraries first, through an `ffmpeg` child second. All operations block and run
// off the interface thread; a control makes them cancellable.
namespace Decoder {

// 32-bit float samples for a recognition run.
std::vector<float> decodeTo16kMonoFloats(const QString &input, const CancelTokenPtr &control = {});

// A new 16-bit WAV file `<temp>/<UUID>.wav`; the caller owns and removes it.
QString extractWav(const QString &from, const CancelTokenPtr &control = {});

// The first executable `ffmpeg` of the fixed search list, looked up anew each time.
std::optional<QString> ffmpegPath();

// --- Building blocks, public so that tests can reach them. ---

// Decodes the first audio stream to signed 16-bit little-endian PCM, 16 kHz, mono.
// In process, through the FFmpeg libraries (libavformat, libavcodec, libswresample).
QByteArray libavDecodePCM16(const QString &input, const CancelTokenPtr &control);
// The same samples as floats (value / 32768), converted as they come.
std::vector<float> libavDecodeFloats(const QString &input, const CancelTokenPtr &control);
void convertTo16kMonoWav(const QString &input, const QString &output, const CancelTokenPtr &control);
void runProcess(const QString &executable, const QStringList &arguments, const CancelTokenPtr &control,
                const std::function<EngineError(const QString &)> &failure);
QStringList ffmpegArguments(const QString &input, const QString &output);
QString temporaryWavPath();
extern const char *const formatMessage;

// Replaces the search list of ffmpegPath(); nullopt restores it. Tests only.
void setFfmpegCandidatesForTesting(std::optional<QStringList> candidates);

} // namespace Decoder
