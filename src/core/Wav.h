#pragma once

#include <QByteArray>

#include <vector>

// The plain WAV form every part that writes audio for a reader uses: a 44-byte header
// over signed 16-bit little-endian PCM.
namespace Wav {

constexpr qsizetype headerBytes = 44;

QByteArray header(quint32 dataBytes, quint32 sampleRate = 16000, quint16 channels = 1, quint16 bitsPerSample = 16);
// Each sample as value / 32768; a trailing odd byte is dropped.
std::vector<float> floatsFromPcm16(const QByteArray &pcm);

} // namespace Wav
