#include "cli/Stored.h"

#include "app/AppModel.h"
#include "app/Scripted.h"
#include "core/Tr.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace Cli {

std::optional<HistoryItem> storedItem(const AppModel &app, const QString &folder)
{
    const QString path = QFileInfo(folder).absoluteFilePath();
    // Shell completion adds a trailing slash, and a link may lead to the folder: the
    // folders are compared as the file system resolves them.
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    for (const HistoryItem &item : app.history()) {
        if (canonical.isEmpty() || !item.bundleURL || QFileInfo(*item.bundleURL).canonicalFilePath() != canonical)
            continue;
        // The history lists the item without its segments; a command works on all of it.
        if (!item.segmentsPending)
            return item;
        if (const std::optional<HistoryItem> whole = Scripted::read(*item.bundleURL))
            return whole;
        break;
    }
    std::fprintf(stderr, "%s\n",
                 qPrintable(Tr::tr("„%1“ ist keine lesbare Transkription.").arg(QDir::toNativeSeparators(path))));
    return std::nullopt;
}

QFuture<QString> apiKey(AIProvider provider)
{
    const bool openai = provider == AIProvider::openai;
    return Scripted::storedKey(provider)
        .then([openai](const std::optional<QString> &stored) {
            const QString key = stored.value_or(QString()).trimmed();
            return key.isEmpty() ? qEnvironmentVariable(openai ? "OPENAI_API_KEY" : "ANTHROPIC_API_KEY").trimmed() : key;
        });
}

} // namespace Cli
