#include "cli/Commands.h"

#include "app/ModelStore.h"

#include <cstdio>

namespace Cli {

int models(const QStringList &args)
{
    if (args.size() != 1) {
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }
    const ModelStore store;
    std::printf("%-22s %-16s %8s  %s\n", "ID", "NAME", "SIZE", "MODEL");
    for (const WhisperModel &model : WhisperModel::all()) {
        const QString size = QStringLiteral("%1 MB").arg(model.approxSizeMB);
        std::printf("%-22s %-16s %8s  %s\n", qPrintable(model.id), qPrintable(model.name), qPrintable(size),
                    store.installed().contains(model.id) ? "installed" : "-");
    }
    return Ok;
}

} // namespace Cli
