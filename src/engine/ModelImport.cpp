#include "engine/ModelImport.h"
#include "core/Tr.h"

#include "engine/CTranslate2Reader.h"
#include "core/TranscriptionResult.h"
#include "engine/WhisperEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <whisper.h>

#include <filesystem>

using GgmlFormat::Hparams;

namespace {

QString catalogueNames()
{
    QStringList names;
    for (const WhisperModel &model : WhisperModel::all())
        names << model.name;
    return names.join(QStringLiteral(", "));
}

} // namespace

QString ModelImportError::errorDescription() const
{
    switch (m_case) {
    case Case::notAModel:
        return Tr::tr("Kein Whisper-Modell gefunden: %1").arg(m_subject);
    case Case::broken: {
        const QString text
            = Tr::tr("Die Modelldatei ist beschädigt oder unvollständig: %1").arg(m_subject);
        return m_detail.isEmpty() ? text : text + QStringLiteral(" (") + m_detail + u')';
    }
    case Case::englishOnly:
        return Tr::tr("„%1“ ist ein rein englisches Modell; Sagwerk führt nur mehrsprachige Modelle.")
            .arg(m_subject);
    case Case::notInCatalogue:
        return Tr::tr("Das Modell „%1“ passt zu keinem Modell des Katalogs: %2.")
            .arg(m_subject, catalogueNames());
    case Case::writeFailed:
        return Tr::tr("Das Modell konnte nicht im Modellordner gespeichert werden: %1")
            .arg(m_subject);
    case Case::cancelled:
        return Tr::tr("Abgebrochen.");
    }
    return {};
}

const char *ModelImportError::what() const noexcept
{
    m_what = errorDescription().toUtf8();
    return m_what.constData();
}

