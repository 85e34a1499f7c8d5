// The HTTP layer against a real server on 127.0.0.1: what ends a transfer (a cancel
// from another thread, a cut connection, the limits, the timeouts), each without a
// temporary file left behind, and requests with a body.
#include "LocalServer.h"
#include "Media.h"

#include "core/Network.h"

#include <QFile>

#include <gtest/gtest.h>

#include <thread>

namespace {

struct Outcome {
    std::optional<Network::Response> response;
    std::optional<Network::Error::Kind> error;
    bool cancelled = false;
};

Outcome await(QFuture<Network::Response> future)
{
    Outcome outcome;
    if (!waitFor([&] { return future.isFinished(); })) {
        ADD_FAILURE() << "the transfer did not end";
        return outcome;
    }
    try {
        outcome.response = future.result();
    } catch (const Network::Error &e) {
        outcome.error = e.kind();
        EXPECT_FALSE(e.errorDescription().isEmpty());
    } catch (const UserError &e) {
        outcome.cancelled = e.isCancelled();
    }
    return outcome;
}

Network::Request request(const LocalServer &server, const QString &path)
{
    Network::Request r;
    r.url = server.base().resolved(QUrl(path));
    return r;
}

} // namespace

TEST(Network, ACancelFromAnotherThreadEndsTheTransferAndLeavesNoFile)
{
    LocalServer server;
    server.answer("/held", {.body = randomBytes(400'000), .holdAfter = 100'000});

    // Without time limits only the cancel can end these transfers.
    for (const bool toFile : {true, false}) {
        SCOPED_TRACE(toFile ? "download" : "fetch");
        Network::Request r = request(server, "held");
        r.control = std::make_shared<CancelToken>();
        const QFuture<Network::Response> future = toFile ? Network::download(r) : Network::fetch(r);
        const int held = server.held();
        ASSERT_TRUE(waitFor([&] { return server.held() == held + 1; }));
        if (toFile) {
            ASSERT_TRUE(waitFor([] { return !Media::temporaryEntries().isEmpty(); }));
        }
        std::thread([control = r.control] { control->cancel(); }).join();
        EXPECT_TRUE(await(future).cancelled);
        EXPECT_NO_TEMPORARY_FILES();
    }

    // A control cancelled before the start asks nothing.
    Network::Request r = request(server, "held");
    r.control = std::make_shared<CancelToken>();
    r.control->cancel();
    EXPECT_TRUE(await(Network::download(r)).cancelled);
    EXPECT_EQ(server.hits("/held"), 2);
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(Network, ABodyShorterThanItsLengthFailsAndLimitsEndTheTransfer)
{
    using Kind = Network::Error::Kind;
    LocalServer server;
    const QByteArray body = randomBytes(200'000);
    server.answer("/cut", {.body = body, .dropAfter = 50'000});
    server.answer("/cut-unsized", {.body = body, .sendLength = false, .dropAfter = 50'000});
    server.answer("/endless", {.body = randomBytes(64 * 1024), .endless = true});
    server.answer("/big", {.body = body});

    // The transfer layer reports a cut connection now as its own failure, now as a
    // whole answer; only the length it named tells. Without a length, the end of the
    // connection is the end of the body.
    for (int i = 0; i < 5; ++i) {
        for (const Outcome &cut : {await(Network::download(request(server, "cut"))),
                                   await(Network::fetch(request(server, "cut")))}) {
            ASSERT_TRUE(cut.error);
            EXPECT_TRUE(*cut.error == Kind::incomplete || *cut.error == Kind::transfer);
        }
    }
    const Outcome unsized = await(Network::fetch(request(server, "cut-unsized")));
    ASSERT_TRUE(unsized.response);
    EXPECT_TRUE(unsized.response->body == body.left(50'000));

    // Reading stops at its limit, as a success, also where the answer never ends.
    Network::Request probe = request(server, "endless");
    probe.readLimit = 4096;
    const Outcome head = await(Network::fetch(probe));
    ASSERT_TRUE(head.response);
    EXPECT_EQ(head.response->body.size(), 4096);
    // A body past the bound fails, named or not.
    for (const char *path : {"endless", "big"}) {
        Network::Request bounded = request(server, path);
        bounded.maxBytes = 100'000;
        EXPECT_EQ(await(Network::download(bounded)).error, Kind::tooLarge) << path;
    }
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(Network, BothTimeoutsEndAStalledTransfer)
{
    LocalServer server;
    server.answer("/held", {.body = randomBytes(100'000), .holdAfter = 1000});
    Network::Request stalled = request(server, "held");
    stalled.stallTimeoutMs = 300;
    EXPECT_EQ(await(Network::download(stalled)).error, Network::Error::Kind::timedOut);
    Network::Request slow = request(server, "held");
    slow.timeoutMs = 300;
    EXPECT_EQ(await(Network::download(slow)).error, Network::Error::Kind::timedOut);
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(Network, ARequestWithABodyIsAPostAndTheAnswerNamesWhereItEnded)
{
    LocalServer server;
    server.answer("/v1/messages", {.body = R"({"ok": true})", .contentType = "Application/JSON; charset=utf-8"});
    Network::Request post = request(server, "v1/messages");
    post.body = R"({"model": "x", "text": "Grüße"})";
    post.headers = {{"Content-Type", "application/json"}, {"User-Agent", "Sagwerk-Test"}};
    const Outcome answer = await(Network::fetch(post));
    ASSERT_TRUE(answer.response);
    EXPECT_EQ(answer.response->status, 200);
    EXPECT_EQ(answer.response->mimeType, "application/json");
    EXPECT_EQ(answer.response->body, R"({"ok": true})");
    const QByteArray head = server.lastRequest("/v1/messages");
    EXPECT_TRUE(head.startsWith("POST /v1/messages ")) << head.toStdString();
    EXPECT_TRUE(head.contains("\r\nUser-Agent: Sagwerk-Test\r\n")) << head.toStdString();
    EXPECT_EQ(server.lastBody("/v1/messages"), *post.body);

    // After a redirect, the address and the file name are the final answer's.
    server.answer("/go", {.status = 302, .body = {}, .headers = {"Location: /files/Folge%201.mp3"}});
    server.answer("/files/Folge%201.mp3", {.body = "ID3", .contentType = "audio/mpeg"});
    const Outcome moved = await(Network::download(request(server, "go")));
    ASSERT_TRUE(moved.response);
    EXPECT_EQ(moved.response->url, server.base().resolved(QUrl("files/Folge%201.mp3")));
    EXPECT_EQ(moved.response->suggestedFileName, "Folge 1.mp3");
    EXPECT_EQ(Media::readFile(moved.response->file), "ID3");
    QFile::remove(moved.response->file);
}
