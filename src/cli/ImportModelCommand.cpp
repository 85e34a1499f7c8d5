#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "engine/ModelImport.h"
#include "engine/ModelStore.h"
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
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }

    auto control = std::make_shared<TranscribeControl>();
    Interrupt::onSignal([control] { control->cancel(); });
    ModelStore store;
    try {
        ModelImport::Result result;
        {
            ProgressBar bar("Import");
            result = ModelImport::importModel(parser.positionalArguments().constFirst(), store.modelsDir(), control,
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
    } catch (const ModelImportError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.errorDescription()));
        return error.kind() == ModelImportError::Case::cancelled ? Cancelled : Failed;
    }
}

} // namespace Cli
