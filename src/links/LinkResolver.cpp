#include "links/LinkResolver.h"
#include "core/Tr.h"

#include "core/FileNames.h"
#include "core/Network.h"
#include "core/Text.h"
#include "links/AppleLookup.h"
#include "links/FeedParser.h"
#include "links/WebURL.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <QUrlQuery>

namespace LinkResolver {

namespace {

template <typename T> QFuture<T> failure(const LinkError &error)
{
    return QtFuture::makeExceptionalFuture<T>(std::make_exception_ptr(error));
}

QFuture<ResolvedMedia> ready(const QUrl &url, const QString &title)
{
    return QtFuture::makeReadyValueFuture(ResolvedMedia{url, title});
}

// One GET of at most `limit` bytes of the body; a failed transfer fails with
// `network` and the transfer's text, an HTTP error status is an answer like any other.
QFuture<Network::Response> fetch(const QUrl &url, qint64 limit, const QByteArray &range,
                                 const CancelTokenPtr &control)
{
    Network::Request request;
    request.url = url;
    request.headers = {{QByteArrayLiteral("User-Agent"), userAgent}};
    if (!range.isEmpty())
        request.headers.append({QByteArrayLiteral("Range"), range});
    request.stallTimeoutMs = requestTimeoutMs;
    request.readLimit = limit;
    request.control = control;
    return Network::fetch(request).onFailed([](const Network::Error &error) -> Network::Response {
        throw LinkError::network(error.errorDescription());
    });
}

// Strict UTF-8: a text that ends inside a character, or holds a byte that belongs to
// none, is no text at all.
std::optional<QString> utf8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

// A decimal integer with an optional sign and nothing else: no blanks, no "0x".
std::optional<qint64> decimal(QStringView text)
{
    QStringView digits = text;
    if (digits.startsWith(u'+') || digits.startsWith(u'-'))
        digits = digits.mid(1);
    if (digits.isEmpty())
        return std::nullopt;
    for (QChar c : digits) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
    }
    bool ok = false;
    const qint64 value = text.toLongLong(&ok, 10);
    return ok ? std::optional<qint64>(value) : std::nullopt;
}

QUrl lookupURL(const QUrl &base, qint64 id)
{
    QUrl url = base;
    QString path = base.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    url.setPath(path + QStringLiteral("/lookup"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("id"), QString::number(id));
    query.addQueryItem(QStringLiteral("media"), QStringLiteral("podcast"));
    query.addQueryItem(QStringLiteral("entity"), QStringLiteral("podcastEpisode"));
    query.addQueryItem(QStringLiteral("limit"), QStringLiteral("200"));
    url.setQuery(query);
    return url;
}

// A percent-encoded text decoded, or nothing when an escape is malformed or the bytes
// are no UTF-8.
std::optional<QString> percentDecoded(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes.at(i) != '%')
            continue;
        if (i + 2 >= bytes.size() || !isxdigit(uchar(bytes.at(i + 1))) || !isxdigit(uchar(bytes.at(i + 2))))
            return std::nullopt;
    }
    return utf8(QByteArray::fromPercentEncoding(bytes));
}

} // namespace

QFuture<ResolvedMedia> resolve(const QString &text, const QUrl &lookupBase, const CancelTokenPtr &control)
{
    QString link = text.trimmed();
    if (link.isEmpty())
        return failure<ResolvedMedia>(LinkError::invalidURL());
    if (!link.toLower().startsWith(QLatin1String("http")))
        link.prepend(QStringLiteral("https://"));
    const QUrl url(link);
    if (!url.isValid() || url.host().isEmpty())
        return failure<ResolvedMedia>(LinkError::invalidURL());

    const QString host = url.host().toLower();
    // Spotify serves no audio to download; asking it would only cost time.
    if (host.contains(spotifyDomain))
        return failure<ResolvedMedia>(LinkError::spotify());
    if (host.contains(applePodcastsHost) || host.contains(lookupHost))
        return resolveApple(url, lookupBase, control);

    return probe(url, control)
        .then([url, control](const Probe &answer) -> QFuture<ResolvedMedia> {
            const QString &mime = answer.mime;
            const QString head = utf8(answer.body.left(400)).value_or(QString()).toLower();

            if (mime.startsWith(QLatin1String("audio/")) || mime.startsWith(QLatin1String("video/")))
                return ready(url, niceName(url));
            // An XHTML page, or any page that opens with an XML declaration, is taken for a feed.
            if (mime.contains(QLatin1String("xml")) || mime.contains(QLatin1String("rss"))
                || head.contains(QLatin1String("<rss")) || head.contains(QLatin1String("<feed"))
                || head.contains(QLatin1String("<?xml")))
                return resolveFeed(url, control);
            if (mime.contains(QLatin1String("html")) || head.contains(QLatin1String("<html"))) {
                return discoverFeed(url, control)
                    .then([control](const std::optional<QUrl> &feed) {
                        if (!feed)
                            throw LinkError::unsupported();
                        return resolveFeed(*feed, control);
                    })
                    .unwrap();
            }
            // Whatever else answers is taken for the media file itself.
            return ready(url, niceName(url));
        })
        .unwrap();
}

QFuture<Probe> probe(const QUrl &url, const CancelTokenPtr &control)
{
    return fetch(url, probeBytes, QByteArrayLiteral("bytes=0-4095"), control).then([](const Network::Response &answer) {
        return Probe{answer.mimeType, answer.body};
    });
}

