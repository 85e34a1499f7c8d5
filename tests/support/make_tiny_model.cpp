// make-tiny-model PATH [SCALE [LOUD_TOKENS LOUDNESS]]: writes the generated test model, for
// scripts and benchmarks.
#include "TinyModel.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: make-tiny-model PATH [SCALE [LOUD_TOKENS LOUDNESS]]\n");
        return 2;
    }
    TinyModel::Options options;
    if (argc > 2)
        options.scale = std::strtof(argv[2], nullptr);
    if (argc > 4) {
        options.loudTokens = std::atoi(argv[3]);
        options.loudness = std::strtof(argv[4], nullptr);
    }
    return TinyModel::write(QString::fromLocal8Bit(argv[1]), options) ? 0 : 1;
}
