#pragma once

#include "core/CancelToken.h"
#include "core/TranscriptionResult.h"

#include <QString>
#include <functional>
#include <optional>
#include <vector>

struct whisper_context;

// In-process whisper.cpp runs. A job loads the model into a fresh context, recognises,
// reads the result out and frees the context; a caller with many short runs (the live
// interview) keeps a loaded model instead.
namespace WhisperEngine {

// A model loaded into a whisper.cpp context, for one run at a time.
class LoadedModel {
public:
    // Throws EngineError: no model, or one the library cannot load. `alignmentHeads`, a
    // whisper_alignment_heads_preset other than none, turns on the library's token times
    // by dynamic time warping over those heads.
    explicit LoadedModel(const QString &path, int alignmentHeads = 0);
    ~LoadedModel();
    LoadedModel(const LoadedModel &) = delete;
    LoadedModel &operator=(const LoadedModel &) = delete;

    whisper_context *context() const { return m_ctx; }

private:
    whisper_context *m_ctx = nullptr;
};

// One kept token of a segment, times in milliseconds.
struct TokenTuple {
    QString text;
    qint64 fromMs = 0;
    qint64 toMs = 0;
};

// How a run decodes. The defaults are the application's; the others exist to be measured
// against them.
struct Setup {
    // The voice-activity stage, where its model is installed (VadModel): only speech
    // reaches the speech model, and the library maps the times back to the recording.
    bool vad = true;
    // 1: greedy decoding; more: beam search with that many beams.
    int beamSize = 1;
    // A window whose no-speech probability passes this, with a low log probability, is
    // dropped; the library's default.
    float noSpeechThold = 0.6f;
    // Word times from the alignment heads (the model must be loaded with them).
    bool dtw = false;
};

// Blocks for the whole run; `language` is an ISO code, "auto" or empty (meaning "auto").
TranscriptionResult transcribe(const std::vector<float> &samples, const QString &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress);
TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress);

// The road of a transcription job: the model checked, the file decoded and recognised.
TranscriptionResult transcribeFile(const QString &input, const QString &model, const QString &language,
                                   const CancelTokenPtr &control = {},
                                   const std::function<void(double)> &progress = {});

// A long recording is recognised in pieces of this length, so the library's own copies
// of the audio stay small; a run on a shorter one is a single call.
inline constexpr int kPieceSeconds = 300;
TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress,
                               int pieceSeconds, const Setup &setup = {});

// True when no stretch of the samples is loud enough to hold speech (digital silence, a
// muted line): recognition then has nothing to hear and is not asked, since the model
// writes sentences into silence.
bool isSilent(const std::vector<float> &samples, size_t from = 0, size_t count = size_t(-1));

// Loads the library's backends and silences its log, once per process; everything that
// opens a model goes through it first.
void prepareLibrary();

// The device a backend offers, as the library names it.
struct Device {
    QString backend; // "Vulkan", "CPU"
    QString name;    // "NVIDIA GeForce RTX 4070", "llvmpipe (LLVM 19.1.7, 256 bits)"
};

// The graphics device recognition runs on, chosen as whisper.cpp chooses it: the first
// GPU that a loaded backend offers. Nothing when recognition runs on the CPU. The first
// call loads the backends, which can take a moment: not for the GUI thread.
std::optional<Device> gpuDevice();
// The processor device, for reports.
Device cpuDevice();

// Worker threads, unless set: the performance cores of a hybrid CPU, else the online cores minus
// two, always within 2 to 8.
int threadCount();
// Replaces what threadCount() gives for every run of this process (at least 1), so that
// runs side by side share the cores; none restores it.
void setThreadCount(std::optional<int> threads);
int threadCount(const QString &performanceCpuList, int onlineCores);

// Words are runs of tokens that begin at a token with a leading blank.
QList<TranscriptWord> groupWords(const QList<TokenTuple> &tokens);

} // namespace WhisperEngine
