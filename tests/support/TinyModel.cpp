#include "TinyModel.h"

#include <QFile>

#include <functional>
#include <random>
#include <vector>

namespace TinyModel {

namespace {

class Writer {
public:
    Writer(QFile &file, const Options &o) : file(file), rng(o.seed), normal(0.0f, o.scale) {}

    void i32(qint32 v) { file.write(reinterpret_cast<const char *>(&v), 4); }
    void f32(float v) { file.write(reinterpret_cast<const char *>(&v), 4); }

    // ne lists the dimensions in ggml order (fastest first); half picks f16 storage.
    void tensor(const QByteArray &name, std::vector<int> ne, bool half, float constant = NAN,
                const std::function<float(qint64)> &gain = {})
    {
        i32(qint32(ne.size()));
        i32(qint32(name.size()));
        i32(half ? 1 : 0);
        qint64 count = 1;
        for (int n : ne) {
            i32(n);
            count *= n;
        }
        file.write(name);
        QByteArray data(count * (half ? 2 : 4), Qt::Uninitialized);
        for (qint64 i = 0; i < count; ++i) {
            const float v = (std::isnan(constant) ? normal(rng) : constant) * (gain ? gain(i) : 1.0f);
            if (half) {
                const _Float16 h = static_cast<_Float16>(v);
                memcpy(data.data() + i * 2, &h, 2);
            } else {
                memcpy(data.data() + i * 4, &v, 4);
            }
        }
        file.write(data);
    }

    QFile &file;
    std::mt19937 rng;
    std::normal_distribution<float> normal;
};

QByteArray syllable(std::mt19937 &rng)
{
    static const char *const parts[] = {"ka", "lo", "mi", "ne", "su", "ta", "ri", "do", "ge", "ba", "wu", "zi"};
    QByteArray s;
    const int n = 1 + int(rng() % 3);
    for (int i = 0; i < n; ++i)
        s += parts[rng() % 12];
    return s;
}

} // namespace

bool write(const QString &path, const Options &o)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    Writer w(file, o);

    const int nVocab = o.multilingual ? 51865 : 51864;
    const int audioCtx = 1500, textCtx = 448, mels = 80, s = o.state;
    w.i32(0x67676d6c); // "ggml"
    for (int v : {nVocab, audioCtx, s, o.heads, o.layers, textCtx, s, o.heads, o.layers, mels, 1})
        w.i32(v);

    // Mel filter bank: 80 filters over 201 frequency bins.
    w.i32(mels);
    w.i32(201);
    for (int i = 0; i < mels * 201; ++i)
        w.f32((i % 201) / 3 == i / 201 ? 0.02f : 0.0f);

    // Text tokens; specials and timestamps above them are named by the library itself.
    std::mt19937 words(o.seed + 7);
    const int textTokens = 50256;
    const int padToken = 50300; // a language token: always suppressed while decoding
    const bool padded = o.padToBytes > 0 && o.multilingual;
    w.i32(padded ? padToken + 1 : textTokens);
    for (int i = 0; i < textTokens; ++i) {
        QByteArray token = (i % 3 == 0 ? "." : "") + syllable(words);
        if (i % 2 == 0)
            token.prepend(' ');
        if (i % 11 == 0)
            token.append(',');
        if (i == 220)
            token = " "; // the library suppresses a leading blank by this token's text
        w.i32(qint32(token.size()));
        file.write(token);
    }
    for (int i = textTokens; padded && i <= padToken; ++i) {
        // Placeholders for the specials the library would otherwise name itself.
        QByteArray token = "[_special_" + QByteArray::number(i) + "]";
        if (i == padToken)
            token += QByteArray(o.padToBytes, 'x');
        w.i32(qint32(token.size()));
        file.write(token);
    }

    auto norm = [&](const QByteArray &prefix, int n) {
        w.tensor(prefix + ".weight", {n}, false, 1.0f);
        w.tensor(prefix + ".bias", {n}, false, 0.0f);
    };
    auto linear = [&](const QByteArray &prefix, int in, int out, bool bias) {
        w.tensor(prefix + ".weight", {in, out}, true);
        if (bias)
            w.tensor(prefix + ".bias", {out}, false);
    };
    auto attention = [&](const QByteArray &p) {
        linear(p + ".query", s, s, true);
        linear(p + ".key", s, s, false);
        linear(p + ".value", s, s, true);
        linear(p + ".out", s, s, true);
    };
    auto mlp = [&](const QByteArray &p) {
        norm(p + ".mlp_ln", s);
        linear(p + ".mlp.0", s, 4 * s, true);
        linear(p + ".mlp.2", 4 * s, s, true);
    };

    w.tensor("encoder.positional_embedding", {s, audioCtx}, false);
    w.tensor("encoder.conv1.weight", {3, mels, s}, true);
    w.tensor("encoder.conv1.bias", {1, s}, false);
    w.tensor("encoder.conv2.weight", {3, s, s}, true);
    w.tensor("encoder.conv2.bias", {1, s}, false);
    norm("encoder.ln_post", s);
    for (int l = 0; l < o.layers; ++l) {
        const QByteArray p = "encoder.blocks." + QByteArray::number(l);
        mlp(p);
        norm(p + ".attn_ln", s);
        attention(p + ".attn");
    }
    w.tensor("decoder.positional_embedding", {s, textCtx}, false);
    // Rows ne[0] wide: a few loud text tokens outvote the rest by a wide margin.
    w.tensor("decoder.token_embedding.weight", {s, nVocab}, true, NAN, [&](qint64 i) {
        const qint64 token = i / s;
        return o.loudTokens > 0 && token >= 1000 && token < 1000 + o.loudTokens ? o.loudness : 1.0f;
    });
    norm("decoder.ln", s);
    for (int l = 0; l < o.layers; ++l) {
        const QByteArray p = "decoder.blocks." + QByteArray::number(l);
        mlp(p);
        norm(p + ".attn_ln", s);
        attention(p + ".attn");
        norm(p + ".cross_attn_ln", s);
        attention(p + ".cross_attn");
    }
    return file.error() == QFile::NoError && file.flush();
}

} // namespace TinyModel