namespace ModelImport {

namespace {

using Error = ModelImportError;
using Case = ModelImportError::Case;

// The catalogue counts a file as installed only above 90 % of its listed size.
bool countsAsInstalled(qint64 bytes, const WhisperModel &model)
{
    return bytes > qint64(model.approxSizeMB) * 900000;
}

void checkCancel(const CancelTokenPtr &control)
{
    if (control && control->isCancelled())
        throw Error(Case::cancelled, {});
}

// The catalogue entry of a model of this shape, or the reason why there is none.
WhisperModel entryOrRefusal(const Hparams &h)
{
    const QString kind = kindOf(h);
    if (isEnglishOnly(h))
        throw Error(Case::englishOnly, kind);
    const std::optional<WhisperModel> entry = catalogueEntry(kind);
    if (!entry)
        throw Error(Case::notInCatalogue, kind);
    return *entry;
}

bool plausible(const Hparams &h)
{
    for (int v : {h.nVocab, h.audioCtx, h.audioState, h.audioHead, h.audioLayer, h.textCtx, h.textState, h.textHead,
                  h.textLayer, h.mels})
        if (v <= 0 || v > 1000000)
            return false;
    return h.ftype >= 0 && h.ftype < 10000;
}

std::unique_ptr<CTranslate2Reader> openReader(const QString &folder)
{
    try {
        auto reader = std::make_unique<CTranslate2Reader>(folder);
        if (reader->architecture() != QLatin1String("WhisperSpec"))
            throw Error(Case::notAModel, folder);
        return reader;
    } catch (const CTranslate2Reader::NotAModel &) {
        throw Error(Case::notAModel, folder);
    } catch (const CTranslate2Reader::Broken &e) {
        throw Error(Case::broken, folder, QString::fromStdString(e.what()));
    }
}

Hparams hparamsOf(const CTranslate2Reader &r)
{
    auto shaped = [&](const char *name, size_t rank) -> const std::vector<qint64> & {
        const CTranslate2Reader::Variable &v = r.get(QLatin1String(name));
        if (v.shape.size() != rank)
            throw CTranslate2Reader::Broken(std::string(name) + " has an unexpected shape");
        return v.shape;
    };
    Hparams h;
    const auto &conv = shaped("encoder/conv1/weight", 3);
    h.audioState = int(conv[0]);
    h.mels = int(conv[1]);
    h.audioCtx = int(shaped("encoder/position_encodings/encodings", 2)[0]);
    const auto &embeddings = shaped("decoder/embeddings/weight", 2);
    h.nVocab = int(embeddings[0]);
    h.textState = int(embeddings[1]);
    h.textCtx = int(shaped("decoder/position_encodings/encodings", 2)[0]);
    auto layers = [&](const char *stack) {
        int n = 0;
        while (r.find(QStringLiteral("%1/layer_%2/self_attention/linear_0/weight").arg(QLatin1String(stack)).arg(n)))
            ++n;
        return n;
    };
    h.audioLayer = layers("encoder");
    h.textLayer = layers("decoder");
    // Whisper's heads are 64 wide; the saved counts take precedence.
    h.audioHead = int(r.integer(QStringLiteral("encoder/num_heads")).value_or(h.audioState / 64));
    h.textHead = int(r.integer(QStringLiteral("decoder/num_heads")).value_or(h.textState / 64));
    h.ftype = 1;
    if (!plausible(h) || h.audioLayer == 0 || h.textLayer == 0)
        throw CTranslate2Reader::Broken("implausible model shape");
    return h;
}

// One tensor of the target file: a source variable, or an even share of its rows
// (the fused projections), in the layout and type whisper.cpp expects.
struct Piece {
    QByteArray name;
    QString source;
    int part = 0;
    int parts = 1;
    std::vector<qint64> ne;
    GgmlFormat::Type type;
};

QList<Piece> layout(const Hparams &h)
{
    using GgmlFormat::Type;
    QList<Piece> pieces;
    const qint64 n = h.audioState, t = h.textState;
    auto norm = [&](const QByteArray &dst, const QString &src, qint64 width) {
        pieces.append({dst + ".weight", src + QStringLiteral("/gamma"), 0, 1, {width}, Type::F32});
        pieces.append({dst + ".bias", src + QStringLiteral("/beta"), 0, 1, {width}, Type::F32});
    };
    auto linear = [&](const QByteArray &dst, const QString &src, int part, int parts, qint64 in, qint64 out,
                      bool bias) {
        pieces.append({dst + ".weight", src + QStringLiteral("/weight"), part, parts, {in, out}, Type::F16});
        if (bias)
            pieces.append({dst + ".bias", src + QStringLiteral("/bias"), part, parts, {out}, Type::F32});
    };
    // Self-attention keeps query, key and value in one projection, rows in that order.
    // Whisper's key has no bias: a bias on the key shifts every score of a query alike,
    // which the softmax cancels, so dropping the zeros there changes nothing.
    auto selfAttention = [&](const QByteArray &dst, const QString &src, qint64 w) {
        norm(dst + "_ln", src + QStringLiteral("/layer_norm"), w);
        linear(dst + ".query", src + QStringLiteral("/linear_0"), 0, 3, w, w, true);
        linear(dst + ".key", src + QStringLiteral("/linear_0"), 1, 3, w, w, false);
        linear(dst + ".value", src + QStringLiteral("/linear_0"), 2, 3, w, w, true);
        linear(dst + ".out", src + QStringLiteral("/linear_1"), 0, 1, w, w, true);
    };
    // Cross-attention fuses only key and value.
    auto crossAttention = [&](const QByteArray &dst, const QString &src, qint64 w) {
        norm(dst + "_ln", src + QStringLiteral("/layer_norm"), w);
        linear(dst + ".query", src + QStringLiteral("/linear_0"), 0, 1, w, w, true);
        linear(dst + ".key", src + QStringLiteral("/linear_1"), 0, 2, w, w, false);
        linear(dst + ".value", src + QStringLiteral("/linear_1"), 1, 2, w, w, true);
        linear(dst + ".out", src + QStringLiteral("/linear_2"), 0, 1, w, w, true);
    };
    auto mlp = [&](const QByteArray &dst, const QString &src, qint64 w) {
        norm(dst + ".mlp_ln", src + QStringLiteral("/ffn/layer_norm"), w);
        linear(dst + ".mlp.0", src + QStringLiteral("/ffn/linear_0"), 0, 1, w, 4 * w, true);
        linear(dst + ".mlp.2", src + QStringLiteral("/ffn/linear_1"), 0, 1, 4 * w, w, true);
    };

    // Convolutions keep their (out, in, width) order; biases are columns.
    pieces.append({"encoder.conv1.weight", QStringLiteral("encoder/conv1/weight"), 0, 1, {3, h.mels, n}, Type::F16});
    pieces.append({"encoder.conv1.bias", QStringLiteral("encoder/conv1/bias"), 0, 1, {1, n}, Type::F32});
    pieces.append({"encoder.conv2.weight", QStringLiteral("encoder/conv2/weight"), 0, 1, {3, n, n}, Type::F16});
    pieces.append({"encoder.conv2.bias", QStringLiteral("encoder/conv2/bias"), 0, 1, {1, n}, Type::F32});
    pieces.append({"encoder.positional_embedding", QStringLiteral("encoder/position_encodings/encodings"), 0, 1,
                   {n, h.audioCtx}, Type::F32});
    for (int l = 0; l < h.audioLayer; ++l) {
        const QByteArray dst = "encoder.blocks." + QByteArray::number(l);
        const QString src = QStringLiteral("encoder/layer_%1").arg(l);
        selfAttention(dst + ".attn", src + QStringLiteral("/self_attention"), n);
        mlp(dst, src, n);
    }
    norm("encoder.ln_post", QStringLiteral("encoder/layer_norm"), n);

    pieces.append({"decoder.positional_embedding", QStringLiteral("decoder/position_encodings/encodings"), 0, 1,
                   {t, h.textCtx}, Type::F32});
    // The output projection is tied to the token embedding, which is all whisper.cpp reads.
    pieces.append({"decoder.token_embedding.weight", QStringLiteral("decoder/embeddings/weight"), 0, 1,
                   {t, h.nVocab}, Type::F16});
    for (int l = 0; l < h.textLayer; ++l) {
        const QByteArray dst = "decoder.blocks." + QByteArray::number(l);
        const QString src = QStringLiteral("decoder/layer_%1").arg(l);
        selfAttention(dst + ".attn", src + QStringLiteral("/self_attention"), t);
        crossAttention(dst + ".cross_attn", src + QStringLiteral("/attention"), t);
        mlp(dst, src, t);
    }
    norm("decoder.ln", QStringLiteral("decoder/layer_norm"), t);
    return pieces;
}

// The text tokens whisper.cpp reads from the file: everything before <|endoftext|>,
// as raw bytes. whisper.cpp names the special tokens itself and fixes where they
// start, so the end-of-text token must sit where it expects it.
QList<QByteArray> textTokens(const CTranslate2Reader &r, const Hparams &h)
{
    const QStringList tokens = r.vocabulary();
    const qsizetype eot = tokens.indexOf(QStringLiteral("<|endoftext|>"));
    const qsizetype expected = isEnglishOnly(h) ? 50256 : 50257;
    if (eot != expected || tokens.size() > h.nVocab)
        throw CTranslate2Reader::Broken("the vocabulary does not fit the model");
    QList<QByteArray> bytes;
    bytes.reserve(eot);
    for (qsizetype i = 0; i < eot; ++i)
        bytes << CTranslate2Reader::byteLevelDecode(tokens.at(i));
    return bytes;
}

// Matrices are written as `matrices`: the catalogue's quantisation, or f16. Vectors,
// positional embeddings and the convolutions keep their types, as whisper.cpp's own
// quantiser leaves them.
void convert(const CTranslate2Reader &r, const Hparams &h, QIODevice &out, GgmlFormat::Type matrices,
             const CancelTokenPtr &control, const std::function<void(double)> &progress)
{
    const QList<Piece> pieces = layout(h);
    // Check every shape before the first byte is written.
    qint64 totalElements = 0;
    for (const Piece &p : pieces) {
        const CTranslate2Reader::Variable &v = r.get(p.source);
        if (v.rows() % p.parts != 0)
            throw CTranslate2Reader::Broken(p.source.toStdString() + " does not split evenly");
        std::vector<qint64> shape = v.shape;
        if (!shape.empty())
            shape[0] /= p.parts;
        std::vector<qint64> ne(p.ne);
        while (ne.size() > 1 && ne.front() == 1)
            ne.erase(ne.begin()); // a column keeps its values in the same order
        if (!std::equal(ne.begin(), ne.end(), shape.rbegin(), shape.rend()))
            throw CTranslate2Reader::Broken(p.source.toStdString() + " has an unexpected shape");
        totalElements += v.rows() / p.parts * v.rowSize();
    }

    Hparams header = h;
    header.ftype = GgmlFormat::fileType(matrices);
    GgmlFormat::Writer w(out);
    w.header(header);
    w.melFilters(h.mels);
    w.vocabulary(textTokens(r, h));

    // About four megabytes of floats at a time.
    constexpr qint64 chunkElements = 1 << 20;
    qint64 done = 0;
    for (const Piece &p : pieces) {
        checkCancel(control);
        const CTranslate2Reader::Variable &v = r.get(p.source);
        const qint64 rows = v.rows() / p.parts, first = p.part * rows;
        const qint64 step = std::max<qint64>(1, chunkElements / std::max<qint64>(1, v.rowSize()));
        w.beginTensor(p.name, p.ne, p.type == GgmlFormat::Type::F16 && p.ne.size() == 2 ? matrices : p.type);
        for (qint64 row = 0; row < rows; row += step) {
            const qint64 count = std::min(step, rows - row);
            const std::vector<float> values = r.rows(v, first + row, count);
            w.data(values.data(), qint64(values.size()));
            done += qint64(values.size());
            if (progress)
                progress(double(done) / double(totalElements));
            checkCancel(control);
        }
        if (!w.endTensor())
            break;
    }
    if (!w.ok())
        throw Error(Case::writeFailed, out.errorString());
}

// A file in the models folder that disappears unless it is kept.
class PendingFile {
public:
    explicit PendingFile(const QString &dir)
        : path(QDir(dir).filePath(QStringLiteral(".%1.import").arg(uuidText(QUuid::createUuid())))) {}
    ~PendingFile()
    {
        if (!kept)
            QFile::remove(path);
    }
    // Moves the file over `target` in one step.
    void commit(const QString &target)
    {
        std::error_code ec;
        std::filesystem::rename(QFile::encodeName(path).toStdString(), QFile::encodeName(target).toStdString(), ec);
        if (ec)
            throw Error(Case::writeFailed, QString::fromStdString(ec.message()));
        kept = true;
    }
    const QString path;

private:
    bool kept = false;
};

void copyFile(const QString &from, QFile &to, const CancelTokenPtr &control,
              const std::function<void(double)> &progress)
{
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly))
        throw Error(Case::notAModel, from);
    const qint64 size = in.size();
    qint64 copied = 0;
    QByteArray buffer(4 << 20, Qt::Uninitialized);
    while (copied < size) {
        checkCancel(control);
        const qint64 n = in.read(buffer.data(), buffer.size());
        if (n <= 0)
            throw Error(Case::broken, from, in.errorString());
        if (to.write(buffer.constData(), n) != n)
            throw Error(Case::writeFailed, to.errorString());
        copied += n;
        if (progress)
            progress(double(copied) / double(size));
    }
}

