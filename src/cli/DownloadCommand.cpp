#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/ProgressBar.h"
#include "cli/Run.h"

#include "app/ModelStore.h"

#include <QCommandLineParser>

#include <cstdio>

namespace Cli {

namespace {

// One model download into the models folder, reported on the application's event loop.
class DownloadRun : public Run {
public:
    DownloadRun(const WhisperModel &model, const QUrl &base) : m_model(model), m_store(base) {}

    void start()
    {
        connect(&m_store, &ModelStore::downloadingChanged, this, [this] {
            if (m_store.downloading().contains(m_model.id))
                m_bar->update(m_store.downloading().value(m_model.id));
            else
                done();
        });
        m_bar.emplace("Download");
        m_store.download(m_model);
    }

protected:
    // The partial download goes with the store, when this run is deleted.
    void interrupted() override
    {
        m_bar.reset();
        std::fprintf(stderr, "%s\n", qPrintable(Tr::tr("Abgebrochen.")));
        end(Cancelled);
    }

private:
    void done()
    {
        m_bar.reset();
        if (m_store.errorMessage()) {
            std::fprintf(stderr, "%s\n",
                         qPrintable(Tr::tr("Download fehlgeschlagen: %1").arg(*m_store.errorMessage())));
            return end(Failed);
        }
        std::printf("%s\n", qPrintable(m_store.path(m_model)));
        end(Ok);
    }

    const WhisperModel m_model;
    ModelStore m_store;
    std::optional<ProgressBar> m_bar;
};

} // namespace

std::unique_ptr<QObject> download(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("id"), QStringLiteral("model id"));
    parser.addOption({QStringLiteral("from"), QStringLiteral("repository base address"), QStringLiteral("url")});
    if (!parser.parse(args) || parser.positionalArguments().size() != 1) {
        finish(usageError(parser));
        return nullptr;
    }
    const QString id = parser.positionalArguments().constFirst();
    const std::optional<WhisperModel> model = WhisperModel::withId(id);
    if (!model) {
        std::fprintf(stderr, "Unknown model: %s\n%s", qPrintable(id), qPrintable(usage()));
        finish(Usage);
        return nullptr;
    }
    QUrl base = WhisperModel::repositoryBase();
    if (parser.isSet(QStringLiteral("from"))) {
        base = QUrl(parser.value(QStringLiteral("from")));
        if (!base.path().endsWith(u'/'))
            base.setPath(base.path() + u'/');
    }

    auto run = std::make_unique<DownloadRun>(*model, base);
    run->start();
    return run;
}

} // namespace Cli
