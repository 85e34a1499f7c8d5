#pragma once

#include "core/CancelToken.h"
#include "links/LinkError.h"
#include "links/ResolvedMedia.h"

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QUrl>
#include <optional>

// Turns a pasted link into one downloadable media file with a title: decided by the
// link's host first, then by what the server answers to a small probe. Everything here
// is a plain function without state. The ones that talk to a server return at once,
// and their futures end on the event loop of the calling thread (the main thread's),
// with one request after the other; they fail with LinkError. A cancel through
// their control, from any thread, ends the running request and fails them with
// Cancelled.
//
// All requests are plain GETs with the header `User-Agent: Sagwerk/1.0 (Linux)`; a
// request fails once its transfer has stalled for 30 seconds. Bodies are read up to
// 16 MiB: a longer answer counts with its first 16 MiB, which holds the first episode
// of any real feed, and an endless one cannot exhaust the memory.
namespace LinkResolver {

inline const QString spotifyDomain = QStringLiteral("spotify.com");
inline const QString applePodcastsHost = QStringLiteral("podcasts.apple.com");
inline const QString lookupHost = QStringLiteral("itunes.apple.com");
// The iTunes lookup service; tests give an address of their own.
inline const QUrl defaultLookupBase = QUrl(QStringLiteral("https://itunes.apple.com"));

inline const QByteArray userAgent = QByteArrayLiteral("Sagwerk/1.0 (Linux)");
inline constexpr int requestTimeoutMs = 30'000;
inline constexpr qint64 maxBodyBytes = 16 * 1024 * 1024;
// What the probe asks for and reads at most, whether or not the server honours Range.
inline constexpr qint64 probeBytes = 4096;

// The one entry: the user's text to a media file and its title.
QFuture<ResolvedMedia> resolve(const QString &text, const QUrl &lookupBase = defaultLookupBase,
                               const CancelTokenPtr &control = {});

// --- Steps of a resolution, public so that tests can reach them ---

struct Probe {
    QString mime; // lower-cased, without parameters; empty when the answer names none
    QByteArray body;
};
// One GET for the first 4 KiB. Any answer counts, whatever its HTTP status.
QFuture<Probe> probe(const QUrl &url, const CancelTokenPtr &control = {});
// One GET; a status outside 200 to 299 fails with `network`, "HTTP " and the status.
QFuture<QByteArray> get(const QUrl &url, const CancelTokenPtr &control = {});

QFuture<ResolvedMedia> resolveApple(const QUrl &url, const QUrl &lookupBase = defaultLookupBase,
                                    const CancelTokenPtr &control = {});
QFuture<ResolvedMedia> resolveFeed(const QUrl &url, const CancelTokenPtr &control = {});
// The feed a web page names in a link of type application/rss+xml, found by plain text
// search around that type.
QFuture<std::optional<QUrl>> discoverFeed(const QUrl &url, const CancelTokenPtr &control = {});
// The same search over a page already read from `url`.
std::optional<QUrl> feedLink(const QUrl &url, const QByteArray &body);

// The number of the first path component "id<digits>".
std::optional<qint64> appleCollectionId(const QUrl &url);
// The first query item named `key`, as a decimal integer with an optional sign.
std::optional<qint64> queryInt(const QUrl &url, const QString &key);
// A display name from the last path component, else the host, else "Podcast".
QString niceName(const QUrl &url);

} // namespace LinkResolver
