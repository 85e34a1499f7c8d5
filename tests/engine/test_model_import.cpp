// Model import: CTranslate2 folders written in the real format, converted and loaded by
// the real libwhisper; whisper.cpp files checked and copied; refusals that leave nothing.
#include "CTranslate2Model.h"
#include "GgmlFile.h"
#include "Media.h"
#include "TinyModel.h"

#include "engine/Decoder.h"
#include "engine/ModelImport.h"
#include "engine/WhisperEngine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using CTranslate2Model::Options;
using CTranslate2Model::Vocabulary;
using CTranslate2Model::Weights;

namespace {

QString convert(const QString &source, const QString &target)
{
    QFile out(target);
    EXPECT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ModelImport::convertCTranslate2(source, out);
    return target;
}

// Values equal up to the float16 rounding of the target file.
void expectClose(const std::vector<float> &actual, const float *expected, size_t count, const char *what)
{
    ASSERT_EQ(actual.size(), count) << what;
    size_t bad = 0;
    for (size_t i = 0; i < count; ++i)
        if (std::fabs(actual[i] - expected[i]) > 1e-3f * std::fabs(expected[i]) + 1e-5f)
            ++bad;
    EXPECT_EQ(bad, 0u) << what;
}

void expectClose(const std::vector<float> &actual, const std::vector<float> &expected, const char *what)
{
    expectClose(actual, expected.data(), expected.size(), what);
}

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

ModelImportError::Case refusal(const QString &source, const QString &modelsDir, QString *text = nullptr)
{
    try {
        ModelImport::importModel(source, modelsDir);
    } catch (const ModelImportError &e) {
        if (text)
            *text = e.errorDescription();
        return e.kind();
    }
    ADD_FAILURE() << "imported " << source.toStdString();
    return ModelImportError::Case::cancelled;
}

// The shape of Whisper base with cheap int8 weights, split in three like the packages.
const QString &baseSource()
{
    static const QString folder = [] {
        const QString f = QString::fromLocal8Bit(qgetenv("SAGWERK_TEST_TMP")) + QStringLiteral("-base-ct2");
        if (!QFile::exists(f + QStringLiteral("/model.bin.part3"))) {
            CTranslate2Model::write(f, {.state = 512, .heads = 8, .layers = 6, .weights = Weights::Int8,
                                        .vocabulary = Vocabulary::Tokenizer, .parts = 3, .patterned = true});
        }
        return f;
    }();
    return folder;
}

const std::vector<int> baseHparams{51865, 1500, 512, 8, 6, 448, 512, 8, 6, 80, 1};

} // namespace

