// sagwerk-cli list over real bundle folders in a throwaway data folder.
#include "Cli.h"

#include "storage/BundleStore.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTimeZone>

// The command's local time is UTC+13:45 in January.
static const bool chatham = qputenv("TZ", "Pacific/Chatham");

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
    BundleStore::saveRefined(newer.url, 1, "Hello.");
    QDir().mkpath(BundleStore::root() + "/no-document");

    const CliRun plain = cli({"list"});
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(QString::fromUtf8(plain.out),
              "16.01.2024 23:15\tTalk\ten\t" + newer.url + "\n15.01.2024 23:45\tVortrag.mp3\tde\t" + older.url + "\n");

    const CliRun json = cli({"list", "--json"});
    EXPECT_EQ(json.status, 0);
    const QJsonArray items = QJsonDocument::fromJson(json.out).array();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]["id"], newer.url);
    EXPECT_EQ(items[0]["date"], "2024-01-16T09:30:00Z");
    EXPECT_EQ(items[0]["audioURL"], newer.url + "/audio.m4a");
    EXPECT_EQ(items[0]["smoothed"], (QJsonObject{{"1", "Hello."}}));

    EXPECT_EQ(cli({"list", "extra"}).status, 2);
}
