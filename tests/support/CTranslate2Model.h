#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

// Writes a Whisper model folder in CTranslate2's own format, as faster-whisper uses
// it: model.bin (version 6 layout, optionally split into parts), config.json and a
// token list. The values are random or patterned, the shapes real.
namespace CTranslate2Model {

enum class Weights { Float16, Float32, Int8 };
enum class Vocabulary { Text, Json, Tokenizer };

struct Options {
    int state = 32;
    int heads = 2;
    int layers = 1;
    int mels = 80;
    bool englishOnly = false;
    Weights weights = Weights::Float16;
    Vocabulary vocabulary = Vocabulary::Text;
    int parts = 1;             // model.bin.part1 ... when above 1
    bool aliasNorm = false;    // one layer norm saved as an alias of an equal one
    bool patterned = false;    // cheap values for big shapes instead of random ones
    unsigned seed = 1;
};

// Every variable as written (the quantised ones as they read back after dequantising),
// row-major, outermost dimension first.
struct Model {
    QHash<QString, std::vector<float>> values;
    QHash<QString, std::vector<qint64>> shapes;
};

Model write(const QString &folder, const Options &options = {});

// The text token that the writer puts at index i, in byte-level form.
QString token(int i);

} // namespace CTranslate2Model
