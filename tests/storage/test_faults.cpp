// Crashes in the middle of writing: a transcription saved into the history and patches of
// a stored one, each killed with SIGKILL at random moments. Afterwards every bundle is
// whole or absent, and nothing half-made or temporary is left.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include "storage/BundleStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

namespace {

// Starts `program`, kills it with SIGKILL after `delayMs` (or lets it end), and waits.
void killAfter(const QString &program, const QStringList &args, int delayMs)
{
    QProcess p;
    p.start(program, args);
    ASSERT_TRUE(p.waitForStarted());
    QElapsedTimer clock;
    clock.start();
    waitFor([&] { return p.state() == QProcess::NotRunning || clock.elapsed() >= delayMs; }, delayMs + 1000);
    if (p.state() != QProcess::NotRunning)
        ::kill(pid_t(p.processId()), SIGKILL);
    ASSERT_TRUE(waitFor([&] { return p.state() == QProcess::NotRunning; }));
}

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// The history as `sagwerk-cli list --json` and the bundle reader see it, after which no
// folder of the root is anything but a whole bundle. Returns the number of bundles.
qsizetype checkHistory()
{
    const CliRun listed = cli({"list", "--json"});
    EXPECT_EQ(listed.status, 0) << listed.err.toStdString();
    const QJsonArray json = QJsonDocument::fromJson(listed.out).array();
    const QList<LoadedBundle> bundles = BundleStore::list();
    EXPECT_EQ(json.size(), bundles.size()) << listed.out.toStdString();
    const QStringList folders = entries(BundleStore::root());
    // Listing removed the rubble of dead writers: every folder is a bundle.
    EXPECT_EQ(folders.size(), bundles.size()) << folders.join(u' ').toStdString();
    for (const QString &name : folders) {
        const QString folder = BundleStore::root() + u'/' + name;
        const std::optional<LoadedBundle> bundle = BundleStore::load(folder);
        EXPECT_TRUE(bundle) << name.toStdString();
        if (!bundle)
            continue;
        EXPECT_FALSE(bundle->data.fullText.isEmpty());
        EXPECT_EQ(entries(folder), (QStringList{bundle->data.audioFileName, "sagwerk.json"})) << name.toStdString();
    }
    return bundles.size();
}

} // namespace

TEST(Faults, SavedTranscriptionKilledAtRandomMoments)
{
    useThrowawayHome();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Sagwerk";
    Media::installTinyModel(data + "/models", QStringLiteral("ggml-base-q5_1.bin"));
    const QString audio = Media::tone(QStringLiteral("mp3"), 1.0);
    const QStringList args{"transcribe", audio, "--save", "--model", "base-q5_1", "--language", "de"};

    // One whole run gives the span over which the kills fall.
    QElapsedTimer clock;
    clock.start();
    const CliRun whole = cli(args);
    ASSERT_EQ(whole.status, 0) << whole.err.toStdString();
    const int span = int(clock.elapsed()) + 50;
    ASSERT_EQ(checkHistory(), 1);

    QRandomGenerator random(20261124);
    for (int i = 0; i < 50; ++i)
        killAfter(QStringLiteral(SAGWERK_CLI), args, random.bounded(span));
    const qsizetype saved = checkHistory();
    EXPECT_GE(saved, 1);
    EXPECT_LE(saved, 51);
}

TEST(Faults, PatchesKilledAtRandomMoments)
{
    useThrowawayHome();
    TranscriptionResult result;
    result.fullText = QStringLiteral("eins zwei drei");
    result.language = QStringLiteral("de");
    result.segments = {TranscriptSegment{QUuid::createUuid(), 0, 900, result.fullText, {}}};
    const QString bundle = BundleStore::create("Patch", QDateTime::currentDateTimeUtc(), Media::tone("wav", 0.2), result).url;

    QRandomGenerator random(1124);
    for (int i = 0; i < 50; ++i) {
        killAfter(QStringLiteral(SAGWERK_PATCH_LOOP), {bundle}, 5 + random.bounded(120));
        // Whole after every kill: the document reads, and its fields are from one patch each.
        const std::optional<LoadedBundle> loaded = BundleStore::load(bundle);
        ASSERT_TRUE(loaded) << "kill " << i;
        EXPECT_EQ(loaded->data.fullText, result.fullText);
        if (loaded->data.speakerText) {
            EXPECT_TRUE(loaded->data.speakerText->startsWith("Sprecher 1: "));
        }
    }
    EXPECT_EQ(checkHistory(), 1);
    EXPECT_NO_TEMPORARY_FILES();
}

