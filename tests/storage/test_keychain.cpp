// The key store against a real Secret Service (gnome-keyring on a private session bus),
// and where none can be reached. with-secret-service.sh sets up the session; the tests
// refuse to run on any other, so the developer's own keyring is never touched.
// Every key here contains the marker that CTest looks for in the output.
#include "LocalServer.h"

#include "storage/KeychainStore.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>

#include <qt6keychain/keychain.h>

#include <gtest/gtest.h>

namespace {

const QString anthropic = KeychainStore::anthropicAccount;
const QString openai = KeychainStore::openaiAccount;
const QByteArray marker = "KEYMARKER";

const QString sessionDir = qEnvironmentVariable("SAGWERK_SESSION_DIR");
#define ASSERT_ON_THROWAWAY_SESSION()                                                                               \
    ASSERT_TRUE(!sessionDir.isEmpty() && qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").contains(sessionDir))      \
        << "run through tests/support/with-secret-service.sh"

// The Secret Service items of one account under our service name, found by the
// attributes that QtKeychain gives its items.
int itemsOf(const QString &account)
{
    using Attributes = QMap<QString, QString>;
    qDBusRegisterMetaType<Attributes>();
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("SearchItems"));
    const Attributes attributes{{QStringLiteral("server"), KeychainStore::service},
                                {QStringLiteral("user"), account}};
    call << QVariant::fromValue(attributes);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 2) {
        ADD_FAILURE() << "SearchItems failed: " << reply.errorMessage().toStdString();
        return -1;
    }
    int count = 0;
    for (const QVariant &list : reply.arguments())
        count += qdbus_cast<QList<QDBusObjectPath>>(list).size();
    return count;
}

// The store's answer, waited for in the test's own event loop.
std::optional<QString> answer(const QFuture<std::optional<QString>> &future)
{
    EXPECT_TRUE(waitFor([&] { return future.isFinished(); })) << "no answer from the store";
    return future.isFinished() ? future.result() : std::nullopt;
}
void answer(const QFuture<void> &future)
{
    EXPECT_TRUE(waitFor([&] { return future.isFinished(); })) << "no answer from the store";
}
std::optional<QString> load(const QString &account)
{
    return answer(KeychainStore::load(account));
}
void save(const QString &value, const QString &account)
{
    answer(KeychainStore::save(value, account));
}
void remove(const QString &account)
{
    answer(KeychainStore::remove(account));
}

// Files under `dir` whose bytes contain the marker.
QStringList filesWithMarker(const QString &dir)
{
    QStringList found;
    QDirIterator it(dir, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(marker))
            found << file.fileName();
    }
    return found;
}

} // namespace

TEST(KeychainStore, SavesReplacesAndRemovesOneItemPerAccountOfText)
{
    ASSERT_ON_THROWAWAY_SESSION();

    EXPECT_EQ(load(anthropic), std::nullopt);
    remove(anthropic);
    EXPECT_EQ(itemsOf(anthropic), 0);

    save(QStringLiteral("sk-ant-KEYMARKER-first"), anthropic);
    EXPECT_EQ(load(anthropic), QStringLiteral("sk-ant-KEYMARKER-first"));
    EXPECT_EQ(itemsOf(anthropic), 1);

    // Saving again replaces: still one item, holding the new key, trimmed.
    save(QStringLiteral("\n  sk-ant-KEYMARKER-ßecond\u00e9\t\r\n"), anthropic);
    EXPECT_EQ(load(anthropic), QStringLiteral("sk-ant-KEYMARKER-ßecond\u00e9"));
    EXPECT_EQ(itemsOf(anthropic), 1);

    // The two accounts are separate items.
    save(QStringLiteral("sk-proj-KEYMARKER"), openai);
    EXPECT_EQ(load(openai), QStringLiteral("sk-proj-KEYMARKER"));
    EXPECT_EQ(load(anthropic), QStringLiteral("sk-ant-KEYMARKER-ßecond\u00e9"));

    // Blanks only remove the item.
    save(QStringLiteral(" \t\n\u00a0"), anthropic);
    EXPECT_EQ(load(anthropic), std::nullopt);
    EXPECT_EQ(itemsOf(anthropic), 0);
    EXPECT_EQ(load(openai), QStringLiteral("sk-proj-KEYMARKER"));

    remove(openai);
    EXPECT_EQ(load(openai), std::nullopt);
    EXPECT_EQ(itemsOf(openai), 0);

    // Nothing of it went to a settings file.
    EXPECT_EQ(filesWithMarker(qEnvironmentVariable("XDG_CONFIG_HOME")), QStringList());
    EXPECT_EQ(filesWithMarker(qEnvironmentVariable("HOME")), QStringList());

    // A secret that is not UTF-8 reads as none.
    QKeychain::WritePasswordJob job(KeychainStore::service);
    job.setAutoDelete(false);
    job.setKey(anthropic);
    job.setBinaryData(QByteArray("KEYMARKER\xff\xfe", 11));
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    ASSERT_EQ(job.error(), QKeychain::NoError) << job.errorString().toStdString();

    EXPECT_EQ(load(anthropic), std::nullopt);
    remove(anthropic);
    EXPECT_EQ(itemsOf(anthropic), 0);

    // Calls made one after the other without waiting take effect in that order: a removal
    // never lands before the write of an earlier save, nor a load before either.
    KeychainStore::save(QStringLiteral("sk-ant-KEYMARKER-a"), anthropic);
    KeychainStore::remove(anthropic);
    const QFuture<std::optional<QString>> afterRemoval = KeychainStore::load(anthropic);
    KeychainStore::save(QStringLiteral("sk-ant-KEYMARKER-b"), anthropic);
    KeychainStore::save(QStringLiteral("sk-ant-KEYMARKER-c"), anthropic);
    const QFuture<std::optional<QString>> afterSaves = KeychainStore::load(anthropic);
    EXPECT_FALSE(afterRemoval.isFinished()) << "the caller never waits";
    EXPECT_EQ(answer(afterRemoval), std::nullopt);
    EXPECT_EQ(answer(afterSaves), QStringLiteral("sk-ant-KEYMARKER-c"));
    EXPECT_EQ(itemsOf(anthropic), 1);
    remove(anthropic);
}

TEST(KeychainStoreUnreachable, EverythingIsSilentAndNothingIsKept)
{
    ASSERT_ON_THROWAWAY_SESSION();

    QElapsedTimer clock;
    clock.start();
    save(QStringLiteral("sk-ant-KEYMARKER"), anthropic);
    EXPECT_EQ(load(anthropic), std::nullopt);
    save(QStringLiteral("  "), openai);
    remove(anthropic);
    EXPECT_EQ(load(openai), std::nullopt);
    // Failing fast: no call waits for a D-Bus timeout.
    EXPECT_LT(clock.elapsed(), 10000);

    // The key did not go to a file instead: not to the settings, not anywhere.
    EXPECT_EQ(filesWithMarker(sessionDir), QStringList());
    EXPECT_EQ(filesWithMarker(qEnvironmentVariable("SAGWERK_TEST_TMP")), QStringList());
}
