// bench-decode FILE [ROUNDS]: our in-process decode against the ffmpeg program writing a
// 16 kHz mono WAV of the same file, rounds interleaved, medians compared.
#include "engine/Decoder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {
double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench-decode FILE [ROUNDS]\n");
        return 2;
    }
    const QString input = QString::fromLocal8Bit(argv[1]);
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 3;
    const QString wav = Decoder::temporaryWavPath();
    std::vector<double> ours, theirs;
    qsizetype bytes = 0;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        bytes = Decoder::libavDecodePCM16(input, nullptr).size();
        ours.push_back(t.nsecsElapsed() / 1e9);

        t.start();
        Decoder::runProcess(QStringLiteral("/usr/bin/ffmpeg"), Decoder::ffmpegArguments(input, wav), nullptr,
                           [](const QString &m) { return EngineError::convertFailed(m); });
        theirs.push_back(t.nsecsElapsed() / 1e9);
        QFile::remove(wav);
    }
    const double a = median(ours), b = median(theirs);
    std::printf("decode  %.1f s of audio: in-process %.3f s, ffmpeg %.3f s, ratio %.3f (goal <= 0.8)\n",
                bytes / 32000.0, a, b, a / b);
    return 0;
}
