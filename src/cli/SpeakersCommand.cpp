#include "cli/Commands.h"
#include "cli/Interrupt.h"

#include "ai/AIModel.h"
#include "app/AppModel.h"
#include "app/SpeakerJob.h"
#include "core/Tr.h"
#include "speakers/DiarizerError.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QUnhandledException>

#include <cstdio>

namespace Cli {

namespace {

QByteArray resultJson(const SpeakerJob::Result &result)
{
    QJsonArray spans;
    for (const SpeakerSpan &s : result.spans)
        spans.append(QJsonObject{{"start", s.start}, {"end", s.end}, {"speaker", s.speaker}});
    return QJsonDocument(QJsonObject{{"spans", spans}, {"speakerText", result.text}}).toJson(QJsonDocument::Indented);
}

} // namespace

int speakers(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("bundle"), QStringLiteral("folder of a stored transcription"));
    parser.addOption({QStringLiteral("speakers"), QStringLiteral("expected number of speakers; 0 finds it"),
                      QStringLiteral("n")});
    parser.addOption({QStringLiteral("json"), QStringLiteral("the spans and the speaker text as JSON")});
    bool countOk = true;
    const bool parsed = parser.parse(args);
    const int count = parser.isSet(QStringLiteral("speakers")) ? parser.value(QStringLiteral("speakers")).toInt(&countOk) : 0;
    if (!parsed || parser.positionalArguments().size() != 1 || !countOk || count < 0) {
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

    SpeakerJob::Overrides overrides;
    if (parser.isSet(QStringLiteral("speakers")))
        overrides.speakerCount = count;
    // The key store first, then the providers' own variable, as the smooth command does.
    const AIModel model = AIModel::by(app.activeModelId());
    const QString storedKey = model.provider == AIProvider::openai ? app.openaiKey() : app.anthropicKey();
    overrides.apiKey = storedKey.isEmpty()
        ? qEnvironmentVariable(model.provider == AIProvider::openai ? "OPENAI_API_KEY" : "ANTHROPIC_API_KEY").trimmed()
        : storedKey;

    SpeakerJob job(app);
    bool interrupted = false;
    Interrupt::onSignal([&app, &job, &interrupted] {
        QMetaObject::invokeMethod(&app, [&] {
            interrupted = true;
            job.cancel();
        });
    });

    const bool json = parser.isSet(QStringLiteral("json"));
    // The one event loop of the process runs until the job is over; the work starts
    // inside it, so that an answer at once still ends it.
    QTimer::singleShot(0, &app, [&] {
        job.start(item, overrides)
            .then(&app,
                  [json](const SpeakerJob::Result &result) {
                      const QByteArray out = json ? resultJson(result) : result.text.toUtf8() + '\n';
                      std::fwrite(out.constData(), 1, size_t(out.size()), stdout);
                      QCoreApplication::exit(Ok);
                  })
            .onFailed(&app, [&app, &interrupted] {
                if (app.errorMessage()) {
                    std::fprintf(stderr, "%s\n", qPrintable(*app.errorMessage()));
                    QCoreApplication::exit(Failed);
                } else if (interrupted) {
                    std::fprintf(stderr, "%s\n", qPrintable(DiarizerError::cancelled().errorDescription()));
                    QCoreApplication::exit(Cancelled);
                } else {
                    // Nothing to separate: an empty text without audio.
                    QCoreApplication::exit(Failed);
                }
            });
    });
    return QCoreApplication::exec();
}

} // namespace Cli
