#include "engine/CTranslate2Reader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFloat16>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <array>
#include <cstring>

// The weights are read straight into host integers and floats.
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN);

namespace {

// The newest layout this reader knows; versions 4 to 6 share it.
constexpr quint32 newestBinaryVersion = 6;

int itemSize(CTranslate2Reader::DType t)
{
    switch (t) {
    case CTranslate2Reader::DType::Int8:
        return 1;
    case CTranslate2Reader::DType::Int16:
    case CTranslate2Reader::DType::Float16:
    case CTranslate2Reader::DType::BFloat16:
        return 2;
    case CTranslate2Reader::DType::Float32:
    case CTranslate2Reader::DType::Int32:
        return 4;
    }
    return 0;
}

QString partName(int n)
{
    return QStringLiteral("model.bin.part%1").arg(n);
}

} // namespace

// model.bin as one stream over its parts, which are concatenated in the order of their numbers.
class CTranslate2Reader::Parts {
public:
    explicit Parts(const QString &folder)
    {
        QStringList paths;
        if (QFileInfo(folder + QStringLiteral("/model.bin")).isFile()) {
            paths << folder + QStringLiteral("/model.bin");
        } else {
            int highest = 0;
            const QStringList found = QDir(folder).entryList({QStringLiteral("model.bin.part*")}, QDir::Files);
            for (const QString &name : found) {
                bool ok = false;
                const int n = name.mid(int(qstrlen("model.bin.part"))).toInt(&ok);
                if (ok && n > 0)
                    highest = std::max(highest, n);
            }
            if (highest == 0)
                throw NotAModel("no model.bin in " + folder.toStdString());
            for (int n = 1; n <= highest; ++n) {
                if (!QFileInfo(folder + u'/' + partName(n)).isFile())
                    throw Broken(partName(n).toStdString() + " is missing");
                paths << folder + u'/' + partName(n);
            }
        }
        for (const QString &path : paths) {
            auto file = std::make_unique<QFile>(path);
            if (!file->open(QIODevice::ReadOnly))
                throw Broken(file->errorString().toStdString());
            starts.push_back(total);
            total += file->size();
            files.push_back(std::move(file));
        }
    }

    // Reads exactly n bytes at a position of the joined stream, or fails.
    bool read(qint64 offset, char *into, qint64 n) const
    {
        if (offset < 0 || n < 0 || offset + n > total)
            return false;
        while (n > 0) {
            size_t i = files.size() - 1;
            while (starts[i] > offset)
                --i;
            QFile &f = *files[i];
            const qint64 chunk = std::min(n, f.size() - (offset - starts[i]));
            if (!f.seek(offset - starts[i]) || f.read(into, chunk) != chunk)
                return false;
            offset += chunk;
            into += chunk;
            n -= chunk;
        }
        return true;
    }

    std::vector<std::unique_ptr<QFile>> files;
    std::vector<qint64> starts;
    qint64 total = 0;
};

qint64 CTranslate2Reader::Variable::rowSize() const
{
    qint64 n = 1;
    for (size_t i = 1; i < shape.size(); ++i)
        n *= shape[i];
    return n;
}

CTranslate2Reader::CTranslate2Reader(const QString &folder)
    : m_folder(folder), m_parts(std::make_unique<Parts>(folder))
{
    readIndex();
}

CTranslate2Reader::~CTranslate2Reader() = default;

bool CTranslate2Reader::isModelFolder(const QString &folder)
{
    return QFileInfo(folder + QStringLiteral("/model.bin")).isFile()
        || QFileInfo(folder + u'/' + partName(1)).isFile();
}

qint64 CTranslate2Reader::totalBytes() const
{
    return m_parts->total;
}

