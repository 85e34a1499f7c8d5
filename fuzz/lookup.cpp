// The podcast lookup service's JSON reply.
#include "links/AppleLookup.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    (void)AppleLookup::decode(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
