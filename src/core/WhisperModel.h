#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

// One speech model the application offers. `note` holds the German text, which is
// also its translation key: views translate it when they show it.
struct WhisperModel {
    QString id;
    QString name;
    QString fileName;
    int approxSizeMB = 0;
    QUrl url;
    QString note;

    bool operator==(const WhisperModel &) const = default;

    // The fixed catalogue, in the order the interface lists it; entry 1 is the fallback
    // choice of the settings.
    static const QList<WhisperModel> &all();
    static std::optional<WhisperModel> withId(const QString &id);

    // The file-download address of the public whisper.cpp model repository.
    static QUrl repositoryBase();
    // `name` under a repository base that ends in a slash.
    static QUrl fileURL(const QUrl &base, const QString &name);
};
