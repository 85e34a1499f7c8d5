// Bundle folders on real files in a throwaway data folder.
#include "Media.h"

#include "core/HistoryItem.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace BundleStore;

inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}

namespace {

// Local time far from UTC (UTC+13:45 in January), set before anything reads the zone.
const bool chatham = qputenv("TZ", "Pacific/Chatham");
const QDateTime january(QDate(2024, 1, 15), QTime(10, 0, 0), QTimeZone::UTC);
const QString local = QStringLiteral("2024-01-15_23-45-00_");

// Writes beyond `bytes` fail as on a full disk, for root too.
struct FileSizeLimit {
    rlimit old{};
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old);
        const rlimit limit{bytes, old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old); }
};

TranscriptionResult sampleResult()
{
    TranscriptSegment a{QUuid::createUuid(), 0, 1500, "Halbe/halbe, siehe https://example.org",
                        {{"Halbe/halbe,", 0, 700}, {"siehe", 700, 1500}}};
    TranscriptSegment b{QUuid::createUuid(), 1500, 2000, "Ende.", {}};
    return {a.text + " Ende.", {a, b}, "de", 1.25};
}

QByteArray doc(const QString &createdAt, const std::function<void(QJsonObject &)> &change = {})
{
    QJsonObject o{{"displayName", "x"}, {"createdAt", createdAt}, {"language", "de"}, {"processingSeconds", 2},
                  {"audioFileName", "audio.wav"}, {"fullText", "a"}, {"smoothed", QJsonObject{}},
                  {"segments", QJsonArray{QJsonObject{{"startMs", 0}, {"endMs", 10}, {"text", "a"}}}}};
    if (change)
        change(o);
    return QJsonDocument(o).toJson();
}

using Media::readFile;
using Media::writeFile;

QJsonObject document(const QString &bundle)
{
    return QJsonDocument::fromJson(readFile(bundle + "/sagwerk.json")).object();
}

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

class Bundles : public ::testing::Test {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", home.path().toLocal8Bit()); }

    QString root() const { return home.path() + "/Sagwerk/Aufnahmen"; }
    QString source(const QString &name)
    {
        writeFile(home.path() + "/in/" + name, "audio");
        return home.path() + "/in/" + name;
    }
    QString folder(const QString &name, const QByteArray &content)
    {
        writeFile(root() + u'/' + name + "/sagwerk.json", content);
        return root() + u'/' + name;
    }
    QStringList listed() const
    {
        QStringList names;
        for (const LoadedBundle &b : list())
            names << QFileInfo(b.url).fileName();
        return names;
    }

    QTemporaryDir home;
};

} // namespace

TEST(BundleFolderName, LocalDateAndASafeNameOfSixtyCharacters)
{
    // The cut comes first, then the trim; a cluster counts once and is never split.
    const QString kept = QString(56, u'x') + "👩‍👩‍👧‍👦" + "👍🏽" + "🇩🇪" + "e\u0301";
    const std::pair<QString, QString> names[] = {{"Interview.mp3", "Interview"}, {" \t\u00a0 ", "Sagwerk"},
        {"Bericht.final.m4a", "Bericht.final"}, {R"(a//b\c:d?e%f*g|h"i<j>k.wav)", "a--b-c-d-e-f-g-h-i-j-k"},
        {".hidden", ".hidden"}, {QString(59, u'a') + u' ' + QString(10, u'b'), QString(59, u'a')}, {kept + "tail", kept}};
    for (const auto &[name, folder] : names)
        EXPECT_EQ(folderName(name, january), local + folder);
}

