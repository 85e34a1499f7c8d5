// The speaker job through the application state: the diarisation child played by a
// script in the throw-away home's vendor folder, the models already in place or served
// from 127.0.0.1, the AI provider played by a server there too.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include "app/AppModel.h"
#include "speakers/DiarizationModels.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

namespace {

QByteArray anthropicAnswer(const QString &text)
{
    return QJsonDocument(QJsonObject{{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", text}}}}})
        .toJson(QJsonDocument::Compact);
}

class SpeakerJobs : public ::testing::Test {
protected:
    void SetUp() override
    {
        home = useThrowawayHome();
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        const QString base = server.base().toString().chopped(1);
        qputenv("ANTHROPIC_BASE_URL", base.toUtf8());
        qputenv("SAGWERK_SPEAKER_MODEL_HOST", base.toUtf8());
        qputenv("SAGWERK_DIARIZE_PROGRAM", (home + "/Developer/SagwerkMac/vendor/sherpa-diarize").toUtf8());
        Media::writeFile(DiarizationModels::segPath(), "seg");
        Media::writeFile(DiarizationModels::embPath(), "emb");

        TranscriptionResult result;
        result.segments = {
            {.startMs = 0, .endMs = 900, .text = "Guten Tag.", .words = {{"Guten", 0, 400}, {"Tag.", 400, 900}}},
            {.startMs = 1000, .endMs = 1900, .text = "Hallo zurück.",
             .words = {{"Hallo", 1000, 1400}, {"zurück.", 1400, 1900}}}};
        result.fullText = "Guten Tag. Hallo zurück.";
        result.language = "de";
        audio = Media::tone(QStringLiteral("wav"));
        bundle = BundleStore::create("Gespräch.wav", QDateTime::currentDateTime(), audio, result).url;
    }
    void TearDown() override
    {
        qunsetenv("ANTHROPIC_BASE_URL");
        qunsetenv("SAGWERK_SPEAKER_MODEL_HOST");
    }

    // The stand-in program: it records its arguments, reports progress and prints `spans`.
    void child(const QByteArray &spans, const QByteArray &more = {})
    {
        const QString path = home + "/Developer/SagwerkMac/vendor/sherpa-diarize";
        Media::writeFile(path, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$(dirname \"$0\")/args\"\n"
                               "echo 'progress 45.5%' >&2\n"
                               + more + "printf '" + spans + "'\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString recordedArguments() const
    {
        return QString::fromUtf8(Media::readFile(home + "/Developer/SagwerkMac/vendor/args"));
    }

    static HistoryItem itemOf(const AppModel &app, const QString &bundle)
    {
        for (const HistoryItem &h : app.history()) {
            if (h.bundleURL == bundle)
                return h;
        }
        ADD_FAILURE() << "no item";
        return {};
    }
    // Runs a job for the bundle's item to its end and gives every status it showed.
    QStringList detect(AppModel &app)
    {
        QStringList statuses;
        QObject::connect(&app.speakerJob(), &SpeakerJob::statusChanged, &app, [&] {
            if (app.speakerJob().status())
                statuses << *app.speakerJob().status();
        });
        app.setCurrent(itemOf(app, bundle));
        app.detectSpeakers(itemOf(app, bundle));
        EXPECT_TRUE(app.current()->speakerBusy);
        EXPECT_TRUE(itemOf(app, bundle).speakerBusy) << "history and current in step";
        EXPECT_TRUE(waitFor([&] { return !app.current()->speakerBusy; }));
        app.disconnect(&app.speakerJob(), &SpeakerJob::statusChanged, &app, nullptr);
        EXPECT_EQ(app.speakerJob().status(), std::nullopt);
        return statuses;
    }

    LocalServer server;
    QString home, audio, bundle;
    const QString messages = QStringLiteral("/v1/messages");
};

} // namespace

TEST_F(SpeakerJobs, ByVoiceWithoutKeyStoresTheLabels)
{
    child("0.0 -- 0.95 speaker_3\\n0.95 -- 2.0 speaker_1\\n");
    {
        AppModel app;
        const QStringList statuses = detect(app);
        EXPECT_EQ(app.errorMessage(), std::nullopt);
        const QString labelled = "Sprecher 1: Guten Tag.\nSprecher 2: Hallo zurück.";
        EXPECT_EQ(app.current()->speakerText, labelled);
        EXPECT_EQ(itemOf(app, bundle).speakerText, labelled);
        EXPECT_EQ(statuses.first(), "Sprecher werden erkannt…");
        EXPECT_TRUE(statuses.contains("Bereite Audio auf…"));
        EXPECT_TRUE(statuses.contains("Stimmen trennen… 45 %")) << statuses.join(" | ").toStdString();
        EXPECT_FALSE(statuses.contains("Lade Sprecher-Modelle (einmalig)…")) << "the models were in place";
        // speakerCount 0: the program finds the count itself, at the fixed threshold.
        EXPECT_TRUE(recordedArguments().startsWith("--clustering.cluster-threshold=0.9\n"));
        EXPECT_EQ(server.totalHits(), 0) << "no key, no AI";

        // A fixed count goes to the program; a failure keeps the earlier text.
        app.setSpeakerCount(2);
        child("", "exit 3\n");
        detect(app);
        EXPECT_TRUE(recordedArguments().startsWith("--clustering.num-clusters=2\n"));
        EXPECT_EQ(app.errorMessage(), "Sprechertrennung fehlgeschlagen: Exit 3");
        EXPECT_EQ(app.current()->speakerText, labelled);

        // A count chosen for one run goes to the program and leaves the setting alone.
        app.setErrorMessage(std::nullopt);
        SpeakerJob::Overrides three;
        three.speakerCount = 3;
        app.detectSpeakers(itemOf(app, bundle), three);
        ASSERT_TRUE(waitFor([&] { return !app.current()->speakerBusy; }));
        EXPECT_TRUE(recordedArguments().startsWith("--clustering.num-clusters=3\n"));
        EXPECT_EQ(app.speakerCount(), 2);
    }
    AppModel restarted;
    EXPECT_EQ(itemOf(restarted, bundle).speakerText, "Sprecher 1: Guten Tag.\nSprecher 2: Hallo zurück.");
    EXPECT_NO_TEMPORARY_FILES();
}

// Offline, the model download says so in words and offers to try again; once the host
// answers, the retry runs the whole job.
TEST_F(SpeakerJobs, AFailedModelDownloadSaysWhyAndRetries)
{
    child("0.0 -- 0.95 speaker_0\\n0.95 -- 2.0 speaker_1\\n");
    QFile::remove(DiarizationModels::embPath());
    const QByteArray gone = LocalServer().base().toString().chopped(1).toUtf8();
    qputenv("SAGWERK_SPEAKER_MODEL_HOST", gone);
    AppModel app;
    detect(app);
    EXPECT_EQ(app.errorMessage(), "Sprecher-Modelle konnten nicht geladen werden: Der Server ist nicht erreichbar. "
                                  "Bitte die Internetverbindung prüfen.");
    EXPECT_FALSE(app.errorDetails().isEmpty()) << "the transfer layer's own words, for a closer look";
    ASSERT_TRUE(app.errorRetry());

    qputenv("SAGWERK_SPEAKER_MODEL_HOST", server.base().toString().chopped(1).toUtf8());
    server.answer(DiarizationModels::embURL().path(), {.body = "emb"});
    const std::function<void()> retry = app.errorRetry();
    app.setErrorMessage(std::nullopt);
    retry();
    EXPECT_TRUE(app.current()->speakerBusy);
    ASSERT_TRUE(waitFor([&] { return !app.current()->speakerBusy; }));
    EXPECT_EQ(app.errorMessage(), std::nullopt);
    EXPECT_EQ(app.current()->speakerText, "Sprecher 1: Guten Tag.\nSprecher 2: Hallo zurück.");
    EXPECT_TRUE(QFile::exists(DiarizationModels::embPath()));
}

TEST_F(SpeakerJobs, TheAINamesTwoSpeakersButNotOne)
{
    AppModel app;
    app.setActiveModelId("claude-haiku-4-5");
    app.saveAnthropicKey("sk-ant-test");
    server.answer(messages, {.body = anthropicAnswer("Moderatorin: Guten Tag.\nGast: Hallo zurück.")});

    child("0.0 -- 0.95 speaker_3\\n0.95 -- 2.0 speaker_1\\n");
    QStringList statuses = detect(app);
    EXPECT_TRUE(statuses.contains("KI ergänzt Namen und Rollen…"));
    EXPECT_EQ(app.current()->speakerText, "Moderatorin: Guten Tag.\nGast: Hallo zurück.");
    ASSERT_EQ(server.hits(messages), 1);
    EXPECT_TRUE(server.bodies(messages).last().contains("Sprecher 1: Guten Tag.\\nSprecher 2: Hallo zur"));

    // One voice: the plain text, and no request.
    child("0.0 -- 2.0 speaker_0\\n");
    statuses = detect(app);
    EXPECT_FALSE(statuses.contains("KI ergänzt Namen und Rollen…"));
    EXPECT_EQ(app.current()->speakerText, "Guten Tag. Hallo zurück.");
    EXPECT_EQ(server.hits(messages), 1);

    // A failing AI leaves the text of before and says why.
    server.answer(messages, {.status = 500, .body = R"({"error":{"message":"überlastet"}})"});
    child("0.0 -- 0.95 speaker_3\\n0.95 -- 2.0 speaker_1\\n");
    detect(app);
    EXPECT_EQ(app.errorMessage(), "API-Fehler (500): überlastet");
    EXPECT_EQ(app.current()->speakerText, "Guten Tag. Hallo zurück.");
}

TEST_F(SpeakerJobs, CancelAndASecondCallWhileBusy)
{
    child("", "echo started > \"$(dirname \"$0\")/started\"; sleep 30\n");
    AppModel app;
    app.setCurrent(itemOf(app, bundle));
    app.detectSpeakers(itemOf(app, bundle));
    ASSERT_TRUE(waitFor([&] { return QFile::exists(home + "/Developer/SagwerkMac/vendor/started"); }));
    // The item is busy: a second call changes nothing.
    app.detectSpeakers(itemOf(app, bundle));
    app.cancelSpeakers();
    ASSERT_TRUE(waitFor([&] { return !app.current()->speakerBusy; }, 10'000));
    EXPECT_EQ(app.errorMessage(), std::nullopt) << "a cancel shows nothing";
    EXPECT_EQ(app.current()->speakerText, std::nullopt);
    EXPECT_EQ(app.speakerJob().status(), std::nullopt);

    // A cancel while the AI puts names on the voices stops the request under way.
    app.setActiveModelId("claude-haiku-4-5");
    app.saveAnthropicKey("sk-ant-test");
    server.answer(messages, {.body = anthropicAnswer("A: Guten Tag.\nB: Hallo zurück."), .holdAfter = 0});
    child("0.0 -- 0.95 speaker_3\n0.95 -- 2.0 speaker_1\n");
    app.detectSpeakers(itemOf(app, bundle));
    ASSERT_TRUE(waitFor([&] { return server.held() == 1; }));
    app.cancelSpeakers();
    EXPECT_TRUE(waitFor([&] { return !app.current()->speakerBusy; }, 5'000));
    EXPECT_EQ(app.errorMessage(), std::nullopt);
    EXPECT_EQ(app.current()->speakerText, std::nullopt);
    server.release();
    app.saveAnthropicKey({}); // the keyring outlives a test
    EXPECT_NO_TEMPORARY_FILES();
}

TEST_F(SpeakerJobs, WithoutAudioTheAIAloneDividesTheText)
{
    QFile::remove(QDir(bundle).entryInfoList({"*.wav"}, QDir::Files).value(0).absoluteFilePath());
    AppModel app;
    app.setActiveModelId("claude-haiku-4-5");
    app.saveAnthropicKey({}); // the keyring outlives a test
    app.detectSpeakers(itemOf(app, bundle));
    EXPECT_EQ(app.errorMessage(),
              "Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.");
    EXPECT_TRUE(app.showSettings());
    EXPECT_FALSE(itemOf(app, bundle).speakerBusy);

    app.setErrorMessage(std::nullopt);
    app.saveAnthropicKey("sk-ant-test");
    server.answer(messages, {.body = anthropicAnswer("A: Guten Tag.\nB: Hallo zurück.")});
    app.setCurrent(itemOf(app, bundle));
    const QStringList statuses = detect(app);
    EXPECT_EQ(statuses, QStringList{"Sprecher werden erkannt…"});
    EXPECT_EQ(app.errorMessage(), std::nullopt);
    EXPECT_EQ(app.current()->speakerText, "A: Guten Tag.\nB: Hallo zurück.");
    EXPECT_TRUE(server.bodies(messages).last().contains("Guten Tag. Hallo zur"));
}

TEST_F(SpeakerJobs, TheCommandLineSeparatesStoresAndExports)
{
    AppModel().saveAnthropicKey({}); // the keyring outlives a test
    const CliRun none = cli({"export", bundle, "--format", "txt", "--view", "speakers"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "Diese Transkription hat keinen Sprechertext.\n");

    child("0.95 -- 2.0 speaker_1\\n0.0 -- 0.95 speaker_3\\n");
    const CliRun json = cli({"speakers", bundle, "--speakers", "2", "--json"});
    ASSERT_EQ(json.status, 0) << json.err.constData();
    EXPECT_TRUE(recordedArguments().startsWith("--clustering.num-clusters=2\n"));
    const QJsonObject answer = QJsonDocument::fromJson(json.out).object();
    EXPECT_EQ(answer["speakerText"], "Sprecher 1: Guten Tag.\nSprecher 2: Hallo zurück.");
    const QJsonArray spans = answer["spans"].toArray();
    ASSERT_EQ(spans.size(), 2);
    EXPECT_EQ(spans[0].toObject(), (QJsonObject{{"start", 0.0}, {"end", 0.95}, {"speaker", 3}}));

    const CliRun exported = cli({"export", bundle, "--format", "txt", "--view", "speakers", "--no-timestamps"});
    EXPECT_EQ(exported.status, 0);
    EXPECT_EQ(exported.out, "Sprecher 1: Guten Tag.\nSprecher 2: Hallo zurück.");

    child("0.0 -- 2.0 speaker_0\\n");
    const CliRun plain = cli({"speakers", bundle});
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.out, "Guten Tag. Hallo zurück.\n");
    EXPECT_TRUE(recordedArguments().startsWith("--clustering.cluster-threshold=0.9\n")) << "the settings' count, 0";

    child("", "exit 3\n");
    const CliRun failed = cli({"speakers", bundle});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, "Sprechertrennung fehlgeschlagen: Exit 3\n");

    child("", "echo started > \"$(dirname \"$0\")/started\"; sleep 30\n");
    const CliRun interrupted = cli({"speakers", bundle}, [&] {
        return QFile::exists(home + "/Developer/SagwerkMac/vendor/started");
    });
    EXPECT_EQ(interrupted.status, 130);
    EXPECT_EQ(interrupted.err, "Abgebrochen.\n");

    EXPECT_EQ(cli({"speakers", bundle, "--speakers", "zwei"}).status, 2);
    EXPECT_EQ(cli({"speakers"}).status, 2);
    const CliRun missing = cli({"speakers", home + "/nichts"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.endsWith("ist keine lesbare Transkription.\n"));
    EXPECT_NO_TEMPORARY_FILES();
}
