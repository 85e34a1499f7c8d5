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
    // Grows the file to at least this many bytes, for code that judges a model by its
    // size. The bytes go into the text of a language token, which the library never emits.
    qint64 padToBytes = 0;
    // Text tokens whose embedding is `loudness` times stronger: their logits stand far
    // apart from each other and from the rest, so the text does not hang on rounding.
    int loudTokens = 0;
    float loudness = 1.0f;
};

bool write(const QString &path, const Options &options = {});

} // namespace TinyModel
