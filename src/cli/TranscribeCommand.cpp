#include "cli/Commands.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "engine/Engine.h"

#include <QCommandLineParser>
#include <QJsonDocument>

#include <cstdio>

namespace Cli {

QString usage()
{
    return QStringLiteral(
        "Usage:\n"
        "  sagwerk-cli transcribe FILE --model PATH [--language CODE]\n"
        "      Writes the transcription of FILE as JSON to standard output.\n"
        "  sagwerk-cli models\n"
        "      Lists the speech models and which of them are installed.\n"
        "  sagwerk-cli download ID [--from URL]\n"
        "      Downloads a speech model into the models folder and prints its path;\n"
        "      URL replaces the address of the model repository.\n"
        "  sagwerk-cli import-model SOURCE\n"
        "      Installs a Whisper model (a whisper.cpp model file, or a CTranslate2 model\n"
        "      folder as faster-whisper uses it) as the catalogue model of its size.\n");
}

int transcribe(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("audio or video file"));
    parser.addOption({QStringLiteral("model"), QStringLiteral("model file"), QStringLiteral("path")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code or auto"), QStringLiteral("code"),
                      QStringLiteral("auto")});
    if (!parser.parse(args) || parser.positionalArguments().size() != 1 || !parser.isSet(QStringLiteral("model"))) {
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }
    const QString input = parser.positionalArguments().constFirst();
    const QString model = parser.value(QStringLiteral("model"));
    const QString language = parser.value(QStringLiteral("language"));

    auto control = std::make_shared<TranscribeControl>();
    Interrupt::cancelOnSignal(control);
    ProgressBar bar("Transkription");
    try {
        const TranscriptionResult result
            = Engine::transcribe(input, model, language, control, [&bar](double f) { bar.update(f); });
        const QByteArray json = QJsonDocument(result.toJson()).toJson(QJsonDocument::Indented);
        std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
        return Ok;
    } catch (const EngineError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.errorDescription()));
        return error.isCancelled() ? Cancelled : Failed;
    }
}

} // namespace Cli
