#pragma once

#include "core/HistoryItem.h"

// Generated transcripts of German-looking speech with word timings, the same on every run.
namespace Transcripts {

// `segments` segments of `wordsPerSegment` words each, about 360 ms a word, with a short
// pause between segments.
TranscriptionResult result(int segments, int wordsPerSegment);

// An item in memory (no bundle) around `result`.
HistoryItem item(const TranscriptionResult &result, const QString &fileName = QStringLiteral("Interview.m4a"));

} // namespace Transcripts
