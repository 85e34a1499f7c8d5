// The first episode of an RSS or Atom feed.
#include "links/FeedParser.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    (void)FeedParser::firstEpisode(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
