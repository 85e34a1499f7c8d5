#pragma once

#include "core/Correction.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

// One word as stored in a bundle document.
struct StoredWord {
    QString text;
    qint64 startMs = 0;
    qint64 endMs = 0;

    bool operator==(const StoredWord &) const = default;
};

// What identifies the bytes a bundle was made from, so that a batch can tell a source it
// has transcribed before under any name: the size and the SHA-256 of the bytes, in hex.
struct SourceContent {
    qint64 size = 0;
    QString sha256;

    bool operator==(const SourceContent &) const = default;
};

// One segment as stored; it has no id. Older documents lack `words`.
struct StoredSegment {
    qint64 startMs = 0;
    qint64 endMs = 0;
    QString text;
    std::optional<QList<StoredWord>> words;

    bool operator==(const StoredSegment &) const = default;
};

// The document `sagwerk.json` of a bundle folder. Only `words`, `speakerText`,
// `corrections`, `sourceContent`, `model` and `speakerNames` may be missing; any other
// missing or mistyped key rejects the whole document. `sourceContent` is read leniently:
// older documents lack it, and one that cannot be read only means the source is not
// recognised again. Keys beyond these are not kept.
struct BundleData {
    QString displayName;
    QDateTime createdAt;
    QString language;
    double processingSeconds = 0;
    QString audioFileName;
    QList<StoredSegment> segments;
    QString fullText;
    // Refined texts under the decimal form of their level; other keys are kept as they are.
    QMap<QString, QString> refined; // stored as "smoothed"
    std::optional<QString> speakerText;
    std::optional<QList<Correction>> corrections;
    std::optional<SourceContent> sourceContent;
    std::optional<QString> model;
    // The names given to speakers, by their label.
    std::optional<QMap<QString, QString>> speakerNames;

    bool operator==(const BundleData &) const = default;

    // The document's text; none when a value has no JSON form (an invalid date, a
    // number that is not finite).
    std::optional<QByteArray> encode() const;
    static std::optional<BundleData> decode(const QByteArray &bytes);
    // The document without its segments, which are most of its bytes: they are stepped
    // over, not parsed, and come back empty. The rest is read and checked as `decode`
    // does; a document whose JSON does not hold together gives none.
    static std::optional<BundleData> decodeSummary(const QByteArray &bytes);
};

// A bundle as read from disk: `id` is the folder's path, `url` the folder.
struct LoadedBundle {
    QString id;
    QString url;
    BundleData data;
};
