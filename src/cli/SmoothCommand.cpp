#include "cli/Commands.h"

#include "ai/AIModel.h"
#include "app/AppModel.h"
#include "core/Tr.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>

namespace Cli {

namespace {

// The providers' own convention, for a machine whose key store holds none.
QString environmentKey(AIProvider provider)
{
    return qEnvironmentVariable(provider == AIProvider::openai ? "OPENAI_API_KEY" : "ANTHROPIC_API_KEY").trimmed();
}

} // namespace

int smooth(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("bundle"), QStringLiteral("folder of a stored transcription"));
    parser.addOption({QStringLiteral("level"), QStringLiteral("1, 2 or 3"), QStringLiteral("level")});
    parser.addOption({QStringLiteral("model"), QStringLiteral("AI model id"), QStringLiteral("id")});
    bool levelOk = false;
    const qint64 level = parser.parse(args) ? parser.value(QStringLiteral("level")).toLongLong(&levelOk) : 0;
    const QString modelId = parser.value(QStringLiteral("model"));
    const bool knownModel = modelId.isEmpty()
        || std::any_of(AIModel::all().cbegin(), AIModel::all().cend(), [&](const AIModel &m) { return m.id == modelId; });
    if (parser.positionalArguments().size() != 1 || !levelOk || level < 1 || level > 3 || !knownModel) {
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }

    AppModel app;
    const QString folder = QFileInfo(parser.positionalArguments().constFirst()).absoluteFilePath();
    const auto stored = std::find_if(app.history().cbegin(), app.history().cend(),
                                     [&](const HistoryItem &item) { return item.bundleURL == folder; });
    if (stored == app.history().cend()) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("„%1“ ist keine lesbare Transkription.").arg(QDir::toNativeSeparators(folder))));
        return Failed;
    }
    const HistoryItem item = *stored;

    Refinement::Overrides overrides;
    if (!modelId.isEmpty())
        overrides.modelId = modelId;
    const AIModel model = AIModel::by(overrides.modelId.value_or(app.activeModelId()));
    const QString storedKey = model.provider == AIProvider::openai ? app.openaiKey() : app.anthropicKey();
    overrides.apiKey = storedKey.isEmpty() ? environmentKey(model.provider) : storedKey;

    // The one event loop of the process runs until the item is at rest again; the work
    // starts inside it, so that an answer at once still ends it.
    const auto report = [&app, &item, level] {
        if (app.errorMessage()) {
            std::fprintf(stderr, "%s\n", qPrintable(*app.errorMessage()));
            QCoreApplication::exit(Failed);
            return;
        }
        for (const HistoryItem &h : app.history()) {
            if (h.id == item.id && h.smoothed.contains(level)) {
                std::printf("%s\n", h.smoothed.value(level).toUtf8().constData());
                QCoreApplication::exit(Ok);
                return;
            }
        }
        QCoreApplication::exit(Failed);
    };
    QTimer::singleShot(0, &app, [&] { app.smooth(item, level, overrides).then(&app, report); });
    return QCoreApplication::exec();
}

} // namespace Cli
