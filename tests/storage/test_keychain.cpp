// The key store against a real Secret Service (gnome-keyring on a private session bus),
// and where none can be reached. with-secret-service.sh sets up the session; the tests
// refuse to run on any other, so the developer's own keyring is never touched.
// Every key here contains the marker that CTest looks for in the output.
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

    EXPECT_EQ(KeychainStore::load(anthropic), std::nullopt);
    KeychainStore::remove(anthropic);
    EXPECT_EQ(itemsOf(anthropic), 0);

    KeychainStore::save(QStringLiteral("sk-ant-KEYMARKER-first"), anthropic);
    EXPECT_EQ(KeychainStore::load(anthropic), QStringLiteral("sk-ant-KEYMARKER-first"));
    EXPECT_EQ(itemsOf(anthropic), 1);

    // Saving again replaces: still one item, holding the new key, trimmed.
    KeychainStore::save(QStringLiteral("\n  sk-ant-KEYMARKER-ßecond\u00e9\t\r\n"), anthropic);
    EXPECT_EQ(KeychainStore::load(anthropic), QStringLiteral("sk-ant-KEYMARKER-ßecond\u00e9"));
    EXPECT_EQ(itemsOf(anthropic), 1);

    // The two accounts are separate items.
    KeychainStore::save(QStringLiteral("sk-proj-KEYMARKER"), openai);
    EXPECT_EQ(KeychainStore::load(openai), QStringLiteral("sk-proj-KEYMARKER"));
    EXPECT_EQ(KeychainStore::load(anthropic), QStringLiteral("sk-ant-KEYMARKER-ßecond\u00e9"));

    // Blanks only remove the item.
    KeychainStore::save(QStringLiteral(" \t\n\u00a0"), anthropic);
    EXPECT_EQ(KeychainStore::load(anthropic), std::nullopt);
    EXPECT_EQ(itemsOf(anthropic), 0);
    EXPECT_EQ(KeychainStore::load(openai), QStringLiteral("sk-proj-KEYMARKER"));

    KeychainStore::remove(openai);
    EXPECT_EQ(KeychainStore::load(openai), std::nullopt);
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

    EXPECT_EQ(KeychainStore::load(anthropic), std::nullopt);
    KeychainStore::remove(anthropic);
    EXPECT_EQ(itemsOf(anthropic), 0);
}

TEST(KeychainStoreUnreachable, EverythingIsSilentAndNothingIsKept)
{
    ASSERT_ON_THROWAWAY_SESSION();

    QElapsedTimer clock;
    clock.start();
    KeychainStore::save(QStringLiteral("sk-ant-KEYMARKER"), anthropic);
    EXPECT_EQ(KeychainStore::load(anthropic), std::nullopt);
    KeychainStore::save(QStringLiteral("  "), openai);
    KeychainStore::remove(anthropic);
    EXPECT_EQ(KeychainStore::load(openai), std::nullopt);
    // Failing fast: no call waits for a D-Bus timeout.
    EXPECT_LT(clock.elapsed(), 10000);

    // The key did not go to a file instead: not to the settings, not anywhere.
    EXPECT_EQ(filesWithMarker(sessionDir), QStringList());
    EXPECT_EQ(filesWithMarker(qEnvironmentVariable("SAGWERK_TEST_TMP")), QStringList());
}
