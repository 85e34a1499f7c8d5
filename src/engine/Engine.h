#pragma once

#include "engine/EngineError.h"
#include "core/TranscribeControl.h"
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
namespace Engine {

using Progress = std::function<void(double)>;

// 32-bit float samples for a recognition run.
std::vector<float> decodeTo16kMonoFloats(const QString &input, const TranscribeControlPtr &control = {});

// A new 16-bit WAV file `<temp>/<UUID>.wav`; the caller owns and removes it.
QString extractWav(const QString &from, const TranscribeControlPtr &control = {});

// Model check, decoding and recognition in one: the road of a transcription job.
TranscriptionResult transcribe(const QString &input, const QString &model, const QString &language,
                               const TranscribeControlPtr &control = {}, const Progress &progress = {});

// The first executable `ffmpeg` of the fixed search list, looked up anew each time.
std::optional<QString> ffmpegURL();

// --- Building blocks, public so that tests can reach them. ---

// Decodes the first audio stream to signed 16-bit little-endian PCM, 16 kHz, mono.
// "avf" for libavformat, which stands here where the platform media framework was.
QByteArray avfDecodePCM16(const QString &input, const TranscribeControlPtr &control);
// The same samples as floats (value / 32768), converted as they come.
std::vector<float> avfDecodeFloats(const QString &input, const TranscribeControlPtr &control);
void convertTo16kMonoWav(const QString &input, const QString &output, const TranscribeControlPtr &control);
void runProcess(const QString &executable, const QStringList &arguments, const TranscribeControlPtr &control,
                const std::function<EngineError(const QString &)> &failure);
QStringList ffmpegArguments(const QString &input, const QString &output);
QString temporaryWavPath();
extern const char *const formatMessage;

// Replaces the search list of ffmpegURL(); nullopt restores it. Tests only.
void setFfmpegCandidatesForTesting(std::optional<QStringList> candidates);

} // namespace Engine
