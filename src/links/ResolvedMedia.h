#pragma once

#include <QString>
#include <QUrl>

// A media file to download, and the display name its transcript gets.
struct ResolvedMedia {
    QUrl url;
    QString title;

    bool operator==(const ResolvedMedia &) const = default;
};
