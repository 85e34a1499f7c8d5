#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QString>

#include <optional>
#include <vector>

// The whisper model file that whisper.cpp loads: "ggml" magic, eleven hyperparameters,
// the mel filter bank, the text tokens, then named tensors.
namespace GgmlFormat {

constexpr quint32 magic = 0x67676d6c; // "ggml"

struct Hparams {
    int nVocab = 0;
    int audioCtx = 0;
    int audioState = 0;
    int audioHead = 0;
    int audioLayer = 0;
    int textCtx = 0;
    int textState = 0;
    int textHead = 0;
    int textLayer = 0;
    int mels = 0;
    int ftype = 0; // 1: matrices in f16; higher values name quantised files

    bool operator==(const Hparams &) const = default;
};

// The header of a model file; nullopt when the magic is wrong or the file too short.
std::optional<Hparams> readHparams(const QString &path);

// The mel filter bank of whisper's feature extraction: Slaney-scale triangles with
// Slaney area normalisation over the 201 bins of a 400-point FFT at 16 kHz, as
// librosa computes it. Row-major, mels × 201.
std::vector<float> melFilters(int mels);

// Tensor types by ggml's numbers. The quantised ones pack each row into blocks of 32.
enum class Type { F32 = 0, F16 = 1, Q5_0 = 6, Q5_1 = 7 };

// The header's file type for matrices of `type`: 1 for f16; a quantised file also
// names the quantisation format's version, as the library expects.
int fileType(Type type);

// Writes a model file front to back; tensors are handed over in pieces so that no
// tensor needs to be held whole.
class Writer {
public:
    explicit Writer(QIODevice &out) : out(out) {}

    void header(const Hparams &h);
    void melFilters(int mels);
    void vocabulary(const QList<QByteArray> &tokens);

    // `ne` lists the dimensions fastest first, as ggml does. A quantised tensor takes
    // its data in whole rows of ne[0] values.
    void beginTensor(const QByteArray &name, const std::vector<qint64> &ne, Type type);
    void data(const float *values, qint64 count);
    // False when the data did not fill the tensor exactly.
    bool endTensor();

    bool ok() const { return !failed; }

private:
    void i32(qint32 v);
    void write(const char *data, qint64 size);

    QIODevice &out;
    Type type = Type::F32;
    qint64 rowWidth = 1;
    qint64 remaining = 0;
    bool failed = false;
};

} // namespace GgmlFormat
