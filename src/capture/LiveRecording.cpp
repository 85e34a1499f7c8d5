#include "capture/LiveRecording.h"

#include "core/Tr.h"
#include "core/TranscriptionResult.h"
#include "core/Wav.h"

#include <QAudioFormat>
#include <QAudioSource>
#include <QDir>
#include <QFileInfo>
#include <QMediaDevices>
#include <QUuid>

#include <algorithm>
#include <stdexcept>

namespace {

// The raw bytes of the range; never more than the recording holds, since a reader asks
// for the buffer it names.
QByteArray readRange(const QString &path, qint64 fromMs, qint64 toMs, int rate)
{
    QFile recording(path);
    if (!recording.open(QIODevice::ReadOnly))
        throw std::runtime_error(recording.errorString().toStdString());
    const qint64 first = fromMs * rate / 1000;
    const qint64 last = toMs * rate / 1000;
    if (last <= first)
        return {};
    if (!recording.seek(Wav::headerBytes + 2 * first))
        throw std::runtime_error(recording.errorString().toStdString());
    const qint64 held = std::max<qint64>(0, recording.size() - recording.pos());
    return recording.read(std::min(2 * (last - first), held));
}

} // namespace

LiveRecording::LiveRecording(QObject *parent) : QObject(parent) {}

LiveRecording::~LiveRecording()
{
    if (isRecording())
        discard();
}

LiveRecording::Start LiveRecording::start(QString *error)
{
    // A machine without any microphone reads like a refusal: the user has to act.
    const QAudioDevice device = QMediaDevices::defaultAudioInput();
    if (device.isNull())
        return Start::noMicrophone;
    const QString path = QDir::tempPath() + QStringLiteral("/interview-") + uuidText(QUuid::createUuid())
        + QStringLiteral(".wav");
    m_file.setFileName(path);
    // Unbuffered, so that the file's size tells how much was recorded.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || m_file.write(Wav::header(0)) != Wav::headerBytes) {
        *error = m_file.errorString();
        m_file.close();
        QFile::remove(path);
        return Start::failed;
    }
    QAudioFormat format;
    format.setSampleRate(sampleRate);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    m_source = std::make_unique<QAudioSource>(device, format);
    m_source->start(&m_file);
    if (m_source->error() != QAudio::NoError) {
        m_source.reset();
        m_file.close();
        QFile::remove(path);
        *error = Tr::tr("Aufnahme konnte nicht gestartet werden.");
        return Start::failed;
    }
    m_path = path;
    return Start::recording;
}

void LiveRecording::stop()
{
    if (m_source) {
        m_source->stop();
        m_source.reset();
    }
    if (m_file.isOpen()) {
        // Nothing here reads the sizes, but every other program that opens the file does.
        const qint64 size = m_file.size();
        if (m_file.seek(0))
            m_file.write(Wav::header(quint32(std::max<qint64>(0, size - Wav::headerBytes))));
        m_file.close();
    }
}

void LiveRecording::discard()
{
    stop();
    if (m_path) {
        QFile::remove(*m_path);
        m_path.reset();
    }
}

qint64 LiveRecording::durationMs(const QString &path, int rate)
{
    const QFileInfo info(path);
    if (!info.exists() || info.size() < Wav::headerBytes + 1)
        return 0;
    const qint64 samples = (info.size() - Wav::headerBytes) / 2;
    return samples * 1000 / rate;
}

std::vector<float> LiveRecording::samples(const QString &path, qint64 fromMs, qint64 toMs, int rate)
{
    return Wav::floatsFromPcm16(readRange(path, fromMs, toMs, rate));
}

QString LiveRecording::extractRange(const QString &path, qint64 fromMs, qint64 toMs, int rate)
{
    const QByteArray bytes = readRange(path, fromMs, toMs, rate);
    const QString chunkPath = QDir::tempPath() + QStringLiteral("/chunk-") + uuidText(QUuid::createUuid())
        + QStringLiteral(".wav");
    QFile chunk(chunkPath);
    if (!chunk.open(QIODevice::WriteOnly)
        || chunk.write(Wav::header(quint32(bytes.size()), quint32(rate)) + bytes) != Wav::headerBytes + bytes.size()) {
        chunk.remove();
        throw std::runtime_error(chunk.errorString().toStdString());
    }
    return chunkPath;
}
