#pragma once

#include "core/TranscribeControl.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

// The one blocking GET of the link import. It waits in an event loop of its own, so it
// may run on any thread that is free to wait, a pool thread above all. Such a thread
// gets no events any more once the application object is going away, so whoever
// starts a fetch must be able to stop it before then: through `control`.
namespace Http {

struct Answer {
    std::optional<int> status; // none where the answer was no HTTP answer (a file: URL)
    QString mime;              // lower-cased media type without parameters; may be empty
    QByteArray body;           // at most the limit asked for
};

// Reads at most `limit` bytes of the body and then ends the transfer; `range`, when
// given, goes out as the Range header. A failed transfer throws PodcastError::network
// with the transfer layer's text; an HTTP error status is an answer like any other.
// A cancel through `control` ends the transfer within a tenth of a second and throws
// EngineError::cancelled().
Answer fetch(const QUrl &url, qint64 limit, const QByteArray &range = {}, const TranscribeControlPtr &control = {});

// The media type of a Content-Type value: "Text/HTML; charset=utf-8" gives "text/html".
QString mimeType(const QString &contentType);

} // namespace Http
