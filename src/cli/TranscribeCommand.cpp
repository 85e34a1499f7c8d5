#include "cli/Commands.h"
#include "core/Tr.h"
#include "cli/ProgressBar.h"
#include "cli/Run.h"

#include "app/AppModel.h"
#include "app/LinkImport.h"
#include "app/ModelStore.h"
#include "app/Scripted.h"
#include "app/TranscriptionJob.h"
#include "core/UserError.h"

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QtConcurrent/QtConcurrentRun>

#include <cstdio>

namespace Cli {

QString usage()
{
    return QStringLiteral(
        "Usage:\n"
        "  sagwerk-cli transcribe FILE|LINK --model ID|PATH [--language CODE] [--verbose]\n"
        "      Writes the transcription of FILE as JSON to standard output. The model is\n"
        "      the id of an installed catalogue model (see models) or a model file.\n"
        "      --verbose names the backend and device that recognise (also with --save).\n"
        "  sagwerk-cli transcribe FILE|LINK... --save [--model ID|PATH] [--language CODE]\n"
        "      Transcribes each FILE as the application does, one after the other, and\n"
        "      stores it in the history; the model and language of the settings unless\n"
        "      given. Prints the folder of each as it is done; a failed file does not\n"
        "      stop the rest.\n"
        "      A LINK (http:// or https://) to a podcast page, feed, Apple Podcasts\n"
        "      episode or audio file is resolved and downloaded first.\n"
        "  sagwerk-cli batch SOURCE... --save [--jobs N] [--model ID|PATH] [--language CODE]\n"
        "                  [--speakers [N]] [--shard K/N|auto] [--report FILE]\n"
        "      Transcribes every SOURCE into the history: a file, a folder (its audio and\n"
        "      video files, recursively) or a list file (one path or link a line). A source\n"
        "      whose content is in the history already is skipped, so an interrupted batch\n"
        "      resumes where it stopped. --speakers separates the speakers of each (N of\n"
        "      them, or as many as found). --jobs runs N recognitions side by side; --shard\n"
        "      takes the K-th of N shares (K from 0), auto from a Slurm array, a Kubernetes\n"
        "      Indexed Job, HTCondor or GNU parallel (see docs/CLUSTER.md). --report\n"
        "      appends a JSON line per source. Prints each new folder; the exit status is 1\n"
        "      when any source failed.\n"
        "  sagwerk-cli export BUNDLE --format txt|srt|vtt|json [--view N|speakers] [--no-timestamps] [--output FILE]\n"
        "      Writes a stored transcription as text or subtitles, with its corrections;\n"
        "      --view N writes the AI refinement level N instead of the original,\n"
        "      --view speakers the speaker text.\n"
        "  sagwerk-cli interview --duration SECONDS [--live-speakers] [--language CODE]\n"
        "      Records a live interview from the default input for SECONDS (or until\n"
        "      Ctrl-C), prints each segment as it is recognised, and stores it in the\n"
        "      history with the settings' model. Prints the folder.\n"
        "  sagwerk-cli smooth BUNDLE --level 1|2|3 [--model ID]\n"
        "      Refines a stored transcription with an AI model (the settings' model unless\n"
        "      given) and stores the level in it; prints the text. The key comes from the\n"
        "      key store, else from ANTHROPIC_API_KEY or OPENAI_API_KEY.\n"
        "  sagwerk-cli speakers BUNDLE [--speakers N] [--json]\n"
        "      Separates the speakers of a stored transcription (N of them, or as many as\n"
        "      found), stores the speaker text in it and prints it; with --json also the\n"
        "      time spans. An AI key as for smooth puts names on the speakers.\n"
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

// A link is what names a scheme and is no file that exists.
bool isLink(const QString &input)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*://"));
    return !QFileInfo::exists(input) && scheme.match(input).hasMatch();
}

// The user's text, then what a program said itself (ffmpeg's lines), which on a terminal
// is worth having.
void printError(const QString &message, const QString &details = {})
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (!details.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(details));
}

// One run of `transcribe`: a link is resolved and downloaded first, as the application
// does; then the file is transcribed, to standard output or into the history. Each step
// runs on the pool or on the network and reports back here, on the main thread.
class TranscribeRun : public Run {
public:
    struct Options {
        QStringList inputs;
        // A catalogue id or a model file; without --save it is always given.
        std::optional<QString> model;
        std::optional<QString> language;
        bool save = false;
        bool verbose = false;
    };

