#pragma once

#include "links/ResolvedMedia.h"

#include <QByteArray>
#include <QString>
#include <optional>

// Reads the first episode out of an RSS or Atom document with an event-driven reader
// whose namespace processing is off, so that `itunes:title` is not `title`. Only the
// first `item` or `entry` counts, and the reading stops at its end: the size of the
// rest of the feed costs nothing.
class FeedParser {
public:
    // The first item's enclosure with the item's title, or none when the first item
    // has no usable enclosure. A document that breaks off or turns malformed counts
    // up to that point.
    static std::optional<ResolvedMedia> firstEpisode(const QByteArray &feed);

private:
    void startElement(const QString &name, const QString &url, bool hasUrl);
    // False once the first item is over.
    bool endElement(const QString &name);

    int itemCount = 0;
    bool inFirstItem = false;
    bool inTitle = false;
    QString title;
    std::optional<QString> enclosure;
};
