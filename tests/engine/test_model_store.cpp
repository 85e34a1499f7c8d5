// The model store against a real models folder in a throwaway home and a real HTTP
// server on 127.0.0.1.
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "app/ModelStore.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

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

QByteArray zipArchive(const QList<std::pair<QString, QByteArray>> &entries)
{
    const QString path = QDir::tempPath() + QStringLiteral("/archive.zip");
    QStringList args{"-c",
                     "import sys, zipfile\n"
                     "with zipfile.ZipFile(sys.argv[1], 'w') as z:\n"
                     "    for i in range(2, len(sys.argv), 2): z.writestr(sys.argv[i], sys.argv[i + 1])\n",
                     path};
    for (const auto &[name, content] : entries)
        args << name << QString::fromUtf8(content);
    QProcess python;
    python.start(QStringLiteral("python3"), args);
    python.waitForFinished(-1);
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    const QByteArray zip = Media::readFile(path);
    QFile::remove(path);
    return zip;
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
        ASSERT_TRUE(waitFor([&] { return store.downloading().isEmpty() && store.coreMLDownloading().isEmpty(); }));
    }

    QString home, models;
};

} // namespace


TEST_F(ModelStoreTest, FolderStateFollowsSizesAndPackagesIndependently)
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

    // Any item of the package's name counts, even an empty folder, model or not.
    QDir(models).mkdir(medium.coreMLName);
    writeFile(models + u'/' + base.coreMLName + QStringLiteral("/coremldata.bin"), 10);
    store.refresh();
    EXPECT_EQ(store.coreMLInstalled(), (QSet<QString>{"base-q5_1", "medium-q5_0"}));

    // Deleting one kind leaves the other.
    store.deleteModel(base);
    EXPECT_FALSE(QFile::exists(modelPath(base)));
    EXPECT_TRUE(store.coreMLInstalled().contains(base.id));
    store.deleteCoreML(base);
    store.deleteCoreML(small);
    EXPECT_FALSE(QFile::exists(models + u'/' + base.coreMLName));
    EXPECT_EQ(store.coreMLInstalled(), QSet<QString>{"medium-q5_0"});
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

TEST_F(ModelStoreTest, AnswersWithoutLengthOrWithAnErrorPageLandAsTheyAre)
{
    writeFile(modelPath(small), bound(small) + 1);
    LocalServer server;
    const QByteArray body = randomBytes(3'000'000);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body, .sendLength = false});
    ModelStore store(server.base());
    QList<double> fractions;
    QObject::connect(&store, &ModelStore::downloadingChanged, [&] {
        if (store.downloading().contains(base.id))
            fractions << store.downloading().value(base.id);
    });

    // Without a length there is no progress, but the file arrives whole.
    store.download(base);
    // An error page replaces a good model and is found out only by its size.
    store.download(small);
    waitForDownloads(store);
    ASSERT_FALSE(fractions.isEmpty());
    EXPECT_EQ(fractions.count(0.0), fractions.size()) << "progress without a length";
    EXPECT_TRUE(Media::readFile(modelPath(base)) == body);
    EXPECT_TRUE(Media::readFile(modelPath(small)).contains("404 Not Found"));
    EXPECT_TRUE(store.installed().isEmpty());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
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
    ASSERT_TRUE(refused.errorMessage());
    EXPECT_TRUE(refused.errorMessage()->contains(QStringLiteral("refused"), Qt::CaseInsensitive))
        << refused.errorMessage()->toStdString();
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

TEST_F(ModelStoreTest, NeuralEnginePackagesAreUnpackedBesideTheModels)
{
    const QString package = models + u'/' + base.coreMLName;
    LocalServer server;
    const QString zipPath = QStringLiteral("/ggml-base-encoder.mlmodelc.zip");
    server.answer(zipPath, {.body = zipArchive({{base.coreMLName + QStringLiteral("/coremldata.bin"), "first"},
                                                {base.coreMLName + QStringLiteral("/weights/weight.bin"), "w1"}})});
    server.answer(QStringLiteral("/ggml-small-encoder.mlmodelc.zip"), {.body = "PK? not really a zip archive"});
    ModelStore store(server.base());

    // The download ends only once the package is unpacked, so no moment shows neither.
    std::optional<bool> installedWhenEnded;
    QObject::connect(&store, &ModelStore::coreMLDownloadingChanged, [&] {
        if (store.coreMLDownloading().isEmpty() && !installedWhenEnded)
            installedWhenEnded = store.coreMLInstalled().contains(base.id);
    });

    // A package and a model download of the same model run side by side.
    store.downloadCoreML(base);
    store.downloadCoreML(base);
    store.download(base);
    EXPECT_EQ(store.coreMLDownloading().size(), 1);
    waitForDownloads(store);
    EXPECT_EQ(server.hits(zipPath), 1);
    EXPECT_EQ(Media::readFile(package + QStringLiteral("/coremldata.bin")), "first");
    EXPECT_EQ(store.coreMLInstalled(), QSet<QString>{"base-q5_1"});
    EXPECT_EQ(installedWhenEnded, true);
    EXPECT_TRUE(store.installed().isEmpty()) << "the model file got an error page";

    store.downloadCoreML(small);
    waitForDownloads(store);
    EXPECT_EQ(store.errorMessage(), QStringLiteral("Entpacken des ANE-Encoders fehlgeschlagen."));
    EXPECT_EQ(store.coreMLInstalled(), QSet<QString>{"base-q5_1"});
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
    EXPECT_EQ(QDir(models).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              (QStringList{base.coreMLName, base.fileName}));
}