QFuture<QByteArray> get(const QUrl &url, const CancelTokenPtr &control)
{
    return fetch(url, maxBodyBytes, {}, control).then([](const Network::Response &answer) {
        if (answer.status && (*answer.status < 200 || *answer.status > 299))
            throw LinkError::network(QStringLiteral("HTTP ") + QString::number(*answer.status));
        return answer.body;
    });
}

QFuture<ResolvedMedia> resolveApple(const QUrl &url, const QUrl &lookupBase, const CancelTokenPtr &control)
{
    const std::optional<qint64> id = appleCollectionId(url);
    if (!id)
        return failure<ResolvedMedia>(LinkError::appleNotFound());
    const std::optional<qint64> episode = queryInt(url, QStringLiteral("i"));

    return get(lookupURL(lookupBase, *id), control)
        .then([episode, control](const QByteArray &reply) -> QFuture<ResolvedMedia> {
            const std::optional<AppleLookup> lookup = AppleLookup::decode(reply);
            if (!lookup)
                throw LinkError::appleNotFound();

            const AppleLookup::Item *picked = nullptr;
            for (const AppleLookup::Item &item : lookup->results) {
                if (item.kind != QLatin1String("podcast-episode"))
                    continue;
                if (!episode || item.trackId == episode) {
                    picked = &item;
                    break;
                }
            }
            if (picked && picked->episodeUrl) {
                if (const std::optional<QUrl> media = Links::webURL(*picked->episodeUrl))
                    return ready(*media, picked->trackName.value_or(Tr::tr("Podcast-Episode")));
            }

            // No such episode among those returned: the feed's first episode stands in.
            for (const AppleLookup::Item &item : lookup->results) {
                if (!item.feedUrl)
                    continue;
                if (const std::optional<QUrl> feed = Links::webURL(*item.feedUrl))
                    return resolveFeed(*feed, control);
                break;
            }
            throw LinkError::appleNotFound();
        })
        .unwrap();
}

QFuture<ResolvedMedia> resolveFeed(const QUrl &url, const CancelTokenPtr &control)
{
    return get(url, control).then([](const QByteArray &feed) {
        const std::optional<ResolvedMedia> episode = FeedParser::firstEpisode(feed);
        if (!episode)
            throw LinkError::noEnclosure();
        return *episode;
    });
}

QFuture<std::optional<QUrl>> discoverFeed(const QUrl &url, const CancelTokenPtr &control)
{
    return get(url, control).then([url](const QByteArray &body) { return feedLink(url, body); });
}

std::optional<QUrl> feedLink(const QUrl &url, const QByteArray &body)
{
    const std::optional<QString> page = utf8(body);
    if (!page)
        return std::nullopt;
    const QString type = QStringLiteral("application/rss+xml");
    const qsizetype match = page->indexOf(type);
    if (match < 0)
        return std::nullopt;

    // The link tag's attributes come in any order: look around the type.
    const qsizetype from = std::max<qsizetype>(0, match - 200);
    const qsizetype to = std::min<qsizetype>(page->size(), match + type.size() + 200);
    const QStringView stretch = QStringView(*page).mid(from, to - from);

    const qsizetype href = stretch.indexOf(QLatin1String("href="));
    if (href < 0)
        return std::nullopt;
    QStringView rest = stretch.mid(href + 5);
    const QChar quote = rest.startsWith(u'\'') ? u'\'' : u'"';
    while (!rest.isEmpty() && (rest.front() == u'"' || rest.front() == u'\''))
        rest = rest.mid(1);
    const qsizetype end = rest.indexOf(quote);
    if (end < 0)
        return std::nullopt;
    QString value = rest.left(end).toString();

    if (value.startsWith(QLatin1String("//")))
        value.prepend((url.scheme().isEmpty() ? QStringLiteral("https") : url.scheme()) + u':');
    const QUrl relative(value);
    if (!relative.isValid())
        return std::nullopt;
    const QUrl feed = url.resolved(relative);
    return Links::isWebURL(feed) ? std::optional<QUrl>(feed) : std::nullopt;
}

std::optional<qint64> appleCollectionId(const QUrl &url)
{
    const QStringList components = url.path().split(u'/', Qt::SkipEmptyParts);
    for (const QString &component : components) {
        if (!component.startsWith(QLatin1String("id")) || component.size() == 2)
            continue;
        if (const std::optional<qint64> id = decimal(QStringView(component).mid(2)))
            return id;
    }
    return std::nullopt;
}

std::optional<qint64> queryInt(const QUrl &url, const QString &key)
{
    const QUrlQuery query(url);
    for (const auto &[name, value] : query.queryItems(QUrl::FullyDecoded)) {
        if (name == key)
            return decimal(value);
    }
    return std::nullopt;
}

QString niceName(const QUrl &url)
{
    const QStringList components = url.path(QUrl::FullyEncoded).split(u'/', Qt::SkipEmptyParts);
    QString name = components.isEmpty() ? QString() : FileNames::deletingPathExtension(components.last());
    name = percentDecoded(name).value_or(name);
    name.replace(u'_', u' ');
    name = Text::trimBlanks(name);
    if (!name.isEmpty())
        return name;
    if (!url.host().isEmpty())
        return url.host();
    return Tr::tr("Podcast");
}

} // namespace LinkResolver
