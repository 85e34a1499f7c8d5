// The model store against a real models folder in a throwaway home and a real HTTP
// server on 127.0.0.1.
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "app/ModelStore.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace {

const WhisperModel &base = WhisperModel::all().at(0);
const WhisperModel &small = WhisperModel::all().at(1);
const WhisperModel &medium = WhisperModel::all().at(2);

qint64 bound(const WhisperModel &model)
{
    return qint64(model.approxSizeMB) * 900'000;
}

void writeFile(const QString &path, qint64 size, const QByteArray &marker = "old model")
{
    Media::writeFile(path, marker);
    ASSERT_TRUE(QFile::resize(path, size));
}

class ModelStoreTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        home = useThrowawayHome();
        models = home + QStringLiteral("/.local/share/Sagwerk/models");
    }

    QString modelPath(const WhisperModel &model) const { return models + u'/' + model.fileName; }

    static void waitForDownloads(const ModelStore &store)
    {
        ASSERT_TRUE(waitFor([&] { return store.downloading().isEmpty(); }));
    }

    QString home, models;
};

} // namespace


TEST_F(ModelStoreTest, FolderStateFollowsSizesAndTheFolderIsWatched)
{
    ModelStore store;
    EXPECT_EQ(store.modelsDir(), models);
    EXPECT_TRUE(store.installed().isEmpty());

    // A file of exactly 90 % of the catalogue size is not enough; one byte more is.
    for (const WhisperModel &model : WhisperModel::all()) {
        writeFile(modelPath(model), bound(model));
        EXPECT_FALSE(store.isInstalled(model)) << model.id.toStdString();
        writeFile(modelPath(model), bound(model) + 1);
        EXPECT_TRUE(store.isInstalled(model)) << model.id.toStdString();
    }
    writeFile(modelPath(medium), bound(medium));
    int installedSignals = 0;
    QObject::connect(&store, &ModelStore::installedChanged, [&] { ++installedSignals; });
    store.refresh();
    EXPECT_EQ(store.installed(), (QSet<QString>{"base-q5_1", "small-q5_1", "large-v3-turbo-q5_0"}));
    EXPECT_EQ(installedSignals, 1);

    // Another program renames a model into place, as the command line's import does, or
    // removes one: the store sees it without being asked.
    const QString staged = models + QStringLiteral("/.import.part");
    writeFile(staged, bound(medium) + 1);
    ASSERT_EQ(std::rename(QFile::encodeName(staged).constData(), QFile::encodeName(modelPath(medium)).constData()), 0);
    ASSERT_TRUE(waitFor([&] { return store.installed().contains(medium.id); }));
    QFile::remove(modelPath(base));
    ASSERT_TRUE(waitFor([&] { return !store.installed().contains(base.id); }));

    store.deleteModel(small);
    EXPECT_FALSE(QFile::exists(modelPath(small)));
    EXPECT_EQ(store.installed(), (QSet<QString>{"medium-q5_0", "large-v3-turbo-q5_0"}));
}

TEST_F(ModelStoreTest, StartImportsTheDeveloperModelOnceAndStillChecksItsSize)
{
    const QString source = home + QStringLiteral("/Developer/SagwerkMac/models/ggml-small-q5_1.bin");
    writeFile(source, 1000, "developer copy");
    {
        ModelStore store;
        EXPECT_EQ(Media::readFile(modelPath(small)).left(14), "developer copy");
        EXPECT_FALSE(store.installed().contains(small.id));
    }
    // With the target present a second start copies nothing.
    writeFile(source, bound(small) + 1, "bigger copy");
    ModelStore store;
    EXPECT_EQ(QFileInfo(modelPath(small)).size(), 1000);
}

TEST_F(ModelStoreTest, DownloadReplacesTheOldModelOnlyAtTheEnd)
{
    writeFile(modelPath(base), bound(base) + 1);
    LocalServer server;
    const QByteArray body = randomBytes(bound(base) + 4096);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body, .holdAfter = body.size() / 2});
    ModelStore store(server.base());
    ASSERT_EQ(store.installed(), QSet<QString>{"base-q5_1"});
    QList<double> fractions;
    QObject::connect(&store, &ModelStore::downloadingChanged,
                     [&] { fractions << store.downloading().value(base.id, -1.0); });

    store.download(base);
    store.download(base);
    EXPECT_EQ(store.downloading(), (ModelStore::Fractions{{base.id, 0.0}}));
    // Half way the bytes lie in a temporary file; the old model is untouched and counts.
    ASSERT_TRUE(waitFor([&] {
        const QStringList entries = Media::temporaryEntries();
        return entries.size() == 1 && QFileInfo(QDir::temp().filePath(entries[0])).size() == body.size() / 2;
    }));
    EXPECT_EQ(Media::readFile(modelPath(base)).left(9), "old model");

    server.release();
    waitForDownloads(store);
    EXPECT_EQ(server.hits(QStringLiteral("/ggml-base-q5_1.bin")), 1);
    EXPECT_TRUE(Media::readFile(modelPath(base)) == body);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());

    ASSERT_GE(fractions.size(), 3);
    EXPECT_EQ(fractions.last(), -1.0) << "the key goes when the download ends";
    fractions.removeLast();
    EXPECT_EQ(fractions.last(), 1.0);
    EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
}

