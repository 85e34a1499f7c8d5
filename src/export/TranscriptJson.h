#pragma once

#include "core/Correction.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// The whole transcript as one JSON document for other tools to read; its form is
// described, with a schema, in docs/transcript-json.md.
namespace TranscriptJson {

struct Word {
    QString text;
    qint64 startMs = 0;
    qint64 endMs = 0;
    std::optional<QString> speaker;
};

struct Segment {
    qint64 startMs = 0;
    qint64 endMs = 0;
    QString text;         // corrections applied
    QString originalText; // as recognised
    std::optional<QString> speaker; // of its first word
    QList<Word> words;    // as recognised, each with its own speaker: a segment may hold two
};

struct Document {
    QString title;
    QDateTime createdAt;
    QString language;
    QString model; // empty where not known
    double processingSeconds = 0;
    QString text;  // the plain text, corrections applied
    QList<Segment> segments;
    QList<Correction> corrections;
};

constexpr int formatVersion = 1;

QByteArray encode(const Document &document);

} // namespace TranscriptJson
