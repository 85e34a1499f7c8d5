// A refinement from the application state and from the command line, against a provider
// played by a server on 127.0.0.1; what it stores survives a restart.
#include "Cli.h"
#include "Home.h"
#include "StoredKey.h"

#include "app/AppModel.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QByteArray anthropicAnswer(const QString &text)
{
    return QJsonDocument(QJsonObject{{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", text}}}}})
        .toJson(QJsonDocument::Compact);
}

QByteArray openAIAnswer(const QString &text)
{
    return QJsonDocument(QJsonObject{{"choices", QJsonArray{QJsonObject{{"message", QJsonObject{{"content", text}}}}}}})
        .toJson(QJsonDocument::Compact);
}

class Refinements : public ::testing::Test {
protected:
    void SetUp() override
    {
        useThrowawayHome();
        const QString base = server.base().toString().chopped(1);
        qputenv("ANTHROPIC_BASE_URL", base.toUtf8());
        qputenv("OPENAI_BASE_URL", (base + QStringLiteral("/v1")).toUtf8());
        TranscriptionResult result;
        result.fullText = QStringLiteral("äh also wir wir fangen an");
        result.language = QStringLiteral("de");
        TranscriptSegment segment;
        segment.endMs = 2000;
        segment.text = result.fullText;
        result.segments = {segment};
        const QString audio = QDir::temp().filePath(QStringLiteral("a.wav"));
        QFile file(audio);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        bundle = BundleStore::create(QStringLiteral("Gespräch.wav"), QDateTime::currentDateTime(), audio, result).url;
    }

    static std::optional<HistoryItem> itemOf(const AppModel &app, const QString &bundle)
    {
        for (const HistoryItem &h : app.history()) {
            if (h.bundlePath == bundle)
                return h;
        }
        return std::nullopt;
    }

    LocalServer server;
    QString bundle;
    const QString messages = QStringLiteral("/v1/messages");
};

} // namespace

TEST_F(Refinements, ALevelLandsInTheItemAndTheBundle)
{
    {
        AppModel app;
        app.setAiModelId(QStringLiteral("claude-haiku-4-5"));
        app.setCurrent(itemOf(app, bundle));

        // Without a key nothing goes out, and the settings open.
        app.refine(*app.current(), 1);
        EXPECT_EQ(app.errorMessage(), QStringLiteral("Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in "
                                                     "den Einstellungen eintragen."));
        EXPECT_TRUE(app.showSettings());
        EXPECT_FALSE(app.current()->refiningLevel);

        app.saveAnthropicKey(QStringLiteral(" sk-ant-test \n"));
        server.answer(messages, {.body = anthropicAnswer(QStringLiteral("Also, wir fangen an.")), .holdAfter = 0});
        QFuture<void> done = app.refine(*app.current(), 2);
        EXPECT_EQ(app.current()->refiningLevel, 2);
        EXPECT_EQ(itemOf(app, bundle)->refiningLevel, 2) << "history and current in step";
        app.refine(*app.current(), 1);
        ASSERT_TRUE(waitFor([&] { return server.held() == 1; }));
        EXPECT_EQ(server.hits(messages), 1) << "one refinement per item at a time";
        server.release();
        ASSERT_TRUE(waitFor([&] { return done.isFinished(); }));
        EXPECT_EQ(app.current()->refined, (QMap<qint64, QString>{{2, "Also, wir fangen an."}}));
        EXPECT_FALSE(app.current()->refiningLevel);
        const QJsonObject request = QJsonDocument::fromJson(server.bodies(messages).last()).object();
        EXPECT_EQ(request["model"], "claude-haiku-4-5");
        EXPECT_EQ(request["messages"][0]["content"], "äh also wir wir fangen an");

        // A failure leaves the levels as they were and says why.
        server.answer(messages, {.status = 500, .body = R"({"error":{"message":"überlastet"}})"});
        done = app.refine(*app.current(), 1);
        ASSERT_TRUE(waitFor([&] { return done.isFinished(); }));
        EXPECT_EQ(app.errorMessage(), QStringLiteral("API-Fehler (500): überlastet"));
        EXPECT_EQ(app.current()->refined.keys(), QList<qint64>{2});
        EXPECT_FALSE(app.current()->refiningLevel);
    }
    AppModel restarted;
    EXPECT_EQ(itemOf(restarted, bundle)->refined, (QMap<qint64, QString>{{2, "Also, wir fangen an."}}));
}

TEST_F(Refinements, TheCommandLineRefinesAndExportsALevel)
{
    server.answer(QStringLiteral("/v1/chat/completions"), {.body = openAIAnswer(QStringLiteral("Wir fangen an."))});
    qputenv("OPENAI_API_KEY", "sk-KEYMARKER");
    const CliRun run = cli({"smooth", bundle, "--level", "3", "--model", "gpt-4o"});
    qunsetenv("OPENAI_API_KEY");
    EXPECT_EQ(run.status, 0) << run.err.constData();
    EXPECT_EQ(run.out, "Wir fangen an.\n");
    EXPECT_FALSE((run.out + run.err).contains("KEYMARKER"));
    EXPECT_TRUE(server.lastRequest(QStringLiteral("/v1/chat/completions")).contains("Bearer sk-KEYMARKER"));

    const CliRun level = cli({"export", bundle, "--format", "txt", "--view", "3"});
    EXPECT_EQ(level.status, 0);
    EXPECT_EQ(level.out, "Wir fangen an.");
    const CliRun missing = cli({"export", bundle, "--format", "txt", "--view", "2"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Diese Transkription hat keine Stufe 2.\n");

    // No key anywhere: the user's text, and nothing sent.
    const int before = server.totalHits();
    const CliRun noKey = cli({"smooth", bundle, "--level", "1", "--model", "gpt-4o"});
    EXPECT_EQ(noKey.status, 1);
    EXPECT_EQ(noKey.err, "Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.\n");
    EXPECT_EQ(server.totalHits(), before);
    EXPECT_EQ(cli({"smooth", bundle, "--level", "4"}).status, 2);

    // A key in the key store serves without any variable; it arrives a moment after start.
    const QFuture<void> saved = KeychainStore::save(QStringLiteral("sk-KEYMARKER-stored"),
                                                    QString(KeychainStore::openaiAccount));
    ASSERT_TRUE(waitFor([&] { return saved.isFinished(); }));
    const CliRun stored = cli({"smooth", bundle, "--level", "1", "--model", "gpt-4o"});
    KeychainStore::remove(QString(KeychainStore::openaiAccount));
    EXPECT_EQ(stored.status, 0) << stored.err.constData();
    EXPECT_EQ(stored.out, "Wir fangen an.\n");
    EXPECT_TRUE(server.lastRequest(QStringLiteral("/v1/chat/completions")).contains("Bearer sk-KEYMARKER-stored"));
    EXPECT_TRUE(storedKey(QString(KeychainStore::openaiAccount)) == std::nullopt);
}
