// Link resolution against real HTTP servers on 127.0.0.1: direct media, feeds, web
// pages, the Apple lookup, and input that is malformed, huge or endless.
#include "LocalServer.h"

#include "links/FeedParser.h"
#include "links/LinkResolver.h"

#include <QElapsedTimer>
#include <QNetworkProxy>

#include <gtest/gtest.h>

using K = LinkError::Case;

namespace {

struct Outcome {
    std::optional<ResolvedMedia> media;
    std::optional<LinkError> error;
    qint64 ms = 0;
};

// Resolves on this thread's event loop, as the application does, which also serves.
Outcome resolve(const QString &text, const QUrl &lookupBase = LinkResolver::defaultLookupBase)
{
    QElapsedTimer clock;
    clock.start();
    QFuture<ResolvedMedia> task = LinkResolver::resolve(text, lookupBase);
    Outcome outcome;
    // Unfinished, its result would wait for the event loop that this thread runs.
    if (!waitFor([&] { return task.isFinished(); }, 120'000)) {
        ADD_FAILURE() << "the resolution did not end";
        return outcome;
    }
    try {
        outcome.media = task.result();
    } catch (const LinkError &e) {
        outcome.error = e;
    }
    outcome.ms = clock.elapsed();
    return outcome;
}

std::string describe(const Outcome &o)
{
    if (o.media)
        return "media " + o.media->url.toString().toStdString() + " \"" + o.media->title.toStdString() + "\"";
    return o.error ? "error " + o.error->errorDescription().toStdString() : "nothing";
}

#define EXPECT_MEDIA(outcome, link, name)                                                                            \
    do {                                                                                                             \
        const Outcome o_ = (outcome);                                                                                \
        ASSERT_TRUE(o_.media.has_value()) << describe(o_);                                                           \
        EXPECT_EQ(o_.media->url, QUrl(link));                                                                        \
        EXPECT_EQ(o_.media->title, QString(name));                                                                   \
    } while (false)

#define EXPECT_FAILS(outcome, expectedKind, text)                                                                            \
    do {                                                                                                             \
        const Outcome o_ = (outcome);                                                                                \
        ASSERT_TRUE(o_.error.has_value()) << describe(o_);                                                           \
        EXPECT_EQ(o_.error->kind(), expectedKind) << describe(o_);                                                   \
        if (!QString(text).isEmpty()) {                                                                              \
            EXPECT_EQ(o_.error->errorDescription(), QString(text));                                                  \
        }                                                                                                            \
    } while (false)

LocalServer::Answer typed(const QByteArray &type, const QByteArray &body, bool endless = false, int status = 200)
{
    return {.status = status, .body = body, .endless = endless, .contentType = type};
}

QByteArray rss(const QByteArray &items)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<rss version=\"2.0\" "
           "xmlns:itunes=\"http://www.itunes.com/dtds/podcast-1.0.dtd\"><channel><title>Der Kanal</title>\n"
           + items + "</channel></rss>\n";
}

class Resolver : public ::testing::Test {
protected:
    LocalServer server;
    QString at(const QString &path) const { return server.base().resolved(QUrl(path)).toString(); }
    QByteArray enclosure(const QString &path) const { return "<enclosure url=\"" + at(path).toUtf8() + "\"/>"; }

    // Serves each page at its path and expects its link to fail the same way.
    void expectFailures(K kind, const QList<std::tuple<const char *, QByteArray, QByteArray>> &pages)
    {
        for (const auto &[path, type, body] : pages) {
            SCOPED_TRACE(path);
            server.answer(QLatin1Char('/') + QLatin1String(path), typed(type, body));
            EXPECT_FAILS(resolve(at(path)), kind, "");
        }
    }
};

} // namespace

