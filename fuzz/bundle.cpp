// A bundle document as another version or a damaged disk left it: read whole, read as a
// summary, made into a history item, and written back.
#include "storage/BundleData.h"
#include "storage/BundleStore.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    if (const std::optional<BundleData> whole = BundleData::decode(bytes)) {
        const HistoryItem item = BundleStore::historyItem({QStringLiteral("/b"), QStringLiteral("/b"), *whole});
        (void)item;
        if (const std::optional<QByteArray> again = whole->encode()) {
            // What we write, we read back as it was.
            const std::optional<BundleData> reread = BundleData::decode(*again);
            if (!reread || reread->encode() != again)
                __builtin_trap();
        }
    }
    if (const std::optional<BundleData> summary = BundleData::decodeSummary(bytes))
        (void)BundleStore::historyItem({QStringLiteral("/b"), QStringLiteral("/b"), *summary});
    return 0;
}