void CTranslate2Reader::readIndex()
{
    qint64 pos = 0;
    auto bytes = [&](qint64 n) {
        QByteArray b(n, Qt::Uninitialized);
        if (!m_parts->read(pos, b.data(), n))
            throw Broken("model.bin ends early at byte " + std::to_string(pos));
        pos += n;
        return b;
    };
    auto u8 = [&] { return quint8(bytes(1).at(0)); };
    auto u16 = [&] { return qFromLittleEndian<quint16>(bytes(2).constData()); };
    auto u32 = [&] { return qFromLittleEndian<quint32>(bytes(4).constData()); };
    auto string = [&] {
        QByteArray s = bytes(u16());
        if (!s.isEmpty() && s.back() == '\0')
            s.chop(1);
        return QString::fromUtf8(s);
    };

    const quint32 version = u32();
    // Version 1 named no model family, and no Whisper model was ever saved with it.
    if (version < 2 || version > newestBinaryVersion)
        throw NotAModel("model.bin binary version " + std::to_string(version));
    m_architecture = string();
    u32(); // revision of the family's layout; the variable names below tell more
    const quint32 count = u32();
    if (count > 1000000)
        throw Broken("implausible variable count");
    for (quint32 i = 0; i < count; ++i) {
        Variable v;
        v.name = string();
        const int rank = u8();
        if (rank > 8)
            throw Broken("implausible rank of " + v.name.toStdString());
        qint64 elements = 1;
        for (int d = 0; d < rank; ++d) {
            v.shape.push_back(u32());
            // No variable holds more elements than the file has bytes.
            if (v.shape.back() != 0 && elements > m_parts->total / v.shape.back())
                throw Broken("implausible shape of " + v.name.toStdString());
            elements *= v.shape.back();
        }
        if (version >= 4) {
            const quint8 type = u8();
            if (type > quint8(DType::BFloat16))
                throw Broken("unknown data type of " + v.name.toStdString());
            v.dtype = DType(type);
            v.bytes = u32();
        } else {
            // Older files give the item width and the element count.
            const quint8 width = u8();
            if (width != 1 && width != 2 && width != 4)
                throw Broken("unknown data width of " + v.name.toStdString());
            v.dtype = width == 4 ? DType::Float32 : width == 2 ? DType::Int16 : DType::Int8;
            v.bytes = qint64(u32()) * width;
        }
        if (v.bytes != elements * itemSize(v.dtype))
            throw Broken("size of " + v.name.toStdString() + " does not match its shape");
        v.offset = pos;
        pos += v.bytes;
        if (pos > m_parts->total)
            throw Broken("model.bin ends inside " + v.name.toStdString());
        m_order << v.name;
        m_variables.insert(v.name, std::move(v));
    }
    if (version >= 3) {
        const quint32 aliases = u32();
        for (quint32 i = 0; i < aliases; ++i) {
            const QString alias = string();
            m_aliases.insert(alias, string());
        }
    }
    if (pos != m_parts->total)
        throw Broken("unexpected data after the end of model.bin");
}

QString CTranslate2Reader::resolve(const QString &name) const
{
    if (const auto it = m_aliases.constFind(name); it != m_aliases.cend())
        return *it;
    static const QLatin1String scale("_scale");
    if (name.endsWith(scale)) {
        const QString base = name.chopped(scale.size());
        if (const auto it = m_aliases.constFind(base); it != m_aliases.cend())
            return *it + scale;
    }
    return name;
}

const CTranslate2Reader::Variable *CTranslate2Reader::find(const QString &name) const
{
    const auto it = m_variables.constFind(resolve(name));
    return it == m_variables.cend() ? nullptr : &*it;
}

const CTranslate2Reader::Variable &CTranslate2Reader::get(const QString &name) const
{
    if (const Variable *v = find(name))
        return *v;
    throw Broken("model.bin lacks " + name.toStdString());
}

std::optional<qint64> CTranslate2Reader::integer(const QString &name) const
{
    const Variable *v = find(name);
    if (!v || !v->shape.empty() || v->dtype == DType::Float32 || v->dtype == DType::Float16
        || v->dtype == DType::BFloat16)
        return std::nullopt;
    char raw[4] = {};
    if (!m_parts->read(v->offset, raw, v->bytes))
        throw Broken("cannot read " + name.toStdString());
    switch (v->dtype) {
    case DType::Int8:
        return qint8(raw[0]);
    case DType::Int16:
        return qFromLittleEndian<qint16>(raw);
    default:
        return qFromLittleEndian<qint32>(raw);
    }
}

