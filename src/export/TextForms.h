#pragma once

#include "core/TranscriptionResult.h"

#include <optional>

// One subtitle: a stretch of time, its text, and who speaks it where that is known.
struct Cue {
    qint64 startMs = 0;
    qint64 endMs = 0;
    QString text;
    std::optional<QString> speaker;
};

// The plain-text and subtitle forms of a transcript, built from the raw segments.
namespace TextForms {

// Without timestamps the full text as it stands; with them one "[m:ss] text" line per
// segment, minutes running on past 59.
QString plainText(const TranscriptionResult &result, bool withTimestamps);

// SubRip: numbered blocks with "HH:MM:SS,mmm --> HH:MM:SS,mmm" stamps, one per cue,
// empty texts included. SubRip has no voices: a speaker goes in front as "Name: ".
QString srt(const QList<Cue> &cues);

// WebVTT: the header, then one numbered cue per cue with "HH:MM:SS.mmm" stamps; a
// speaker becomes a voice tag, "<v Name>". Text is escaped, so it never reads as markup.
QString vtt(const QList<Cue> &cues);

// One cue per segment, text as it stands and no speaker.
QList<Cue> cues(const TranscriptionResult &result);

QString minuteStamp(qint64 ms);
QString subtitleStamp(qint64 ms);
QString vttStamp(qint64 ms);

} // namespace TextForms