TEST(Faults, ModelDownloadKilledAtRandomMoments)
{
    useThrowawayHome();
    const QString models = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Sagwerk/models";
    const QString target = models + "/ggml-base-q5_1.bin";
    const qint64 bound = 57 * 900'000;
    Media::writeFile(target, "old model");
    ASSERT_TRUE(QFile::resize(target, bound + 1));
    LocalServer server;
    const QByteArray body = randomBytes(bound + 4096);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body});
    const QStringList args{"download", "base-q5_1", "--from", server.base().toString()};

    QElapsedTimer clock;
    clock.start();
    // The whole download once, then the old model back, for the span of the kills.
    ASSERT_EQ(cli(args).status, 0);
    const int span = int(clock.elapsed()) + 50;
    QRandomGenerator random(57);
    for (int i = 0; i < 20; ++i) {
        Media::writeFile(target, "old model");
        ASSERT_TRUE(QFile::resize(target, bound + 1));
        killAfter(QStringLiteral(SAGWERK_CLI), args, random.bounded(span));
        // The old model or the whole new one; a hidden staging file is never counted.
        const QByteArray model = Media::readFile(target);
        EXPECT_TRUE(model.startsWith("old model") || model == body) << "kill " << i;
        for (const QString &name : entries(models))
            EXPECT_TRUE(name == "ggml-base-q5_1.bin" || name.startsWith(u'.')) << name.toStdString();
        const CliRun listed = cli({"models"});
        EXPECT_EQ(listed.status, 0);
    }
}

TEST(Faults, LinkDownloadKilledAtRandomMoments)
{
    useThrowawayHome();
    const QString models = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Sagwerk/models";
    Media::installTinyModel(models, QStringLiteral("ggml-base-q5_1.bin"));
    const QByteArray model = Media::readFile(models + "/ggml-base-q5_1.bin");
    LocalServer server;
    const QString media = server.base().resolved(QUrl("media/folge")).toString();
    server.answer("/feed", {.body = "<rss><channel><item><title>Die Folge</title><enclosure url=\"" + media.toUtf8()
                                    + "\"/></item></channel></rss>",
                            .contentType = "application/rss+xml"});
    server.answer("/media/folge", {.body = Media::readFile(Media::tone(QStringLiteral("mp3"), 1.0)),
                                   .contentType = "audio/mpeg"});
    const QStringList args{"transcribe", server.base().resolved(QUrl("feed")).toString(), "--save", "--model",
                           "base-q5_1", "--language", "de"};

    QElapsedTimer clock;
    clock.start();
    ASSERT_EQ(cli(args).status, 0);
    const int span = int(clock.elapsed()) + 50;
    QRandomGenerator random(2637);
    for (int i = 0; i < 20; ++i)
        killAfter(QStringLiteral(SAGWERK_CLI), args, random.bounded(span));
    // The history is whole, and the models folder holds its model as it was.
    const qsizetype saved = checkHistory();
    EXPECT_GE(saved, 1);
    EXPECT_EQ(entries(models), QStringList{"ggml-base-q5_1.bin"});
    EXPECT_TRUE(Media::readFile(models + "/ggml-base-q5_1.bin") == model);
    EXPECT_EQ(cli(args).status, 0);
    EXPECT_EQ(checkHistory(), saved + 1);
    // That last run cleared what the killed downloads left in the temporary folder.
    EXPECT_NO_TEMPORARY_FILES();
}
