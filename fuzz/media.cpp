// The in-process decoder on media whose format FFmpeg detects from the bytes alone.
#include "engine/Decoder.h"
#include "engine/EngineError.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // No extension: the content alone decides the format.
    const QString path = scratchFile(QStringLiteral("media"), FuzzInput(data, size).rest());
    try {
        const QByteArray pcm = Decoder::libavDecodePCM16(path, {});
        if (pcm.size() % 2 != 0)
            __builtin_trap();
    } catch (const EngineError &) {
    }
    return 0;
}
