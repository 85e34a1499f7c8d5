// The batch road: transcribe into the history, then export with the bundle's corrections.
#include "Cli.h"
#include "JsonSchema.h"
#include "Media.h"

#include "core/HistoryItem.h"
#include "export/TextForms.h"
#include "review/Corrections.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

TEST(CliSaveExport, TranscribeIntoTheHistoryAndExportWithCorrections)
{
    ASSERT_FALSE(qEnvironmentVariable("SAGWERK_SESSION_DIR").isEmpty());
    const QString audio = Media::tone(QStringLiteral("mp3"));

    // The settings' model (Small) is not there: the job's own message.
    const CliRun missing = cli({"transcribe", audio, "--save"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Modell Small ist nicht installiert. Bitte in den Einstellungen herunterladen.\n");
    // --model takes a catalogue id also without --save, with the same message.
    const CliRun missingById = cli({"transcribe", audio, "--model", "small-q5_1"});
    EXPECT_EQ(missingById.status, 1);
    EXPECT_EQ(missingById.err, missing.err);

    Media::installBase();
    const CliRun byId = cli({"transcribe", audio, "--model", "base-q5_1", "--language", "de"});
    ASSERT_EQ(byId.status, 0) << byId.err.toStdString();
    EXPECT_TRUE(byId.out.contains("\"language\": \"de\"")) << byId.out.toStdString();
    EXPECT_TRUE(BundleStore::list().isEmpty()) << "without --save nothing is stored";

    const CliRun saved = cli({"transcribe", audio, "--save", "--model", "base-q5_1", "--language", "de"});
    ASSERT_EQ(saved.status, 0) << saved.err.toStdString();
    const QString folder = QString::fromUtf8(saved.out).trimmed();
    EXPECT_TRUE(QFile::exists(folder + "/sagwerk.json"));
    EXPECT_TRUE(folder.startsWith(BundleStore::root()));
    // Naming a model for one run leaves the user's choice alone.
    EXPECT_FALSE(QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).contains("selectedModelId"));

    const QList<LoadedBundle> bundles = BundleStore::list();
    ASSERT_EQ(bundles.size(), 1);
    HistoryItem item = BundleStore::historyItem(bundles.first());
    ASSERT_FALSE(item.result.fullText.isEmpty());
    // A rule for the first word of the transcript, so that it certainly applies.
    Correction rule;
    rule.from = item.result.fullText.section(u' ', 0, 0);
    rule.to = QStringLiteral("ERSETZT");
    BundleStore::saveCorrections(folder, {rule});

    const CliRun txt = cli({"export", folder, "--format", "txt"});
    ASSERT_EQ(txt.status, 0) << txt.err.toStdString();
    EXPECT_EQ(QString::fromUtf8(txt.out), Corrections::apply({rule}, TextForms::plainText(item.result, true)).text);
    EXPECT_TRUE(txt.out.contains("ERSETZT"));
    EXPECT_EQ(QString::fromUtf8(cli({"export", folder, "--format", "txt", "--no-timestamps"}).out),
              Corrections::apply({rule}, item.result.fullText).text);
    // Subtitles carry the correction too, like every other form.
    const QString outFile = QDir::tempPath() + "/../export.srt";
    EXPECT_EQ(cli({"export", folder, "--format", "srt", "--output", outFile}).status, 0);
    const QString srt = QString::fromUtf8(Media::readFile(outFile));
    EXPECT_EQ(srt.count(QStringLiteral(" --> ")), item.result.segments.size());
    EXPECT_TRUE(srt.contains(QStringLiteral("ERSETZT"))) << srt.toStdString();
    QFile::remove(outFile);
    const CliRun vtt = cli({"export", folder, "--format", "vtt"});
    ASSERT_EQ(vtt.status, 0) << vtt.err.toStdString();
    EXPECT_TRUE(vtt.out.startsWith("WEBVTT\n")) << vtt.out.toStdString();
    EXPECT_TRUE(vtt.out.contains("ERSETZT"));
    // The whole transcript as JSON, in the documented form, naming the model that heard it.
    const CliRun json = cli({"export", folder, "--format", "json"});
    ASSERT_EQ(json.status, 0) << json.err.toStdString();
    QFile schemaFile(QStringLiteral(SAGWERK_TRANSCRIPT_SCHEMA));
    ASSERT_TRUE(schemaFile.open(QIODevice::ReadOnly));
    const QJsonObject doc = QJsonDocument::fromJson(json.out).object();
    EXPECT_EQ(JsonSchema::violations(QJsonDocument::fromJson(schemaFile.readAll()).object(), doc), QStringList());
    EXPECT_EQ(doc["model"], QStringLiteral("ggml-base-q5_1.bin"));
    EXPECT_EQ(doc["segments"].toArray().size(), item.result.segments.size());

    // The folder as shell completion writes it, and through a symbolic link.
    const QString link = QDir::tempPath() + "/../bundle-link";
    QFile::remove(link);
    ASSERT_TRUE(QFile::link(folder, link));
    for (const QString &named : {folder + u'/', link, link + u'/'}) {
        const CliRun again = cli({"export", named, "--format", "txt"});
        EXPECT_EQ(again.status, 0) << named.toStdString() << ": " << again.err.toStdString();
        EXPECT_EQ(again.out, txt.out) << named.toStdString();
    }
    QFile::remove(link);

    const CliRun notABundle = cli({"export", QDir::tempPath(), "--format", "txt"});
    EXPECT_EQ(notABundle.status, 1);
    EXPECT_TRUE(notABundle.err.contains("keine lesbare Transkription"));
    EXPECT_EQ(cli({"export", folder, "--format", "pdf"}).status, 2);
    // The command line speaks the user's locale, not the application's setting.
    QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).setValue("appLanguage", "sv");
    QProcessEnvironment french = QProcessEnvironment::systemEnvironment();
    french.insert("LC_ALL", "fr_FR.UTF-8");
    french.insert("LANGUAGE", "fr");
    const CliRun inFrench = cli({"export", QDir::tempPath(), "--format", "txt"}, {}, french);
    EXPECT_TRUE(inFrench.err.contains("n’est pas une transcription lisible")) << inFrench.err.toStdString();
    QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).remove("appLanguage");

    // With --save, a model file outside the catalogue runs as given and is stored like any
    // other job; a file that is not there gets the job's own message.
    const CliRun byPath = cli({"transcribe", audio, "--save", "--model", Media::tinyModel(), "--language", "de"});
    ASSERT_EQ(byPath.status, 0) << byPath.err.toStdString();
    EXPECT_EQ(BundleStore::list().size(), 2);
    EXPECT_EQ(BundleStore::list().first().url.toUtf8(), byPath.out.trimmed());
    // Several files go one after the other, each printed as it is stored; a broken one is
    // named with its reason and does not stop the rest, and the run reports the failure.
    const QString broken = Media::textFileNamedMp3();
    const CliRun batch = cli({"transcribe", audio, broken, Media::tone(QStringLiteral("wav")), "--save", "--model",
                              Media::tinyModel(), "--language", "de"});
    EXPECT_EQ(batch.status, 1);
    const QStringList folders = QString::fromUtf8(batch.out).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(folders.size(), 2) << batch.out.toStdString();
    EXPECT_TRUE(batch.err.startsWith((broken + ": Audio konnte nicht").toUtf8())) << batch.err.toStdString();
    EXPECT_EQ(BundleStore::list().size(), 4);
    for (const QString &f : folders)
        EXPECT_TRUE(QFile::exists(f + "/sagwerk.json"));
    BundleStore::remove(folders[0]);
    BundleStore::remove(folders[1]);
    EXPECT_EQ(cli({"transcribe", audio, audio, "--model", Media::tinyModel()}).status, 2) << "JSON is for one file";

    const CliRun noFile = cli({"transcribe", audio, "--save", "--model", "/nonexistent/model.bin"});
    EXPECT_EQ(noFile.status, 1);
    EXPECT_EQ(noFile.err, "Kein Modell ausgewählt/installiert.\n");
    EXPECT_EQ(BundleStore::list().size(), 2);
    // Ctrl-C during the job: the user's text, and nothing stored.
    const QStringList minute{"transcribe", Media::tone(QStringLiteral("opus"), 60.0), "--save", "--model", "base-q5_1"};
    QElapsedTimer clock;
    clock.start();
    const CliRun interrupted = cli(minute, [&] { return clock.elapsed() > 300; });
    EXPECT_EQ(interrupted.status, 130) << interrupted.err.toStdString();
    EXPECT_EQ(interrupted.err, "Abgebrochen.\n");
    EXPECT_EQ(BundleStore::list().size(), 2);
    EXPECT_FALSE(QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).contains("selectedModelId"));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
