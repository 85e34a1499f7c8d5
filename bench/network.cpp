// bench-network [ROUNDS]: a 256 MiB download through Network::download beside a bare
// QNetworkReply written to a QFile as it arrives, from one local server on a thread of
// its own, rounds interleaved; and how long a cancel from another thread takes to end a
// running transfer.
#include "LocalServer.h"

#include "core/Network.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double ms(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// The reference: what a download costs with nothing around it.
double bareDownload(QNetworkAccessManager &manager, const QUrl &url)
{
    QElapsedTimer clock;
    clock.start();
    QFile file(QDir::tempPath() + QStringLiteral("/bench-bare.bin"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(file.fileName()));
    QNetworkReply *reply = manager.get(QNetworkRequest(url));
    QObject::connect(reply, &QNetworkReply::readyRead, [&] { file.write(reply->readAll()); });
    waitFor([&] { return reply->isFinished(); }, 120'000);
    file.write(reply->readAll());
    file.close();
    const double elapsed = ms(clock);
    reply->deleteLater();
    file.remove();
    return elapsed;
}

double ourDownload(const QUrl &url)
{
    QElapsedTimer clock;
    clock.start();
    Network::Request request;
    request.url = url;
    request.stallTimeoutMs = 60'000;
    request.onProgress = [](double) {};
    QFuture<Network::Response> future = Network::download(request);
    waitFor([&] { return future.isFinished(); }, 120'000);
    const double elapsed = ms(clock);
    QFile::remove(future.result().file);
    return elapsed;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    const qint64 size = 256LL * 1024 * 1024;

    // The server answers from a thread of its own, as a remote one would.
    QThread serving;
    serving.start();
    QObject context;
    context.moveToThread(&serving);
    LocalServer *server = nullptr;
    QUrl big, held;
    QMetaObject::invokeMethod(&context, [&] {
        server = new LocalServer;
        server->answer(QStringLiteral("/big.bin"), {.body = randomBytes(size)});
        server->answer(QStringLiteral("/held.bin"), {.body = randomBytes(1'000'000), .holdAfter = 1000});
        big = server->base().resolved(QUrl(QStringLiteral("big.bin")));
        held = server->base().resolved(QUrl(QStringLiteral("held.bin")));
    }, Qt::BlockingQueuedConnection);

    QNetworkAccessManager manager;
    std::vector<double> bare, ours;
    for (int i = 0; i < rounds; ++i) {
        bare.push_back(bareDownload(manager, big));
        ours.push_back(ourDownload(big));
    }
    const double a = median(ours), b = median(bare);
    std::printf("download of %lld MiB to a file, localhost: Network::download %.0f ms (%.0f MiB/s), bare QNetworkReply "
                "%.0f ms, ratio %.3f (goal <= 1.1)\n",
                size >> 20, a, double(size >> 20) / (a / 1000.0), b, a / b);

    // From cancel() on another thread to the end of the future; the blocking fetch that
    // came before looked at its flag every 100 ms.
    std::vector<double> latencies;
    for (int i = 0; i < rounds * 10; ++i) {
        Network::Request request;
        request.url = held;
        request.control = std::make_shared<CancelToken>();
        bool running = false;
        request.onProgress = [&](double) { running = true; };
        QElapsedTimer clock;
        double latency = -1;
        QFuture<Network::Response> future = Network::fetch(request);
        future.then([&](const QFuture<Network::Response> &) { latency = ms(clock); });
        waitFor([&] { return running; });
        clock.start();
        std::thread([control = request.control] { control->cancel(); }).join();
        waitFor([&] { return latency >= 0; });
        latencies.push_back(latency);
    }
    std::printf("cancel from another thread to the end of a running transfer: median %.3f ms, worst %.3f ms "
                "(%zu transfers)\n",
                median(latencies), *std::max_element(latencies.begin(), latencies.end()), latencies.size());

    QMetaObject::invokeMethod(&context, [&] { delete server; }, Qt::BlockingQueuedConnection);
    serving.quit();
    serving.wait();
    return 0;
}
