// A CTranslate2 model.bin as import-model reads it: the index, the attributes, rows of
// every variable, the shape the import derives, and the token list.
#include "engine/CTranslate2Reader.h"
#include "engine/ModelImport.h"

#include "FuzzInput.h"

#include <QFileInfo>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const QByteArray bytes = input.rest();
    // A tokenizer.json after a form feed, else none.
    const qsizetype split = bytes.lastIndexOf('\f');
    const QString model = scratchFile(QStringLiteral("model.bin"), split < 0 ? bytes : bytes.left(split));
    const QString folder = QFileInfo(model).absolutePath();
    QFile::remove(folder + QStringLiteral("/tokenizer.json"));
    if (split >= 0)
        scratchFile(QStringLiteral("tokenizer.json"), bytes.mid(split + 1));
    try {
        CTranslate2Reader reader(folder);
        (void)reader.architecture();
        (void)reader.totalBytes();
        for (const QString &name : reader.names()) {
            const CTranslate2Reader::Variable &v = reader.get(name);
            (void)reader.integer(name);
            if (v.rows() > 0)
                (void)reader.rows(v, 0, 1);
            if (v.rows() > 1)
                (void)reader.rows(v, v.rows() - 1, 1);
        }
        for (const QString &token : reader.vocabulary())
            (void)CTranslate2Reader::byteLevelDecode(token);
    } catch (const CTranslate2Reader::Broken &) {
    } catch (const CTranslate2Reader::NotAModel &) {
    }
    try {
        (void)ModelImport::ctranslate2Hparams(folder);
    } catch (const ModelImportError &) {
    }
    return 0;
}
