#include "storage/KeychainStore.h"

#include <QEventLoop>
#include <QStringDecoder>

#include <qt6keychain/keychain.h>

namespace {

// Runs one job to its end. The job reports through the event loop, so a local loop waits
// for it; user input stays queued meanwhile, so no control can call in again.
void run(QKeychain::Job &job, const QString &account)
{
    job.setAutoDelete(false);
    // The plain-text fallback would put the key into a settings file.
    job.setInsecureFallback(false);
    job.setKey(account);
    QEventLoop loop;
    bool done = false;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, [&] {
        done = true;
        loop.quit();
    });
    job.start();
    if (!done)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

void KeychainStore::save(const QString &value, const QString &account)
{
    remove(account);
    const QString key = value.trimmed();
    if (key.isEmpty())
        return;
    QKeychain::WritePasswordJob job(service);
    job.setTextData(key);
    run(job, account);
}

std::optional<QString> KeychainStore::load(const QString &account)
{
    QKeychain::ReadPasswordJob job(service);
    run(job, account);
    if (job.error() != QKeychain::NoError)
        return std::nullopt;
    const QByteArray data = job.binaryData();
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(data);
    if (utf8.hasError())
        return std::nullopt;
    return text;
}

void KeychainStore::remove(const QString &account)
{
    QKeychain::DeletePasswordJob job(service);
    run(job, account);
}
