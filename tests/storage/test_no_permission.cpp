// Bundle folders this user may not read: one folder without any permission, one whose
// document cannot be read. The application and the command line start, show the rest and
// say nothing; asking for the unreadable one gets a message, not a crash.
//
// CI runs as root, for whom permissions do not count. So this process gives up the two
// capabilities that pass over them before anything reads, and runs its command-line
// children through setpriv without them.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include "app/AppModel.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr quint32 kOverride = (1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH);

// Clears or restores the two capabilities in this thread's effective set; threads made
// afterwards (the pool's) inherit it. They stay permitted, so they can come back.
bool setPassOverPermissions(bool on)
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2]{};
    if (::syscall(SYS_capget, &header, data) != 0)
        return false;
    data[0].effective = on ? data[0].effective | (data[0].permitted & kOverride) : data[0].effective & ~kOverride;
    return ::syscall(SYS_capset, &header, data) == 0;
}

CliRun cliWithoutOverride(const QStringList &args)
{
    if (::geteuid() != 0)
        return cli(args);
    QProcess p;
    p.start(QStringLiteral("setpriv"), QStringList{"--inh-caps=-dac_override,-dac_read_search",
                                                   "--bounding-set=-dac_override,-dac_read_search",
                                                   QStringLiteral(SAGWERK_CLI)} + args);
    EXPECT_TRUE(p.waitForFinished(60'000));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

LoadedBundle bundle(const QString &name)
{
    TranscriptionResult result;
    result.fullText = name + QStringLiteral(" spricht");
    result.language = QStringLiteral("de");
    result.segments = {TranscriptSegment{QUuid::createUuid(), 0, 900, result.fullText, {}}};
    return BundleStore::create(name, QDateTime::currentDateTimeUtc(), Media::tone("wav", 0.2), result);
}

} // namespace

TEST(NoPermission, UnreadableBundlesAreLeftOutWithoutAWord)
{
    useThrowawayHome();
    const LoadedBundle readable = bundle(QStringLiteral("Lesbar"));
    const LoadedBundle closed = bundle(QStringLiteral("Verschlossen"));
    const LoadedBundle hidden = bundle(QStringLiteral("Verborgen"));
    QList<QByteArray> documents;
    for (const LoadedBundle &b : {readable, closed, hidden})
        documents << Media::readFile(b.url + QStringLiteral("/sagwerk.json"));
    ASSERT_TRUE(QFile::setPermissions(closed.url, {}));
    ASSERT_TRUE(QFile::setPermissions(hidden.url + QStringLiteral("/sagwerk.json"), {}));
    ASSERT_TRUE(setPassOverPermissions(false));
    ASSERT_FALSE(QFile(hidden.url + QStringLiteral("/sagwerk.json")).open(QIODevice::ReadOnly))
        << "this process still passes over permissions";

    {
        AppModel app;
        ASSERT_EQ(app.history().size(), 1);
        EXPECT_EQ(app.history().first().fileName, QStringLiteral("Lesbar"));
        app.setCurrent(app.history().first());
        EXPECT_TRUE(waitFor([&] { return app.current() && !app.current()->segmentsPending; }));
        ASSERT_EQ(app.current()->result.segments.size(), 1);
        EXPECT_EQ(app.current()->result.segments.first().text, QStringLiteral("Lesbar spricht"));
        EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or(QString()).toStdString();
    }

    const CliRun listed = cliWithoutOverride({"list", "--json"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.err, "");
    const QJsonArray items = QJsonDocument::fromJson(listed.out).array();
    ASSERT_EQ(items.size(), 1) << listed.out.toStdString();
    EXPECT_TRUE(listed.out.contains(QDir(readable.url).dirName().toUtf8()));

    for (const LoadedBundle &b : {closed, hidden}) {
        const CliRun exported = cliWithoutOverride({"export", b.url, "--format", "txt"});
        EXPECT_EQ(exported.status, 1) << exported.err.toStdString();
        EXPECT_EQ(exported.out, "");
        EXPECT_FALSE(exported.err.trimmed().isEmpty());
    }

    // Nothing was written or taken away. (Read here: the pool's threads, made while
    // permissions counted, keep counting them.)
    ASSERT_TRUE(setPassOverPermissions(true));
    QFile::setPermissions(closed.url, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QList<QByteArray> after;
    for (const LoadedBundle &b : {readable, closed, hidden})
        after << Media::readFile(b.url + QStringLiteral("/sagwerk.json"));
    EXPECT_EQ(after, documents);
}