TEST(ModelImport, ConversionHasWhisperLayoutKeepsValuesAndRecognises)
{
    struct Variant {
        const char *what;
        Options options;
    } variants[] = {
        {"float16, vocabulary.txt", {}},
        {"int8 with scales, aliases, vocabulary.json",
         {.weights = Weights::Int8, .vocabulary = Vocabulary::Json, .aliasNorm = true, .seed = 2}},
        {"float32, tokenizer.json, English only, three parts",
         {.englishOnly = true, .weights = Weights::Float32, .vocabulary = Vocabulary::Tokenizer, .parts = 3, .seed = 3}},
    };
    const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(Media::tone(QStringLiteral("wav")));

    for (const Variant &v : variants) {
        SCOPED_TRACE(v.what);
        QTemporaryDir dir;
        const QString source = dir.filePath(QStringLiteral("ct2"));
        const CTranslate2Model::Model model = CTranslate2Model::write(source, v.options);
        const QString path = convert(source, dir.filePath(QStringLiteral("converted.bin")));
        const GgmlFile g = GgmlFile::read(path);
        ASSERT_TRUE(g.complete);

        // Header, names, shapes and types as in the layout libwhisper loads.
        const bool english = v.options.englishOnly;
        EXPECT_EQ(g.hparams, (std::vector<int>{english ? 51864 : 51865, 1500, 32, 2, 1, 448, 32, 2, 1, 80, 1}));
        TinyModel::Options tiny;
        tiny.multilingual = !english;
        const QString reference = dir.filePath(QStringLiteral("reference.bin"));
        ASSERT_TRUE(TinyModel::write(reference, tiny));
        const GgmlFile r = GgmlFile::read(reference, false);
        ASSERT_EQ(g.tensors.size(), r.tensors.size());
        for (auto it = r.tensors.cbegin(); it != r.tensors.cend(); ++it) {
            SCOPED_TRACE(it.key().toStdString());
            ASSERT_TRUE(g.tensors.contains(it.key()));
            EXPECT_EQ(g.tensors[it.key()].ne, it->ne);
            EXPECT_EQ(g.tensors[it.key()].type, it->type);
        }

        // Tokens as raw bytes, up to the end-of-text token.
        ASSERT_EQ(g.tokens.size(), english ? 50256 : 50257);
        EXPECT_EQ(g.tokens[198], "\n");
        EXPECT_EQ(g.tokens[1000], QStringLiteral(" grün").toUtf8());
        EXPECT_EQ(g.tokens[2], " " + CTranslate2Model::token(2).mid(1).toUtf8());
        if (!english) {
            EXPECT_EQ(g.tokens[50256], "");
        }

        // Fused projections split by rows; the key loses its zero bias.
        auto values = [&](const char *name) { return model.values.value(QLatin1String(name)); };
        auto tensor = [&](const char *name) { return g.tensors.value(name).values; };
        const std::vector<float> qkv = values("encoder/layer_0/self_attention/linear_0/weight");
        const std::vector<float> qkvBias = values("encoder/layer_0/self_attention/linear_0/bias");
        const size_t nn = 32 * 32;
        expectClose(tensor("encoder.blocks.0.attn.query.weight"), qkv.data(), nn, "query");
        expectClose(tensor("encoder.blocks.0.attn.key.weight"), qkv.data() + nn, nn, "key");
        expectClose(tensor("encoder.blocks.0.attn.value.bias"), qkvBias.data() + 64, 32, "value bias");
        const std::vector<float> kv = values("decoder/layer_0/attention/linear_1/weight");
        expectClose(tensor("decoder.blocks.0.cross_attn.key.weight"), kv.data(), nn, "cross key");
        expectClose(tensor("decoder.token_embedding.weight"), values("decoder/embeddings/weight"), "embedding");
        expectClose(tensor("decoder.blocks.0.mlp_ln.weight"), values("decoder/layer_0/ffn/layer_norm/gamma"), "alias");
        expectClose(tensor("decoder.blocks.0.mlp.2.weight"), values("decoder/layer_0/ffn/linear_1/weight"), "mlp.2");

        // And the real library loads it, and runs it once: a run costs seconds.
        EXPECT_TRUE(ModelImport::loads(path));
        if (v.options.weights == Weights::Float16) {
            const TranscriptionResult result = WhisperEngine::transcribe(samples, path, QStringLiteral("en"), {}, {});
            EXPECT_EQ(result.language, QStringLiteral("en"));
        }
    }
}

TEST(ModelImport, MelFiltersAreWhispersOwn)
{
    // Values of the filter banks that Whisper ships (mel_filters.npz).
    const std::vector<float> mel80 = GgmlFormat::melFilters(80);
    ASSERT_EQ(mel80.size(), 80u * 201u);
    EXPECT_EQ(mel80[0 * 201 + 1], 0x1.975948p-6f);
    EXPECT_EQ(mel80[40 * 201 + 43], 0x1.e2dae4p-7f);
    EXPECT_NEAR(std::accumulate(mel80.begin(), mel80.end(), 0.0), 1.999024092387117, 1e-9);
    EXPECT_EQ(std::count_if(mel80.begin(), mel80.end(), [](float v) { return v != 0; }), 391);

    const std::vector<float> mel128 = GgmlFormat::melFilters(128);
    ASSERT_EQ(mel128.size(), 128u * 201u);
    EXPECT_EQ(mel128[0 * 201 + 1], 0x1.957886p-7f);
    EXPECT_NEAR(std::accumulate(mel128.begin(), mel128.end(), 0.0), 3.1909855409403463, 1e-9);
    EXPECT_EQ(std::count_if(mel128.begin(), mel128.end(), [](float v) { return v != 0; }), 394);
}


