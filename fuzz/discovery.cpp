// The feed a web page names; the page's address comes first, up to a newline.
#include "links/LinkResolver.h"
#include "links/WebURL.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype newline = bytes.indexOf('\n');
    const QUrl page = newline < 0 ? QUrl(QStringLiteral("https://example.org/show"))
                                  : QUrl(QString::fromUtf8(bytes.left(newline)));
    const std::optional<QUrl> feed = LinkResolver::feedLink(page, newline < 0 ? bytes : bytes.mid(newline + 1));
    if (feed && !Links::isWebURL(*feed))
        __builtin_trap();
    return 0;
}