    explicit TranscribeRun(Options options) : m_options(std::move(options)) {}

    ~TranscribeRun() override { dropDownload(); }

    void start()
    {
        if (!m_options.verbose)
            return begin();
        // Finding the device loads the library's backends, which takes a moment.
        QtConcurrent::run([] { return Scripted::deviceReport(); }).then(this, [this](const QString &report) {
            if (hasEnded())
                return;
            std::fprintf(stderr, "%s\n", qPrintable(report));
            begin();
        });
    }

protected:
    void interrupted() override
    {
        m_interrupted = true;
        // The plain road stops within a moment and reports through its future; the job of
        // the history road through the application state.
        m_control->cancel();
        if (m_app)
            m_app->cancelTranscription();
        if (m_link && m_link->isBusy()) {
            m_link->cancel();
            m_bar.reset();
            printError(cancelledText());
            end(Cancelled);
        }
    }

private:
    QString input() const { return m_options.inputs.value(m_index); }

    void begin()
    {
        if (isLink(input()))
            importLink();
        else
            transcribe(input(), std::nullopt);
    }

    void dropDownload()
    {
        // The download is this command's own; a stored transcription keeps a copy.
        if (m_downloaded)
            QFile::remove(*m_downloaded);
        m_downloaded.reset();
    }

    // Of several files, each failure names its file.
    void fail(const QString &message, const QString &details = {})
    {
        printError(m_options.inputs.size() > 1 ? input() + QStringLiteral(": ") + message : message, details);
    }

    // One file is done: the next one starts, unless the user stopped the run.
    void fileDone(int status)
    {
        if (status == Failed)
            m_failed = true;
        dropDownload();
        if (status != Cancelled && m_index + 1 < m_options.inputs.size()) {
            ++m_index;
            // This may run inside a signal of the finished job's state: it goes, and the
            // next file starts, once that signal is over.
            if (m_app)
                m_app.release()->deleteLater();
            QMetaObject::invokeMethod(this, [this] { begin(); }, Qt::QueuedConnection);
            return;
        }
        end(status == Cancelled ? Cancelled : m_failed ? Failed : Ok);
    }

    struct Outcome {
        std::optional<TranscriptionResult> result;
        QString error;
        bool cancelled = false;
        QString details;
    };

    // Resolved and downloaded as the application does.
    void importLink()
    {
        m_link = std::make_unique<LinkImport>();
        connect(m_link.get(), &LinkImport::progressChanged, this, [this] {
            if (!m_bar)
                m_bar = std::make_unique<ProgressBar>("Download");
            m_bar->update(m_link->progress());
        });
        connect(m_link.get(), &LinkImport::failed, this, [this](const QString &message) {
            if (hasEnded())
                return;
            m_bar.reset();
            fail(message);
            fileDone(Failed);
        });
        connect(m_link.get(), &LinkImport::downloaded, this, [this](const QString &file, const QString &title) {
            if (hasEnded())
                return;
            m_bar.reset();
            m_downloaded = file;
            transcribe(file, title);
        });
        m_link->start(input());
    }

    void transcribe(const QString &file, const std::optional<QString> &title)
    {
        if (m_options.save)
            transcribeAndSave(file, title);
        else
            transcribeAndPrint(file);
    }

    // The engine alone: the result as JSON on standard output, nothing stored.
    void transcribeAndPrint(const QString &file)
    {
        QString modelPath = *m_options.model;
        if (const std::optional<WhisperModel> model = WhisperModel::withId(modelPath)) {
            const ModelStore store;
            if (!store.isInstalled(*model)) {
                printError(AppModel::notInstalledMessage(*model));
                return end(Failed);
            }
            modelPath = store.path(*model);
        }
        const QString language = m_options.language.value_or(QStringLiteral("auto"));
        const TranscribeControlPtr control = m_control;
        m_bar = std::make_unique<ProgressBar>("Transkription");
        ProgressBar *bar = m_bar.get();
        // The voice-activity model is fetched on first use, as the application does.
        Scripted::prepareRecognition(control).then(this, [this, file, modelPath, language, control, bar] {
            if (control->isCancelled()) {
                m_bar.reset();
                printError(cancelledText());
                return end(Cancelled);
            }
            QtConcurrent::run([file, modelPath, language, control, bar]() -> Outcome {
                try {
                    return {Scripted::transcribe(file, modelPath, language, control, [bar](double f) { bar->update(f); }),
                            {}, false, {}};
                } catch (const UserError &e) {
                    return {std::nullopt, e.errorDescription(), e.isCancelled(), e.details()};
                } catch (const std::exception &e) {
                    return {std::nullopt, QString::fromLocal8Bit(e.what()), false, {}};
                }
            }).then(this, [this](const Outcome &outcome) {
                m_bar.reset();
                if (!outcome.result) {
                    printError(outcome.error, outcome.details);
                    return end(outcome.cancelled ? Cancelled : Failed);
                }
                const QByteArray json = QJsonDocument(outcome.result->toJson()).toJson(QJsonDocument::Indented);
                std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
                end(Ok);
            });
        });
    }

