// A stretch of the interview's growing recording, cut from a file of any length and
// content, for any times.
#include "capture/LiveRecording.h"

#include "FuzzInput.h"

#include <QFileInfo>

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const qint64 fromMs = input.take<int32_t>();
    const qint64 toMs = input.take<int32_t>();
    const QString path = scratchFile(QStringLiteral("interview.wav"), input.rest());
    (void)LiveRecording::durationMs(path);
    try {
        const QString chunk = LiveRecording::extractRange(path, fromMs, toMs);
        const qint64 bytes = QFileInfo(chunk).size();
        QFile::remove(chunk);
        if (bytes < 44 || bytes > 44 + qMax<qint64>(0, QFileInfo(path).size()))
            __builtin_trap();
    } catch (const std::runtime_error &) {
    }
    return 0;
}
