#pragma once

#include "core/Correction.h"
#include "review/Corrections.h"
#include "core/TranscriptLine.h"

#include <QList>
#include <QString>

#include <optional>

// The text of the transcript view and what is clickable in it, without any display:
// which text stands where, in which style, and which positions seek where. Positions
// count UTF-16 units of the whole text, lines joined with "\n".
namespace TranscriptLayout {

// A seekable position: clicking at or after `loc` (up to the next anchor) seeks to `ms`.
struct Anchor {
    qsizetype loc = 0;
    qint64 ms = 0;
    bool operator==(const Anchor &) const = default;
};

// A located word, lit by the word cursor while its time runs.
struct WordAnchor {
    qsizetype loc = 0;
    qsizetype length = 0;
    qint64 ms = 0;
    bool operator==(const WordAnchor &) const = default;
};

enum class Style {
    Time,   // the time column of a body line: tab, time, tab
    Body,   // the words of a body line
    Header, // a header line, uncorrected
};

// A stretch of text in one style.
struct Run {
    qsizetype start = 0;
    qsizetype length = 0;
    Style style = Style::Body;
};

struct Built {
    QString text;
    // One entry per line: whether its paragraph takes the header spacing. The first
    // line never does, so that no space opens above it.
    QList<bool> headerParagraphs;
    QList<Run> runs;                       // in text order, covering every line's text
    QList<Corrections::Range> replaced;    // inserted replacements, ascending
    QList<Anchor> anchors;                 // sorted by loc; a line's before its words'
    QList<WordAnchor> words;               // in document order
};

// Lays the lines out: with `showTime` every body line starts with "\t" + m:ss + "\t";
// corrections apply to body text only; every line with a time and every word found in
// its corrected text becomes an anchor.
Built build(const QList<TranscriptLine> &lines, bool showTime, const QList<Correction> &corrections);

// The index of the word to light at `currentMs`: the last word reached before the first
// word that starts later. None while a stopped player stands at the very start, and none
// before the first word.
std::optional<qsizetype> wordAt(const QList<WordAnchor> &words, qint64 currentMs, bool isPlaying);

struct Seek {
    qint64 ms = 0;
    bool exact = false;
    bool operator==(const Seek &) const = default;
};

// Where a selection made with the mouse seeks: the last anchor at or before its start,
// exactly for a plain click, not exactly for a real selection. None before the first
// anchor.
std::optional<Seek> seekFor(const QList<Anchor> &anchors, qsizetype location, qsizetype length);

} // namespace TranscriptLayout