TEST_F(Bundles, CreateWritesTheDocumentAndTheAudioCopy)
{
    const QDateTime createdAt = january.addMSecs(654);
    const QString name = QStringLiteral("Vortrag: Teil 1/2.mp3");
    const LoadedBundle b = create(name, createdAt, source("talk.MP3"), sampleResult());

    EXPECT_EQ(b.url, root() + u'/' + local + "Vortrag- Teil 1-2");
    EXPECT_EQ(entries(b.url), (QStringList{"audio.MP3", "sagwerk.json"}));
    EXPECT_EQ(readFile(b.url + "/audio.MP3"), "audio");

    const QByteArray raw = readFile(b.url + "/sagwerk.json");
    EXPECT_TRUE(raw.contains("Teil 1\\/2.mp3") && raw.contains("https:\\/\\/example.org"));
    EXPECT_FALSE(QString::fromUtf8(raw).contains(QRegularExpression(R"((?<!\\)/)"))) << raw.toStdString();
    const QJsonObject json = document(b.url);
    EXPECT_EQ(json.keys(), (QStringList{"audioFileName", "createdAt", "displayName", "fullText", "language",
                                        "processingSeconds", "segments", "smoothed"}));
    EXPECT_EQ(json["createdAt"], "2024-01-15T10:00:00Z");
    EXPECT_EQ(json["segments"][0].toObject().keys(), (QStringList{"endMs", "startMs", "text", "words"}));
    EXPECT_EQ(json["segments"][0]["words"][0], (QJsonObject{{"text", "Halbe/halbe,"}, {"startMs", 0}, {"endMs", 700}}));

    ASSERT_EQ(list().size(), 1);
    BundleData expected = b.data;
    expected.createdAt = january;
    EXPECT_TRUE(list()[0].data == expected) << "read back with whole seconds, otherwise unchanged";

    const HistoryItem item = historyItem(list()[0]);
    EXPECT_EQ(item.id, b.url);
    EXPECT_EQ(item.fileName, name);
    ASSERT_EQ(item.result.segments.size(), 2);
    EXPECT_NE(item.result.segments[0].id, item.result.segments[1].id);
}

TEST_F(Bundles, SuffixesMissingExtensionAndMissingSource)
{
    for (const QString suffix : {"", "-2", "-3"}) {
        const LoadedBundle b = create("Notiz", january, source("aufnahme"), sampleResult());
        EXPECT_EQ(b.url, root() + u'/' + local + "Notiz" + suffix);
        EXPECT_EQ(readFile(b.url + "/audio.m4a"), "audio");
    }
    // Any entry occupies a name, a dangling link too.
    QFile::link(root() + "/nowhere", root() + u'/' + local + "Notiz-4");
    EXPECT_EQ(uniqueDir(root() + u'/' + local + "Notiz"), root() + u'/' + local + "Notiz-5");

    const LoadedBundle gone = create("Weg.ogg", january, home.path() + "/gone.ogg", sampleResult());
    EXPECT_EQ(entries(gone.url), QStringList{"sagwerk.json"});
    EXPECT_EQ(gone.data.audioFileName, "audio.ogg");
}

TEST_F(Bundles, FailedCreateThrowsAndLeavesNoDocument)
{
    writeFile(home.path() + "/Sagwerk", "a file where the root should be");
    try {
        create("a", january, source("a.wav"), sampleResult());
        ADD_FAILURE() << "no throw";
    } catch (const BundleError &e) {
        EXPECT_EQ(e.kind(), BundleError::Case::folderNotCreated);
    }
    EXPECT_EQ(entries(home.path()), (QStringList{"Sagwerk", "in"}));
    QFile::remove(home.path() + "/Sagwerk");

    // A number JSON cannot hold, and a full disk: the folder keeps its audio, but there is
    // no document, whole or partial, and no temporary file.
    TranscriptionResult endless = sampleResult();
    endless.processingSeconds = std::nan("");
    EXPECT_THROW(create("nan", january, source("n.wav"), endless), BundleError);
    {
        FileSizeLimit limit(64);
        EXPECT_THROW(create("voll", january, source("v.wav"), sampleResult()), BundleError);
    }
    EXPECT_EQ(entries(root()), (QStringList{local + "nan", local + "voll"}));
    EXPECT_EQ(entries(root() + u'/' + local + "nan"), QStringList{"audio.wav"});
    EXPECT_EQ(entries(root() + u'/' + local + "voll"), QStringList{"audio.wav"});
    EXPECT_TRUE(list().isEmpty());
}

