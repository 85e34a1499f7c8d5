#include "core/Wav.h"

#include <QtEndian>

#include <cstring>

namespace Wav {

QByteArray header(quint32 dataBytes, quint32 sampleRate, quint16 channels, quint16 bitsPerSample)
{
    QByteArray h(headerBytes, '\0');
    auto *p = reinterpret_cast<uchar *>(h.data());
    auto put32 = [p](int at, quint32 v) { qToLittleEndian<quint32>(v, p + at); };
    auto put16 = [p](int at, quint16 v) { qToLittleEndian<quint16>(v, p + at); };
    memcpy(p, "RIFF", 4);
    put32(4, dataBytes + 36);
    memcpy(p + 8, "WAVE", 4);
    memcpy(p + 12, "fmt ", 4);
    put32(16, 16);
    put16(20, 1); // PCM
    put16(22, channels);
    put32(24, sampleRate);
    put32(28, sampleRate * channels * bitsPerSample / 8);
    put16(32, channels * bitsPerSample / 8);
    put16(34, bitsPerSample);
    memcpy(p + 36, "data", 4);
    put32(40, dataBytes);
    return h;
}

std::vector<float> floatsFromPcm16(const QByteArray &pcm)
{
    const qsizetype count = pcm.size() / 2;
    std::vector<float> out(static_cast<size_t>(count));
    const auto *bytes = reinterpret_cast<const uchar *>(pcm.constData());
    for (qsizetype i = 0; i < count; ++i)
        out[i] = static_cast<float>(qFromLittleEndian<qint16>(bytes + 2 * i)) / 32768.0f;
    return out;
}

} // namespace Wav
