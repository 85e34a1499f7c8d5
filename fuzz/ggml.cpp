// The check of a whisper.cpp model file: its header and what model its shape makes it.
#include "engine/GgmlFormat.h"
#include "engine/ModelImport.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = scratchFile(QStringLiteral("model.bin"), FuzzInput(data, size).rest());
    if (const std::optional<GgmlFormat::Hparams> h = GgmlFormat::readHparams(path)) {
        const QString kind = ModelImport::kindOf(*h);
        (void)ModelImport::isEnglishOnly(*h);
        (void)ModelImport::catalogueEntry(kind);
    }
    return 0;
}
