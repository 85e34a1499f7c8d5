// A full disk under the data folder (a small tmpfs of a private mount namespace): a new
// bundle, a patch and a model download fail cleanly, half-written nothing, and lose
// nothing that was there before. And a data folder that cannot be written, or whose
// models folder is a file: the command line and the application show what they can and say
// nothing.
#include "Cli.h"
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/ModelStore.h"
#include "core/WhisperModel.h"
#include "storage/BundleStore.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include <sys/mount.h>

namespace {

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

TranscriptionResult sampleResult()
{
    TranscriptionResult result;
    result.fullText = QStringLiteral("eins zwei drei");
    result.language = QStringLiteral("de");
    result.segments = {TranscriptSegment{QUuid::createUuid(), 0, 900, result.fullText, {}}};
    return result;
}

class FullDisk : public ::testing::Test {
protected:
    void SetUp() override
    {
        data = useThrowawayHome() + QStringLiteral("/.local/share");
        QDir().mkpath(data);
        // CTest runs this program in a mount namespace of its own.
        if (::mount("tmpfs", QFile::encodeName(data).constData(), "tmpfs", 0, "size=160m") != 0)
            GTEST_SKIP() << "no tmpfs: " << std::strerror(errno);
        mounted = true;
    }
    void TearDown() override
    {
        if (mounted)
            ::umount2(QFile::encodeName(data).constData(), MNT_DETACH);
    }

    // Writes until the file system refuses a single byte more.
    void fill()
    {
        QFile filler(data + QStringLiteral("/filler"));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly));
        const QByteArray block(64 * 1024, 'f');
        for (qsizetype size = block.size(); size > 0; size /= 2) {
            while (filler.write(block.constData(), size) == size && filler.flush()) {
            }
            filler.unsetError();
        }
    }

    QString data;
    bool mounted = false;
};

} // namespace

TEST_F(FullDisk, CreateAndPatchesLoseNothing)
{
    const LoadedBundle old = BundleStore::create("Alt", QDateTime::currentDateTimeUtc(), Media::tone("wav", 0.2),
                                                 sampleResult());
    BundleStore::saveCorrections(old.url, {Correction{QUuid::createUuid(), "zwei", "2", false, true}});
    const QByteArray document = Media::readFile(old.url + "/sagwerk.json");
    fill();

    try {
        BundleStore::create("Neu", QDateTime::currentDateTimeUtc(), Media::tone("wav", 0.2), sampleResult());
        ADD_FAILURE() << "no throw";
    } catch (const BundleError &e) {
        // The user's message, with the file it could not write.
        EXPECT_TRUE(e.errorDescription().contains("konnte nicht")) << e.errorDescription().toStdString();
    }
    // The new folder stays without a document, as an orphan the list does not show.
    const QStringList folders = entries(BundleStore::root());
    ASSERT_EQ(folders.size(), 2) << folders.join(u' ').toStdString();
    EXPECT_TRUE(folders.contains(QDir(old.url).dirName()));
    for (const QString &f : folders)
        EXPECT_EQ(QFile::exists(BundleStore::root() + u'/' + f + "/sagwerk.json"), f == QDir(old.url).dirName());

    BundleStore::saveSpeakerText(old.url, QString(100'000, u's'));
    BundleStore::saveSmoothed(old.url, 2, QString(100'000, u'g'));
    BundleStore::saveCorrections(old.url, {});
    EXPECT_EQ(Media::readFile(old.url + "/sagwerk.json"), document);
    EXPECT_EQ(entries(old.url), (QStringList{"audio.wav", "sagwerk.json"}));
    ASSERT_EQ(BundleStore::list().size(), 1);
    EXPECT_EQ(BundleStore::list().first().data.corrections->size(), 1);
}

TEST_F(FullDisk, ModelDownloadKeepsTheOldModel)
{
    const WhisperModel base = WhisperModel::all().at(0);
    const qint64 bound = qint64(base.approxSizeMB) * 900'000;
    const QString models = data + QStringLiteral("/Sagwerk/models");
    const QString target = models + u'/' + base.fileName;
    Media::writeFile(target, "old model");
    // Sparse: the old model takes no room, the new one would.
    ASSERT_TRUE(QFile::resize(target, bound + 1));

    LocalServer server;
    const QByteArray body = randomBytes(bound + 4096);
    server.answer(u'/' + base.fileName, {.body = body});
    ModelStore store(server.base());
    ASSERT_TRUE(store.isInstalled(base));
    fill();

    store.download(base);
    ASSERT_TRUE(waitFor([&] { return store.downloading().isEmpty(); }, 120'000));
    EXPECT_TRUE(store.errorMessage() && !store.errorMessage()->isEmpty());
    EXPECT_EQ(Media::readFile(target).left(9), "old model");
    EXPECT_EQ(QFileInfo(target).size(), bound + 1);
    EXPECT_TRUE(store.isInstalled(base));
    EXPECT_EQ(entries(models), QStringList{base.fileName});
    EXPECT_NO_TEMPORARY_FILES();
}

TEST_F(FullDisk, ReadOnlyDataFolderAndModelsFolderThatIsAFile)
{
    const LoadedBundle bundle = BundleStore::create("Nur lesen", QDateTime::currentDateTimeUtc(),
                                                    Media::tone("wav", 0.2), sampleResult());
    Media::writeFile(data + QStringLiteral("/Sagwerk/models"), "a file where the folder should be");
    ASSERT_EQ(::mount(nullptr, QFile::encodeName(data).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0)
        << std::strerror(errno);
    ASSERT_FALSE(QFile(data + QStringLiteral("/probe")).open(QIODevice::WriteOnly));

    const CliRun listed = cli({"list", "--json"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.err, "");
    EXPECT_TRUE(listed.out.contains(QDir(bundle.url).dirName().toUtf8())) << listed.out.toStdString();
    const CliRun exported = cli({"export", bundle.url, "--format", "txt", "--no-timestamps"});
    EXPECT_EQ(exported.status, 0);
    EXPECT_EQ(exported.out, "eins zwei drei");
    const CliRun models = cli({"models"});
    EXPECT_EQ(models.status, 0);
    EXPECT_EQ(models.err, "");
    EXPECT_TRUE(models.out.contains("base-q5_1")) << models.out.toStdString();
    EXPECT_EQ(entries(data), (QStringList{"Sagwerk"}));

    // The application starts on it the same way, and opens what it lists.
    AppModel app;
    ASSERT_EQ(app.history().size(), 1);
    app.setCurrent(app.history().first());
    EXPECT_TRUE(waitFor([&] { return app.current() && !app.current()->segmentsPending; }));
    ASSERT_EQ(app.current()->result.segments.size(), 1);
    EXPECT_EQ(app.current()->result.segments.first().text, QStringLiteral("eins zwei drei"));
    EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or(QString()).toStdString();
}
