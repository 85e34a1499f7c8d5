#pragma once

#include "core/HistoryItem.h"
#include "core/TranscriptLine.h"
#include "export/TextForms.h"
#include "export/TranscriptJson.h"
#include "review/SpeakerTurn.h"

#include <QList>
#include <QString>

#include <optional>

// What the result screen shows of an item and hands out, without its controls: the
// lines of the text view, the key that decides when they are laid out anew, the text of
// copy and export, and the short texts of its header.
//
// A view is a number: -1 the speaker view, 0 the original, 1 or more the refined text of
// that level.
namespace TranscriptLines {

constexpr qint64 speakerView = -1;
constexpr qint64 originalView = 0;

// What fills the text area.
enum class Surface {
    Speaker,  // the text view over the speaker lines
    Level,    // the refined text as plain, selectable text
    Original, // the text view over the original lines
};

// The level of an AI view, or none for the speaker and original views.
std::optional<qint64> viewingLevel(qint64 selectedView);

// The views the picker offers, in its order: the original, the speakers when the item
// has a speaker text, then each refinement level ascending.
QList<qint64> views(const HistoryItem &item);

Surface surface(const HistoryItem &item, qint64 selectedView);

// One line per segment; a segment without words gets one word of its own text and
// times, so that the whole line can light up.
QList<TranscriptLine> originalLines(const TranscriptionResult &result);

// Per turn: its label (or the name given to it) as a header line with the turn's time,
// then its segments with their own times and words; a turn without segments shows its
// own text untimed.
QList<TranscriptLine> speakerLines(const QList<SpeakerTurn> &turns, const QMap<QString, QString> &names = {});

// The speaker text with the names the user gave; none without a speaker text.
std::optional<QString> namedSpeakerText(const HistoryItem &item);

// The labels of the speaker text as they stand in it, in order of first appearance.
QStringList speakerLabels(const HistoryItem &item);

// The label under which `shown` (a label or a given name) is stored: every original label
// that is shown as `shown`, so that renaming it again renames all of them.
QStringList labelsShownAs(const HistoryItem &item, const QString &shown);

// Changes when, and only when, the laid-out original text would change; the playing
// position and the selection are no part of it.
QString rebuildKey(const HistoryItem &item, bool showTimestamps);
// The same for the speaker lines.
QString speakerRebuildKey(const HistoryItem &item, bool showTimestamps);

// The text of copy and of the text, PDF and Word files, names and corrections applied.
// In the speaker view the time marks stand in front of each turn that has a time.
QString currentText(const HistoryItem &item, qint64 selectedView, bool showTimestamps);

// The subtitles: one cue per segment with the corrections applied to its text; with
// `withSpeakers`, each segment of a named turn carries that speaker.
QList<Cue> subtitleCues(const HistoryItem &item, bool withSpeakers);

// The whole transcript for other tools: segments, words, speakers, corrections.
TranscriptJson::Document transcriptDocument(const HistoryItem &item);

// The raw segment texts joined with one blank: what the correction sheet searches.
QString searchBase(const HistoryItem &item);

// "date  ·  n Segmente  ·  in x.y s  ·  language", in the interface language
QString metaString(const HistoryItem &item);

// The item's audio file if it exists now.
std::optional<QString> audioURL(const HistoryItem &item);

// The file name without extension, with "-sprecher" or "-stufeN" for those views.
QString exportBase(const HistoryItem &item, qint64 selectedView);

// The player's position as whole milliseconds, rounded.
qint64 currentMs(double seconds);

} // namespace TranscriptLines
