// The text cut into pieces for the AI model: sentences, and chunks of at most a size.
#include "ai/Smoother.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const int maxChars = 1 + input.take<uint8_t>();
    const QString text = QString::fromUtf8(input.rest());
    (void)Smoother::sentenceUnits(text, maxChars);
    (void)Smoother::chunk(text, maxChars);
    (void)Smoother::plausibleRefinement(text, text.left(text.size() / 2));
    return 0;
}
