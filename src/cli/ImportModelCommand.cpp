#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "app/Scripted.h"
#include "core/UserError.h"
#include "app/ModelStore.h"
#include "core/TranscribeControl.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace Cli {

int importModel(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("source"),
                                 QStringLiteral("whisper.cpp model file or CTranslate2 model folder"));
    if (!parser.parse(args) || parser.positionalArguments().size() != 1) {
        return usageError(parser);
    }

    auto control = std::make_shared<TranscribeControl>();
    Interrupt::onSignal([control] { control->cancel(); });
    ModelStore store;
    try {
        Scripted::ImportedModel result;
        {
            ProgressBar bar("Import");
            result = Scripted::importModel(parser.positionalArguments().constFirst(), store.modelsDir(), control,
                                              [&bar](double f) { bar.update(f); });
        }
        store.refresh();
        if (!store.isInstalled(result.model)) {
            std::fprintf(stderr, "%s is in the models folder, but the store does not count it installed\n",
                         qPrintable(result.path));
            return Failed;
        }
        std::printf("%s\n", qPrintable(Tr::tr("Modell „%1“ importiert: %2")
                                           .arg(result.model.name, result.path)));
        return Ok;
    } catch (const UserError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.errorDescription()));
        return error.isCancelled() ? Cancelled : Failed;
    }
}

} // namespace Cli
