#include "cli/Commands.h"
#include "cli/Run.h"
#include "cli/Stored.h"

#include "core/AIModel.h"
#include "app/AppModel.h"
#include "core/UserError.h"

#include <QCommandLineParser>

#include <cstdio>

namespace Cli {

namespace {

// One refinement of a stored transcription. The key comes from the key store, which
// answers through the event loop, else from the environment. A refinement cannot be
// cancelled; Ctrl-C leaves the bundle as it was.
class SmoothRun : public Run {
public:
    SmoothRun(std::unique_ptr<AppModel> app, const HistoryItem &item, qint64 level, Refinement::Overrides overrides)
        : m_app(std::move(app)), m_item(item), m_level(level), m_overrides(std::move(overrides))
    {
    }

    void start()
    {
        const AIModel model = AIModel::by(m_overrides.modelId.value_or(m_app->activeModelId()));
        apiKey(model.provider).then(this, [this](const QString &key) {
            m_overrides.apiKey = key;
            m_app->smooth(m_item, m_level, m_overrides).then(this, [this] { report(); });
        });
    }

protected:
    void interrupted() override
    {
        std::fprintf(stderr, "%s\n", qPrintable(cancelledText()));
        end(Cancelled);
    }

private:
    void report()
    {
        if (m_app->errorMessage()) {
            std::fprintf(stderr, "%s\n", qPrintable(*m_app->errorMessage()));
            return end(Failed);
        }
        for (const HistoryItem &h : m_app->history()) {
            if (h.id == m_item.id && h.smoothed.contains(m_level)) {
                std::printf("%s\n", h.smoothed.value(m_level).toUtf8().constData());
                return end(Ok);
            }
        }
        end(Failed);
    }

    const std::unique_ptr<AppModel> m_app;
    const HistoryItem m_item;
    const qint64 m_level;
    Refinement::Overrides m_overrides;
};

} // namespace

std::unique_ptr<QObject> smooth(const QStringList &args)
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
        finish(usageError(parser));
        return nullptr;
    }

    auto app = std::make_unique<AppModel>();
    const std::optional<HistoryItem> stored = storedItem(*app, parser.positionalArguments().constFirst());
    if (!stored) {
        finish(Failed);
        return nullptr;
    }
    const HistoryItem item = *stored;

    Refinement::Overrides overrides;
    if (!modelId.isEmpty())
        overrides.modelId = modelId;
    auto run = std::make_unique<SmoothRun>(std::move(app), item, level, std::move(overrides));
    run->start();
    return run;
}

} // namespace Cli