TEST(ModelImport, SplitModelBecomesTheCatalogueFileAndCopiesAreChecked)
{
    QTemporaryDir dir;
    const QString models = dir.filePath(QStringLiteral("models"));
    const ModelImport::Result result = ModelImport::importModel(baseSource(), models);
    EXPECT_EQ(result.model, *WhisperModel::withId(QStringLiteral("base-q5_1")));
    EXPECT_EQ(result.kind, QStringLiteral("base"));
    EXPECT_EQ(result.path, models + QStringLiteral("/ggml-base-q5_1.bin"));
    EXPECT_EQ(entries(models), QStringList{"ggml-base-q5_1.bin"});

    // Quantised as the catalogue's file is: the matrices as q5_1, each value within about
    // half a step of its block of 32 (the step and the minimum are stored as f16); the
    // rest as whisper.cpp's quantiser leaves it.
    const GgmlFile q = GgmlFile::read(result.path);
    std::vector<int> quantised = baseHparams;
    quantised.back() = 2000 + 9;
    EXPECT_EQ(q.hparams, quantised);
    const GgmlFile f16 = GgmlFile::read(convert(baseSource(), dir.filePath(QStringLiteral("f16.bin"))));
    EXPECT_EQ(q.tensors.size(), f16.tensors.size());
    for (const char *name : {"decoder.token_embedding.weight", "encoder.blocks.5.mlp.0.weight",
                             "decoder.blocks.0.cross_attn.key.weight"}) {
        SCOPED_TRACE(name);
        const std::vector<float> &got = q.tensors.value(name).values, &want = f16.tensors.value(name).values;
        EXPECT_EQ(q.tensors.value(name).type, 7);
        ASSERT_EQ(got.size(), want.size());
        size_t bad = 0;
        for (size_t block = 0; block < want.size(); block += 32) {
            const auto [lo, hi] = std::minmax_element(want.begin() + qsizetype(block), want.begin() + qsizetype(block) + 32);
            for (size_t i = block; i < block + 32; ++i)
                bad += std::fabs(got[i] - want[i]) > (*hi - *lo) / 31 * 0.6f + 1e-3f * std::fabs(*lo);
        }
        EXPECT_EQ(bad, 0u);
    }
    EXPECT_EQ(q.tensors.value("encoder.conv1.weight").type, 1);
    EXPECT_EQ(q.tensors.value("encoder.positional_embedding").type, 0);
    EXPECT_EQ(q.tensors.value("decoder.blocks.0.attn.query.bias").type, 0);
    EXPECT_LT(QFileInfo(result.path).size(), QFileInfo(dir.filePath(QStringLiteral("f16.bin"))).size() * 0.45);

    // A whisper.cpp file is taken as it is, and a second import replaces the first.
    const QString other = dir.filePath(QStringLiteral("other"));
    const ModelImport::Result copy = ModelImport::importModel(result.path, other);
    EXPECT_EQ(copy.path, other + QStringLiteral("/ggml-base-q5_1.bin"));
    EXPECT_EQ(QFileInfo(copy.path).size(), QFileInfo(result.path).size());
    ModelImport::importModel(result.path, other);
    EXPECT_EQ(entries(other), QStringList{"ggml-base-q5_1.bin"});

    // A damaged whisper.cpp file is refused: whisper.cpp cannot load it.
    const QString cut = dir.filePath(QStringLiteral("cut.bin"));
    ASSERT_TRUE(QFile::copy(result.path, cut));
    QFile(cut).resize(QFileInfo(cut).size() - 4096);
    const QString third = dir.filePath(QStringLiteral("third"));
    EXPECT_EQ(refusal(cut, third), ModelImportError::Case::broken);
    EXPECT_TRUE(entries(third).isEmpty());

    // A cancel halfway leaves nothing, and an existing model stays as it was.
    const qint64 before = QFileInfo(copy.path).lastModified().toMSecsSinceEpoch();
    auto control = std::make_shared<CancelToken>();
    try {
        ModelImport::importModel(baseSource(), other, control, [&](double f) {
            if (f > 0.5)
                control->cancel();
        });
        ADD_FAILURE() << "not cancelled";
    } catch (const ModelImportError &e) {
        EXPECT_EQ(e.kind(), ModelImportError::Case::cancelled);
    }
    EXPECT_EQ(entries(other), QStringList{"ggml-base-q5_1.bin"});
    EXPECT_EQ(QFileInfo(copy.path).lastModified().toMSecsSinceEpoch(), before);
}

