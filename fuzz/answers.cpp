// Both providers' answers with any status, and the error message in an error answer.
#include "ai/Smoother.h"
#include "ai/SmoothingError.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const int status = 100 + input.take<uint16_t>() % 500;
    const QByteArray body = input.rest();
    try {
        (void)Smoother::readAnthropicAnswer(status, body);
    } catch (const SmoothingError &) {
    }
    try {
        (void)Smoother::readOpenAIAnswer(status, body);
    } catch (const SmoothingError &) {
    }
    (void)Smoother::extractErrorMessage(body);
    return 0;
}