enum class SourceType { ggml, ctranslate2 };

// Which kind of model `source` is, and the folder or file to read it from.
std::pair<SourceType, QString> identify(const QString &source)
{
    const QFileInfo info(source);
    if (info.isDir()) {
        if (CTranslate2Reader::isModelFolder(source))
            return {SourceType::ctranslate2, source};
    } else if (info.isFile()) {
        if (info.fileName() == QLatin1String("model.bin") || info.fileName().startsWith(QLatin1String("model.bin.part")))
            return {SourceType::ctranslate2, info.absolutePath()};
        if (GgmlFormat::readHparams(source))
            return {SourceType::ggml, source};
    }
    throw Error(Case::notAModel, source);
}

} // namespace

QString kindOf(const Hparams &h)
{
    struct Shape {
        const char *name;
        int audioLayer, audioState, textLayer, mels;
    };
    // The released Whisper models; large and large-v2 share one shape.
    static const Shape shapes[] = {
        {"tiny", 4, 384, 4, 80},         {"base", 6, 512, 6, 80},
        {"small", 12, 768, 12, 80},      {"medium", 24, 1024, 24, 80},
        {"large-v2", 32, 1280, 32, 80},  {"large-v3", 32, 1280, 32, 128},
        {"large-v3-turbo", 32, 1280, 4, 128},
    };
    const bool knownVocabulary = h.nVocab == 51864 || h.nVocab == (h.mels == 128 ? 51866 : 51865);
    for (const Shape &s : shapes) {
        if (knownVocabulary && s.audioLayer == h.audioLayer && s.audioState == h.audioState
            && s.textLayer == h.textLayer && s.mels == h.mels && h.textState == h.audioState)
            return QLatin1String(s.name) + (isEnglishOnly(h) ? QStringLiteral(".en") : QString());
    }
    return QStringLiteral("whisper %1+%2×%3, %4 mel, %5 tokens")
        .arg(h.audioLayer)
        .arg(h.textLayer)
        .arg(h.audioState)
        .arg(h.mels)
        .arg(h.nVocab);
}

