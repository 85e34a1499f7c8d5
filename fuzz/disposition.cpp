// A download's Content-Disposition header (first line), its address (second line) and
// media type (the rest): the suggested name and the extension the file is stored under.
#include "links/MediaDownloader.h"

#include "core/Network.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QList<QByteArray> parts = QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\n');
    Network::Response response;
    response.url = QUrl(QString::fromUtf8(parts.value(1)));
    response.mimeType = QString::fromUtf8(parts.value(2));
    response.suggestedFileName = Network::suggestedFileName(parts.value(0), response.url);
    // A name, never a path.
    if (response.suggestedFileName.contains(u'/') || response.suggestedFileName.contains(u'\\'))
        __builtin_trap();
    const QString extension = MediaDownloader::fileExtension(response);
    if (extension.isEmpty() || extension.contains(u'/') || extension.contains(u'.'))
        __builtin_trap();
    return 0;
}
