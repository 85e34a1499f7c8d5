#include "GgmlFile.h"

#include <QFile>
#include <QFloat16>

#include <ggml.h>

GgmlFile GgmlFile::read(const QString &path, bool values)
{
    GgmlFile g;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return g;
    auto i32 = [&](bool *ok = nullptr) {
        qint32 v = 0;
        const bool got = f.read(reinterpret_cast<char *>(&v), 4) == 4;
        if (ok)
            *ok = got;
        return v;
    };
    i32(); // magic
    for (int i = 0; i < 11; ++i)
        g.hparams.push_back(i32());
    const qint64 mels = i32(), bins = i32();
    f.skip(mels * bins * 4); // the mel filters
    const int count = i32();
    for (int i = 0; i < count; ++i)
        g.tokens << f.read(i32());

    for (;;) {
        bool ok = false;
        const int dims = i32(&ok);
        if (!ok) {
            g.complete = f.atEnd();
            break;
        }
        const int nameLength = i32();
        Tensor t;
        t.type = i32();
        qint64 n = 1;
        for (int d = 0; d < dims; ++d) {
            t.ne.push_back(i32());
            n *= t.ne.back();
        }
        const QByteArray name = f.read(nameLength);
        const ggml_type type = ggml_type(t.type);
        const qint64 width = t.ne.empty() ? 1 : t.ne.front();
        const qint64 bytes = t.type <= 1 ? n * (t.type == 1 ? 2 : 4) : qint64(ggml_row_size(type, width)) * (n / width);
        if (values) {
            const QByteArray raw = f.read(bytes);
            if (raw.size() != bytes)
                break;
            t.values.resize(size_t(n));
            if (t.type == 1)
                qFloatFromFloat16(t.values.data(), reinterpret_cast<const qfloat16 *>(raw.constData()), n);
            else if (t.type > 1)
                ggml_get_type_traits(type)->to_float(raw.constData(), t.values.data(), n);
            else
                memcpy(t.values.data(), raw.constData(), size_t(bytes));
        } else if (!f.seek(f.pos() + bytes) || f.pos() > f.size()) {
            break;
        }
        g.tensors.insert(name, std::move(t));
    }
    return g;
}