std::vector<float> CTranslate2Reader::rows(const Variable &v, qint64 first, qint64 count) const
{
    const qint64 rowSize = v.rowSize();
    if (first < 0 || count < 0 || first + count > v.rows())
        throw Broken("rows out of range in " + v.name.toStdString());
    const int width = itemSize(v.dtype);
    const qint64 n = count * rowSize;
    QByteArray raw(n * width, Qt::Uninitialized);
    if (!m_parts->read(v.offset + first * rowSize * width, raw.data(), raw.size()))
        throw Broken("cannot read " + v.name.toStdString());

    std::vector<float> out(size_t(n), 0.0f);
    const char *p = raw.constData();
    switch (v.dtype) {
    case DType::Float32:
        std::memcpy(out.data(), p, size_t(n) * 4);
        return out;
    case DType::Float16:
        qFloatFromFloat16(out.data(), reinterpret_cast<const qfloat16 *>(p), n);
        return out;
    case DType::BFloat16:
        for (qint64 i = 0; i < n; ++i) {
            const quint32 bits = quint32(qFromLittleEndian<quint16>(p + 2 * i)) << 16;
            std::memcpy(&out[size_t(i)], &bits, 4);
        }
        return out;
    case DType::Int32:
        for (qint64 i = 0; i < n; ++i)
            out[size_t(i)] = float(qFromLittleEndian<qint32>(p + 4 * i));
        return out;
    case DType::Int8:
    case DType::Int16:
        break;
    }

    // Quantised: each row was multiplied by its scale and rounded; int16 has one scale
    // for the whole matrix.
    auto cached = m_scales.constFind(v.name);
    if (cached == m_scales.cend()) {
        const Variable *s = find(v.name + QStringLiteral("_scale"));
        if (!s || itemSize(s->dtype) < 2)
            throw Broken("model.bin lacks the scale of " + v.name.toStdString());
        std::vector<float> scale = rows(*s, 0, s->rows());
        if (scale.size() != 1 && qint64(scale.size()) != v.rows())
            throw Broken("scale of " + v.name.toStdString() + " does not fit");
        cached = m_scales.insert(v.name, std::move(scale));
    }
    const std::vector<float> &scale = *cached;
    for (qint64 r = 0; r < count; ++r) {
        const float s = scale.size() == 1 ? scale[0] : scale[size_t(first + r)];
        const float inverse = s != 0.0f ? 1.0f / s : 0.0f;
        for (qint64 c = 0; c < rowSize; ++c) {
            const qint64 i = r * rowSize + c;
            const float q = v.dtype == DType::Int8 ? float(qint8(p[i])) : float(qFromLittleEndian<qint16>(p + 2 * i));
            out[size_t(i)] = q * inverse;
        }
    }
    return out;
}

QStringList CTranslate2Reader::vocabulary() const
{
    const QDir dir(m_folder);
    QFile json(dir.filePath(QStringLiteral("vocabulary.json")));
    if (json.open(QIODevice::ReadOnly)) {
        QStringList tokens;
        for (const QJsonValue &t : QJsonDocument::fromJson(json.readAll()).array())
            tokens << t.toString();
        return tokens;
    }
    QFile text(dir.filePath(QStringLiteral("vocabulary.txt")));
    if (text.open(QIODevice::ReadOnly)) {
        QStringList tokens = QString::fromUtf8(text.readAll()).split(u'\n');
        if (!tokens.isEmpty() && tokens.constLast().isEmpty())
            tokens.removeLast(); // the newline after the last token
        return tokens;
    }
    QFile tokenizer(dir.filePath(QStringLiteral("tokenizer.json")));
    if (tokenizer.open(QIODevice::ReadOnly)) {
        const QJsonObject root = QJsonDocument::fromJson(tokenizer.readAll()).object();
        QHash<qint64, QString> byId;
        const QJsonObject vocab = root.value(QStringLiteral("model")).toObject().value(QStringLiteral("vocab")).toObject();
        for (auto it = vocab.begin(); it != vocab.end(); ++it)
            byId.insert(it.value().toInteger(-1), it.key());
        for (const QJsonValue &added : root.value(QStringLiteral("added_tokens")).toArray())
            byId.insert(added[QStringLiteral("id")].toInteger(-1), added[QStringLiteral("content")].toString());
        byId.remove(-1);
        QStringList tokens;
        for (qint64 id = 0; byId.contains(id); ++id)
            tokens << byId.value(id);
        return tokens;
    }
    return {};
}

QByteArray CTranslate2Reader::byteLevelDecode(const QString &token)
{
    // Printable bytes stand for themselves; the others were moved, in order, to the
    // code points from 256 up.
    static const std::array<int, 512> byteOf = [] {
        std::array<int, 512> table;
        table.fill(-1);
        int moved = 0;
        for (int b = 0; b < 256; ++b) {
            const bool printable = (b >= 33 && b <= 126) || (b >= 161 && b <= 172) || (b >= 174 && b <= 255);
            table[size_t(printable ? b : 256 + moved++)] = b;
        }
        return table;
    }();
    QByteArray out;
    out.reserve(token.size());
    for (const char32_t c : token.toUcs4()) {
        if (c < byteOf.size() && byteOf[c] >= 0)
            out += char(byteOf[c]);
        else
            out += QString::fromUcs4(&c, 1).toUtf8();
    }
    return out;
}
