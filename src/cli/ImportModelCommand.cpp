#include "cli/Commands.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "engine/ModelImport.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStandardPaths>

#include <cstdio>

namespace Cli {

namespace {

// Where the application looks for its speech models.
QString modelsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk/models");
}

} // namespace

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
    Interrupt::cancelOnSignal(control);
    ProgressBar bar("Import");
    try {
        const ModelImport::Result result = ModelImport::importModel(
            parser.positionalArguments().constFirst(), modelsFolder(), control, [&bar](double f) { bar.update(f); });
        std::printf("%s\n", qPrintable(QCoreApplication::translate("Sagwerk", "Modell „%1“ importiert: %2")
                                           .arg(result.modelName, result.path)));
        return Ok;
    } catch (const ModelImportError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.errorDescription()));
        return error.kind() == ModelImportError::Case::cancelled ? Cancelled : Failed;
    }
}

} // namespace Cli
