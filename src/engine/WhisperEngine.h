#pragma once

#include "core/TranscribeControl.h"
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
    // Throws EngineError: no model, or one the library cannot load.
    explicit LoadedModel(const QString &path);
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

// Blocks for the whole run; `language` is an ISO code, "auto" or empty (meaning "auto").
TranscriptionResult transcribe(const std::vector<float> &samples, const QString &model, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress);
TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress);

// A long recording is recognised in pieces of this length, so the library's own copies
// of the audio stay small; a run on a shorter one is a single call.
inline constexpr int kPieceSeconds = 300;
TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress,
                               int pieceSeconds);

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
