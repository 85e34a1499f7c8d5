#pragma once

#include "core/TranscribeControl.h"
#include "core/TranscriptionResult.h"

#include <QString>
#include <functional>
#include <vector>

// One in-process whisper.cpp run per call: load the model into a fresh context,
// recognise, read the result out, free the context. Nothing is kept between calls.
namespace WhisperEngine {

// One kept token of a segment, times in milliseconds.
struct TokenTuple {
    QString text;
    qint64 fromMs = 0;
    qint64 toMs = 0;
};

// Blocks for the whole run; `language` is an ISO code, "auto" or empty (meaning "auto").
TranscriptionResult transcribe(const std::vector<float> &samples, const QString &model, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress);

// Loads the library's backends and silences its log, once per process; everything that
// opens a model goes through it first.
void prepareLibrary();

// Worker threads: the performance cores of a hybrid CPU, else the online cores minus
// two, always within 2 to 8.
int threadCount();
int threadCount(const QString &performanceCpuList, int onlineCores);

// Words are runs of tokens that begin at a token with a leading blank.
QList<TranscriptWord> groupWords(const QList<TokenTuple> &tokens);

} // namespace WhisperEngine
