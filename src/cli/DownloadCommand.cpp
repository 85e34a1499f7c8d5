#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "engine/ModelStore.h"
#include "core/TranscribeControl.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>

namespace Cli {

int download(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("id"), QStringLiteral("model id"));
    parser.addOption({QStringLiteral("from"), QStringLiteral("repository base address"), QStringLiteral("url")});
    if (!parser.parse(args) || parser.positionalArguments().size() != 1) {
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }
    const QString id = parser.positionalArguments().constFirst();
    const std::optional<WhisperModel> model = WhisperModel::withId(id);
    if (!model) {
        std::fprintf(stderr, "Unknown model: %s\n%s", qPrintable(id), qPrintable(usage()));
        return Usage;
    }
    QUrl base = WhisperModel::repositoryBase();
    if (parser.isSet(QStringLiteral("from"))) {
        base = QUrl(parser.value(QStringLiteral("from")));
        if (!base.path().endsWith(u'/'))
            base.setPath(base.path() + u'/');
    }

    auto control = std::make_shared<TranscribeControl>();
    Interrupt::onSignal([control] { control->cancel(); });
    ModelStore store(base);
    {
        ProgressBar bar("Download");
        QEventLoop loop;
        QObject::connect(&store, &ModelStore::downloadingChanged, &loop, [&] {
            if (store.downloading().contains(model->id))
                bar.update(store.downloading().value(model->id));
            else
                loop.quit();
        });
        // A cancelled run ends with the store, which removes the partial download.
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
            if (control->isCancelled())
                loop.quit();
        });
        watch.start(100);
        store.download(*model);
        loop.exec();
    }

    if (store.downloading().contains(model->id)) {
        std::fprintf(stderr, "%s\n", qPrintable(Tr::tr("Abgebrochen.")));
        return Cancelled;
    }
    if (store.errorMessage()) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("Download fehlgeschlagen: %1")
                                    .arg(*store.errorMessage())));
        return Failed;
    }
    if (!store.isInstalled(*model)) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("Die geladene Datei ist zu klein für dieses Modell; der Server lieferte wohl "
                                    "eine Fehlerseite.")));
        return Failed;
    }
    std::printf("%s\n", qPrintable(store.modelsDir() + u'/' + model->fileName));
    return Ok;
}

} // namespace Cli
