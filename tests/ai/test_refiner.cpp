// The refinement flows against providers played by a server on 127.0.0.1, which records
// every request; the chunker, the labels and the plausibility guard as tables.
#include "LocalServer.h"

#include "ai/Prompts.h"
#include "ai/Refiner.h"
#include "ai/AIError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

const AIModel claude = AIModel::by(QStringLiteral("claude-sonnet-5"));
const AIModel gpt = AIModel::by(QStringLiteral("gpt-4o-mini"));

QList<qsizetype> lengths(const QStringList &chunks)
{
    QList<qsizetype> result;
    for (const QString &c : chunks)
        result.append(c.size());
    return result;
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray anthropicAnswer(const QString &text)
{
    return json({{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", text}}}}, {"stop_reason", "end_turn"}});
}

QByteArray openAIAnswer(const QString &text)
{
    return json({{"choices", QJsonArray{QJsonObject{{"message", QJsonObject{{"role", "assistant"}, {"content", text}}},
                                                    {"finish_reason", "stop"}}}}});
}

// The text of a finished flow, or the user text of its error.
QString outcome(QFuture<QString> future)
{
    waitFor([&] { return future.isFinished(); }, 10'000);
    try {
        return future.result();
    } catch (const AIError &error) {
        return QStringLiteral("ERROR ") + error.errorDescription();
    }
}

QString words(int count, const QString &word = QStringLiteral("Wort"))
{
    return QStringList(count, word).join(u' ');
}

class Providers : public ::testing::Test {
protected:
    void SetUp() override
    {
        const QString base = server.base().toString().chopped(1);
        qputenv("ANTHROPIC_BASE_URL", base.toUtf8());
        qputenv("OPENAI_BASE_URL", (base + QStringLiteral("/v1")).toUtf8());
    }

    QJsonObject lastBody(const QString &path) const
    {
        return QJsonDocument::fromJson(server.bodies(path).last()).object();
    }

    LocalServer server;
    const QString messages = QStringLiteral("/v1/messages");
    const QString completions = QStringLiteral("/v1/chat/completions");
};

} // namespace

TEST(Chunking, CutsAtSentenceEndsAndHardWhereItMust)
{
    EXPECT_EQ(Refiner::chunk(QString(), 9000), QStringList{QString()});
    EXPECT_EQ(Refiner::chunk(QStringLiteral(" \n\u2028 "), 9000), QStringList{QString()});

    const QString lines = QString(4499, u'a') + u'\n' + QString(4500, u'b');
    EXPECT_EQ(Refiner::chunk(u"  " + lines + u"\n", 9000), QStringList{lines}) << "fits whole, line feed kept";
    EXPECT_EQ(lengths(Refiner::chunk(QString(9001, u'x'), 9000)), (QList<qsizetype>{9000, 1}));

    const QString longSentence = QString(20000, u'y') + u'.';
    const QStringList pieces = Refiner::chunk(QStringLiteral("Kurz. ") + longSentence + QStringLiteral(" Ende."), 9000);
    EXPECT_EQ(lengths(pieces), (QList<qsizetype>{5, 9000, 9000, 2007}));
    EXPECT_TRUE(pieces.last().endsWith(u". Ende."));

    // Umlauts count once in either form; CRLF is one character and ends nothing.
    const QString decomposed = QStringLiteral("a\u0308");
    EXPECT_EQ(Refiner::chunk(QString(decomposed).repeated(9000), 9000).size(), 1);
    EXPECT_EQ(lengths(Refiner::chunk(QStringLiteral("ab\r\n").repeated(3001), 9000)), (QList<qsizetype>{12000, 2}));

    EXPECT_EQ(Refiner::sentenceUnits(QStringLiteral("z. B. 3.5 Euro... \u201eJa!\u201c Zeile\nohne Ende"), 100),
              (QStringList{"z.", "B.", "3.", "5 Euro.", ".", ".", "\u201eJa!", "\u201c Zeile", "ohne Ende"}));
}

TEST(SpeakerLabels, FindLabelsAndGuardTheWordCount)
{
    const QString text = QStringLiteral("Sprecher 1: Hallo\n\n  Dr. Müller : Guten Tag\nSprecher 1: Wieder\n"
                                        ": leer\nohne Doppelpunkt\n%1: zu lang\neins zwei drei vier fünf sechs: nein\n"
                                        "eins zwei drei vier fünf: ja\n")
                             .arg(QString(41, u'x'));
    EXPECT_EQ(Refiner::speakerLabels(text),
              (QStringList{"Sprecher 1", "Dr. Müller", "eins zwei drei vier fünf"}));
    EXPECT_EQ(Refiner::speakerLabels(QString(40, u'x') + u':'), QStringList{QString(40, u'x')});

    const QString hundred = words(100);
    EXPECT_FALSE(Refiner::plausibleRefinement(hundred, words(59)));
    EXPECT_TRUE(Refiner::plausibleRefinement(hundred, words(60)));
    EXPECT_TRUE(Refiner::plausibleRefinement(hundred, words(140)));
    EXPECT_FALSE(Refiner::plausibleRefinement(hundred, words(141)));
    EXPECT_FALSE(Refiner::plausibleRefinement(QStringLiteral(" \n\u0085\u2028 "), QString()));
    EXPECT_TRUE(Refiner::plausibleRefinement(QStringLiteral("a\u2029b\u0085c"), QStringLiteral("x y z")));
}

TEST(Prompts, LevelsSentencesAndNotes)
{
    EXPECT_EQ(Prompts::systemPrompt(0, false), Prompts::systemPrompt(3, false));
    EXPECT_EQ(Prompts::systemPrompt(7, false), Prompts::systemPrompt(3, false));
    const QString gentle = Prompts::systemPrompt(1, false);
    EXPECT_TRUE(gentle.contains(QStringLiteral("Reihenfolge bei. Behalte die Sprache des Originals bei")));
    const QString aware = Prompts::systemPrompt(1, true);
    EXPECT_TRUE(aware.contains(QStringLiteral("Reihenfolge bei. Der Text ist nach Sprechern gegliedert")));
    EXPECT_TRUE(aware.contains(QStringLiteral("richtigen Sprecher zu. Behalte die Sprache")));

    EXPECT_EQ(Prompts::namingMessage({}, QStringLiteral("Text")), QStringLiteral("Text"));
    EXPECT_EQ(Prompts::detectionMessage({"Anna", "Sprecher 2"}, QStringLiteral("Text")),
              QStringLiteral("[Bereits erkannte Sprecher aus vorherigen Abschnitten: Anna, Sprecher 2. Verwende exakt "
                             "diese Bezeichnungen weiter, wenn dieselbe Person spricht. Gib nur den gegliederten Text "
                             "dieses Abschnitts zurück, ohne Kommentar.]\n\nText"));
}

TEST_F(Providers, RequestsCarryExactlyTheirFields)
{
    server.answer(messages, {.body = anthropicAnswer(QStringLiteral("  geglättet \n")), .contentType = "application/json"});
    server.answer(completions, {.body = openAIAnswer(QStringLiteral("\nglatt ")), .contentType = "application/json"});

    EXPECT_EQ(outcome(Refiner::refine(QStringLiteral("äh hallo"), QStringLiteral("sk-ant"), claude, 1, false)),
              QStringLiteral("geglättet"));
    // Header names compare without case.
    const QByteArray head = server.lastRequest(messages).toLower() + "\r\n";
    EXPECT_TRUE(head.startsWith("post /v1/messages "));
    EXPECT_TRUE(head.contains("\r\nx-api-key: sk-ant\r\n"));
    EXPECT_TRUE(head.contains("\r\nanthropic-version: 2023-06-01\r\n"));
    EXPECT_TRUE(head.contains("\r\ncontent-type: application/json\r\n"));
    EXPECT_EQ(lastBody(messages),
              (QJsonObject{{"model", "claude-sonnet-5"},
                           {"max_tokens", 8192},
                           {"system", Prompts::systemPrompt(1, false)},
                           {"messages", QJsonArray{QJsonObject{{"role", "user"}, {"content", "äh hallo"}}}}}));

    EXPECT_EQ(outcome(Refiner::refine(QStringLiteral("Text"), QStringLiteral("sk-oa"), gpt, 3, true)),
              QStringLiteral("glatt"));
    EXPECT_TRUE((server.lastRequest(completions).toLower() + "\r\n").contains("\r\nauthorization: bearer sk-oa\r\n"));
    EXPECT_EQ(lastBody(completions),
              (QJsonObject{{"model", "gpt-4o-mini"},
                           {"max_tokens", 16384},
                           {"messages", QJsonArray{QJsonObject{{"role", "system"},
                                                               {"content", Prompts::systemPrompt(3, true)}},
                                                   QJsonObject{{"role", "user"}, {"content", "Text"}}}}}));

    EXPECT_EQ(outcome(Refiner::refine(QStringLiteral("x"), QString(), claude, 1, false)),
              QStringLiteral("ERROR Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen "
                             "eintragen."));
    EXPECT_EQ(server.hits(messages), 1) << "no request without a key";
}

TEST_F(Providers, EveryAnswerShapeBecomesTextOrItsError)
{
    struct Case {
        const char *what;
        QString path;
        LocalServer::Answer answer;
        QString expected;
    };
    const QString bad = QStringLiteral("ERROR Unerwartete Antwort der API.");
    const QString refused = QStringLiteral("ERROR Die Anfrage wurde vom Modell abgelehnt.");
    const QList<Case> cases = {
        {"401 with a reason", messages, {.status = 401, .body = json({{"error", QJsonObject{{"message", "bad key"}}}})},
         QStringLiteral("ERROR API-Key ungültig (401). Bitte in den Einstellungen prüfen.")},
        {"429", completions, {.status = 429, .body = "{}"},
         QStringLiteral("ERROR Zu viele Anfragen (429). Bitte kurz warten und erneut versuchen.")},
        {"500 with an error object", messages,
         {.status = 500, .body = json({{"error", QJsonObject{{"message", "overloaded"}}}})},
         QStringLiteral("ERROR API-Fehler (500): overloaded")},
        {"503 with HTML", completions, {.status = 503, .body = "<html>down</html>"},
         QStringLiteral("ERROR API-Fehler (503): unbekannt")},
        {"204 empty", messages, {.status = 204, .body = ""}, bad},
        {"refusal with content", messages,
         {.body = json({{"stop_reason", "refusal"},
                        {"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", "trotzdem"}}}}})},
         refused},
        {"two text blocks and a tool block", messages,
         {.body = json({{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", "Erster "}},
                                               QJsonObject{{"type", "tool_use"}, {"text", "nein"}},
                                               QJsonObject{{"type", "text"}, {"text", "Zweiter"}}}}})},
         QStringLiteral("Erster Zweiter")},
        {"a block that is no object", messages,
         {.body = json({{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", "a"}}, 5}}})}, bad},
        {"whitespace only", messages, {.body = anthropicAnswer(QStringLiteral(" \n\t "))}, bad},
        {"content null", completions,
         {.body = json({{"choices", QJsonArray{QJsonObject{{"message", QJsonObject{{"content", QJsonValue::Null}}}}}}})},
         bad},
        {"content filter", completions,
         {.body = json({{"choices", QJsonArray{QJsonObject{{"finish_reason", "content_filter"},
                                                           {"message", QJsonObject{{"content", "x"}}}}}}})},
         refused},
        {"no choices", completions, {.body = json({{"choices", QJsonArray{}}})}, bad},
        {"whitespace only", completions, {.body = openAIAnswer(QStringLiteral("\n \n"))}, bad},
        {"no JSON", completions, {.body = "Hallo"}, bad},
    };
    for (const Case &c : cases) {
        server.answer(c.path, c.answer);
        const AIModel &model = c.path == messages ? claude : gpt;
        EXPECT_EQ(outcome(Refiner::refine(QStringLiteral("Text"), QStringLiteral("key"), model, 1, false)), c.expected)
            << c.what;
    }

    // A provider that cannot be reached is a network failure with the transfer's text.
    qputenv("ANTHROPIC_BASE_URL", "http://127.0.0.1:1");
    EXPECT_TRUE(outcome(Refiner::refine(QStringLiteral("Text"), QStringLiteral("key"), claude, 1, false))
                    .startsWith(QStringLiteral("ERROR Netzwerkfehler: ")));
}

TEST_F(Providers, LongTextsGoOutInChunksOneAfterTheOther)
{
    // Each answer names the chunk it answers, so the joins show.
    int answered = 0;
    server.respond(messages, [&](const QByteArray &, const QByteArray &) {
        ++answered;
        return LocalServer::Answer{.body = anthropicAnswer(QStringLiteral("Antwort %1").arg(answered))};
    });
    const QString sentence = words(9, QStringLiteral("Satzteil")) + u'.';
    const QString thirtyThousand = QStringList(400, sentence).join(u' ');
    ASSERT_GE(thirtyThousand.size(), 30000);

    EXPECT_EQ(outcome(Refiner::refine(thirtyThousand, QStringLiteral("k"), claude, 3, false)),
              QStringLiteral("Antwort 1"));
    EXPECT_EQ(lastBody(messages)["max_tokens"], 16384);
    EXPECT_EQ(lastBody(messages)["messages"][0]["content"], thirtyThousand) << "level 3 goes whole";

    answered = 0;
    const QString refined = outcome(Refiner::refine(thirtyThousand, QStringLiteral("k"), claude, 1, false));
    ASSERT_GE(answered, 4);
    QStringList expected;
    for (int i = 1; i <= answered; ++i)
        expected << QStringLiteral("Antwort %1").arg(i);
    EXPECT_EQ(refined, expected.join(QStringLiteral("\n\n")));
    EXPECT_EQ(lastBody(messages)["max_tokens"], 8192);

    // A text of exactly 9000 characters with line breaks goes out as given, untrimmed.
    const QString exact = QString(4499, u'a') + u'\n' + QString(4500, u'b');
    outcome(Refiner::refine(exact, QStringLiteral("k"), claude, 2, false));
    EXPECT_EQ(lastBody(messages)["messages"][0]["content"], exact);
}

TEST_F(Providers, SpeakerFlowsCarryTheLabelsAndKeepTheWords)
{
    // Three chunks of labelled speech; the answers rename the speakers as they go.
    const QString turn = QStringLiteral("Sprecher 1: ") + words(9, QStringLiteral("Hallo")) + QStringLiteral(".\n");
    const QString text = QStringList(300, turn).join(QString());
    const QList<QString> answers = {QStringLiteral("Anna: ") + words(600), QStringLiteral("Ben: ") + words(600),
                                    QStringLiteral("Anna: ") + words(600)};
    int answered = 0;
    server.respond(completions, [&](const QByteArray &, const QByteArray &) {
        return LocalServer::Answer{.body = openAIAnswer(answers.value(answered++, QStringLiteral("Carla: x")))};
    });
    const QString detected = outcome(Refiner::detectSpeakers(text, QStringLiteral("k"), gpt));
    ASSERT_EQ(server.bodies(completions).size(), 3);
    EXPECT_EQ(detected, QStringList(answers).join(u'\n'));
    const auto userMessage = [&](int i) {
        return QJsonDocument::fromJson(server.bodies(completions)[i])["messages"][1]["content"].toString();
    };
    EXPECT_TRUE(userMessage(0).startsWith(QStringLiteral("Sprecher 1: Hallo")));
    EXPECT_TRUE(userMessage(1).startsWith(QStringLiteral("[Bereits erkannte Sprecher aus vorherigen Abschnitten: Anna. ")));
    EXPECT_TRUE(userMessage(2).startsWith(QStringLiteral("[Bereits erkannte Sprecher aus vorherigen Abschnitten: Anna, Ben. ")));
    EXPECT_EQ(QJsonDocument::fromJson(server.bodies(completions)[0])["messages"][0]["content"], Prompts::detection());

    // Naming: 3 × 601 words against 3,300 are far too few, so the input comes back.
    answered = 0;
    EXPECT_EQ(outcome(Refiner::nameSpeakers(text, QStringLiteral("k"), gpt)), text);
    EXPECT_TRUE(userMessage(5).startsWith(QStringLiteral("[Bereits vergebene Sprecher-Bezeichnungen: Anna, Ben. ")));

    // A short text whose answer keeps the word count is taken.
    answered = 0;
    server.respond(completions, [&](const QByteArray &, const QByteArray &) {
        return LocalServer::Answer{.body = openAIAnswer(QStringLiteral("Anna: Guten Tag.\nBen: Hallo."))};
    });
    EXPECT_EQ(outcome(Refiner::nameSpeakers(QStringLiteral("Sprecher 1: Guten Tag.\nSprecher 2: Hallo."),
                                               QStringLiteral("k"), gpt)),
              QStringLiteral("Anna: Guten Tag.\nBen: Hallo."));

    // The third chunk fails: nothing of the first two comes back.
    answered = 0;
    server.respond(completions, [&](const QByteArray &, const QByteArray &) {
        return ++answered < 3 ? LocalServer::Answer{.body = openAIAnswer(QStringLiteral("Anna: gut"))}
                              : LocalServer::Answer{.status = 500, .body = json({{"error", QJsonObject{{"message", "weg"}}}})};
    });
    EXPECT_EQ(outcome(Refiner::detectSpeakers(text, QStringLiteral("k"), gpt)), QStringLiteral("ERROR API-Fehler (500): weg"));
}
