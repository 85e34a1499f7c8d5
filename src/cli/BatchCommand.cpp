#include "cli/Commands.h"
#include "cli/Run.h"

#include "app/AppModel.h"
#include "app/Batch.h"
#include "core/Tr.h"
#include "core/UserError.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace Cli {

namespace {

void printError(const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

QString bar(double fraction, int width)
{
    const int filled = std::clamp(int(fraction * width + 0.5), 0, width);
    return QString(filled, u'#') + QString(width - filled, u'-');
}

// Draws the batch on a terminal: one bar for the whole, a line per running file, and
// each finished file above them. Elsewhere (a scheduler's log) only the finished files.
class BatchRunCommand : public Run {
public:
    BatchRunCommand(std::unique_ptr<AppModel> app, QList<Batch::Source> sources, BatchRun::Options options,
                    std::unique_ptr<QFile> report)
        : m_app(std::move(app)), m_run(*m_app, std::move(sources), options), m_report(std::move(report)),
          m_terminal(::isatty(STDERR_FILENO) == 1)
    {
        connect(&m_run, &BatchRun::entryFinished, this, [this](const BatchRun::Entry &e) { record(e); });
        connect(&m_run, &BatchRun::finished, this, [this] { done(); });
        m_redraw.setInterval(250);
        connect(&m_redraw, &QTimer::timeout, this, [this] { draw(); });
    }

    void start()
    {
        if (m_terminal)
            m_redraw.start();
        m_run.start();
    }

    // An argument that names nothing to transcribe fails like a source.
    void refuse(const QString &argument, const QString &problem)
    {
        record(BatchRun::Entry{Batch::Source{argument, argument, false}, BatchRun::Outcome::Failed, {}, problem, 0});
    }

protected:
    void interrupted() override { m_run.cancel(); }

private:
    void clear()
    {
        if (m_drawn > 0)
            std::fprintf(stderr, "\x1b[%dF\x1b[J", m_drawn);
        m_drawn = 0;
    }

    void draw()
    {
        clear();
        const qsizetype total = std::max<qsizetype>(m_run.total(), 1);
        const QList<BatchRun::Running> running = m_run.running();
        double share = double(m_run.completed());
        for (const BatchRun::Running &r : running)
            share += r.fraction;
        std::fprintf(stderr, "Batch [%s] %lld/%lld\n", qPrintable(bar(share / double(total), 30)),
                     qint64(m_run.completed()), qint64(m_run.total()));
        ++m_drawn;
        for (const BatchRun::Running &r : running) {
            std::fprintf(stderr, "  [%s] %3d%%  %s\n", qPrintable(bar(r.fraction, 20)), int(r.fraction * 100 + 0.5),
                         qPrintable(QFileInfo(r.location).fileName()));
            ++m_drawn;
        }
        std::fflush(stderr);
    }

    void record(const BatchRun::Entry &e)
    {
        clear();
        static const char *const statusNames[] = {"done", "skipped", "failed"};
        const int status = int(e.outcome);
        const QString where = QDir::toNativeSeparators(e.source.location);
        switch (e.outcome) {
        case BatchRun::Outcome::Done:
            ++m_done;
            std::printf("%s\n", qPrintable(e.bundle));
            std::fflush(stdout);
            printError(Tr::tr("Fertig: %1").arg(where));
            break;
        case BatchRun::Outcome::Skipped:
            ++m_skipped;
            printError(Tr::tr("Übersprungen, schon im Verlauf: %1").arg(where));
            break;
        case BatchRun::Outcome::Failed:
            ++m_failed;
            m_failures.append(where + QStringLiteral(": ") + e.error);
            printError(Tr::tr("Fehlgeschlagen: %1: %2").arg(where, e.error));
            break;
        }
        if (m_report) {
            QJsonObject line{{"source", e.source.location},
                             {"status", QLatin1String(statusNames[status])},
                             {"seconds", e.seconds}};
            if (!e.bundle.isEmpty())
                line.insert("bundle", e.bundle);
            if (!e.error.isEmpty())
                line.insert("error", e.error);
            // One whole line per write, so that a kill leaves no half line behind.
            m_report->write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
            m_report->flush();
        }
        if (m_terminal)
            draw();
    }

    void done()
    {
        m_redraw.stop();
        clear();
        printError(Tr::tr("Fertig: %1 · übersprungen: %2 · fehlgeschlagen: %3")
                       .arg(m_done)
                       .arg(m_skipped)
                       .arg(m_failed));
        for (const QString &failure : std::as_const(m_failures))
            printError(QStringLiteral("  ") + failure);
        if (m_run.cancelled()) {
            printError(cancelledText());
            return end(Cancelled);
        }
        end(m_failed > 0 ? Failed : Ok);
    }

    const std::unique_ptr<AppModel> m_app;
    BatchRun m_run;
    std::unique_ptr<QFile> m_report;
    int m_done = 0, m_skipped = 0, m_failed = 0;
    QStringList m_failures;
    const bool m_terminal;
    QTimer m_redraw;
    int m_drawn = 0;
};

} // namespace

std::unique_ptr<QObject> batch(const QStringList &args)
{
    // --speakers takes its count optionally: alone it means as many as are found.
    QStringList arguments = args;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        bool isCount = false;
        arguments.value(i + 1).toInt(&isCount);
        if (arguments[i] == QLatin1String("--speakers") && !isCount)
            arguments[i] = QStringLiteral("--speakers=0");
    }
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("source"), QStringLiteral("file, folder or list file"));
    parser.addOption({QStringLiteral("speakers"), QStringLiteral("separate the speakers; N of them"), QStringLiteral("n")});
    parser.addOption({QStringLiteral("save"), QStringLiteral("store each result in the history")});
    parser.addOption({QStringLiteral("jobs"), QStringLiteral("recognitions side by side"), QStringLiteral("n")});
    parser.addOption({QStringLiteral("model"), QStringLiteral("catalogue id or model file"), QStringLiteral("model")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code or auto"), QStringLiteral("code")});
    parser.addOption({QStringLiteral("shard"), QStringLiteral("K/N or auto"), QStringLiteral("share")});
    parser.addOption({QStringLiteral("report"), QStringLiteral("JSON lines, one per source"), QStringLiteral("file")});
    bool jobsOk = true, speakersOk = true;
    const bool parsed = parser.parse(arguments);
    const int jobs = parser.isSet(QStringLiteral("jobs")) ? parser.value(QStringLiteral("jobs")).toInt(&jobsOk) : 1;
    const int speakers
        = parser.isSet(QStringLiteral("speakers")) ? parser.value(QStringLiteral("speakers")).toInt(&speakersOk) : 0;
    if (!parsed || parser.positionalArguments().isEmpty() || !parser.isSet(QStringLiteral("save")) || !jobsOk
        || jobs < 1 || !speakersOk || speakers < 0) {
        if (!parser.errorText().isEmpty())
            printError(parser.errorText());
        std::fprintf(stderr, "%s", qPrintable(usage()));
        finish(Usage);
        return nullptr;
    }
    Batch::Shard shard;
    if (parser.isSet(QStringLiteral("shard"))) {
        const auto parsedShard
            = Batch::parseShard(parser.value(QStringLiteral("shard")), QProcessEnvironment::systemEnvironment());
        if (const QString *problem = std::get_if<QString>(&parsedShard)) {
            printError(*problem);
            finish(Usage);
            return nullptr;
        }
        shard = std::get<Batch::Shard>(parsedShard);
    }

    auto app = std::make_unique<AppModel>();
    const auto setup = BatchRun::modelAndLanguage(
        *app,
        parser.isSet(QStringLiteral("model")) ? std::optional(parser.value(QStringLiteral("model"))) : std::nullopt,
        parser.isSet(QStringLiteral("language")) ? std::optional(parser.value(QStringLiteral("language")))
                                                 : std::nullopt);
    if (const QString *problem = std::get_if<QString>(&setup)) {
        printError(*problem);
        finish(Failed);
        return nullptr;
    }
    std::unique_ptr<QFile> report;
    if (parser.isSet(QStringLiteral("report"))) {
        report = std::make_unique<QFile>(parser.value(QStringLiteral("report")));
        if (!report->open(QIODevice::WriteOnly | QIODevice::Append)) {
            printError(Tr::tr("Die Datei „%1“ konnte nicht geschrieben werden: %2")
                           .arg(QDir::toNativeSeparators(report->fileName()), report->errorString()));
            finish(Failed);
            return nullptr;
        }
    }

    const Batch::Expansion expansion = Batch::expand(parser.positionalArguments());
    BatchRun::Options options;
    options.modelPath = std::get<0>(setup).first;
    options.language = std::get<0>(setup).second;
    options.jobs = jobs;
    if (parser.isSet(QStringLiteral("speakers")))
        options.speakers = speakers;
    auto run = std::make_unique<BatchRunCommand>(std::move(app), Batch::select(expansion.sources, shard), options,
                                                 std::move(report));
    for (const auto &[argument, problem] : expansion.problems)
        run->refuse(argument, problem);
    run->start();
    return run;
}

} // namespace Cli