bool isEnglishOnly(const Hparams &h)
{
    return h.nVocab == 51864;
}

std::optional<WhisperModel> catalogueEntry(const QString &kind)
{
    // A catalogue id is the model's kind followed by its quantisation, "base-q5_1".
    for (const WhisperModel &model : WhisperModel::all())
        if (model.id.left(model.id.lastIndexOf(QLatin1String("-q"))) == kind)
            return model;
    return std::nullopt;
}

GgmlFormat::Hparams ctranslate2Hparams(const QString &folder)
{
    const auto reader = openReader(folder);
    try {
        return hparamsOf(*reader);
    } catch (const CTranslate2Reader::Broken &e) {
        throw Error(Case::broken, folder, QString::fromStdString(e.what()));
    }
}

GgmlFormat::Type quantisation(const WhisperModel &model)
{
    if (model.id.endsWith(QLatin1String("-q5_1")))
        return GgmlFormat::Type::Q5_1;
    if (model.id.endsWith(QLatin1String("-q5_0")))
        return GgmlFormat::Type::Q5_0;
    return GgmlFormat::Type::F16;
}

void convertCTranslate2(const QString &folder, QIODevice &out, GgmlFormat::Type matrices,
                        const CancelTokenPtr &control, const std::function<void(double)> &progress)
{
    const auto reader = openReader(folder);
    try {
        convert(*reader, hparamsOf(*reader), out, matrices, control, progress);
    } catch (const CTranslate2Reader::Broken &e) {
        throw Error(Case::broken, folder, QString::fromStdString(e.what()));
    }
}

