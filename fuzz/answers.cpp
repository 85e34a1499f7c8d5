// Both providers' answers with any status, and the error message in an error answer.
#include "ai/ProviderClients.h"
#include "ai/AIError.h"

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const int status = 100 + input.take<uint16_t>() % 500;
    const QByteArray body = input.rest();
    try {
        (void)ProviderClients::readAnthropicAnswer(status, body);
    } catch (const AIError &) {
    }
    try {
        (void)ProviderClients::readOpenAIAnswer(status, body);
    } catch (const AIError &) {
    }
    (void)ProviderClients::extractErrorMessage(body);
    return 0;
}
