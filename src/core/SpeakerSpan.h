#pragma once

#include <QHashFunctions>

// One interval of a diarisation: seconds from the start of the audio, and the raw speaker
// number the diarisation program gave; only its identity counts.
struct SpeakerSpan {
    double start = 0;
    double end = 0;
    int speaker = 0;

    bool operator==(const SpeakerSpan &) const = default;
};

inline size_t qHash(const SpeakerSpan &span, size_t seed = 0)
{
    return qHashMulti(seed, span.start, span.end, span.speaker);
}
