#pragma once

#include "core/TranscribeControl.h"
#include "core/TranscriptionResult.h"
#include "core/SpeakerSpan.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// Who speaks when. The separation itself runs in the child program `sherpa-diarize`; this
// namespace starts it, reads its progress and result, and joins the result with the
// timed segments into the speaker text.
namespace Diarizer {

// One line per speaker turn, each opened by "Sprecher N: ", numbered by first
// appearance. Each word goes to the speaker at its midpoint: a segment that holds a
// change of speaker is cut there (splitAtSpeakerChanges); a segment without words goes
// by its midpoint. With fewer than two speakers, or without segments or spans, the plain
// text: the segment texts joined with one blank.
QString speakerLabeledText(const QList<TranscriptSegment> &segments, const QList<SpeakerSpan> &spans);

// The segments with each one whose words belong to more than one speaker cut into runs
// of one speaker; a cut piece's text is its words joined by blanks, its times those of its
// words (the outer pieces keep the segment's edges). Unchanged without spans.
QList<TranscriptSegment> splitAtSpeakerChanges(const QList<TranscriptSegment> &segments,
                                               const QList<SpeakerSpan> &spans);

// The program named by SAGWERK_DIARIZE_PROGRAM when that is set; else beside the
// application's binary, else in ../lib/sagwerk/ from there (the installed layout and the
// build tree), else under the developer's vendor folder in the home folder; only an
// executable file counts.
std::optional<QString> cliURL();

// Threads for the program: the performance cores of a hybrid CPU, else the online
// logical cores, within 2 to 8.
int performanceCoreCount();
int performanceCoreCount(std::optional<int> performanceCores, int activeProcessors);

// The clustering threshold of every separation, so that a live interview and a stored
// item split the same voices alike.
constexpr double defaultThreshold = 0.9;

// Runs the program on a 16 kHz mono WAV file; blocks for as long as it lives, so never
// on the main thread. `progress` (0 to 1) is called on this thread. A cancel through
// `control` terminates the child. Throws DiarizerError.
QList<SpeakerSpan> diarize(const QString &wav, const QString &segModel, const QString &embModel, double threshold,
                           int numClusters, const TranscribeControlPtr &control = {},
                           const std::function<void(double)> &progress = {});

// --- Building blocks, public so that tests can reach them. ---

// The program's arguments, in the order it expects them.
QStringList arguments(const QString &wav, const QString &segModel, const QString &embModel, double threshold,
                      int numClusters, int threads);
// "start -- end speaker_N" lines of the output, sorted by start (stable); anything else
// is skipped.
QList<SpeakerSpan> parseResult(const QByteArray &output);
// The fractions of the "progress N%" lines in one chunk of the error stream, in order.
QList<double> parseProgress(const QByteArray &chunk);

} // namespace Diarizer
