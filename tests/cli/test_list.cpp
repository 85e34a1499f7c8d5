// sagwerk-cli list over real bundle folders in a throwaway data folder.
#include "storage/BundleStore.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace {

// The command's local time is UTC+13:45 in January.
const bool chatham = qputenv("TZ", "Pacific/Chatham");

QByteArray cli(const QStringList &args, int *status)
{
    QProcess p;
    p.start(QStringLiteral(SAGWERK_CLI), args);
    p.waitForFinished(-1);
    *status = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return p.readAllStandardOutput();
}

} // namespace

TEST(CliList, PrintsTheHistoryNewestFirst)
{
    QTemporaryDir home;
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    TranscriptionResult result{"Guten Tag", {}, "de", 1.0};
    const LoadedBundle older = BundleStore::create(
        "Vortrag.mp3", QDateTime(QDate(2024, 1, 15), QTime(10, 0), QTimeZone::UTC), "/none.wav", result);
    result.language = "en";
    const LoadedBundle newer =
        BundleStore::create("Talk", QDateTime(QDate(2024, 1, 16), QTime(9, 30), QTimeZone::UTC), "/none", result);
    BundleStore::saveSmoothed(newer.url, 1, "Hello.");
    QDir().mkpath(BundleStore::root() + "/no-document");

    int status = -1;
    EXPECT_EQ(QString::fromUtf8(cli({"list"}, &status)),
              "16.01.2024 23:15\tTalk\ten\t" + newer.url + "\n15.01.2024 23:45\tVortrag.mp3\tde\t" + older.url + "\n");
    EXPECT_EQ(status, 0);

    const QJsonArray items = QJsonDocument::fromJson(cli({"list", "--json"}, &status)).array();
    EXPECT_EQ(status, 0);
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]["id"], newer.url);
    EXPECT_EQ(items[0]["date"], "2024-01-16T09:30:00Z");
    EXPECT_EQ(items[0]["audioURL"], newer.url + "/audio.m4a");
    EXPECT_EQ(items[0]["smoothed"], (QJsonObject{{"1", "Hello."}}));

    cli({"list", "extra"}, &status);
    EXPECT_EQ(status, 2);
}