TEST_F(Bundles, ListSkipsWhatDoesNotDecodeAndSortsNewestFirst)
{
    for (const char *name : {"p", "q", "r", "s"})
        folder(name, doc("2024-01-03T10:00:00Z"));
    folder("offset", doc("2024-01-04T12:00:00+02:00"));
    folder("old", doc("2024-01-02T10:00:00Z", [](QJsonObject &o) {
               o["segments"] = QJsonArray{QJsonObject{{"startMs", 0}, {"endMs", 5}, {"text", "a"}, {"words", {}}},
                                          QJsonObject{{"startMs", 5}, {"endMs", 9}, {"text", "b"}}};
               o["speakerText"] = QJsonValue();
           }));

    const QString bad = QStringLiteral("2024-01-09T10:00:00Z");
    folder("broken", "{ \"displayName\": ");
    folder("array", "[]");
    folder("fraction", doc("2024-01-09T10:00:00.500Z"));
    folder("no-zone", doc("2024-01-09T10:00:00"));
    folder("no-smoothed", doc(bad, [](QJsonObject &o) { o.remove("smoothed"); }));
    folder("speakerText-number", doc(bad, [](QJsonObject &o) { o["speakerText"] = 5; }));
    folder("half-ms", doc(bad, [](QJsonObject &o) {
               o["segments"] = QJsonArray{QJsonObject{{"startMs", 0.5}, {"endMs", 10}, {"text", "a"}}};
           }));
    folder("rule-without-wholeWord", doc(bad, [](QJsonObject &o) {
               o["corrections"] = QJsonArray{QJsonObject{{"id", "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
                                                         {"from", "a"}, {"to", "b"}, {"caseSensitive", false}}};
           }));
    QDir().mkpath(root() + "/dir-as-document/sagwerk.json");
    QDir().mkpath(root() + "/empty");
    writeFile(root() + "/stray.json", doc(bad));
    if (geteuid() != 0) // root reads anything
        QFile::setPermissions(folder("unreadable", doc(bad)) + "/sagwerk.json", {});

    // Equal dates stay in the order of the directory listing.
    QStringList same;
    for (QDirIterator it(root(), QDir::Dirs | QDir::NoDotAndDotDot); it.hasNext();) {
        const QString name = it.nextFileInfo().fileName();
        if (name.size() == 1)
            same << name;
    }
    EXPECT_EQ(listed(), QStringList{"offset"} + same + QStringList{"old"});

    const HistoryItem old = historyItem(list().last());
    EXPECT_FALSE(old.speakerText);
    EXPECT_TRUE(old.corrections.isEmpty());
    EXPECT_TRUE(old.result.segments[0].words.isEmpty() && old.result.segments[1].words.isEmpty());
    EXPECT_TRUE(QFileInfo::exists(root() + "/broken/sagwerk.json")) << "nothing unreadable is deleted";
}


TEST_F(Bundles, OnlyDecimalKeysOfSmoothedBecomeLevels)
{
    const QString bundle = create("Stufen", january, source("s.wav"), sampleResult()).url;
    QJsonObject json = document(bundle);
    json["smoothed"] = QJsonObject{{"1", "eins"}, {"+1", "plus"}, {"04", "vier"}, {"2\n", "Zeilenende"},
                                   {" 3", "Leerzeichen"}, {"x", "kein Level"}, {"99999999999999999999", "zu groß"}};
    writeFile(bundle + "/sagwerk.json", QJsonDocument(json).toJson());
    EXPECT_EQ(historyItem(list()[0]).refined, (QMap<qint64, QString>{{1, "eins"}, {4, "vier"}}));
}

TEST_F(Bundles, PatchesChangeOneFieldAndKeepTheRest)
{
    const QString bundle = create("Patch", january, source("p.wav"), sampleResult()).url;
    QJsonObject json = document(bundle);
    json["futureKey"] = "from a newer version";
    json["smoothed"] = QJsonObject{{"entwurf", "kein Level"}};
    writeFile(bundle + "/sagwerk.json", QJsonDocument(json).toJson());
    const BundleData before = list()[0].data;

    saveRefined(bundle, 2, "glatt");
    saveRefined(bundle, 2, "glatter");
    const Correction rule{QUuid::createUuid(), "Sagwerk", "SAGWERK", true, false};
    const Correction other{QUuid::createUuid(), "ähm", "", false, true};
    saveCorrections(bundle, {rule, other});
    saveSpeakerText(bundle, "Sprecher 1: Hallo");
    saveSpeakerNames(bundle, {{"Sprecher 1", "Diane Miller"}});
    saveDisplayName(bundle, "Umbenannt");

    json = document(bundle);
    EXPECT_FALSE(json.contains("futureKey"));
    EXPECT_EQ(json["smoothed"], (QJsonObject{{"entwurf", "kein Level"}, {"2", "glatter"}}));
    EXPECT_EQ(json["corrections"][0], (QJsonObject{{"id", rule.id.toString(QUuid::WithoutBraces).toUpper()},
                                                   {"from", "Sagwerk"}, {"to", "SAGWERK"},
                                                   {"caseSensitive", true}, {"wholeWord", false}}));
    const HistoryItem item = historyItem(list()[0]);
    EXPECT_EQ(item.corrections, (QList<Correction>{rule, other}));
    EXPECT_EQ(item.speakerNames, (QMap<QString, QString>{{"Sprecher 1", "Diane Miller"}}));
    EXPECT_EQ(item.fileName, "Umbenannt");
    EXPECT_EQ(QFileInfo(bundle).exists(), true) << "the folder keeps its name";
    BundleData after = list()[0].data;
    after.refined = before.refined;
    after.corrections = before.corrections;
    after.speakerText = before.speakerText;
    after.speakerNames = before.speakerNames;
    after.displayName = before.displayName;
    EXPECT_TRUE(after == before) << "no other field changed";

    saveSpeakerNames(bundle, {});
    EXPECT_FALSE(document(bundle).contains("speakerNames")) << "no names, no key";
    // A names value of the wrong form makes the document unreadable, as any mistyped key does.
    json = document(bundle);
    json["speakerNames"] = QJsonObject{{"Sprecher 1", 3}};
    EXPECT_FALSE(BundleData::decode(QJsonDocument(json).toJson()).has_value());

    saveCorrections(bundle, {});
    EXPECT_FALSE(document(bundle).contains("corrections"));
    EXPECT_EQ(document(bundle)["speakerText"], "Sprecher 1: Hallo");
    EXPECT_EQ(entries(bundle), (QStringList{"audio.wav", "sagwerk.json"}));
}

TEST_F(Bundles, FailedPatchesAndRemovalsLeaveTheRestAlone)
{
    const QString broken = folder("broken", "{ \"smoothed\": {} ");
    const QString incomplete = folder("incomplete", doc("2024-01-05T10:00:00Z", [](QJsonObject &o) {
                                          o.remove("smoothed");
                                      }));
    const QString full = create("Voll", january, source("v.wav"), sampleResult()).url;
    QList<QByteArray> before;
    for (const QString &bundle : {broken, incomplete, full})
        before << readFile(bundle + "/sagwerk.json");
    saveRefined(broken, 1, "x");
    saveCorrections(incomplete, {});
    {
        FileSizeLimit limit(64);
        saveSpeakerText(full, "Sprecher 1: ein Text, der nicht mehr auf die Platte passt");
    }
    saveSpeakerText(root() + "/missing", "x");
    EXPECT_EQ(readFile(broken + "/sagwerk.json"), before[0]);
    EXPECT_EQ(readFile(incomplete + "/sagwerk.json"), before[1]);
    EXPECT_EQ(readFile(full + "/sagwerk.json"), before[2]);
    EXPECT_EQ(entries(full), (QStringList{"audio.wav", "sagwerk.json"}));
    EXPECT_FALSE(QFileInfo::exists(root() + "/missing"));

    // An empty or relative path must not reach the working directory.
    const QString previous = QDir::currentPath();
    QDir::setCurrent(root());
    remove(QString());
    remove(QStringLiteral("broken"));
    QDir::setCurrent(previous);
    remove(incomplete);
    EXPECT_EQ(entries(root()), (QStringList{local + "Voll", "broken"}));
}

TEST_F(Bundles, SummariesStepOverTheSegmentsAndReadTheRestAsAWhole)
{
    // Brackets, quotes, escapes and the key's own name inside strings must not end the
    // segments early or late.
    TranscriptionResult tricky = sampleResult();
    tricky.segments[0].text = QStringLiteral(R"(Er sagte: "segments": [ {"x": "\"]"} ] \ und } weiter)");
    tricky.segments[0].words = {{QStringLiteral("\\\""), 0, 10}, {QStringLiteral("]}"), 10, 20}};
    tricky.fullText = QStringLiteral(R"("segments": [] \" {)");
    const LoadedBundle made = create(QStringLiteral("Zitat"), january, source("z.wav"), tricky);
    saveSpeakerText(made.url, QStringLiteral("Sprecher 1: ]"));
    saveRefined(made.url, 2, QStringLiteral("{\"segments\"}"));

    folder("keys-after-segments", doc("2024-02-01T00:00:00Z", [](QJsonObject &o) {
        o.insert("segments", QJsonArray{QJsonObject{{"startMs", 0}, {"endMs", 1}, {"text", "[[["}}});
        o.insert("zzz", QJsonArray{1, QJsonObject{{"a", "]"}}});
    }));
    // The segments only have to hold together as JSON: what they say is read on opening.
    folder("odd-segments", doc("2024-03-01T00:00:00Z", [](QJsonObject &o) { o.insert("segments", QJsonArray{1, "x"}); }));
    QByteArray cut = doc("2024-04-01T00:00:00Z");
    folder("cut-in-segments", cut.left(cut.indexOf("\"startMs\"")));
    folder("segments-not-a-list", doc("2024-05-01T00:00:00Z", [](QJsonObject &o) { o.insert("segments", 5); }));
    folder("no-segments", doc("2024-06-01T00:00:00Z", [](QJsonObject &o) { o.remove("segments"); }));
    folder("bad-date", doc("gestern"));

    const QList<LoadedBundle> summaries = listSummaries();
    QStringList names;
    for (const LoadedBundle &b : summaries) {
        names << QFileInfo(b.url).fileName();
        EXPECT_TRUE(b.data.segments.isEmpty());
    }
    EXPECT_EQ(names, (QStringList{"odd-segments", "keys-after-segments", QFileInfo(made.url).fileName()}));

    // Apart from its segments, a summary is the whole document, and `load` reads that.
    const std::optional<LoadedBundle> whole = load(made.url);
    ASSERT_TRUE(whole.has_value());
    EXPECT_EQ(historyItem(*whole).result.segments.size(), 2);
    EXPECT_EQ(whole->data.segments[0].text, tricky.segments[0].text);
    BundleData withoutSegments = whole->data;
    withoutSegments.segments.clear();
    EXPECT_EQ(summaries.last().data, withoutSegments);
    EXPECT_FALSE(load(root() + "/odd-segments").has_value());
    EXPECT_FALSE(load(root() + "/nowhere").has_value());
}
