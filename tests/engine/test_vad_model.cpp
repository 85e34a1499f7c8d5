// The voice-activity model fetched from a host played by a server on 127.0.0.1.
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "engine/VadModel.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

const QString modelPath = QStringLiteral("/ggml-org/whisper-vad/resolve/main/ggml-silero-v6.2.0.bin");

class VadModelFetch : public ::testing::Test {
protected:
    void SetUp() override
    {
        useThrowawayHome();
        qputenv("SAGWERK_VAD_MODEL_HOST", server.base().toString().toUtf8());
    }
    void TearDown() override { qunsetenv("SAGWERK_VAD_MODEL_HOST"); }

    QString ensure()
    {
        QFuture<QString> run = VadModel::ensure();
        EXPECT_TRUE(waitFor([&] { return run.isFinished(); }));
        return run.result();
    }

    QStringList modelsFolder() const
    {
        return QDir(QFileInfo(VadModel::path()).absolutePath()).entryList(QDir::Files | QDir::Hidden);
    }

    LocalServer server;
};

} // namespace

TEST_F(VadModelFetch, FetchesTheModelOnceAndKeepsIt)
{
    const QByteArray model = QByteArrayLiteral("lmgg") + QByteArray(4000, '\x2a');
    server.answer(modelPath, {.body = model, .contentType = QByteArray("application/octet-stream")});
    EXPECT_FALSE(VadModel::installed());
    EXPECT_EQ(ensure(), VadModel::path());
    EXPECT_EQ(Media::readFile(VadModel::path()), model);
    EXPECT_EQ(modelsFolder(), QStringList{QStringLiteral("ggml-silero-v6.2.0.bin")});
    // There: no network.
    EXPECT_EQ(ensure(), VadModel::path());
    EXPECT_EQ(server.totalHits(), 1);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

// A host without the file, one that answers a page with status 200, and none at all:
// recognition goes on without the model, and nothing is left behind.
TEST_F(VadModelFetch, WithoutTheModelNothingIsLeft)
{
    server.answer(modelPath, {.body = "<html>rate limited</html>", .contentType = QByteArray("text/html")});
    EXPECT_EQ(ensure(), QString());
    server.answer(modelPath, {.status = 404, .body = "lmgg but not found"});
    EXPECT_EQ(ensure(), QString());
    qputenv("SAGWERK_VAD_MODEL_HOST", "http://127.0.0.1:9");
    EXPECT_EQ(ensure(), QString());
    EXPECT_FALSE(VadModel::installed());
    EXPECT_TRUE(modelsFolder().isEmpty());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
