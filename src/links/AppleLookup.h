#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

// The reply of the iTunes lookup service, read strictly: `results` must be a list, and
// a known key with a value of the wrong type makes the whole reply unreadable. Other
// keys are ignored.
struct AppleLookup {
    struct Item {
        std::optional<QString> kind;
        std::optional<qint64> trackId;
        std::optional<QString> trackName;
        std::optional<QString> episodeUrl;
        std::optional<QString> feedUrl;
    };
    QList<Item> results;

    static std::optional<AppleLookup> decode(const QByteArray &json);
};
