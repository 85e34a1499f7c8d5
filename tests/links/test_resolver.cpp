// Link resolution against real HTTP servers on 127.0.0.1: direct media, feeds, web
// pages, the Apple lookup, and input that is malformed, huge or endless.
#include "LocalServer.h"

#include "links/FeedParser.h"
#include "links/PodcastResolver.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QtConcurrent/QtConcurrentRun>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    std::optional<ResolvedMedia> media;
    std::optional<PodcastError> error;
    qint64 ms = 0;
};

// Resolves on the task pool, as the application does, while this thread serves.
Outcome resolve(const QString &text, const QUrl &lookupBase = PodcastResolver::defaultLookupBase)
{
    QElapsedTimer clock;
    clock.start();
    QFuture<Outcome> task = QtConcurrent::run([text, lookupBase]() -> Outcome {
        try {
            return {PodcastResolver::resolve(text, lookupBase), std::nullopt};
        } catch (const PodcastError &e) {
            return {std::nullopt, e};
        }
    });
    EXPECT_TRUE(waitFor([&] { return task.isFinished(); }, 120'000));
    Outcome outcome = task.result();
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

#define EXPECT_FAILS(outcome, kindName)                                                                              \
    do {                                                                                                             \
        const Outcome o_ = (outcome);                                                                                \
        ASSERT_TRUE(o_.error.has_value()) << describe(o_);                                                           \
        EXPECT_EQ(o_.error->kind(), PodcastError::Case::kindName) << describe(o_);                                  \
    } while (false)

LocalServer::Answer typed(const QByteArray &type, const QByteArray &body)
{
    LocalServer::Answer a;
    a.contentType = type;
    a.body = body;
    return a;
}

QByteArray rss(const QByteArray &items, const QByteArray &channelTitle = "Der Kanal")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<rss version=\"2.0\" xmlns:itunes=\"http://www.itunes.com/dtds/podcast-1.0.dtd\"><channel><title>"
           + channelTitle + "</title>\n" + items + "</channel></rss>\n";
}

class Resolver : public ::testing::Test {
protected:
    LocalServer server;
    QString at(const QString &path) const { return server.base().resolved(QUrl(path)).toString(); }
    QByteArray atBytes(const QString &path) const { return at(path).toUtf8(); }
};

} // namespace

TEST_F(Resolver, MalformedLinksAndRefusedHostsMakeNoRequest)
{
    // Every request of this process goes to a proxy that counts them.
    LocalServer proxy;
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", proxy.base().port()));

    for (const char *text : {"", " \n\t", "httpbin.org/get", "https://", "http://", "http:///nur/pfad",
                                "https://[::1", "ht tp://x", "https://exa mple.com/a.mp3", "://"}) {
        SCOPED_TRACE(text);
        EXPECT_FAILS(resolve(text), invalidURL);
    }
    EXPECT_EQ(PodcastError::invalidURL().errorDescription(),
              QStringLiteral("Das sieht nicht nach einem gültigen Link aus."));

    for (const char *text : {"https://open.spotify.com/episode/4rOoJ6Egrf8K2IrywzwOMk",
                                "OPEN.SPOTIFY.COM/show/abc", "  http://podcasters.spotify.com/pod/x \n"})
        EXPECT_FAILS(resolve(text), spotify);
    // Apple links without a collection id of the form id<digits>.
    for (const char *text : {"https://podcasts.apple.com/de/podcast/sendung/idea?i=1000",
                                "PODCASTS.APPLE.COM/de/browse", "https://itunes.apple.com/id/"})
        EXPECT_FAILS(resolve(text), appleNotFound);
    EXPECT_EQ(proxy.totalHits(), 0);

    // The counter works: any other link asks, through the proxy, with its own headers.
    proxy.answer("http://sagwerk.invalid/folge.mp3", typed("audio/mpeg", "ID3"));
    EXPECT_MEDIA(resolve("http://sagwerk.invalid/folge.mp3"), "http://sagwerk.invalid/folge.mp3", "folge");
    EXPECT_EQ(proxy.totalHits(), 1);
    const QByteArray request = proxy.lastRequest("http://sagwerk.invalid/folge.mp3");
    EXPECT_TRUE(request.contains("\r\nUser-Agent: Sagwerk/1.0 (macOS)\r\n")) << request.toStdString();
    EXPECT_TRUE(request.contains("\r\nRange: bytes=0-4095\r\n")) << request.toStdString();
    // Without a scheme the link goes out as https, which the proxy refuses to tunnel.
    const Outcome noScheme = resolve(QStringLiteral("Sagwerk.invalid/folge.mp3"));
    EXPECT_FAILS(noScheme, network);
    EXPECT_TRUE(noScheme.error->errorDescription().startsWith("Netzwerkfehler: ")) << describe(noScheme);
    EXPECT_EQ(proxy.hits("sagwerk.invalid:443"), 1);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

TEST_F(Resolver, DirectMediaIsItsOwnDownloadWithATitleFromItsName)
{
    const QByteArray binary = randomBytes(9000);
    server.answer("/audio/my_talk%20final.mp3", typed("application/octet-stream", binary));
    server.answer("/media/clip.MP4", typed("Video/MP4", binary));
    server.answer("/", typed("", binary));
    server.answer("/episode/Teil_1%C3%28", typed("audio/mpeg", binary)); // no UTF-8: stays encoded
    // A page that ignores Range and never ends costs no more than the probe reads.
    LocalServer::Answer endless = typed("audio/mpeg", randomBytes(64 * 1024));
    endless.endless = true;
    server.answer("/live", endless);

    EXPECT_MEDIA(resolve(at("audio/my_talk%20final.mp3")), at("audio/my_talk%20final.mp3"), "my talk final");
    EXPECT_MEDIA(resolve(at("media/clip.MP4")), at("media/clip.MP4"), "clip");
    EXPECT_MEDIA(resolve(at("")), at(""), "127.0.0.1");
    EXPECT_MEDIA(resolve(at("episode/Teil_1%C3%28")), at("episode/Teil_1%C3%28"), "Teil 1%C3%28");
    const Outcome live = resolve(at("live"));
    EXPECT_MEDIA(live, at("live"), "live");
    EXPECT_LT(live.ms, 10'000);

    // A first 400 bytes that end inside a character leave only the type to decide: the
    // same feed is a feed with a whole character at the edge, and media without.
    const QByteArray item = "<item><title>T</title><enclosure url=\"" + atBytes("a.mp3") + "\"/></item>";
    QByteArray cut = "<rss><channel>" + QByteArray(385, ' ') + "\xc3\xa4" + item + "</channel></rss>";
    ASSERT_EQ(cut.indexOf("\xc3\xa4"), 399);
    server.answer("/cut", typed("", cut));
    EXPECT_MEDIA(resolve(at("cut")), at("cut"), "cut");
    cut.remove(20, 1);
    server.answer("/whole", typed("", cut));
    EXPECT_MEDIA(resolve(at("whole")), at("a.mp3"), "T");
}

TEST_F(Resolver, FeedsGiveTheirFirstItem)
{
    const QByteArray first = atBytes("media/eins.mp3");
    // The channel's title and a prefixed title are not the item's; markup splits the
    // title, CDATA and entities are text.
    server.answer("/feed.xml",
                  typed("application/rss+xml; charset=utf-8",
                        rss("<item><itunes:title>Falsch</itunes:title>\n"
                            "  <title> Folge <b>1</b>: <![CDATA[Anfang & Ende]]> &amp; mehr </title>\n"
                            "  <enclosure length=\"1\" type=\"audio/mpeg\" url=\"  " + first + "  \"/>\n"
                            "  <enclosure url=\"" + atBytes("zweite.mp3") + "\"/></item>\n"
                            "<item><title>Zwei</title><enclosure url=\"" + atBytes("zwei.mp3") + "\"/></item>")));
    EXPECT_MEDIA(resolve(at("feed.xml")), first, "Folge 1: Anfang & Ende & mehr");

    // A first item without an enclosure, or with one without url, means no episode.
    server.answer("/no-enclosure.xml",
                  typed("text/xml", rss("<item><title>Eins</title></item><item><title>Zwei</title><enclosure url=\""
                                        + atBytes("zwei.mp3") + "\"/></item>")));
    EXPECT_FAILS(resolve(at("no-enclosure.xml")), noEnclosure);
    server.answer("/no-url.xml", typed("text/xml", rss("<item><enclosure href=\"x.mp3\"/></item>")));
    EXPECT_FAILS(resolve(at("no-url.xml")), noEnclosure);
    // What a feed names under another scheme is not fetched.
    server.answer("/file.xml", typed("text/xml", rss("<item><enclosure url=\"file:///etc/passwd\"/></item>")));
    EXPECT_FAILS(resolve(at("file.xml")), noEnclosure);

    // Atom: an entry counts as an item, its link elements do not count; an untitled
    // episode is a "Podcast-Episode".
    server.answer("/atom", typed("application/atom+xml",
                                 "<feed xmlns=\"http://www.w3.org/2005/Atom\"><title>A</title><entry><title>E</title>"
                                 "<link rel=\"enclosure\" href=\"" + atBytes("e.mp3") + "\"/></entry></feed>"));
    EXPECT_FAILS(resolve(at("atom")), noEnclosure);
    server.answer("/atom-enclosure", typed("text/plain", "<feed><entry><enclosure url=\"" + atBytes("e.mp3")
                                                             + "\"/><title>  </title></entry></feed>"));
    EXPECT_MEDIA(resolve(at("atom-enclosure")), at("e.mp3"), "Podcast-Episode");

    // Thousands of items: only the first is read.
    QByteArray many;
    for (int i = 0; i < 20'000; ++i)
        many += "<item><title>Folge " + QByteArray::number(i) + "</title><enclosure url=\"" + atBytes("f.mp3")
                + "?n=" + QByteArray::number(i) + "\"/></item>\n";
    server.answer("/many.xml", typed("application/rss+xml", rss(many)));
    const Outcome big = resolve(at("many.xml"));
    EXPECT_MEDIA(big, at("f.mp3?n=0"), "Folge 0");
    EXPECT_LT(big.ms, 10'000);

    // Broken documents count up to the break.
    server.answer("/broken-after.xml",
                  typed("text/xml", "<rss><channel><item><title>Halb</title><enclosure url=\"" + atBytes("h.mp3")
                                        + "\"/><guid>x</gu"));
    EXPECT_MEDIA(resolve(at("broken-after.xml")), at("h.mp3"), "Halb");
    server.answer("/broken-before.xml", typed("text/xml", "<rss><channel><item><title>Halb</titel><enclosure url=\""
                                                              + atBytes("h.mp3") + "\"/></item>"));
    EXPECT_FAILS(resolve(at("broken-before.xml")), noEnclosure);
    server.answer("/latin1.xml", typed("text/xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><rss><channel><item>"
                                                   "<title>Gr\xfc\xdf Gott</title><enclosure url=\""
                                                       + atBytes("g.mp3") + "\"/></item></channel></rss>"));
    EXPECT_FAILS(resolve(at("latin1.xml")), noEnclosure);
    server.answer("/garbage", typed("application/xml", randomBytes(100'000)));
    EXPECT_FAILS(resolve(at("garbage")), noEnclosure);

    // An XHTML page, or any page that opens with an XML declaration, is taken for a feed.
    server.answer("/page.xhtml", typed("application/xhtml+xml",
                                       "<html xmlns=\"http://www.w3.org/1999/xhtml\"><head><link rel=\"alternate\" "
                                       "type=\"application/rss+xml\" href=\"feed.xml\"/></head></html>"));
    EXPECT_FAILS(resolve(at("page.xhtml")), noEnclosure);
    server.answer("/decl.html", typed("text/html", "<?xml version=\"1.0\"?><html><head><link "
                                                   "type=\"application/rss+xml\" href=\"feed.xml\"></head></html>"));
    EXPECT_FAILS(resolve(at("decl.html")), noEnclosure);

    // A feed that turns out to be missing when fetched in full.
    LocalServer::Answer gone = typed("application/rss+xml", "<rss>");
    gone.status = 410;
    server.answer("/gone.xml", gone);
    const Outcome goneOutcome = resolve(at("gone.xml"));
    EXPECT_FAILS(goneOutcome, network);
    EXPECT_EQ(goneOutcome.error->errorDescription(), QStringLiteral("Netzwerkfehler: HTTP 410"));
}

TEST_F(Resolver, WebPagesLeadToTheirFeed)
{
    server.answer("/shows/feed.xml", typed("application/rss+xml",
                                           rss("<item><title>Seite</title><enclosure url=\"" + atBytes("s.mp3")
                                               + "\"/></item>")));
    // Single quotes, a relative address, and the type after the href.
    server.answer("/shows/page", typed("text/html; charset=utf-8",
                                       "<!DOCTYPE html><html><head><title>Ä</title><link rel='alternate' "
                                       "href='feed.xml' type='application/rss+xml'></head><body>"
                                           + QByteArray(5000, 'x') + "</body></html>"));
    EXPECT_MEDIA(resolve(at("shows/page")), at("s.mp3"), "Seite");
    // Double quotes and a protocol-relative address; no type but the text says html.
    const QByteArray hostPort = "//127.0.0.1:" + QByteArray::number(server.base().port());
    server.answer("/index", typed("", "<html><head><link type=\"application/rss+xml\" href=\"" + hostPort
                                          + "/shows/feed.xml\" rel=\"alternate\"></head></html>"));
    EXPECT_MEDIA(resolve(at("index")), at("s.mp3"), "Seite");

    // A page without a feed link, with an unclosed href, with a javascript: href, or
    // with text that is no UTF-8.
    server.answer("/plain", typed("text/html", "<html><body>Nur Text</body></html>"));
    EXPECT_FAILS(resolve(at("plain")), unsupported);
    server.answer("/unclosed", typed("text/html", "<html><link type=\"application/rss+xml\" href=\"feed.xml"));
    EXPECT_FAILS(resolve(at("unclosed")), unsupported);
    server.answer("/script", typed("text/html", "<html><link type=\"application/rss+xml\" href=\"javascript:x()\">"));
    EXPECT_FAILS(resolve(at("script")), unsupported);
    server.answer("/latin1", typed("text/html", "<html>Gr\xfc\xdf<link type=\"application/rss+xml\" href=\"feed.xml\">"));
    EXPECT_FAILS(resolve(at("latin1")), unsupported);

    // A missing page is an HTML answer whose full fetch fails with its status.
    const Outcome missing = resolve(at("nirgends"));
    EXPECT_FAILS(missing, network);
    EXPECT_EQ(missing.error->errorDescription(), QStringLiteral("Netzwerkfehler: HTTP 404"));
    // A feed named on a page but gone is a network failure, not a missing enclosure.
    server.answer("/dead-link", typed("text/html", "<html><link type=\"application/rss+xml\" href=\"/weg.xml\">"));
    EXPECT_FAILS(resolve(at("dead-link")), network);

    // An endless page is read only up to its bound.
    LocalServer::Answer endless = typed("text/html", "<html><body>" + QByteArray(60'000, 'y') + "</body>");
    endless.endless = true;
    server.answer("/endless", endless);
    const Outcome bounded = resolve(at("endless"));
    EXPECT_FAILS(bounded, unsupported);
    EXPECT_LT(bounded.ms, 30'000);
}

TEST_F(Resolver, AppleLinksGoThroughTheLookup)
{
    const QString lookup = "/lookup?id=1234567&media=podcast&entity=podcastEpisode&limit=200";
    const QByteArray feed = atBytes("apple-feed.xml");
    server.answer("/apple-feed.xml", typed("application/rss+xml",
                                           rss("<item><title>Aus dem Feed</title><enclosure url=\"" + atBytes("f.mp3")
                                               + "\"/></item>")));
    const QByteArray reply = R"({"resultCount": 4, "results": [
        {"wrapperType": "track", "kind": "podcast", "collectionId": 1234567, "trackId": 1234567,
         "trackName": "Die Sendung", "feedUrl": ")" + feed + R"("},
        {"kind": "podcast-episode", "trackId": 1000001, "trackName": "Neueste Folge",
         "episodeUrl": ")" + atBytes("neu.mp3") + R"(", "feedUrl": null},
        {"kind": "podcast-episode", "trackId": 1000002, "episodeUrl": ")" + atBytes("alt.m4a") + R"("},
        {"kind": "podcast-episode", "trackId": 1000003, "trackName": "Ohne Datei"}]})";
    server.answer(lookup, typed("text/javascript; charset=utf-8", reply));

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
    EXPECT_TRUE(server.lastRequest(lookup).contains("\r\nUser-Agent: Sagwerk/1.0 (macOS)\r\n"));

    // A show whose lookup has no episode and no feed; a reply with a value of the wrong
    // type; a lookup that fails.
    const QString other = "/lookup?id=42&media=podcast&entity=podcastEpisode&limit=200";
    const QString otherShow = QStringLiteral("https://podcasts.apple.com/us/podcast/x/id42");
    server.answer(other, typed("application/json", R"({"results": [{"kind": "podcast", "trackName": "Leer"}]})"));
    EXPECT_FAILS(resolve(otherShow, base), appleNotFound);
    server.answer(other, typed("application/json", R"({"results": [{"kind": "podcast-episode", "trackId": "7",
                                                         "episodeUrl": "https://a.example/x.mp3"}]})"));
    EXPECT_FAILS(resolve(otherShow, base), appleNotFound);
    server.answer(other, typed("application/json", R"({"resultCount": 0})"));
    EXPECT_FAILS(resolve(otherShow, base), appleNotFound);
    server.answer(other, typed("application/json", "{\"results\": [{\"kind\": \"podcast-episode\", \"episode"));
    EXPECT_FAILS(resolve(otherShow, base), appleNotFound);
    LocalServer::Answer failing = typed("application/json", "{}");
    failing.status = 503;
    server.answer(other, failing);
    const Outcome down = resolve(otherShow, base);
    EXPECT_FAILS(down, network);
    EXPECT_EQ(down.error->errorDescription(), QStringLiteral("Netzwerkfehler: HTTP 503"));
}

TEST(ResolverParts, IdsNumbersAndNames)
{
    using namespace PodcastResolver;
    EXPECT_EQ(appleCollectionId(QUrl("https://podcasts.apple.com/de/podcast/idiot/id0815/id99")), 815);
    EXPECT_EQ(appleCollectionId(QUrl("https://podcasts.apple.com/id+12")), 12);
    EXPECT_EQ(appleCollectionId(QUrl("https://podcasts.apple.com/ID12/id/idx1")), std::nullopt);
    EXPECT_EQ(appleCollectionId(QUrl("https://podcasts.apple.com/id99999999999999999999")), std::nullopt);

    EXPECT_EQ(queryInt(QUrl("https://x.example/?a=1&i=-5&i=7"), "i"), -5);
    for (const char *query : {"i=", "i=%201", "i=1e3", "i=0x10", "I=3", "i=9223372036854775808"})
        EXPECT_EQ(queryInt(QUrl(QStringLiteral("https://x.example/?") + query), "i"), std::nullopt) << query;
    EXPECT_EQ(queryInt(QUrl("https://x.example/?i=9223372036854775807"), "i"), 9223372036854775807LL);

    EXPECT_EQ(niceName(QUrl("https://x.example/a/b/__Mein_Vortrag__.final.mp3")), "Mein Vortrag  .final");
    EXPECT_EQ(niceName(QUrl("https://x.example/folder/")), "folder");
    EXPECT_EQ(niceName(QUrl("https://x.example/%E2%80%83.mp3")), "x.example");
    EXPECT_EQ(niceName(QUrl("file:///")), "Podcast");
}