    // The application's own road: staging, the settings' model and language unless named,
    // and a bundle in the history. Prints the bundle's folder.
    void transcribeAndSave(const QString &file, const std::optional<QString> &title)
    {
        AppModel::JobOverrides overrides;
        overrides.language = m_options.language;
        if (m_options.model) {
            if (WhisperModel::withId(*m_options.model))
                overrides.modelId = m_options.model;
            else
                overrides.modelPath = QFileInfo(*m_options.model).absoluteFilePath();
        }
        m_app = std::make_unique<AppModel>();
        // Of several files, the bar of each names its file.
        m_label = m_options.inputs.size() > 1 ? QFileInfo(file).fileName().toLocal8Bit() : QByteArray("Transkription");
        m_bar = std::make_unique<ProgressBar>(m_label.constData());
        // The job's end resets the progress after the busy flag, so after saved().
        connect(&m_app->transcription(), &TranscriptionJob::busyProgressChanged, this, [this] {
            if (m_bar)
                m_bar->update(m_app->transcription().busyProgress());
        });
        m_app->stage(QFileInfo(file).absoluteFilePath(), title);
        m_app->startPending(overrides);
        if (!m_app->transcription().isBusy())
            return saved();
        connect(&m_app->transcription(), &TranscriptionJob::isBusyChanged, this, [this] {
            if (!m_app->transcription().isBusy())
                saved();
        });
    }

    void saved()
    {
        m_bar.reset();
        if (m_app->errorMessage()) {
            fail(*m_app->errorMessage(), m_app->errorDetails());
            return fileDone(Failed);
        }
        if (m_interrupted || !m_app->current()) {
            printError(cancelledText());
            return fileDone(Cancelled);
        }
        const HistoryItem &item = *m_app->current();
        std::printf("%s\n", qPrintable(item.bundleURL.value_or(QString())));
        std::fflush(stdout); // one line per bundle as it is done, also into a pipe
        if (!item.bundleURL)
            fail(Tr::tr("Die Transkription konnte nicht gespeichert werden."));
        fileDone(item.bundleURL ? Ok : Failed);
    }

    const Options m_options;
    const TranscribeControlPtr m_control = std::make_shared<TranscribeControl>();
    bool m_interrupted = false;
    std::unique_ptr<ProgressBar> m_bar;
    std::unique_ptr<LinkImport> m_link;
    std::optional<QString> m_downloaded;
    std::unique_ptr<AppModel> m_app;
    qsizetype m_index = 0;
    bool m_failed = false;
    QByteArray m_label;
};

} // namespace

std::unique_ptr<QObject> transcribe(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("audio or video file, or a link"));
    parser.addOption({QStringLiteral("model"), QStringLiteral("catalogue id or model file"), QStringLiteral("model")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code or auto"), QStringLiteral("code")});
    parser.addOption({QStringLiteral("save"), QStringLiteral("store the result in the history")});
    parser.addOption({QStringLiteral("verbose"), QStringLiteral("name the backend and device that recognise")});
    const bool parsed = parser.parse(args);
    const bool save = parser.isSet(QStringLiteral("save"));
    const qsizetype files = parser.positionalArguments().size();
    if (!parsed || files < 1 || (!save && files != 1) || (!save && !parser.isSet(QStringLiteral("model")))) {
        finish(usageError(parser));
        return nullptr;
    }
    TranscribeRun::Options options;
    options.inputs = parser.positionalArguments();
    if (parser.isSet(QStringLiteral("model")))
        options.model = parser.value(QStringLiteral("model"));
    if (parser.isSet(QStringLiteral("language")))
        options.language = parser.value(QStringLiteral("language"));
    options.save = save;
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    auto run = std::make_unique<TranscribeRun>(std::move(options));
    run->start();
    return run;
}

} // namespace Cli
