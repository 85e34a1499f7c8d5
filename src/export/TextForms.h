#pragma once

#include "core/TranscriptionResult.h"

// The plain-text and subtitle forms of a transcript, built from the raw segments.
namespace TextForms {

// Without timestamps the full text as it stands; with them one "[m:ss] text" line per
// segment, minutes running on past 59.
QString plainText(const TranscriptionResult &result, bool withTimestamps);

// SubRip: numbered blocks with "HH:MM:SS,mmm --> HH:MM:SS,mmm" stamps, one per segment,
// empty texts included.
QString srt(const TranscriptionResult &result);

QString minuteStamp(qint64 ms);
QString subtitleStamp(qint64 ms);

} // namespace TextForms
