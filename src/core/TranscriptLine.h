#pragma once

#include "core/TranscriptionResult.h"

#include <QList>
#include <QString>

#include <optional>

// One display line of the transcript text view: a body line with its timed words, or a
// header such as a speaker label. `text` is raw, before corrections.
struct TranscriptLine {
    std::optional<qint64> timeMs;
    QString text;
    QList<TranscriptWord> words;
    bool isHeader = false;
};
