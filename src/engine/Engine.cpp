#include "engine/Engine.h"

#include "core/Wav.h"

#include "engine/WhisperEngine.h"

#include "core/TemporaryFiles.h"
#include "core/Tr.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QStringDecoder>
#include <QtEndian>

#include <mutex>

namespace Engine {

// A whole sentence for the user, so it follows the interface language; the prefix in
// front of it does not.
const char *const formatMessage =
    QT_TRANSLATE_NOOP("Sagwerk", "Dieses Format kann macOS nicht direkt dekodieren (z. B. Opus aus WhatsApp/Telegram). "
                                 "Bitte die Datei vorher in ein gängiges Format wie m4a oder mp3 umwandeln.");

namespace {

std::mutex candidatesLock;
std::optional<QStringList> candidatesOverride;

QStringList ffmpegCandidates()
{
    {
        std::lock_guard guard(candidatesLock);
        if (candidatesOverride)
            return *candidatesOverride;
    }
    QStringList list;
    // The application's own folder comes first, so a bundled ffmpeg wins.
    if (QCoreApplication::instance())
        list << QCoreApplication::applicationDirPath() + QStringLiteral("/ffmpeg");
    list << QStringLiteral("/usr/local/bin/ffmpeg") << QStringLiteral("/usr/bin/ffmpeg");
    return list;
}

void removeQuietly(const QString &path)
{
    QFile::remove(path);
}

} // namespace

void setFfmpegCandidatesForTesting(std::optional<QStringList> candidates)
{
    std::lock_guard guard(candidatesLock);
    candidatesOverride = std::move(candidates);
}

std::optional<QString> ffmpegURL()
{
    for (const QString &path : ffmpegCandidates()) {
        const QFileInfo info(path);
        if (info.isFile() && info.isExecutable())
            return path;
    }
    return std::nullopt;
}

QString temporaryWavPath()
{
    return TemporaryFiles::newPath(u".wav");
}

QStringList ffmpegArguments(const QString &input, const QString &output)
{
    // Absolute paths, so that ffmpeg never reads "name:" as a protocol prefix.
    return {QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"), QStringLiteral("error"),
            QStringLiteral("-y"), QStringLiteral("-i"), QFileInfo(input).absoluteFilePath(),
            QStringLiteral("-vn"), QStringLiteral("-ac"), QStringLiteral("1"), QStringLiteral("-ar"),
            QStringLiteral("16000"), QStringLiteral("-c:a"), QStringLiteral("pcm_s16le"),
            QFileInfo(output).absoluteFilePath()};
}

void runProcess(const QString &executable, const QStringList &arguments, const TranscribeControlPtr &control,
                const std::function<EngineError(const QString &)> &failure)
{
    QProcess child;
    child.setProgram(executable);
    child.setArguments(arguments);
    child.setProcessChannelMode(QProcess::SeparateChannels);
    child.setStandardOutputFile(QProcess::nullDevice());
    child.start();
    if (!child.waitForStarted(-1))
        throw failure(child.errorString());
    if (control)
        control->setProcess(child.processId());

    // The child ends by itself or by a cancel, which terminates it through the control, so
    // this pool thread waits in bounded slices rather than on one endless call. QProcess
    // gathers the error output meanwhile, so a chatty child never blocks on a full pipe.
    while (!child.waitForFinished(1000) && child.state() != QProcess::NotRunning) {
    }
    const QByteArray errors = child.readAllStandardError();
    if (control)
        control->setProcess(std::nullopt);

    const bool crashed = child.exitStatus() != QProcess::NormalExit;
    const int status = child.exitCode();
    if (!crashed && status == 0)
        return;
    if (control && control->isCancelled())
        throw EngineError::cancelled();

    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(errors);
    if (utf8.hasError())
        text = QStringLiteral("Exit ") + QString::number(status);
    throw failure(text.trimmed());
}

namespace {

// The fallback road: the ffmpeg program writes `output` as a 16 kHz mono WAV.
void convertWithFFmpeg(const QString &input, const QString &output, const TranscribeControlPtr &control)
{
    const std::optional<QString> ffmpeg = ffmpegURL();
    if (!ffmpeg)
        throw EngineError::convertFailed(Tr::tr(formatMessage));
    removeQuietly(output);
    // ffmpeg's own lines are English and technical: they go to the details.
    runProcess(*ffmpeg, ffmpegArguments(input, output), control, [](const QString &said) {
        return EngineError::convertFailed(Tr::tr("Die Datei ist beschädigt oder enthält keine lesbare Tonspur."),
                                          said);
    });
}

} // namespace

std::vector<float> decodeTo16kMonoFloats(const QString &input, const TranscribeControlPtr &control)
{
    try {
        std::vector<float> samples = avfDecodeFloats(input, control);
        if (!samples.empty())
            return samples;
    } catch (const EngineError &e) {
        if (e.isCancelled())
            throw;
        // Any other failure of the first attempt goes to the fallback, which replaces its message.
    }

    const QString temporary = temporaryWavPath();
    const auto cleanup = qScopeGuard([&] { removeQuietly(temporary); });
    convertWithFFmpeg(input, temporary, control);
    return avfDecodeFloats(temporary, control);
}

void convertTo16kMonoWav(const QString &input, const QString &output, const TranscribeControlPtr &control)
{
    try {
        const QByteArray pcm = avfDecodePCM16(input, control);
        if (pcm.isEmpty())
            throw EngineError::convertFailed(QStringLiteral("leere Tonspur"));
        QFile file(output);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw EngineError::convertFailed(file.errorString());
        const QByteArray header = Wav::header(static_cast<quint32>(pcm.size()));
        if (file.write(header) != header.size() || file.write(pcm) != pcm.size() || !file.flush())
            throw EngineError::convertFailed(file.errorString());
        return;
    } catch (const EngineError &e) {
        if (e.isCancelled())
            throw;
    }

    convertWithFFmpeg(input, output, control);
}

QString extractWav(const QString &from, const TranscribeControlPtr &control)
{
    const QString output = temporaryWavPath();
    try {
        convertTo16kMonoWav(from, output, control);
    } catch (...) {
        // A half-written file is of no use to anyone.
        removeQuietly(output);
        throw;
    }
    return output;
}

TranscriptionResult transcribe(const QString &input, const QString &model, const QString &language,
                               const TranscribeControlPtr &control, const Progress &progress)
{
    if (!QFileInfo::exists(model))
        throw EngineError::noModel();
    if (control && control->isCancelled())
        throw EngineError::cancelled();
    const std::vector<float> samples = decodeTo16kMonoFloats(input, control);
    if (control && control->isCancelled())
        throw EngineError::cancelled();
    TranscriptionResult result =
        WhisperEngine::transcribe(samples, model, language, control, progress ? progress : [](double) {});
    result.model = QFileInfo(model).fileName();
    return result;
}

} // namespace Engine
