// The text cut into pieces for the AI model: sentences, and chunks of at most a size.
#include "ai/Refiner.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const int maxChars = 1 + input.take<uint8_t>();
    const QString text = QString::fromUtf8(input.rest());
    (void)Refiner::sentenceUnits(text, maxChars);
    (void)Refiner::chunk(text, maxChars);
    (void)Refiner::plausibleRefinement(text, text.left(text.size() / 2));
    return 0;
}