TEST(ModelImport, RefusalsNameTheProblemAndLeaveNothing)
{
    QTemporaryDir dir;
    const QString models = dir.filePath(QStringLiteral("models"));
    auto source = [&](const QString &name, Options o = {}) {
        CTranslate2Model::write(dir.filePath(name), o);
        return dir.filePath(name);
    };
    using C = ModelImportError::Case;
    QString text;

    // Sizes the catalogue does not have, English-only models, and what is no model.
    EXPECT_EQ(refusal(source(QStringLiteral("tiny")), models, &text), C::notInCatalogue);
    EXPECT_EQ(text, QStringLiteral("Das Modell „whisper 1+1×32, 80 mel, 51865 tokens“ passt zu keinem Modell des "
                                   "Katalogs: Base, Small, Medium, Large v3 Turbo."));
    EXPECT_EQ(refusal(source(QStringLiteral("english"), {.englishOnly = true}), models), C::englishOnly);
    EXPECT_EQ(refusal(Media::tinyModel(), models), C::notInCatalogue);
    EXPECT_EQ(refusal(Media::textFileNamedMp3(), models, &text), C::notAModel);
    EXPECT_EQ(text, QStringLiteral("Kein Whisper-Modell gefunden: ") + Media::textFileNamedMp3());
    EXPECT_EQ(refusal(dir.filePath(QStringLiteral("nowhere")), models), C::notAModel);
    QDir().mkpath(dir.filePath(QStringLiteral("empty")));
    EXPECT_EQ(refusal(dir.filePath(QStringLiteral("empty")), models), C::notAModel);
    // Another kind of CTranslate2 model.
    const QString translator = source(QStringLiteral("translator")) + QStringLiteral("/model.bin");
    Media::writeFile(translator, Media::readFile(translator).replace("WhisperSpec", "Transformer"));
    EXPECT_EQ(refusal(QFileInfo(translator).path(), models), C::notAModel);

    // Damaged files: cut short, a part missing, something appended.
    const QString truncated = source(QStringLiteral("truncated"));
    QFile::resize(truncated + QStringLiteral("/model.bin"), QFileInfo(truncated + QStringLiteral("/model.bin")).size() - 1000);
    EXPECT_EQ(refusal(truncated, models, &text), C::broken);
    EXPECT_TRUE(text.startsWith(QStringLiteral("Die Modelldatei ist beschädigt oder unvollständig: ") + truncated))
        << text.toStdString();
    const QString gap = source(QStringLiteral("gap"), {.parts = 3});
    QFile::remove(gap + QStringLiteral("/model.bin.part2"));
    EXPECT_EQ(refusal(gap + QStringLiteral("/model.bin.part1"), models, &text), C::broken);
    EXPECT_TRUE(text.contains(QStringLiteral("model.bin.part2"))) << text.toStdString();
    const QString longer = source(QStringLiteral("longer")) + QStringLiteral("/model.bin");
    Media::writeFile(longer, Media::readFile(longer) + "trailing");
    EXPECT_EQ(refusal(QFileInfo(longer).path(), models), C::broken);

    // A token list that does not belong to the weights.
    const QString mismatched = source(QStringLiteral("mismatched"));
    const QByteArray lines = Media::readFile(mismatched + QStringLiteral("/vocabulary.txt"));
    Media::writeFile(mismatched + QStringLiteral("/vocabulary.txt"), lines.mid(lines.indexOf('\n') + 1));
    QFile out(dir.filePath(QStringLiteral("mismatched.bin")));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    try {
        ModelImport::convertCTranslate2(mismatched, out);
        ADD_FAILURE() << "converted";
    } catch (const ModelImportError &e) {
        EXPECT_EQ(e.kind(), C::broken);
    }
    EXPECT_TRUE(entries(models).isEmpty()) << entries(models).join(u' ').toStdString();
}
