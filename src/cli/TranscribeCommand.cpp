#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/Interrupt.h"
#include "cli/ProgressBar.h"

#include "app/AppModel.h"
#include "engine/Engine.h"
#include "links/MediaDownloader.h"
#include "links/PodcastResolver.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTimer>

#include <atomic>
#include <cstdio>

namespace Cli {

QString usage()
{
    return QStringLiteral(
        "Usage:\n"
        "  sagwerk-cli transcribe FILE|LINK --model PATH [--language CODE]\n"
        "      Writes the transcription of FILE as JSON to standard output.\n"
        "  sagwerk-cli transcribe FILE|LINK --save [--model ID] [--language CODE]\n"
        "      Transcribes FILE as the application does and stores it in the history;\n"
        "      the model and language of the settings unless given. Prints the folder.\n"
        "      A LINK (http:// or https://) to a podcast page, feed, Apple Podcasts\n"
        "      episode or audio file is resolved and downloaded first.\n"
        "  sagwerk-cli export BUNDLE --format txt|srt [--no-timestamps] [--output FILE]\n"
        "      Writes a stored transcription as text or subtitles, with its corrections.\n"
        "  sagwerk-cli list [--json]\n"
        "      Lists the stored transcriptions, newest first: date, name, language and\n"
        "      folder, separated by tabs, or all fields as JSON.\n"
        "  sagwerk-cli models\n"
        "      Lists the speech models and which of them are installed.\n"
        "  sagwerk-cli download ID [--from URL]\n"
        "      Downloads a speech model into the models folder and prints its path;\n"
        "      URL replaces the address of the model repository.\n"
        "  sagwerk-cli import-model SOURCE\n"
        "      Installs a Whisper model (a whisper.cpp model file, or a CTranslate2 model\n"
        "      folder as faster-whisper uses it) as the catalogue model of its size.\n");
}

namespace {

std::atomic<bool> interrupted = false;

// Runs the event loop until `done` holds or Ctrl-C comes; false for the latter.
bool waitUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || interrupted)
            loop.quit();
    });
    poll.start(20);
    if (!done() && !interrupted)
        loop.exec();
    return !interrupted;
}

// A link is what names a scheme and is no file that exists.
bool isLink(const QString &input)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*://"));
    return !QFileInfo::exists(input) && scheme.match(input).hasMatch();
}

struct Fetched {
    std::optional<QString> file; // in the temporary folder; the caller removes it
    QString title;
    int status = Ok;
};

// Resolves and downloads a link as the application does. Failures are told on stderr.
Fetched fetchLink(const QString &link)
{
    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    Interrupt::onSignal([control] {
        interrupted = true;
        control->cancel();
    });

    QFuture<ResolvedMedia> resolution = PodcastResolver::resolve(link, PodcastResolver::defaultLookupBase, control);
    // A cancel ends the resolver's request; it holds no file to wait for.
    if (!waitUntil([&] { return resolution.isFinished(); })) {
        std::fprintf(stderr, "%s\n", qPrintable(EngineError::cancelled().errorDescription()));
        return {std::nullopt, {}, Cancelled};
    }
    std::optional<ResolvedMedia> media;
    try {
        media = resolution.result();
    } catch (const UserError &e) {
        if (e.isCancelled()) {
            std::fprintf(stderr, "%s\n", qPrintable(EngineError::cancelled().errorDescription()));
            return {std::nullopt, {}, Cancelled};
        }
        std::fprintf(stderr, "%s\n", qPrintable(e.errorDescription()));
        return {std::nullopt, {}, Failed};
    }

    ProgressBar bar("Download");
    MediaDownloader downloader([&bar](double fraction) { bar.update(fraction); });
    QFuture<QString> download = downloader.download(media->url);
    // An interrupt leaves through the downloader's end, which removes the partial file.
    if (!waitUntil([&] { return download.isFinished(); })) {
        std::fprintf(stderr, "%s\n", qPrintable(EngineError::cancelled().errorDescription()));
        return {std::nullopt, {}, Cancelled};
    }
    try {
        return {download.result(), media->title, Ok};
    } catch (const UserError &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.errorDescription()));
        return {std::nullopt, {}, Failed};
    }
}

// The application's own road: staging, the model of the settings unless one is named,
// and a bundle in the history. Prints the bundle's folder.
int transcribeAndSave(const QString &input, const AppModel::JobOverrides &overrides,
                      const std::optional<QString> &displayName = std::nullopt)
{
    AppModel app;
    ProgressBar bar("Transkription");
    QObject::connect(&app, &AppModel::busyProgressChanged, [&] { bar.update(app.busyProgress()); });
    bool cancelled = false;
    Interrupt::onSignal([&app, &cancelled] {
        QMetaObject::invokeMethod(&app, [&] {
            cancelled = true;
            app.cancelTranscription();
        });
    });

    app.stage(QFileInfo(input).absoluteFilePath(), displayName);
    app.startPending(overrides);
    if (app.isBusy()) {
        QEventLoop loop;
        QObject::connect(&app, &AppModel::isBusyChanged, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (app.errorMessage()) {
        std::fprintf(stderr, "%s\n", qPrintable(*app.errorMessage()));
        return Failed;
    }
    if (cancelled || !app.current()) {
        std::fprintf(stderr, "%s\n", qPrintable(EngineError::cancelled().errorDescription()));
        return Cancelled;
    }
    const HistoryItem &item = *app.current();
    std::printf("%s\n", qPrintable(item.bundleURL.value_or(QString())));
    if (!item.bundleURL)
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("Die Transkription konnte nicht gespeichert werden.")));
    return item.bundleURL ? Ok : Failed;
}

} // namespace

int transcribe(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("audio or video file"));
    parser.addOption({QStringLiteral("model"), QStringLiteral("model file, or with --save a catalogue id"),
                      QStringLiteral("model")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code or auto"), QStringLiteral("code")});
    parser.addOption({QStringLiteral("save"), QStringLiteral("store the result in the history")});
    const bool parsed = parser.parse(args);
    const bool save = parser.isSet(QStringLiteral("save"));
    if (!parsed || parser.positionalArguments().size() != 1 || (!save && !parser.isSet(QStringLiteral("model")))) {
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }
    QString input = parser.positionalArguments().constFirst();
    std::optional<QString> title;
    std::optional<QString> downloaded;
    if (isLink(input)) {
        const Fetched fetched = fetchLink(input);
        if (!fetched.file)
            return fetched.status;
        input = *fetched.file;
        title = fetched.title;
        downloaded = fetched.file;
    }
    // The download is this command's own; the stored transcription keeps a copy.
    const auto removeDownload = qScopeGuard([&downloaded] {
        if (downloaded)
            QFile::remove(*downloaded);
    });

    if (save) {
        AppModel::JobOverrides overrides;
        if (parser.isSet(QStringLiteral("model"))) {
            overrides.modelId = parser.value(QStringLiteral("model"));
            if (!WhisperModel::withId(*overrides.modelId)) {
                std::fprintf(stderr, "Unknown model: %s\n", qPrintable(*overrides.modelId));
                return Usage;
            }
        }
        if (parser.isSet(QStringLiteral("language")))
            overrides.language = parser.value(QStringLiteral("language"));
        return transcribeAndSave(input, overrides, title);
    }

    const QString model = parser.value(QStringLiteral("model"));
    const QString language = parser.isSet(QStringLiteral("language")) ? parser.value(QStringLiteral("language"))
                                                                      : QStringLiteral("auto");
    auto control = std::make_shared<TranscribeControl>();
    Interrupt::onSignal([control] { control->cancel(); });
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
