// sagwerk-cli transcribe as a user runs it: real files, the generated model, signals.
#include "Cli.h"
#include "Media.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

TEST(CliTranscribe, Mp3AndVideoBecomeJson)
{
    for (const QString &input : {Media::tone(QStringLiteral("mp3")), Media::videoWithAudio()}) {
        SCOPED_TRACE(input.toStdString());
        const CliRun run = cli({"transcribe", input, "--model", Media::tinyModel(), "--language", "de"});
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        EXPECT_TRUE(run.err.isEmpty()) << "no progress bar when stderr is no terminal";
        QJsonParseError error;
        const QJsonObject json = QJsonDocument::fromJson(run.out, &error).object();
        ASSERT_EQ(error.error, QJsonParseError::NoError);
        EXPECT_EQ(json.value("language").toString(), QStringLiteral("de"));
        EXPECT_TRUE(json.value("fullText").isString());
        EXPECT_TRUE(json.value("processingSeconds").isDouble());
        for (const QJsonValue &v : json.value("segments").toArray()) {
            for (const char *key : {"id", "startMs", "endMs", "text", "words"})
                EXPECT_TRUE(v.toObject().contains(QLatin1String(key))) << key;
            for (const QJsonValue &w : v["words"].toArray())
                EXPECT_EQ(w.toObject().keys(), (QStringList{"endMs", "startMs", "text"}));
        }
    }
}

TEST(CliTranscribe, FailuresAndCtrlCSpeakTheUsersTextAndLeaveNothing)
{
    const CliRun bad = cli({"transcribe", Media::textFileNamedMp3(), "--model", Media::tinyModel()});
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(bad.err.startsWith("Audio konnte nicht nach 16 kHz konvertiert werden: ")) << bad.err.toStdString();
    EXPECT_TRUE(bad.out.isEmpty());

    EXPECT_EQ(cli({"transcribe", "--model", "x"}).status, 2);
    EXPECT_EQ(cli({"frobnicate"}).status, 2);

    // A minute of sound keeps the run busy long enough to be interrupted.
    const QStringList args{"transcribe", Media::tone(QStringLiteral("opus"), 60.0), "--model", Media::tinyModel()};
    QElapsedTimer clock;
    clock.start();
    const CliRun run = cli(args, [&] { return clock.elapsed() > 300; });
    EXPECT_EQ(run.status, 130) << run.err.toStdString();
    EXPECT_EQ(run.err, "Abgebrochen.\n");
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}

// ggml hides Mesa's processor-backed Vulkan device (llvmpipe) unless it is named, which
// drives the whole GPU road without a GPU; the same transcript on both, times included.
TEST(CliTranscribe, VulkanOnTheProcessorsDeviceGivesTheSameTranscript)
{
    const QStringList args{"transcribe", Media::tone(QStringLiteral("wav"), 4.0), "--model", Media::loudModel(),
                           "--language", "de", "--verbose"};

    // Compiling the device's shaders takes a minute; later runs of this build reuse them.
    qputenv("MESA_SHADER_CACHE_DIR", qgetenv("SAGWERK_TEST_TMP") + "-shader-cache");
    qunsetenv("GGML_VK_VISIBLE_DEVICES");
    const CliRun cpu = cli(args);
    ASSERT_EQ(cpu.status, 0) << cpu.err.toStdString();
    EXPECT_TRUE(cpu.err.startsWith("Recognition: CPU backend, device ")) << cpu.err.toStdString();
    EXPECT_TRUE(cpu.err.contains(" threads\n"));

    qputenv("GGML_VK_VISIBLE_DEVICES", "0");
    const CliRun vulkan = cli(args);
    qunsetenv("GGML_VK_VISIBLE_DEVICES");
    ASSERT_EQ(vulkan.status, 0) << vulkan.err.toStdString();
    if (!vulkan.err.startsWith("Recognition: Vulkan backend, device "))
        GTEST_SKIP() << "no Vulkan device here: " << vulkan.err.toStdString();

    auto transcript = [](const QByteArray &json) {
        QJsonObject o = QJsonDocument::fromJson(json).object();
        o.remove(QStringLiteral("processingSeconds"));
        QJsonArray segments;
        for (QJsonValue s : o.value("segments").toArray()) {
            QJsonObject segment = s.toObject();
            segment.remove(QStringLiteral("id"));
            segments.append(segment);
        }
        o.insert(QStringLiteral("segments"), segments);
        return o;
    };
    const QJsonObject onCpu = transcript(cpu.out), onVulkan = transcript(vulkan.out);
    EXPECT_FALSE(onCpu.value("fullText").toString().isEmpty());
    EXPECT_EQ(onCpu, onVulkan) << cpu.out.toStdString() << vulkan.out.toStdString();
}
