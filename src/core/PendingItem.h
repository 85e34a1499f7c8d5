#pragma once

#include <QString>
#include <QUuid>

#include <variant>

// The work staged for the user's go.
struct PendingItem {
    // A transcription of the file at `url` (a local path) under the display name `name`.
    struct File {
        QString url;
        QString name;
        bool operator==(const File &) const = default;
    };
    // Opens the recorder.
    struct Recording {
        bool operator==(const Recording &) const = default;
    };
    // Opens the live interview.
    struct Interview {
        bool operator==(const Interview &) const = default;
    };
    using Kind = std::variant<File, Recording, Interview>;

    QUuid id = QUuid::createUuid(); // fresh for each staging
    Kind kind;
};
