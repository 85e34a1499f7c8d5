#include "CTranslate2Model.h"

#include <QDir>
#include <QFile>
#include <QFloat16>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <map>
#include <random>

namespace CTranslate2Model {

namespace {

enum Type : quint8 { F32 = 0, I8 = 1, I16 = 2, F16 = 4 };

struct Variable {
    std::vector<qint64> shape;
    Type type = F32;
    QByteArray data;
};

class Builder {
public:
    Builder(const Options &o, Model &model) : o(o), model(model), rng(o.seed), normal(0.0f, 0.5f) {}

    float next(float spread)
    {
        if (o.patterned) {
            counter = counter * 6364136223846793005ull + 1442695040888963407ull;
            return spread * (float((counter >> 40) & 0xffff) / 65536.0f - 0.5f);
        }
        return spread * normal(rng);
    }

    // A float variable; `weight` marks the matrices that int8 models quantise.
    void floats(const QString &name, std::vector<qint64> shape, std::vector<float> v, bool weight)
    {
        Variable var;
        var.shape = shape;
        const qint64 rows = shape.front(), rowSize = qint64(v.size()) / rows;
        if (weight && o.weights == Weights::Int8) {
            // Each row scaled so that its largest magnitude becomes 127, then rounded.
            std::vector<float> scale(static_cast<size_t>(rows));
            var.type = I8;
            var.data.resize(qsizetype(v.size()));
            for (qint64 r = 0; r < rows; ++r) {
                float amax = 0;
                for (qint64 c = 0; c < rowSize; ++c)
                    amax = std::max(amax, std::fabs(v[size_t(r * rowSize + c)]));
                scale[size_t(r)] = amax == 0 ? 1.0f : 127.0f / amax;
                for (qint64 c = 0; c < rowSize; ++c) {
                    float &x = v[size_t(r * rowSize + c)];
                    const float q = std::rint(x * scale[size_t(r)]);
                    var.data[qsizetype(r * rowSize + c)] = char(qint8(q));
                    x = q / scale[size_t(r)];
                }
            }
            Variable s;
            s.shape = {rows};
            s.data = QByteArray(reinterpret_cast<const char *>(scale.data()), qsizetype(scale.size() * 4));
            vars[name + QStringLiteral("_scale")] = s;
        } else if (o.weights == Weights::Float16) {
            var.type = F16;
            std::vector<qfloat16> half(v.size());
            qFloatToFloat16(half.data(), v.data(), qsizetype(v.size()));
            qFloatFromFloat16(v.data(), half.data(), qsizetype(v.size()));
            var.data = QByteArray(reinterpret_cast<const char *>(half.data()), qsizetype(half.size() * 2));
        } else {
            var.data = QByteArray(reinterpret_cast<const char *>(v.data()), qsizetype(v.size() * 4));
        }
        model.shapes.insert(name, shape);
        if (!o.patterned)
            model.values.insert(name, std::move(v));
        vars[name] = std::move(var);
    }

    void random(const QString &name, std::vector<qint64> shape, bool weight, float spread = 1.0f, float offset = 0.0f)
    {
        qint64 n = 1;
        for (qint64 d : shape)
            n *= d;
        std::vector<float> v(static_cast<size_t>(n));
        for (float &x : v)
            x = offset + next(spread);
        floats(name, std::move(shape), std::move(v), weight);
    }

    template <typename T>
    void scalar(const QString &name, Type type, T value)
    {
        Variable var;
        var.type = type;
        var.data = QByteArray(reinterpret_cast<const char *>(&value), sizeof(T));
        vars[name] = var;
    }

    void norm(const QString &p, qint64 n)
    {
        random(p + QStringLiteral("/gamma"), {n}, false, 0.2f, 1.0f);
        random(p + QStringLiteral("/beta"), {n}, false, 0.2f);
    }

    void linear(const QString &p, qint64 out, qint64 in)
    {
        random(p + QStringLiteral("/weight"), {out, in}, true);
        random(p + QStringLiteral("/bias"), {out}, false);
    }