bool loads(const QString &path)
{
    WhisperEngine::prepareLibrary();
    whisper_context_params params = whisper_context_default_params();
    params.use_gpu = false;
    whisper_context *ctx = whisper_init_from_file_with_params_no_state(QFile::encodeName(path).constData(), params);
    if (!ctx)
        return false;
    whisper_free(ctx);
    return true;
}

Result importModel(const QString &source, const QString &modelsDir, const CancelTokenPtr &control,
                   const std::function<void(double)> &progress)
{
    const auto [type, from] = identify(source);
    if (!QDir().mkpath(modelsDir))
        throw Error(Case::writeFailed, modelsDir);

    Hparams h;
    std::unique_ptr<CTranslate2Reader> reader;
    if (type == SourceType::ggml) {
        h = *GgmlFormat::readHparams(from);
        if (!plausible(h))
            throw Error(Case::broken, from);
    } else {
        reader = openReader(from);
        try {
            h = hparamsOf(*reader);
        } catch (const CTranslate2Reader::Broken &e) {
            throw Error(Case::broken, from, QString::fromStdString(e.what()));
        }
    }
    const WhisperModel entry = entryOrRefusal(h);
    const QString kind = kindOf(h);
    const QString target = QDir(modelsDir).filePath(entry.fileName);

    if (type == SourceType::ggml) {
        if (!countsAsInstalled(QFileInfo(from).size(), entry))
            throw Error(Case::notInCatalogue,
                        kind + QStringLiteral(", %1 MB").arg(QString::number(QFileInfo(from).size() / 1e6, 'f', 0)));
        if (!loads(from))
            throw Error(Case::broken, from);
        // Importing the installed file onto itself leaves it as it is.
        if (QFileInfo(from).canonicalFilePath() == QFileInfo(target).canonicalFilePath())
            return {entry, kind, target};
    }

    PendingFile pending(modelsDir);
    {
        QFile out(pending.path);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw Error(Case::writeFailed, out.errorString());
        // Conversion and copy take nearly all the time; loading the result takes the rest.
        auto share = [&progress](double f) {
            if (progress)
                progress(0.95 * f);
        };
        if (type == SourceType::ggml) {
            copyFile(from, out, control, share);
        } else {
            try {
                convert(*reader, h, out, quantisation(entry), control, share);
            } catch (const CTranslate2Reader::Broken &e) {
                throw Error(Case::broken, from, QString::fromStdString(e.what()));
            }
        }
        if (!out.flush())
            throw Error(Case::writeFailed, out.errorString());
    }
    checkCancel(control);
    if (type == SourceType::ctranslate2) {
        if (!loads(pending.path))
            throw Error(Case::broken, from, QStringLiteral("whisper.cpp does not load the conversion"));
        if (!countsAsInstalled(QFileInfo(pending.path).size(), entry))
            throw Error(Case::notInCatalogue, kind);
    }
    pending.commit(target);
    if (progress)
        progress(1.0);
    return {entry, kind, target};
}

} // namespace ModelImport
