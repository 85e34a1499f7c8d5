#include "engine/GgmlFormat.h"

#include <ggml.h>

#include <QFile>
#include <QFloat16>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace GgmlFormat {

std::optional<Hparams> readHparams(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray head = file.read(4 * 12);
    if (head.size() != 4 * 12)
        return std::nullopt;
    auto at = [&](int i) { return qFromLittleEndian<qint32>(head.constData() + 4 * i); };
    if (quint32(at(0)) != magic)
        return std::nullopt;
    return Hparams{at(1), at(2), at(3), at(4), at(5), at(6), at(7), at(8), at(9), at(10), at(11)};
}

std::vector<float> melFilters(int mels)
{
    constexpr int bins = 201;            // 1 + 400 / 2
    constexpr double nyquist = 8000.0;
    // Slaney's scale: linear below 1 kHz, logarithmic above.
    constexpr double linearStep = 200.0 / 3.0, breakHz = 1000.0, breakMel = breakHz / linearStep;
    const double logStep = std::log(6.4) / 27.0;
    auto toMel = [&](double hz) { return hz < breakHz ? hz / linearStep : breakMel + std::log(hz / breakHz) / logStep; };
    auto toHz = [&](double mel) { return mel < breakMel ? mel * linearStep : breakHz * std::exp(logStep * (mel - breakMel)); };

    // mels + 2 edges, evenly spaced in mel from 0 Hz to Nyquist.
    std::vector<double> edge(size_t(mels) + 2);
    const double top = toMel(nyquist);
    for (size_t i = 0; i < edge.size(); ++i)
        edge[i] = toHz(top * double(i) / double(edge.size() - 1));

    std::vector<float> weights(size_t(mels) * bins);
    for (int m = 0; m < mels; ++m) {
        const double lowWidth = edge[m + 1] - edge[m], highWidth = edge[m + 2] - edge[m + 1];
        const double norm = 2.0 / (edge[m + 2] - edge[m]); // equal area per filter
        for (int k = 0; k < bins; ++k) {
            const double hz = nyquist * k / (bins - 1);
            const double rising = (hz - edge[m]) / lowWidth, falling = (edge[m + 2] - hz) / highWidth;
            // Rounded to float before the normalisation, as the reference computes it.
            const float triangle = float(std::max(0.0, std::min(rising, falling)));
            weights[size_t(m) * bins + k] = float(double(triangle) * norm);
        }
    }
    return weights;
}

int fileType(Type type)
{
    switch (type) {
    case Type::F32:
        return 0;
    case Type::F16:
        return 1;
    case Type::Q5_0:
        return GGML_QNT_VERSION * GGML_QNT_VERSION_FACTOR + GGML_FTYPE_MOSTLY_Q5_0;
    case Type::Q5_1:
        return GGML_QNT_VERSION * GGML_QNT_VERSION_FACTOR + GGML_FTYPE_MOSTLY_Q5_1;
    }
    return 1;
}

void Writer::i32(qint32 v)
{
    const qint32 le = qToLittleEndian(v);
    write(reinterpret_cast<const char *>(&le), 4);
}

void Writer::write(const char *data, qint64 size)
{
    if (!failed && out.write(data, size) != size)
        failed = true;
}

void Writer::header(const Hparams &h)
{
    i32(qint32(magic));
    for (int v : {h.nVocab, h.audioCtx, h.audioState, h.audioHead, h.audioLayer, h.textCtx, h.textState, h.textHead,
                  h.textLayer, h.mels, h.ftype})
        i32(v);
}

void Writer::melFilters(int mels)
{
    const std::vector<float> filters = GgmlFormat::melFilters(mels);
    i32(mels);
    i32(qint32(filters.size() / size_t(mels)));
    for (float f : filters) {
        const float le = qToLittleEndian(f);
        write(reinterpret_cast<const char *>(&le), 4);
    }
}

void Writer::vocabulary(const QList<QByteArray> &tokens)
{
    i32(qint32(tokens.size()));
    for (const QByteArray &t : tokens) {
        i32(qint32(t.size()));
        write(t.constData(), t.size());
    }
}

void Writer::beginTensor(const QByteArray &name, const std::vector<qint64> &ne, Type t)
{
    type = t;
    rowWidth = ne.empty() ? 1 : ne.front();
    remaining = 1;
    i32(qint32(ne.size()));
    i32(qint32(name.size()));
    i32(qint32(t));
    for (qint64 n : ne) {
        i32(qint32(n));
        remaining *= n;
    }
    write(name.constData(), name.size());
}

void Writer::data(const float *values, qint64 count)
{
    if (count > remaining) {
        failed = true;
        return;
    }
    remaining -= count;
    if (type == Type::F32) {
        write(reinterpret_cast<const char *>(values), count * 4);
        return;
    }
    if (type == Type::F16) {
        std::vector<qfloat16> half(static_cast<size_t>(count));
        qFloatToFloat16(half.data(), values, count);
        write(reinterpret_cast<const char *>(half.data()), count * 2);
        return;
    }
    const ggml_type quantised = ggml_type(type);
    if (count % rowWidth != 0 || rowWidth % ggml_blck_size(quantised) != 0) {
        failed = true;
        return;
    }
    const qint64 rows = count / rowWidth;
    std::vector<char> packed(ggml_row_size(quantised, rowWidth) * size_t(rows));
    const size_t bytes = ggml_quantize_chunk(quantised, values, packed.data(), 0, rows, rowWidth, nullptr);
    write(packed.data(), qint64(bytes));
}

bool Writer::endTensor()
{
    if (remaining != 0)
        failed = true;
    return !failed;
}

} // namespace GgmlFormat
