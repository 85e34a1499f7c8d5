// A speaker text as an AI model or a person left it, laid over timed segments: its labels,
// its turns, the label of each line.
#include "review/SpeakerTurn.h"
#include "ai/Smoother.h"
#include "core/Text.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const uint8_t segmentCount = input.take<uint8_t>();
    QList<TranscriptSegment> segments;
    for (int i = 0; i < segmentCount % 32; ++i) {
        TranscriptSegment s;
        s.startMs = input.take<int16_t>();
        s.endMs = s.startMs + input.take<uint8_t>() * 10;
        s.text = QStringLiteral("eins zwei drei");
        s.words = {{QStringLiteral("eins"), s.startMs, s.endMs}};
        segments.append(s);
    }
    const QString text = QString::fromUtf8(input.rest());
    (void)Smoother::speakerLabels(text);
    const QList<SpeakerTurn> turns = SpeakerTurn::build(text, segments);
    for (const SpeakerTurn &turn : turns)
        (void)SpeakerTurn::normalisedWords(turn.text);
    for (const QString &line : text.split(u'\n')) {
        const auto [label, content] = SpeakerTurn::splitLabel(line);
        if (label && Text::characterCount(*label) > 40)
            __builtin_trap();
    }
    return 0;
}
