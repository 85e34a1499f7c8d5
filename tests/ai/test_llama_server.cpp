// Both provider clients against a real llama-server (Debian's llama.cpp-tools) serving a
// tiny random model: the protocols are real, the answers nonsense. Skipped unless
// SAGWERK_LLAMA_SERVER names the running server; scripts/check-llama-server starts it.
#include "LocalServer.h"

#include "ai/Refiner.h"
#include "ai/AIError.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

// The answer, an empty answer, or the error's text.
QString outcome(QFuture<QString> future)
{
    waitFor([&] { return future.isFinished(); }, 120'000);
    try {
        return future.result();
    } catch (const AIError &error) {
        return error.kind() == AIError::Case::badResponse ? QString() : error.errorDescription();
    }
}

} // namespace

TEST(LlamaServer, BothClientsSpeakItsProtocols)
{
    const QString server = qEnvironmentVariable("SAGWERK_LLAMA_SERVER");
    if (server.isEmpty())
        GTEST_SKIP() << "SAGWERK_LLAMA_SERVER is not set";
    qputenv("ANTHROPIC_BASE_URL", server.toUtf8());
    qputenv("OPENAI_BASE_URL", (server + QStringLiteral("/v1")).toUtf8());
    const QString key = QStringLiteral("sagwerk-test-key");

    for (const QString &id : {QStringLiteral("gpt-4o-mini"), QStringLiteral("claude-haiku-4-5")}) {
        const AIModel model = AIModel::by(id);
        // Nonsense or nothing comes back, but never a failure of the exchange.
        const QString answer = outcome(Refiner::refine(QStringLiteral("äh also wir fangen an"), key, model, 1, false));
        EXPECT_FALSE(answer.startsWith(QStringLiteral("API-Fehler")) || answer.startsWith(QStringLiteral("Netzwerkfehler"))
                     || answer.startsWith(QStringLiteral("API-Key")))
            << qPrintable(id) << ": " << qPrintable(answer);
        std::printf("%s through llama-server: %lld characters of answer\n", qPrintable(id), qlonglong(answer.size()));
        EXPECT_EQ(outcome(Refiner::refine(QStringLiteral("Text"), QStringLiteral("wrong"), model, 1, false)),
                  QStringLiteral("API-Key ungültig (401). Bitte in den Einstellungen prüfen."))
            << qPrintable(id);
    }
}
