#include "Media.h"
#include "TinyModel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace Media {

namespace {

QString folder()
{
    // Beside the watched temporary folder, not inside it.
    static const QString dir = [] {
        QString base = QString::fromLocal8Bit(qgetenv("SAGWERK_TEST_TMP"));
        base = base.isEmpty() ? QDir::tempPath() + QStringLiteral("/sagwerk-test") : base + QStringLiteral("-media");
        QDir().mkpath(base);
        return base;
    }();
    return dir;
}

QByteArray runFfmpeg(const QStringList &arguments)
{
    QProcess p;
    p.start(QStringLiteral("/usr/bin/ffmpeg"), QStringList{"-hide_banner", "-loglevel", "error", "-y"} + arguments);
    p.waitForFinished(-1);
    if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        ADD_FAILURE() << "ffmpeg failed: " << p.readAllStandardError().toStdString();
    return p.readAllStandardOutput();
}

} // namespace

QString make(const QString &name, const QStringList &arguments)
{
    const QString path = folder() + u'/' + name;
    if (!QFile::exists(path))
        runFfmpeg(arguments + QStringList{path});
    return path;
}

QString tone(const QString &extension, double seconds)
{
    const QString source = QStringLiteral("sine=frequency=440:sample_rate=48000:duration=%1").arg(seconds);
    QStringList arguments{"-f", "lavfi", "-i", source, "-ac", "2", "-ar", "48000"};
    if (extension == QLatin1String("m4a"))
        arguments << "-c:a" << "aac";
    else if (extension == QLatin1String("opus"))
        arguments << "-c:a" << "libopus";
    return make(QStringLiteral("tone-%1s.%2").arg(seconds).arg(extension), arguments);
}

QString videoWithAudio()
{
    return make(QStringLiteral("video-with-audio.mp4"),
                {"-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=2", "-f", "lavfi", "-i",
                 "sine=frequency=440:sample_rate=44100:duration=2", "-c:v", "mpeg4", "-c:a", "aac", "-shortest"});
}

QString videoWithoutAudio()
{
    return make(QStringLiteral("video-without-audio.mp4"),
                {"-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=2", "-c:v", "mpeg4"});
}

QString emptyFile()
{
    writeFile(folder() + QStringLiteral("/empty.m4a"), {});
    return folder() + QStringLiteral("/empty.m4a");
}

QString textFileNamedMp3()
{
    writeFile(folder() + QStringLiteral("/notes.mp3"), "Dies ist keine Audiodatei, sondern eine Einkaufsliste.\n");
    return folder() + QStringLiteral("/notes.mp3");
}

QString truncatedMp3()
{
    const QByteArray whole = readFile(tone(QStringLiteral("mp3"), 4.0));
    writeFile(folder() + QStringLiteral("/truncated.mp3"), whole.left(whole.size() / 2 + 37));
    return folder() + QStringLiteral("/truncated.mp3");
}

QString truncatedM4a()
{
    const QString whole = make(QStringLiteral("tone-4s-faststart.m4a"),
                               {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000:duration=4", "-c:a",
                                "aac", "-movflags", "+faststart"});
    const QByteArray bytes = readFile(whole);
    writeFile(folder() + QStringLiteral("/truncated.m4a"), bytes.left(bytes.size() * 6 / 10));
    return folder() + QStringLiteral("/truncated.m4a");
}

QString damagedInTheMiddle(const QString &extension)
{
    QByteArray bytes = readFile(tone(extension, 6.0));
    quint32 noise = 2463534242u;
    for (qsizetype i = bytes.size() / 2; i < bytes.size() / 2 + 2048; ++i) {
        noise ^= noise << 13;
        noise ^= noise >> 17;
        noise ^= noise << 5;
        bytes[i] = char(noise);
    }
    const QString path = folder() + QStringLiteral("/damaged.") + extension;
    writeFile(path, bytes);
    return path;
}

QString tinyModel()
{
    const QString path = folder() + QStringLiteral("/ggml-tiny-test.bin");
    if (!QFile::exists(path)) {
        EXPECT_TRUE(TinyModel::write(path));
    }
    return path;
}

QString loudModel()
{
    const QString path = folder() + QStringLiteral("/ggml-loud-test.bin");
    if (!QFile::exists(path)) {
        TinyModel::Options options;
        options.loudTokens = 24;
        options.loudness = 8;
        EXPECT_TRUE(TinyModel::write(path, options));
    }
    return path;
}

void installTinyModel(const QString &modelsDir, const QString &fileName)
{
    // Past the bound of Base, the smallest catalogue model; a link keeps it cheap.
    const QString padded = folder() + QStringLiteral("/ggml-tiny-padded.bin");
    if (!QFile::exists(padded)) {
        TinyModel::Options options;
        options.padToBytes = 52'000'000;
        EXPECT_TRUE(TinyModel::write(padded, options));
    }
    QDir().mkpath(modelsDir);
    QFile::remove(modelsDir + u'/' + fileName);
    EXPECT_TRUE(QFile::link(padded, modelsDir + u'/' + fileName));
}

QString dataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk");
}

void installBase()
{
    installTinyModel(dataDir() + QStringLiteral("/models"), QStringLiteral("ggml-base-q5_1.bin"));
}

QStringList temporaryEntries()
{
    return QDir(QDir::tempPath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString script(const QString &name, const QString &body)
{
    const QString path = folder() + u'/' + name;
    writeFile(path, "#!/bin/sh\n" + body.toUtf8() + "\n");
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    return path;
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    f.write(content);
}

QByteArray ffmpegPcm(const QString &path)
{
    return runFfmpeg({"-i", path, "-vn", "-ac", "1", "-ar", "16000", "-f", "s16le", "-"});
}

} // namespace Media
