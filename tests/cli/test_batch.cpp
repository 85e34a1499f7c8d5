// Many sources into one history: real media, a broken file, a file without audio and a
// link from 127.0.0.1; kills at random moments; shard processes side by side over one
// data folder as Slurm and Kubernetes start them.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include "app/AppModel.h"
#include "speakers/DiarizationModels.h"
#include "storage/BundleStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QThread>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include <signal.h>

namespace {

// Real media of distinct content: `count` short tones, each under the same file name in
// a folder of its own, so that bundle names meet in the same second.
QString archive(const QString &name, int count)
{
    const QString root = QDir::tempPath() + QStringLiteral("/../") + name;
    QDir(root).removeRecursively();
    for (int i = 0; i < count; ++i) {
        const QString tone = Media::make(QStringLiteral("batch-tone-%1.mp3").arg(i),
                                         {"-f", "lavfi", "-i",
                                          QStringLiteral("sine=frequency=%1:duration=%2").arg(300 + 40 * i).arg(1 + i % 3)});
        QDir().mkpath(root + QStringLiteral("/part%1").arg(i % 3));
        QFile::copy(tone, root + QStringLiteral("/part%1/talk-%2.mp3").arg(i % 3).arg(i % 2));
    }
    return QDir::cleanPath(root);
}

// Points the application's data folder (and the children's) somewhere fresh.
void freshData(const QString &name)
{
    const QString data = QDir::cleanPath(QDir::tempPath() + QStringLiteral("/../data-") + name);
    QDir(data).removeRecursively();
    qputenv("XDG_DATA_HOME", data.toLocal8Bit());
}

QList<QJsonObject> reportLines(const QString &path)
{
    QList<QJsonObject> lines;
    for (const QByteArray &line : Media::readFile(path).split('\n')) {
        if (!line.isEmpty())
            lines.append(QJsonDocument::fromJson(line).object());
    }
    return lines;
}

// Every bundle whole, and each source's content in exactly one of them.
void expectEachSourceOnce(const QStringList &sources)
{
    QHash<QString, int> seen;
    for (const LoadedBundle &b : BundleStore::list()) {
        ASSERT_TRUE(b.data.sourceContent) << b.url.toStdString();
        ++seen[b.data.sourceContent->sha256];
        EXPECT_EQ(QFileInfo(b.url + u'/' + b.data.audioFileName).size(), b.data.sourceContent->size);
    }
    for (const QString &source : sources) {
        const std::optional<SourceContent> content = BundleStore::sourceContent(source);
        ASSERT_TRUE(content);
        EXPECT_EQ(seen.take(content->sha256), 1) << source.toStdString();
    }
    EXPECT_TRUE(seen.isEmpty());
    // No half-made folder is left once a listing has swept the dead writers' rubble.
    EXPECT_EQ(QDir(BundleStore::root()).entryList({QStringLiteral(".*")}, QDir::AllEntries | QDir::Hidden
                                                                                | QDir::NoDotAndDotDot),
              QStringList());
}

QStringList media(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, {QStringLiteral("talk-*.mp3")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    return files;
}

} // namespace

TEST(CliBatch, FolderWithFailuresAndALinkIsResumableAndSurvivesKills)
{
    useThrowawayHome();
    freshData(QStringLiteral("batch"));
    const QString model = Media::tinyModel();
    const QString folder = archive(QStringLiteral("archive"), 3);
    QFile::copy(Media::textFileNamedMp3(), folder + QStringLiteral("/broken.mp3"));
    QFile::copy(Media::videoWithoutAudio(), folder + QStringLiteral("/silent.mp4"));
    LocalServer server;
    const QByteArray linked = Media::readFile(Media::tone(QStringLiteral("m4a")));
    server.answer(QStringLiteral("/episode.m4a"), {200, linked, true, -1, -1, false, QByteArray("audio/mp4")});
    const QString list = QDir::tempPath() + QStringLiteral("/../sources.txt");
    Media::writeFile(list, "# the archive, and one episode\n" + folder.toUtf8() + "\n\n"
                               + server.base().resolved(QUrl(QStringLiteral("episode.m4a"))).toEncoded() + '\n');
    const QString report = QDir::tempPath() + QStringLiteral("/../report.jsonl");
    QFile::remove(report);
    const QStringList args{"batch", list, "--save", "--model", model, "--jobs", "2", "--report", report};

    QElapsedTimer clock;
    clock.start();
    const CliRun first = cli(args);
    const qint64 firstMs = clock.elapsed();
    EXPECT_EQ(first.status, 1) << "a failed file shows in the exit status";
    EXPECT_TRUE(first.err.contains("broken.mp3")) << first.err.toStdString();
    QHash<QString, QString> status;
    for (const QJsonObject &line : reportLines(report))
        status.insert(line.value("source").toString(), line.value("status").toString());
    EXPECT_EQ(status.value(folder + "/broken.mp3"), "failed");
    EXPECT_EQ(status.value(folder + "/silent.mp4"), "failed");
    EXPECT_EQ(status.value(server.base().resolved(QUrl(QStringLiteral("episode.m4a"))).toString()), "done");
    EXPECT_EQ(status.size(), 3 + 3);
    EXPECT_EQ(QString::fromUtf8(first.out).split(u'\n', Qt::SkipEmptyParts).size(), 4);
    EXPECT_EQ(BundleStore::list().size(), 4);
    EXPECT_NO_TEMPORARY_FILES();

    // Again: everything is in the history already, under whatever folder name.
    const CliRun again = cli(args);
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.out.isEmpty()) << again.out.toStdString();
    const QList<QJsonObject> lines = reportLines(report);
    ASSERT_EQ(lines.size(), 12);
    QStringList second;
    for (qsizetype i = 6; i < lines.size(); ++i)
        second << lines[i].value("status").toString();
    EXPECT_EQ(second.count("skipped"), 4);
    EXPECT_EQ(second.count("failed"), 2);
    EXPECT_EQ(BundleStore::list().size(), 4);

