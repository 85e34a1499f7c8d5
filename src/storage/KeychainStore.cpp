#include "storage/KeychainStore.h"

#include <QPromise>
#include <QStringDecoder>

#include <qt6keychain/keychain.h>

#include <deque>
#include <functional>
#include <memory>

namespace {

// One operation of the store: it starts its jobs and calls `done` after the last one.
using Done = std::function<void()>;
using Operation = std::function<void(const Done &done)>;

// The operations waiting for their turn. A save is two jobs (remove, then write), and
// the store itself runs jobs in the order they start, not in the order of our calls: a
// removal called between the two would otherwise land before the write it should undo.
// Main thread only.
struct Queue {
    std::deque<Operation> waiting;
    bool running = false;
};

Queue &queue()
{
    static Queue instance;
    return instance;
}

void runNext()
{
    Queue &q = queue();
    if (q.waiting.empty()) {
        q.running = false;
        return;
    }
    q.running = true;
    const Operation next = std::move(q.waiting.front());
    q.waiting.pop_front();
    next(runNext);
}

void enqueue(Operation operation)
{
    queue().waiting.push_back(std::move(operation));
    if (!queue().running)
        runNext();
}

// Starts `job` for `account`; `then` gets it once it has finished, before it deletes
// itself. The job reports through the event loop, never from within start().
template <typename Job, typename Then>
void startJob(Job *job, const QString &account, Then then)
{
    // The plain-text fallback would put the key into a settings file.
    job->setInsecureFallback(false);
    job->setKey(account);
    QObject::connect(job, &QKeychain::Job::finished, job, [job, then] { then(*job); });
    job->start();
}

std::optional<QString> textOf(const QKeychain::ReadPasswordJob &job)
{
    if (job.error() != QKeychain::NoError)
        return std::nullopt;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(job.binaryData());
    if (utf8.hasError())
        return std::nullopt;
    return text;
}

void finish(QPromise<void> &promise, const Done &done)
{
    promise.finish();
    done();
}

} // namespace

QFuture<void> KeychainStore::save(const QString &value, const QString &account)
{
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    const QString key = value.trimmed();
    enqueue([promise, key, account](const Done &done) {
        startJob(new QKeychain::DeletePasswordJob(service), account, [promise, key, account, done](auto &) {
            if (key.isEmpty())
                return finish(*promise, done);
            auto *write = new QKeychain::WritePasswordJob(service);
            write->setTextData(key);
            startJob(write, account, [promise, done](auto &) { finish(*promise, done); });
        });
    });
    return promise->future();
}

QFuture<std::optional<QString>> KeychainStore::load(const QString &account)
{
    auto promise = std::make_shared<QPromise<std::optional<QString>>>();
    promise->start();
    enqueue([promise, account](const Done &done) {
        startJob(new QKeychain::ReadPasswordJob(service), account,
                 [promise, done](const QKeychain::ReadPasswordJob &job) {
                     promise->addResult(textOf(job));
                     promise->finish();
                     done();
                 });
    });
    return promise->future();
}

QFuture<void> KeychainStore::remove(const QString &account)
{
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    enqueue([promise, account](const Done &done) {
        startJob(new QKeychain::DeletePasswordJob(service), account, [promise, done](auto &) { finish(*promise, done); });
    });
    return promise->future();
}
