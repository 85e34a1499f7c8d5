// What a batch takes: the sources behind its arguments, its share of them, and the
// content key that tells a source it has done before.
#include "Media.h"

#include "app/Batch.h"
#include "storage/BundleData.h"

#include <QDir>
#include <QFileInfo>
#include <QTimeZone>

#include <gtest/gtest.h>

TEST(Batch, ArgumentsBecomeSourcesOnceWithKeysThatDoNotDependOnTheMountPoint)
{
    const QString root = QDir::cleanPath(QDir::tempPath() + QStringLiteral("/../sources"));
    QDir(root).removeRecursively();
    const QByteArray tone = Media::readFile(Media::tone(QStringLiteral("mp3")));
    Media::writeFile(root + "/archive/1999/a.MP3", tone);
    Media::writeFile(root + "/archive/b.opus", tone);
    Media::writeFile(root + "/archive/notes.txt", "not media");
    // A bundle inside the archive holds a copy of its audio: not a source of its own.
    Media::writeFile(root + "/archive/old/sagwerk.json", "{}");
    Media::writeFile(root + "/archive/old/audio.mp3", tone);
    Media::writeFile(root + "/single.wav", tone);
    Media::writeFile(root + "/list.txt", "# comment\n\n  archive/b.opus  \nhttps://127.0.0.1:9/e.mp3\nmissing.mp3\n"
                                         + root.toUtf8() + "/single.wav\n");

    QDir::setCurrent(root);
    const Batch::Expansion e = Batch::expand({"archive", "list.txt", "single.wav", "/nowhere/x.mp3"});
    QStringList keys, locations;
    for (const Batch::Source &s : e.sources) {
        keys << s.key;
        locations << s.location;
    }
    EXPECT_EQ(keys, QStringList({"1999/a.MP3", "b.opus", "https://127.0.0.1:9/e.mp3",
                                 root + "/single.wav"}))
        << keys.join(u' ').toStdString();
    EXPECT_EQ(locations[0], root + "/archive/1999/a.MP3");
    EXPECT_TRUE(e.sources[2].isLink);
    ASSERT_EQ(e.problems.size(), 2);
    EXPECT_EQ(e.problems[0].first, "missing.mp3");
    EXPECT_EQ(e.problems[1].first, "/nowhere/x.mp3");
}

TEST(Batch, SharesFromArgumentsAndSchedulersSplitTheSourcesWithoutOverlap)
{
    auto shard = [](const QString &text, const QList<std::pair<QString, QString>> &vars) {
        QProcessEnvironment env;
        for (const auto &[k, v] : vars)
            env.insert(k, v);
        const auto parsed = Batch::parseShard(text, env);
        const Batch::Shard *s = std::get_if<Batch::Shard>(&parsed);
        return s ? QStringLiteral("%1/%2").arg(s->index).arg(s->count) : QStringLiteral("error");
    };
    EXPECT_EQ(shard("2/4", {}), "2/4");
    EXPECT_EQ(shard("4/4", {}), "error");
    EXPECT_EQ(shard("-1/4", {}), "error");
    EXPECT_EQ(shard("1/0", {}), "error");
    EXPECT_EQ(shard("x", {}), "error");
    EXPECT_EQ(shard("auto", {}), "error");
    // Slurm: --array=0-3, --array=1-4 and --array=1-7:2 are all four shares.
    EXPECT_EQ(shard("auto", {{"SLURM_ARRAY_TASK_ID", "3"}, {"SLURM_ARRAY_TASK_MIN", "0"}, {"SLURM_ARRAY_TASK_COUNT", "4"}}),
              "3/4");
    EXPECT_EQ(shard("auto", {{"SLURM_ARRAY_TASK_ID", "1"}, {"SLURM_ARRAY_TASK_MIN", "1"}, {"SLURM_ARRAY_TASK_COUNT", "4"}}),
              "0/4");
    EXPECT_EQ(shard("auto", {{"SLURM_ARRAY_TASK_ID", "7"},
                             {"SLURM_ARRAY_TASK_MIN", "1"},
                             {"SLURM_ARRAY_TASK_STEP", "2"},
                             {"SLURM_ARRAY_TASK_COUNT", "4"}}),
              "3/4");
    EXPECT_EQ(shard("auto", {{"SLURM_ARRAY_TASK_ID", "2"}}), "error");
    EXPECT_EQ(shard("auto", {{"JOB_COMPLETION_INDEX", "0"}, {"SAGWERK_SHARD_COUNT", "3"}}), "0/3");
    EXPECT_EQ(shard("auto", {{"JOB_COMPLETION_INDEX", "0"}}), "error");
    EXPECT_EQ(shard("auto", {{"SAGWERK_SHARD_INDEX", "5"}, {"SAGWERK_SHARD_COUNT", "6"}}), "5/6");
    EXPECT_EQ(shard("auto", {{"PARALLEL_SEQ", "1"}, {"SAGWERK_SHARD_COUNT", "2"}}), "0/2");

    QList<Batch::Source> sources;
    for (int i = 0; i < 1000; ++i)
        sources.append({QStringLiteral("/a/%1.mp3").arg(i), QStringLiteral("a/%1.mp3").arg(i), false});
    QSet<QString> union_;
    for (int k = 0; k < 7; ++k) {
        const QList<Batch::Source> mine = Batch::select(sources, {k, 7});
        // Roughly even shares; each source in one of them.
        EXPECT_GT(mine.size(), 100);
        for (const Batch::Source &s : mine) {
            EXPECT_FALSE(union_.contains(s.key));
            union_.insert(s.key);
        }
    }
    EXPECT_EQ(union_.size(), 1000);
    // Only the key counts: the same key elsewhere lands in the same share.
    EXPECT_EQ(Batch::select({{"/mnt/x/a/1.mp3", "a/1.mp3", false}}, {3, 7}).size(),
              Batch::select({{"/srv/a/1.mp3", "a/1.mp3", false}}, {3, 7}).size());

    EXPECT_EQ(Batch::threadsPerJob(1, 16), 16);
    EXPECT_EQ(Batch::threadsPerJob(3, 16), 5);
    EXPECT_EQ(Batch::threadsPerJob(4, 2), 1);
}

TEST(Batch, TheContentKeyIsOptionalInTheDocument)
{
    BundleData d;
    d.displayName = QStringLiteral("a.mp3");
    d.createdAt = QDateTime::fromSecsSinceEpoch(1'700'000'000, QTimeZone::UTC);
    d.audioFileName = QStringLiteral("audio.mp3");
    const QByteArray old = *d.encode();
    EXPECT_EQ(BundleData::decode(old), d) << "a document from before the key";
    d.sourceContent = SourceContent{1234, QString(64, u'a')};
    EXPECT_EQ(BundleData::decode(*d.encode()), d);
    EXPECT_EQ(BundleData::decodeSummary(*d.encode())->sourceContent, d.sourceContent);
    // One that cannot be read costs only the recognition, not the transcript.
    QByteArray bad = *d.encode();
    bad.replace(QByteArray(64, 'a'), "short");
    ASSERT_TRUE(BundleData::decode(bad));
    EXPECT_FALSE(BundleData::decode(bad)->sourceContent);
}