    // Killed at random moments of a run into a fresh history, then once to the end. Each
    // kill comes within the first run's length, and within seconds, so that the twenty
    // land on every step: start, hashing, recognition, the bundle being written.
    freshData(QStringLiteral("killed"));
    const QStringList plain{"batch", folder, "--save", "--model", model, "--jobs", "2"};
    for (int kill = 0; kill < 20; ++kill) {
        QProcess p;
        p.start(QStringLiteral(SAGWERK_CLI), plain);
        ASSERT_TRUE(p.waitForStarted());
        p.waitForFinished(int(QRandomGenerator::global()->bounded(qint64(20), std::clamp<qint64>(firstMs / 2, 100, 3000))));
        p.kill();
        p.waitForFinished();
    }
    const CliRun last = cli(plain);
    EXPECT_EQ(last.status, 1) << last.err.toStdString();
    expectEachSourceOnce(media(folder));
}

TEST(CliBatch, ShardsSideBySideTakeEverySourceOnceAsSlurmAndKubernetesStartThem)
{
    useThrowawayHome();
    const QString model = Media::tinyModel();
    const QString folder = archive(QStringLiteral("shared"), 6);
    const QStringList sources = media(folder);

    const QList<std::pair<QString, std::function<void(QProcessEnvironment &, int)>>> schedulers{
        {QStringLiteral("slurm"),
         [](QProcessEnvironment &env, int i) {
             // As `sbatch --array=1-4` sets them: the ids count from the array's start.
             env.insert("SLURM_ARRAY_JOB_ID", "4711");
             env.insert("SLURM_ARRAY_TASK_ID", QString::number(i + 1));
             env.insert("SLURM_ARRAY_TASK_MIN", "1");
             env.insert("SLURM_ARRAY_TASK_MAX", "4");
             env.insert("SLURM_ARRAY_TASK_STEP", "1");
             env.insert("SLURM_ARRAY_TASK_COUNT", "4");
         }},
        {QStringLiteral("kubernetes"), [](QProcessEnvironment &env, int i) {
             env.insert("JOB_COMPLETION_INDEX", QString::number(i));
             env.insert("SAGWERK_SHARD_COUNT", "4");
         }}};
    for (const auto &[name, setUp] : schedulers) {
        SCOPED_TRACE(name.toStdString());
        freshData(name);
        std::vector<std::unique_ptr<QProcess>> shards;
        for (int i = 0; i < 4; ++i) {
            auto p = std::make_unique<QProcess>();
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            setUp(env, i);
            p->setProcessEnvironment(env);
            p->start(QStringLiteral(SAGWERK_CLI), {"batch", folder, "--save", "--model", model, "--shard", "auto"});
            ASSERT_TRUE(p->waitForStarted());
            shards.push_back(std::move(p));
        }
        // The list is read while the writers add to it: it never shows a bundle that
        // later goes away, nor a half one.
        qsizetype listed = 0;
        auto running = [&] {
            return std::any_of(shards.begin(), shards.end(),
                               [](const auto &p) { return p->state() != QProcess::NotRunning; });
        };
        while (running()) {
            const QList<LoadedBundle> now = BundleStore::listSummaries();
            EXPECT_GE(now.size(), listed);
            listed = now.size();
            // The children's ends and output reach QProcess through the event loop.
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        int taken = 0;
        for (const auto &p : shards) {
            EXPECT_EQ(p->exitCode(), 0) << p->readAllStandardError().toStdString();
            taken += int(QString::fromUtf8(p->readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts).size());
        }
        EXPECT_EQ(taken, sources.size());
        expectEachSourceOnce(sources);
        AppModel app;
        EXPECT_EQ(app.history().size(), sources.size());
    }
}

TEST(CliBatch, SpeakersAreSeparatedAlsoForBundlesMadeBeforeWithoutThem)
{
    const QString home = useThrowawayHome();
    freshData(QStringLiteral("speakers"));
    Media::writeFile(DiarizationModels::segPath(), "seg");
    Media::writeFile(DiarizationModels::embPath(), "emb");
    // The diarisation child, played by a script that records its arguments.
    const QString child = home + "/Developer/SagwerkMac/vendor/sherpa-diarize";
    Media::writeFile(child, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$(dirname \"$0\")/args\"\n"
                            "printf '0.0 -- 1.0 speaker_0\\n1.0 -- 3.0 speaker_1\\n'\n");
    QFile::setPermissions(child, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("SAGWERK_DIARIZE_PROGRAM", child.toUtf8());
    const QString folder = archive(QStringLiteral("voices"), 2);
    const QStringList sources = media(folder);
    const QString model = Media::tinyModel();

    // A batch without speakers stopped after the first file's bundle.
    ASSERT_EQ(cli({"batch", sources[0], "--save", "--model", model}).status, 0);
    ASSERT_EQ(BundleStore::list().size(), 1);
    EXPECT_FALSE(BundleStore::list().first().data.speakerText);

    const CliRun run = cli({"batch", folder, "--save", "--model", model, "--speakers", "2"});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QList<LoadedBundle> bundles = BundleStore::list();
    ASSERT_EQ(bundles.size(), 2);
    for (const LoadedBundle &b : bundles)
        EXPECT_TRUE(b.data.speakerText) << b.url.toStdString();
    EXPECT_TRUE(Media::readFile(home + "/Developer/SagwerkMac/vendor/args").startsWith("--clustering.num-clusters=2\n"));
    expectEachSourceOnce(sources);
    qunsetenv("SAGWERK_DIARIZE_PROGRAM");
}
