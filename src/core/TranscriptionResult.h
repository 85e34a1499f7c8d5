#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <QJsonObject>

// One timed word: its text carries its punctuation, never surrounding whitespace.
struct TranscriptWord {
    QString text;
    qint64 startMs = 0;
    qint64 endMs = 0;

    bool operator==(const TranscriptWord &) const = default;
};

// One timed stretch of speech as the speech library cut it. `id` is fresh at
// creation and never stored.
struct TranscriptSegment {
    QUuid id = QUuid::createUuid();
    qint64 startMs = 0;
    qint64 endMs = 0;
    QString text;
    QList<TranscriptWord> words;
};

struct TranscriptionResult {
    QString fullText;
    QList<TranscriptSegment> segments;
    QString language;
    double processingSeconds = 0;
    // The name of the speech model that heard it; empty where that is not known.
    QString model;

    // Keys are the field names; a segment's id is written in its upper-case text form.
    QJsonObject toJson() const;
};

// The upper-case, brace-less text form used wherever a UUID is written.
QString uuidText(const QUuid &id);
