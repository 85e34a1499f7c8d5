// The speaker models fetched from a release host played by a server on 127.0.0.1: the
// segmentation model as a real bzip2 tar archive, the embedding model as a plain file.
#include "Home.h"
#include "LocalServer.h"

#include "speakers/DiarizationModels.h"
#include "speakers/DiarizerError.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString segPath = QStringLiteral(
    "/k2-fsa/sherpa-onnx/releases/download/speaker-segmentation-models/sherpa-onnx-pyannote-segmentation-3-0.tar.bz2");
const QString embPath = QStringLiteral(
    "/k2-fsa/sherpa-onnx/releases/download/speaker-recongition-models/3dspeaker_speech_campplus_sv_en_voxceleb_16k.onnx");

// A bzip2 tar archive holding `folder` with a model.onnx of `model` bytes.
QByteArray archive(const QString &folder, const QByteArray &model)
{
    QTemporaryDir work;
    QDir(work.path()).mkpath(folder);
    QFile file(work.path() + u'/' + folder + QStringLiteral("/model.onnx"));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(model);
    file.close();
    QProcess tar;
    tar.start(QStringLiteral("/usr/bin/tar"), {"cjf", work.path() + "/a.tar.bz2", "-C", work.path(), folder});
    tar.waitForFinished();
    QFile made(work.path() + "/a.tar.bz2");
    if (!made.open(QIODevice::ReadOnly))
        return {};
    return made.readAll();
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class SpeakerModels : public ::testing::Test {
protected:
    void SetUp() override
    {
        useThrowawayHome();
        qputenv("SAGWERK_SPEAKER_MODEL_HOST", server.base().toString().toUtf8());
        segModel = randomBytes(5000);
        embModel = randomBytes(7000);
        server.answer(segPath, {.body = archive("sherpa-onnx-pyannote-segmentation-3-0", segModel)});
        server.answer(embPath, {.body = embModel});
    }
    void TearDown() override { qunsetenv("SAGWERK_SPEAKER_MODEL_HOST"); }

    // Runs ensure to its end; the error text, or nothing on success.
    std::optional<QString> ensure(const CancelTokenPtr &control = {},
                                  const std::function<void()> &whileRunning = {})
    {
        statuses.clear();
        QFuture<DiarizationModels::Paths> run =
            DiarizationModels::ensure([this](const QString &s) { statuses << s; }, control);
        if (whileRunning)
            whileRunning();
        EXPECT_TRUE(waitFor([&] { return run.isFinished(); }));
        try {
            const DiarizationModels::Paths paths = run.result();
            EXPECT_EQ(paths.seg, DiarizationModels::segPath());
            EXPECT_EQ(paths.emb, DiarizationModels::embPath());
            return std::nullopt;
        } catch (const UserError &e) {
            return e.errorDescription();
        }
    }

    LocalServer server;
    QByteArray segModel, embModel;
    QStringList statuses;
};

} // namespace

TEST_F(SpeakerModels, FetchesEachMissingModelOnce)
{
    EXPECT_FALSE(DiarizationModels::installed());

    // A stale archive of an earlier run is in the way and must not block.
    QFile stale(DiarizationModels::dir() + "/seg.tar.bz2");
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.write("stale");
    stale.close();

    EXPECT_EQ(ensure(), std::nullopt);
    EXPECT_EQ(statuses, QStringList{"Lade Sprecher-Modelle (einmalig)…"});
    EXPECT_EQ(readAll(DiarizationModels::segPath()), segModel);
    EXPECT_EQ(readAll(DiarizationModels::embPath()), embModel);
    EXPECT_FALSE(QFile::exists(DiarizationModels::dir() + "/seg.tar.bz2"));
    EXPECT_TRUE(DiarizationModels::installed());

    // Both there: no network and no status.
    EXPECT_EQ(ensure(), std::nullopt);
    EXPECT_TRUE(statuses.isEmpty());
    EXPECT_EQ(server.totalHits(), 2);

    // Only the embedding gone: only it is fetched, and the status still comes once.
    QFile::remove(DiarizationModels::embPath());
    EXPECT_EQ(ensure(), std::nullopt);
    EXPECT_EQ(statuses.size(), 1);
    EXPECT_EQ(server.hits(segPath), 1);
    EXPECT_EQ(server.hits(embPath), 2);
}

TEST_F(SpeakerModels, FailuresKeepWhatIsFinished)
{
    // The embedding is missing on the host: its error page is no model, and the
    // segmentation model fetched before stays.
    server.answer(embPath, {404, "<html>weg</html>"});
    EXPECT_EQ(ensure(), "Der Server lieferte keine Modelldatei.");
    EXPECT_TRUE(QFile::exists(DiarizationModels::segPath()));
    EXPECT_FALSE(QFile::exists(DiarizationModels::embPath()));

    // A cut connection is the transfer's error; nothing half-written is left.
    server.answer(embPath, {.body = embModel, .dropAfter = 100});
    const std::optional<QString> cut = ensure();
    ASSERT_TRUE(cut.has_value());
    EXPECT_FALSE(cut->isEmpty());
    EXPECT_FALSE(QFile::exists(DiarizationModels::embPath()));
    EXPECT_EQ(server.hits(segPath), 1);
}

TEST_F(SpeakerModels, TarFailuresAndArchivesWithoutTheModel)
{
    // Not an archive: tar's own message, after the prefix; the archive stays for the
    // next run to remove.
    server.answer(segPath, {.body = "kein bzip2"});
    const std::optional<QString> broken = ensure();
    ASSERT_TRUE(broken.has_value());
    EXPECT_TRUE(broken->startsWith("Sprechertrennung fehlgeschlagen: ")) << qPrintable(*broken);
    EXPECT_GT(broken->size(), QStringLiteral("Sprechertrennung fehlgeschlagen: ").size());
    EXPECT_FALSE(broken->endsWith(u'\n'));
    EXPECT_TRUE(QFile::exists(DiarizationModels::dir() + "/seg.tar.bz2"));

    // An archive that unpacks fine but holds another folder.
    server.answer(segPath, {.body = archive("anderer-ordner", segModel)});
    EXPECT_EQ(ensure(), "Sprechertrennung fehlgeschlagen: Sprecher-Modelle konnten nicht geladen werden.");
    EXPECT_TRUE(QFile::exists(DiarizationModels::embPath())) << "the embedding came after it and stays";
    EXPECT_FALSE(QFile::exists(DiarizationModels::dir() + "/seg.tar.bz2"));
}

TEST_F(SpeakerModels, CancelStopsTheDownload)
{
    server.answer(segPath, {.body = randomBytes(200'000), .holdAfter = 1000});
    auto control = std::make_shared<CancelToken>();
    const std::optional<QString> error = ensure(control, [&] {
        EXPECT_TRUE(waitFor([&] { return server.held() == 1; }));
        control->cancel();
    });
    EXPECT_EQ(error, "Abgebrochen.");
    EXPECT_FALSE(QFile::exists(DiarizationModels::dir() + "/seg.tar.bz2"));
    EXPECT_EQ(server.hits(embPath), 0);
    server.release();
}
