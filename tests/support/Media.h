#pragma once

#include <QString>
#include <QStringList>

// Real media files made by the ffmpeg program, once per test run, in a folder that
// lies outside the temporary folder under watch.
namespace Media {

// Runs ffmpeg with `arguments` to make `name` unless it exists; returns its path.
QString make(const QString &name, const QStringList &arguments);

// A two-second 440 Hz tone, 48 kHz stereo, in the container/codec of the extension.
QString tone(const QString &extension, double seconds = 2.0);

QString videoWithAudio();
QString videoWithoutAudio();
QString emptyFile();
QString textFileNamedMp3();
QString truncatedMp3();
// A four-second tone with its index up front, cut off in the middle of a packet.
QString truncatedM4a();
// A six-second tone of the extension with two kilobytes of noise written over its middle.
QString damagedInTheMiddle(const QString &extension);

// A model made by the tiny-model generator (cached per run).
QString tinyModel();
// The same with a few loud tokens: every decision stands far from a tie, so the text
// does not change with the backend's rounding.
QString loudModel();

// Puts the generated model, grown past the catalogue's size bound, into `modelsDir`
// under `fileName`, so that the model store counts it as installed.
void installTinyModel(const QString &modelsDir, const QString &fileName);
// The application's data folder; and the generated model installed there as Base.
QString dataDir();
void installBase();

// Names in the temporary folder, to check that an operation left nothing behind.
QStringList temporaryEntries();
#define EXPECT_NO_TEMPORARY_FILES() \
    EXPECT_TRUE(Media::temporaryEntries().isEmpty()) << Media::temporaryEntries().join(u' ').toStdString()

// Writes an executable shell script and returns its path.
QString script(const QString &name, const QString &body);

// The bytes of `path`, empty when it cannot be read; and a write that makes the folder.
QByteArray readFile(const QString &path);
void writeFile(const QString &path, const QByteArray &content);

// 16-bit PCM samples of `path` as the ffmpeg program decodes them to 16 kHz mono.
QByteArray ffmpegPcm(const QString &path);

} // namespace Media