    const Options &o;
    Model &model;
    std::map<QString, Variable> vars; // sorted by name, as the format's writer sorts them
    std::map<QString, QString> aliases;

private:
    std::mt19937 rng;
    std::normal_distribution<float> normal;
    quint64 counter = 1;
};

void string(QByteArray &out, const QString &s)
{
    const QByteArray utf8 = s.toUtf8();
    const quint16 n = quint16(utf8.size() + 1);
    out.append(reinterpret_cast<const char *>(&n), 2);
    out.append(utf8);
    out.append('\0');
}

void u32(QByteArray &out, quint32 v)
{
    out.append(reinterpret_cast<const char *>(&v), 4);
}

bool save(const QString &path, const QByteArray &data)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(data) == data.size();
}

} // namespace

QString token(int i)
{
    switch (i) {
    case 198:
        return QStringLiteral("Ċ"); // "\n"
    case 220:
        return QStringLiteral("Ġ"); // " "
    case 1000:
        return QStringLiteral("ĠgrÃ¼n"); // " grün" as UTF-8 bytes
    }
    static const char *const parts[] = {"ka", "lo", "mi", "ne", "su", "ta", "ri", "do", "ge", "ba", "wu", "zi"};
    QString s = i % 2 == 0 ? QStringLiteral("Ġ") : QString();
    for (int k = i; ; k /= 12) {
        s += QLatin1String(parts[k % 12]);
        if (k < 12)
            break;
    }
    return s;
}