TEST_F(ModelStoreTest, AnswersWithoutLengthLandAndErrorPagesFailPerModel)
{
    writeFile(modelPath(small), bound(small) + 1);
    LocalServer server;
    const QByteArray body = randomBytes(bound(base) + 1000);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body, .sendLength = false});
    server.answer(QStringLiteral("/ggml-medium-q5_0.bin"), {.body = "<html>moved</html>"});
    ModelStore store(server.base());
    QList<double> fractions;
    QObject::connect(&store, &ModelStore::downloadingChanged, [&] {
        if (store.downloading().contains(base.id))
            fractions << store.downloading().value(base.id);
    });

    // Without a length there is no progress, but the file arrives whole.
    store.download(base);
    // An error page, and a page that answers 200, never replace or become a model: each
    // model says why, in words.
    store.download(small);
    store.download(medium);
    waitForDownloads(store);
    ASSERT_FALSE(fractions.isEmpty());
    EXPECT_EQ(fractions.count(0.0), fractions.size()) << "progress without a length";
    EXPECT_TRUE(Media::readFile(modelPath(base)) == body);
    EXPECT_EQ(Media::readFile(modelPath(small)).left(9), "old model");
    EXPECT_FALSE(QFile::exists(modelPath(medium)));
    EXPECT_EQ(store.installed(), (QSet<QString>{"base-q5_1", "small-q5_1"}));
    EXPECT_EQ(store.failures().value(small.id),
              QStringLiteral("Der Server lieferte statt des Modells eine Fehlerseite (HTTP 404)."));
    EXPECT_TRUE(store.failures().value(medium.id).startsWith(QStringLiteral("Die geladene Datei ist zu klein")));
    EXPECT_FALSE(store.failures().contains(base.id));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());

    // A new attempt clears the model's failure at once.
    store.download(small);
    EXPECT_FALSE(store.failures().contains(small.id));
    waitForDownloads(store);
    EXPECT_TRUE(store.failures().contains(small.id));
}

TEST_F(ModelStoreTest, FailedOrAbandonedDownloadsKeepTheOldModelAndNoTemporaryFile)
{
    writeFile(modelPath(base), bound(base) + 1);
    const QByteArray old = Media::readFile(modelPath(base));
    auto server = std::make_unique<LocalServer>();
    const QByteArray body = randomBytes(2'000'000);
    server->answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body, .dropAfter = body.size() / 2});
    server->answer(QStringLiteral("/ggml-small-q5_1.bin"), {.body = body, .holdAfter = 1000});

    // Cut half way.
    auto store = std::make_unique<ModelStore>(server->base());
    int messages = 0;
    QObject::connect(store.get(), &ModelStore::errorMessageChanged, [&] { ++messages; });
    store->download(base);
    waitForDownloads(*store);
    ASSERT_TRUE(store->errorMessage());
    EXPECT_EQ(messages, 1);
    EXPECT_TRUE(Media::readFile(modelPath(base)) == old);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());

    // The store goes away while a download runs, as when the application quits.
    store->download(small);
    ASSERT_TRUE(waitFor([&] { return server->held() == 1; }));
    ASSERT_TRUE(waitFor([&] { return !Media::temporaryEntries().isEmpty(); }));
    store.reset();
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
    EXPECT_FALSE(QFile::exists(modelPath(small)));

    // Nobody listens any more.
    const QUrl gone = server->base();
    server.reset();
    ModelStore refused(gone);
    refused.download(base);
    waitForDownloads(refused);
    // Offline, in the user's words rather than the transfer layer's.
    EXPECT_EQ(refused.failures().value(base.id),
              QStringLiteral("Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen."));
    EXPECT_EQ(refused.errorMessage(), refused.failures().value(base.id));
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