TEST_F(Resolver, MalformedLinksAndRefusedHostsMakeNoRequest)
{
    // Every request of this process goes to a proxy that counts them.
    LocalServer proxy;
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", proxy.base().port()));

    const std::pair<const char *, K> refused[] = {
        {"", K::invalidURL}, {" \n\t", K::invalidURL}, {"httpbin.org/get", K::invalidURL}, {"https://", K::invalidURL},
        {"http://", K::invalidURL}, {"http:///nur/pfad", K::invalidURL}, {"https://[::1", K::invalidURL},
        {"ht tp://x", K::invalidURL}, {"https://exa mple.com/a.mp3", K::invalidURL}, {"://", K::invalidURL},
        {"https://open.spotify.com/episode/4rOoJ6Egrf8K2IrywzwOMk", K::spotify},
        {"OPEN.SPOTIFY.COM/show/abc", K::spotify}, {"  http://podcasters.spotify.com/pod/x \n", K::spotify},
        // Apple links without a collection id of the form id<digits>.
        {"https://podcasts.apple.com/de/podcast/sendung/idea?i=1000", K::appleNotFound},
        {"PODCASTS.APPLE.COM/de/browse", K::appleNotFound}, {"https://itunes.apple.com/id/", K::appleNotFound}};
    for (const auto &[text, kind] : refused) {
        SCOPED_TRACE(text);
        EXPECT_FAILS(resolve(text), kind, "");
    }
    EXPECT_EQ(LinkError::invalidURL().errorDescription(),
              QStringLiteral("Das sieht nicht nach einem gültigen Link aus."));
    EXPECT_EQ(proxy.totalHits(), 0);

    // The counter works: any other link asks, through the proxy, with its own headers.
    proxy.answer("http://sagwerk.invalid/folge.mp3", typed("audio/mpeg", "ID3"));
    EXPECT_MEDIA(resolve("http://sagwerk.invalid/folge.mp3"), "http://sagwerk.invalid/folge.mp3", "folge");
    EXPECT_EQ(proxy.totalHits(), 1);
    const QByteArray request = proxy.lastRequest("http://sagwerk.invalid/folge.mp3");
    EXPECT_TRUE(request.contains("\r\nUser-Agent: Sagwerk/1.0 (Linux)\r\n")) << request.toStdString();
    EXPECT_TRUE(request.contains("\r\nRange: bytes=0-4095\r\n")) << request.toStdString();
    // Without a scheme the link goes out as https, which the proxy refuses to tunnel.
    const Outcome noScheme = resolve(QStringLiteral("Sagwerk.invalid/folge.mp3"));
    EXPECT_FAILS(noScheme, K::network, "");
    EXPECT_TRUE(noScheme.error->errorDescription().startsWith("Netzwerkfehler: ")) << describe(noScheme);
    EXPECT_EQ(proxy.hits("sagwerk.invalid:443"), 1);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

TEST_F(Resolver, DirectMediaIsItsOwnDownloadWithATitleFromItsName)
{
    const QByteArray binary = randomBytes(9000);
    // A first 400 bytes that end inside a character leave only the type to decide: the
    // same feed is a feed with a whole character at the edge, and media without.
    QByteArray cut = "<rss><channel>" + QByteArray(385, ' ') + "\xc3\xa4<item><title>T</title>" + enclosure("a.mp3")
                     + "</item></channel></rss>";
    ASSERT_EQ(cut.indexOf("\xc3\xa4"), 399);
    const struct {
        const char *path;
        QByteArray type;
        QByteArray body;
        const char *media, *title;
    } cases[] = {
        {"audio/my_talk%20final.mp3", "application/octet-stream", binary, "audio/my_talk%20final.mp3", "my talk final"},
        {"media/clip.MP4", "Video/MP4", binary, "media/clip.MP4", "clip"},
        {"", "", binary, "", "127.0.0.1"},
        {"episode/Teil_1%C3%28", "audio/mpeg", binary, "episode/Teil_1%C3%28", "Teil 1%C3%28"}, // no UTF-8
        {"cut", "", cut, "cut", "cut"},
        {"whole", "", cut.remove(20, 1), "a.mp3", "T"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path);
        server.answer(QLatin1Char('/') + QLatin1String(c.path), typed(c.type, c.body));
        EXPECT_MEDIA(resolve(at(c.path)), at(c.media), c.title);
    }
    // A page that ignores Range and never ends costs no more than the probe reads.
    server.answer("/live", typed("audio/mpeg", randomBytes(64 * 1024), true));
    const Outcome live = resolve(at("live"));
    EXPECT_MEDIA(live, at("live"), "live");
    EXPECT_LT(live.ms, 10'000);
}

TEST_F(Resolver, FeedsGiveTheirFirstItem)
{
    // The channel's title and a prefixed title are not the item's; markup splits the
    // title, CDATA and entities are text.
    server.answer("/feed.xml", typed("application/rss+xml; charset=utf-8",
                                     rss("<item><itunes:title>Falsch</itunes:title>\n"
                                         "  <title> Folge <b>1</b>: <![CDATA[Anfang & Ende]]> &amp; mehr </title>\n"
                                         "  <enclosure length=\"1\" type=\"audio/mpeg\" url=\"  " + at("eins.mp3").toUtf8()
                                         + "  \"/>\n" + enclosure("zweite.mp3") + "</item>\n<item><title>Zwei</title>"
                                         + enclosure("zwei.mp3") + "</item>")));
    EXPECT_MEDIA(resolve(at("feed.xml")), at("eins.mp3"), "Folge 1: Anfang & Ende & mehr");

    // An Atom entry counts as an item; an untitled episode is a "Podcast-Episode".
    server.answer("/atom-enclosure", typed("text/plain", "<feed><entry>" + enclosure("e.mp3")
                                                             + "<title>  </title></entry></feed>"));
    EXPECT_MEDIA(resolve(at("atom-enclosure")), at("e.mp3"), "Podcast-Episode");
    // A document broken after the first item counts up to the break.
    server.answer("/broken-after.xml", typed("text/xml", "<rss><channel><item><title>Halb</title>" + enclosure("h.mp3")
                                                             + "<guid>x</gu"));
    EXPECT_MEDIA(resolve(at("broken-after.xml")), at("h.mp3"), "Halb");

    // Thousands of items: only the first is read.
    QByteArray many;
    for (int i = 0; i < 20'000; ++i)
        many += "<item><title>Folge " + QByteArray::number(i) + "</title>" + enclosure("f.mp3?n=" + QString::number(i))
                + "</item>\n";
    server.answer("/many.xml", typed("application/rss+xml", rss(many)));
    const Outcome big = resolve(at("many.xml"));
    EXPECT_MEDIA(big, at("f.mp3?n=0"), "Folge 0");
    EXPECT_LT(big.ms, 10'000);

    expectFailures(K::noEnclosure, {
        // A first item without an enclosure, or with one without url.
        {"no-enclosure.xml", "text/xml", rss("<item><title>Eins</title></item><item>" + enclosure("zwei.mp3") + "</item>")},
        {"no-url.xml", "text/xml", rss("<item><enclosure href=\"x.mp3\"/></item>")},
        // What a feed names under another scheme is not fetched.
        {"file.xml", "text/xml", rss("<item><enclosure url=\"file:///etc/passwd\"/></item>")},
        // Atom link elements do not count.
        {"atom", "application/atom+xml", "<feed xmlns=\"http://www.w3.org/2005/Atom\"><title>A</title><entry><title>E"
                                         "</title><link rel=\"enclosure\" href=\"" + at("e.mp3").toUtf8() + "\"/></entry></feed>"},
        {"broken-before.xml", "text/xml", "<rss><channel><item><title>Halb</titel>" + enclosure("h.mp3") + "</item>"},
        {"latin1.xml", "text/xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><rss><channel><item><title>Gr\xfc\xdf Gott"
                                   "</title>" + enclosure("g.mp3") + "</item></channel></rss>"},
        {"garbage", "application/xml", randomBytes(100'000)},
        // An XHTML page, or any page that opens with an XML declaration, is taken for a feed.
        {"page.xhtml", "application/xhtml+xml", "<html xmlns=\"http://www.w3.org/1999/xhtml\"><head><link rel=\"alternate\" "
                                                "type=\"application/rss+xml\" href=\"feed.xml\"/></head></html>"},
        {"decl.html", "text/html", "<?xml version=\"1.0\"?><html><head><link type=\"application/rss+xml\" "
                                   "href=\"feed.xml\"></head></html>"},
    });

    // A feed that turns out to be missing when fetched in full.
    server.answer("/gone.xml", typed("application/rss+xml", "<rss>", false, 410));
    EXPECT_FAILS(resolve(at("gone.xml")), K::network, "Netzwerkfehler: HTTP 410");
}

TEST_F(Resolver, WebPagesLeadToTheirFeed)
{
    server.answer("/shows/feed.xml", typed("application/rss+xml", rss("<item><title>Seite</title>" + enclosure("s.mp3")
                                                                      + "</item>")));
    // Single quotes, a relative address, and the type after the href.
    server.answer("/shows/page", typed("text/html; charset=utf-8",
                                       "<!DOCTYPE html><html><head><title>Ä</title><link rel='alternate' "
                                       "href='feed.xml' type='application/rss+xml'></head><body>"
                                           + QByteArray(5000, 'x') + "</body></html>"));
    EXPECT_MEDIA(resolve(at("shows/page")), at("s.mp3"), "Seite");
    // Double quotes and a protocol-relative address; no type but the text says html.
    server.answer("/index", typed("", "<html><head><link type=\"application/rss+xml\" href=\"//127.0.0.1:"
                                          + QByteArray::number(server.base().port())
                                          + "/shows/feed.xml\" rel=\"alternate\"></head></html>"));
    EXPECT_MEDIA(resolve(at("index")), at("s.mp3"), "Seite");

    // No feed link, an unclosed href, a javascript: href, text that is no UTF-8.
    expectFailures(K::unsupported, {
        {"plain", "text/html", "<html><body>Nur Text</body></html>"},
        {"unclosed", "text/html", "<html><link type=\"application/rss+xml\" href=\"feed.xml"},
        {"script", "text/html", "<html><link type=\"application/rss+xml\" href=\"javascript:x()\">"},
        {"latin1", "text/html", "<html>Gr\xfc\xdf<link type=\"application/rss+xml\" href=\"feed.xml\">"},
    });
    // A missing page is an HTML answer whose full fetch fails with its status; a feed
    // named on a page but gone is a network failure, not a missing enclosure.
    EXPECT_FAILS(resolve(at("nirgends")), K::network, "Netzwerkfehler: HTTP 404");
    expectFailures(K::network, {{"dead-link", "text/html", "<html><link type=\"application/rss+xml\" href=\"/weg.xml\">"}});

    // An endless page is read only up to its bound.
    server.answer("/endless", typed("text/html", "<html><body>" + QByteArray(60'000, 'y') + "</body>", true));
    const Outcome bounded = resolve(at("endless"));
    EXPECT_FAILS(bounded, K::unsupported, "");
    EXPECT_LT(bounded.ms, 30'000);
}

TEST_F(Resolver, AppleLinksGoThroughTheLookup)
{
    const QString lookup = "/lookup?id=1234567&media=podcast&entity=podcastEpisode&limit=200";
    server.answer("/apple-feed.xml", typed("application/rss+xml", rss("<item><title>Aus dem Feed</title>"
                                                                      + enclosure("f.mp3") + "</item>")));
    server.answer(lookup, typed("text/javascript; charset=utf-8", R"({"resultCount": 4, "results": [
        {"wrapperType": "track", "kind": "podcast", "collectionId": 1234567, "trackId": 1234567,
         "trackName": "Die Sendung", "feedUrl": ")" + at("apple-feed.xml").toUtf8() + R"("},
        {"kind": "podcast-episode", "trackId": 1000001, "trackName": "Neueste Folge",
         "episodeUrl": ")" + at("neu.mp3").toUtf8() + R"(", "feedUrl": null},
        {"kind": "podcast-episode", "trackId": 1000002, "episodeUrl": ")" + at("alt.m4a").toUtf8() + R"("},
        {"kind": "podcast-episode", "trackId": 1000003, "trackName": "Ohne Datei"}]})"));

    const QUrl base = server.base();
    const QString show = QStringLiteral("https://podcasts.apple.com/de/podcast/die-sendung/idea/id1234567");
    EXPECT_MEDIA(resolve(show, base), at("neu.mp3"), "Neueste Folge");
    EXPECT_MEDIA(resolve(show + "?i=1000002", base), at("alt.m4a"), "Podcast-Episode");
    // Not a number: as if there were no i.
    EXPECT_MEDIA(resolve("PODCASTS.APPLE.COM/de/podcast/x/id1234567?i=zwei", base), at("neu.mp3"), "Neueste Folge");
    // Not among the episodes, or without a file: the feed's first episode stands in.
    EXPECT_MEDIA(resolve(show + "?i=999", base), at("f.mp3"), "Aus dem Feed");
    EXPECT_MEDIA(resolve("https://itunes.apple.com/podcast/id1234567?i=1000003", base), at("f.mp3"), "Aus dem Feed");
    EXPECT_EQ(server.hits(lookup), 5);
    EXPECT_TRUE(server.lastRequest(lookup).contains("\r\nUser-Agent: Sagwerk/1.0 (Linux)\r\n"));

    // A show whose lookup has no episode and no feed; a value of the wrong type; a reply
    // without results; a cut reply; a lookup that fails.
    const QString other = "/lookup?id=42&media=podcast&entity=podcastEpisode&limit=200";
    const QString otherShow = QStringLiteral("https://podcasts.apple.com/us/podcast/x/id42");
    for (const QByteArray reply : {R"({"results": [{"kind": "podcast", "trackName": "Leer"}]})",
                                   R"({"results": [{"kind": "podcast-episode", "trackId": "7",
                                       "episodeUrl": "https://a.example/x.mp3"}]})",
                                   R"({"resultCount": 0})", R"({"results": [{"kind": "podcast-episode", "episode)"}) {
        server.answer(other, typed("application/json", reply));
        EXPECT_FAILS(resolve(otherShow, base), K::appleNotFound, "");
    }
    server.answer(other, typed("application/json", "{}", false, 503));
    EXPECT_FAILS(resolve(otherShow, base), K::network, "Netzwerkfehler: HTTP 503");
}