Model write(const QString &folder, const Options &o)
{
    Model model;
    Builder b(o, model);
    const qint64 n = o.state, vocab = o.englishOnly ? 51864 : o.mels == 128 ? 51866 : 51865;
    const qint64 eot = o.englishOnly ? 50256 : 50257;

    b.random(QStringLiteral("encoder/conv1/weight"), {n, o.mels, 3}, false);
    b.random(QStringLiteral("encoder/conv1/bias"), {n}, false);
    b.random(QStringLiteral("encoder/conv2/weight"), {n, n, 3}, false);
    b.random(QStringLiteral("encoder/conv2/bias"), {n}, false);
    b.random(QStringLiteral("encoder/position_encodings/encodings"), {1500, n}, false);
    b.norm(QStringLiteral("encoder/layer_norm"), n);
    b.scalar<qint16>(QStringLiteral("encoder/num_heads"), I16, qint16(o.heads));
    auto selfAttention = [&](const QString &p) {
        b.norm(p + QStringLiteral("/layer_norm"), n);
        b.linear(p + QStringLiteral("/linear_0"), 3 * n, n);
        // The fused key part has no bias: its share of the fused bias is zero.
        std::vector<float> &bias = model.values[p + QStringLiteral("/linear_0/bias")];
        if (!bias.empty()) {
            std::fill(bias.begin() + n, bias.begin() + 2 * n, 0.0f);
            b.floats(p + QStringLiteral("/linear_0/bias"), {3 * n}, bias, false);
        }
        b.linear(p + QStringLiteral("/linear_1"), n, n);
    };
    auto ffn = [&](const QString &p) {
        b.norm(p + QStringLiteral("/ffn/layer_norm"), n);
        b.linear(p + QStringLiteral("/ffn/linear_0"), 4 * n, n);
        b.linear(p + QStringLiteral("/ffn/linear_1"), n, 4 * n);
    };
    for (int l = 0; l < o.layers; ++l) {
        const QString p = QStringLiteral("encoder/layer_%1").arg(l);
        selfAttention(p + QStringLiteral("/self_attention"));
        ffn(p);
    }

    b.random(QStringLiteral("decoder/embeddings/weight"), {vocab, n}, true);
    b.random(QStringLiteral("decoder/position_encodings/encodings"), {448, n}, false);
    b.norm(QStringLiteral("decoder/layer_norm"), n);
    b.scalar<qint16>(QStringLiteral("decoder/num_heads"), I16, qint16(o.heads));
    b.scalar<qint8>(QStringLiteral("decoder/activation"), I8, qint8(3));
    b.scalar<qint16>(QStringLiteral("decoder/alignment_layer"), I16, qint16(-1));
    b.scalar<qint8>(QStringLiteral("decoder/pre_norm"), I8, qint8(1));
    b.scalar<qint8>(QStringLiteral("decoder/scale_embeddings"), I8, qint8(0));
    for (int l = 0; l < o.layers; ++l) {
        const QString p = QStringLiteral("decoder/layer_%1").arg(l);
        selfAttention(p + QStringLiteral("/self_attention"));
        b.norm(p + QStringLiteral("/attention/layer_norm"), n);
        b.linear(p + QStringLiteral("/attention/linear_0"), n, n);
        b.linear(p + QStringLiteral("/attention/linear_1"), 2 * n, n);
        b.linear(p + QStringLiteral("/attention/linear_2"), n, n);
        ffn(p);
        if (o.aliasNorm) {
            // Equal variables are saved once, under the name that sorts first.
            const QString kept = p + QStringLiteral("/attention/layer_norm/gamma");
            const QString alias = p + QStringLiteral("/ffn/layer_norm/gamma");
            b.vars.erase(alias);
            b.aliases[alias] = kept;
            if (!o.patterned)
                model.values[alias] = model.values[kept];
            model.shapes[alias] = model.shapes[kept];
        }
    }
    // The output projection is the token embedding.
    b.aliases[QStringLiteral("decoder/projection/weight")] = QStringLiteral("decoder/embeddings/weight");

    QByteArray bin;
    u32(bin, 6);
    string(bin, QStringLiteral("WhisperSpec"));
    u32(bin, 3);
    u32(bin, quint32(b.vars.size()));
    for (const auto &[name, v] : b.vars) {
        string(bin, name);
        bin.append(char(v.shape.size()));
        for (qint64 d : v.shape)
            u32(bin, quint32(d));
        bin.append(char(v.type));
        u32(bin, quint32(v.data.size()));
        bin.append(v.data);
    }
    u32(bin, quint32(b.aliases.size()));
    for (const auto &[alias, target] : b.aliases) {
        string(bin, alias);
        string(bin, target);
    }

    QDir().mkpath(folder);
    const QDir dir(folder);
    if (o.parts <= 1) {
        save(dir.filePath(QStringLiteral("model.bin")), bin);
    } else {
        const qsizetype size = bin.size() / o.parts + 1;
        for (int i = 0; i < o.parts; ++i)
            save(dir.filePath(QStringLiteral("model.bin.part%1").arg(i + 1)), bin.mid(i * size, size));
    }

    QStringList tokens;
    for (qint64 i = 0; i < vocab; ++i) {
        if (i < eot)
            tokens << (i == 50256 ? QString() : token(int(i))); // the multilingual gap is empty
        else if (i == eot)
            tokens << QStringLiteral("<|endoftext|>");
        else if (i == eot + 1)
            tokens << QStringLiteral("<|startoftranscript|>");
        else
            tokens << QStringLiteral("<|special%1|>").arg(i);
    }
    switch (o.vocabulary) {
    case Vocabulary::Text:
        save(dir.filePath(QStringLiteral("vocabulary.txt")), (tokens.join(u'\n') + u'\n').toUtf8());
        break;
    case Vocabulary::Json:
        save(dir.filePath(QStringLiteral("vocabulary.json")),
             QJsonDocument(QJsonArray::fromStringList(tokens)).toJson(QJsonDocument::Indented));
        break;
    case Vocabulary::Tokenizer: {
        // The tokenizer knows text tokens and a few specials, but no timestamps.
        QVariantHash map;
        for (qint64 i = 0; i < eot; ++i)
            map.insert(tokens[i], int(i));
        QJsonArray added;
        for (qint64 i = eot; i < eot + 10; ++i)
            added.append(QJsonObject{{"id", int(i)}, {"content", tokens[i]}, {"special", true}});
        const QJsonObject root{{"model", QJsonObject{{"type", "BPE"}, {"vocab", QJsonObject::fromVariantHash(map)}}}, {"added_tokens", added}};
        save(dir.filePath(QStringLiteral("tokenizer.json")), QJsonDocument(root).toJson(QJsonDocument::Compact));
        break;
    }
    }
    const QJsonObject config{{"suppress_ids_begin", QJsonArray{220, int(eot)}}, {"lang_ids", QJsonArray{}}};
    save(dir.filePath(QStringLiteral("config.json")), QJsonDocument(config).toJson());
    return model;
}

} // namespace CTranslate2Model
