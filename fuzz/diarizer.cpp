// The separation program's output: the result lines on standard output, the progress
// lines on its error stream, and the speaker text made from them.
#include "speakers/Diarizer.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QList<SpeakerSpan> spans = Diarizer::parseResult(bytes);
    for (qsizetype i = 1; i < spans.size(); ++i) {
        if (spans[i].start < spans[i - 1].start)
            __builtin_trap();
    }
    for (const double fraction : Diarizer::parseProgress(bytes)) {
        if (!(fraction >= 0 && fraction <= 1))
            __builtin_trap();
    }
    QList<TranscriptSegment> segments;
    for (qsizetype i = 0; i < spans.size() && i < 64; ++i) {
        TranscriptSegment s;
        s.startMs = qint64(i) * 700;
        s.endMs = s.startMs + 900;
        s.text = QStringLiteral("Wort %1").arg(i);
        segments.append(s);
    }
    (void)Diarizer::speakerLabeledText(segments, spans);
    return 0;
}
