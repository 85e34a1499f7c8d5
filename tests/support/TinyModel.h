#pragma once

#include <QString>

// Writes a whisper model in the ggml file layout with random weights and valid
// shapes: small enough to load and run in a blink, real enough for libwhisper.
namespace TinyModel {

struct Options {
    int state = 32;       // n_audio_state = n_text_state
    int heads = 2;
    int layers = 1;
    float scale = 0.5f;   // standard deviation: large enough for varied words
    unsigned seed = 1;
    bool multilingual = true;
};

bool write(const QString &path, const Options &options = {});

} // namespace TinyModel
