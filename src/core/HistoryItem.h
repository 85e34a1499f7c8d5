#pragma once

#include "core/TranscriptionResult.h"
#include "core/Correction.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

// One transcription in the history. A value: a change replaces the element. Local files
// are held as absolute paths; an item without `bundlePath` lives in memory only.
struct HistoryItem {
    QString id; // the bundle folder's path, or a UUID text without a bundle
    QString fileName;
    QDateTime date;
    TranscriptionResult result;
    std::optional<QString> audioPath;
    std::optional<QString> bundlePath;

    QMap<qint64, QString> refined; // the AI refinement's text by level
    std::optional<qint64> refiningLevel; // the refinement running now
    std::optional<QString> speakerText;
    bool speakerBusy = false;
    QList<Correction> corrections;
    // Names the user gave the speakers, by the label the speaker text carries ("Sprecher 1").
    // Laid over the speaker text wherever it is shown or handed out, like the corrections.
    QMap<QString, QString> speakerNames;
    // Read from the list at start without its segments; they are read when the item is
    // opened. Everything else is there.
    bool segmentsPending = false;
};
