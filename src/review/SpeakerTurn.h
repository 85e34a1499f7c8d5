#pragma once

#include "core/TranscriptionResult.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>
#include <utility>

// One line of a speaker text matched back to the timed segments, so that the speaker view
// can jump to the audio and follow the playing word. The text may have been rewritten by
// an AI model, so the matching goes by the first words of each line, forward only, and
// never by time.
struct SpeakerTurn {
    qint64 id = 0; // index of the line, counting empty lines
    std::optional<qint64> ms; // start of the anchor segment; none without anchor
    QString text; // the line, blanks trimmed, label included
    QList<TranscriptWord> words; // the words of `segments`
    std::optional<QString> label;
    QList<TranscriptSegment> segments; // from the anchor up to the next anchor

    // The turns of `text`; empty lines give none. Pure.
    static QList<SpeakerTurn> build(const QString &text, const QList<TranscriptSegment> &segments);

    // A label is what stands in front of the first colon, if that is at most 40 characters
    // and 5 words; the content is the rest behind it, blanks trimmed. Without a label the
    // content is the line.
    static std::pair<std::optional<QString>, QString> splitLabel(const QString &line);

    // `text` with every line label that `names` holds replaced by its name; the rest of
    // each line stays as it is.
    static QString renamed(const QString &text, const QMap<QString, QString> &names);

    // Lower-cased runs of letters, marks and digits; everything else separates.
    static QStringList normalisedWords(const QString &text);
};
