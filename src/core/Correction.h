#pragma once

#include <QHashFunctions>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

// One find-and-replace rule of a transcript; removal goes by `id`. The field names are
// also the JSON keys.
struct Correction {
    QUuid id = QUuid::createUuid();
    QString from;
    QString to;
    bool caseSensitive = false;
    bool wholeWord = false;

    bool operator==(const Correction &) const = default;

    // `id` as upper-case hyphenated text.
    QJsonObject toJson() const;
    // All five keys are required with their types; otherwise none.
    static std::optional<Correction> fromJson(const QJsonValue &value);
};

size_t qHash(const Correction &correction, size_t seed = 0) noexcept;
