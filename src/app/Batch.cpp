#include "app/Batch.h"

#include "app/AppModel.h"
#include "app/LinkImport.h"
#include "app/MediaTypes.h"
#include "app/SpeakerJob.h"
#include "core/Tr.h"
#include "core/UserError.h"
#include "engine/Decoder.h"
#include "engine/EngineError.h"
#include "app/ModelStore.h"
#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"
#include "storage/BundleStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QThread>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>

namespace Batch {

namespace {

bool looksLikeLink(const QString &text)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*://"));
    return scheme.match(text).hasMatch();
}

const QSet<QString> &mediaSuffixes()
{
    static const QSet<QString> suffixes = [] {
        QSet<QString> set;
        for (const QString &pattern : MediaTypes::patterns()) {
            if (pattern.startsWith(QLatin1String("*.")))
                set.insert(pattern.mid(2).toLower());
        }
        return set;
    }();
    return suffixes;
}

bool isMediaFile(const QString &path)
{
    return mediaSuffixes().contains(QFileInfo(path).suffix().toLower());
}

// A named file that is no media type and holds text is a list of sources.
bool isListFile(const QString &path)
{
    if (isMediaFile(path))
        return false;
    return QMimeDatabase().mimeTypeForFile(path).inherits(QStringLiteral("text/plain"));
}

void addFolder(const QString &folder, Expansion &out)
{
    QStringList found;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories
                                                                                 | QDirIterator::FollowSymlinks);
    while (it.hasNext()) {
        const QString path = it.next();
        // Bundles carry a copy of their audio; a data folder inside the archive is not
        // transcribed again.
        if (!QFileInfo(path).fileName().startsWith(u'.') && isMediaFile(path)
            && !QFileInfo::exists(QFileInfo(path).absolutePath() + QStringLiteral("/sagwerk.json")))
            found << path;
    }
    found.sort();
    const QDir base(QFileInfo(folder).absoluteFilePath());
    for (const QString &path : found) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        out.sources.append({absolute, base.relativeFilePath(absolute), false});
    }
}

void addList(const QString &listFile, Expansion &out)
{
    QFile file(listFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        out.problems.append({listFile, Tr::tr("Die Liste konnte nicht gelesen werden.")});
        return;
    }
    const QDir base = QFileInfo(listFile).absoluteDir();
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (looksLikeLink(line) && !QFileInfo::exists(line)) {
            out.sources.append({line, line, true});
            continue;
        }
        const QString path = base.absoluteFilePath(line);
        if (QFileInfo(path).isDir())
            addFolder(path, out);
        else if (QFileInfo(path).isFile())
            out.sources.append({QFileInfo(path).absoluteFilePath(), line, false});
        else
            out.problems.append({line, Tr::tr("Datei nicht gefunden.")});
    }
}

} // namespace

Expansion expand(const QStringList &arguments)
{
    Expansion out;
    for (const QString &argument : arguments) {
        const QFileInfo info(argument);
        if (info.isDir())
            addFolder(argument, out);
        else if (info.isFile() && isListFile(argument))
            addList(argument, out);
        else if (info.isFile())
            out.sources.append({info.absoluteFilePath(), argument, false});
        else if (looksLikeLink(argument))
            out.sources.append({argument, argument, true});
        else
            out.problems.append({argument, Tr::tr("Datei nicht gefunden.")});
    }
    // The same file reached twice (a folder and a list naming it) is one source.
    QSet<QString> seen;
    QList<Source> unique;
    for (const Source &s : std::as_const(out.sources)) {
        if (!seen.contains(s.location)) {
            seen.insert(s.location);
            unique.append(s);
        }
    }
    out.sources = unique;
    return out;
}

namespace {

std::optional<int> number(const QString &text)
{
    bool ok = false;
    const int n = text.trimmed().toInt(&ok);
    return ok ? std::optional(n) : std::nullopt;
}

QString shardProblem()
{
    return Tr::tr("Der Anteil muss K/N sein (0 ≤ K < N) oder auto.");
}

std::variant<Shard, QString> checked(std::optional<int> index, std::optional<int> count)
{
    if (!count)
        return Tr::tr("Die Zahl der Anteile fehlt (SAGWERK_SHARD_COUNT).");
    if (!index || *count < 1 || *index < 0 || *index >= *count)
        return shardProblem();
    return Shard{*index, *count};
}

} // namespace

std::variant<Shard, QString> parseShard(const QString &text, const QProcessEnvironment &env)
{
    if (text != QLatin1String("auto")) {
        const QStringList parts = text.split(u'/');
        const auto count = parts.size() == 2 ? number(parts[1]) : std::nullopt;
        if (!count)
            return shardProblem();
        return checked(number(parts[0]), count);
    }
    if (env.contains(QStringLiteral("SLURM_ARRAY_TASK_ID"))) {
        // An array may start anywhere and step (--array=1-7:2): the share is the task's
        // place in it.
        const auto id = number(env.value(QStringLiteral("SLURM_ARRAY_TASK_ID")));
        const int min = number(env.value(QStringLiteral("SLURM_ARRAY_TASK_MIN"))).value_or(0);
        const int step = std::max(1, number(env.value(QStringLiteral("SLURM_ARRAY_TASK_STEP"))).value_or(1));
        const auto count = number(env.value(QStringLiteral("SLURM_ARRAY_TASK_COUNT")));
        if (!id || (*id - min) % step != 0)
            return checked(std::nullopt, count);
        return checked((*id - min) / step, count);
    }
    const auto count = number(env.value(QStringLiteral("SAGWERK_SHARD_COUNT")));
    if (env.contains(QStringLiteral("JOB_COMPLETION_INDEX")))
        return checked(number(env.value(QStringLiteral("JOB_COMPLETION_INDEX"))), count);
    if (env.contains(QStringLiteral("SAGWERK_SHARD_INDEX")))
        return checked(number(env.value(QStringLiteral("SAGWERK_SHARD_INDEX"))), count);
    if (env.contains(QStringLiteral("PARALLEL_SEQ"))) {
        const auto seq = number(env.value(QStringLiteral("PARALLEL_SEQ")));
        return checked(seq ? std::optional(*seq - 1) : std::nullopt, count);
    }
    return Tr::tr("Kein Planer gibt einen Anteil vor (SLURM_ARRAY_TASK_ID, JOB_COMPLETION_INDEX, "
                  "SAGWERK_SHARD_INDEX oder PARALLEL_SEQ).");
}

QList<Source> select(const QList<Source> &sources, const Shard &shard)
{
    QList<Source> mine;
    for (const Source &s : sources) {
        const QByteArray digest = QCryptographicHash::hash(s.key.toUtf8(), QCryptographicHash::Sha256);
        quint64 h = 0;
        for (int i = 0; i < 8; ++i)
            h = (h << 8) | quint8(digest[i]);
        if (h % quint64(shard.count) == quint64(shard.index))
            mine.append(s);
    }
    return mine;
}

int threadsPerJob(int jobs, int cores)
{
    return std::max(1, cores / std::max(1, jobs));
}

} // namespace Batch

struct BatchRun::Job {
    Batch::Source source;
    qsizetype index = 0;
    QElapsedTimer clock;
    CancelTokenPtr control = std::make_shared<CancelToken>();
    std::shared_ptr<std::atomic<double>> fraction = std::make_shared<std::atomic<double>>(0.0);
    // A link on its way to a file.
    std::unique_ptr<LinkImport> link;
    // A downloaded link, this run's own until it is copied into a bundle.
    std::optional<QString> downloaded;
    QString displayName;
    std::optional<SourceContent> content;
    QString contentKey;
    QString bundle;
    bool completed = false;
};

BatchRun::BatchRun(AppModel &app, QList<Batch::Source> sources, Options options)
    : m_app(app), m_sources(std::move(sources)), m_options(std::move(options))
{
    m_pool.setMaxThreadCount(std::max(1, m_options.jobs));
    // Its threads hold the loaded models; they end with the run.
    m_pool.setExpiryTimeout(-1);
}

BatchRun::~BatchRun()
{
    m_cancelled = true;
    for (const std::shared_ptr<Job> &job : std::as_const(m_running)) {
        job->control->cancel();
        job->link.reset();
        if (job->downloaded)
            QFile::remove(*job->downloaded);
    }
    m_pool.waitForDone();
    WhisperEngine::setThreadCount(std::nullopt);
}

std::variant<std::pair<QString, QString>, QString>
BatchRun::modelAndLanguage(const AppModel &app, const std::optional<QString> &model,
                           const std::optional<QString> &language)
{
    const QString code = language.value_or(app.language());
    if (model && !WhisperModel::withId(*model)) {
        if (!QFileInfo(*model).isFile())
            return EngineError::noModel().errorDescription();
        return std::pair(QFileInfo(*model).absoluteFilePath(), code);
    }
    const WhisperModel chosen = model ? *WhisperModel::withId(*model) : app.speechModel();
    if (!app.modelStore()->isInstalled(chosen))
        return AppModel::notInstalledMessage(chosen);
    return std::pair(app.modelStore()->path(chosen), code);
}

void BatchRun::start()
{
    if (m_started)
        return;
    m_started = true;
    WhisperEngine::setThreadCount(Batch::threadsPerJob(m_options.jobs, QThread::idealThreadCount()));
    for (const LoadedBundle &bundle : BundleStore::listSummaries()) {
        if (const auto &c = bundle.data.sourceContent)
            m_known.insert(QString::number(c->size) + u':' + c->sha256,
                           Known{bundle.url, bundle.data.speakerText.has_value()});
    }
    // The voice-activity model, fetched on first use as a single job fetches it; without
    // it the batch recognises all the same.
    VadModel::ensure(m_vadControl).then(this, [this](const QString &) {
        m_ready = true;
        fill();
    });
}

void BatchRun::cancel()
{
    if (m_cancelled)
        return;
    m_cancelled = true;
    QList<std::shared_ptr<Job>> downloading;
    for (const std::shared_ptr<Job> &job : std::as_const(m_running)) {
        job->control->cancel();
        if (job->link)
            downloading.append(job);
    }
    // A cancelled import ends without a word and removes what was written, so the job
    // ends here.
    for (const std::shared_ptr<Job> &job : downloading) {
        job->link.reset();
        complete(job, Outcome::Failed, EngineError::cancelled().errorDescription());
    }
    if (m_speakerJob)
        m_speakerJob->cancel();
    m_vadControl->cancel();
    fill();
}

void BatchRun::cancel(qsizetype index)
{
    if (index < 0 || index >= m_sources.size() || m_finished)
        return;
    const QString cancelled = EngineError::cancelled().errorDescription();
    if (index >= m_next) {
        if (m_dropped.contains(index))
            return;
        m_dropped.insert(index);
        ++m_completed;
        emit entryFinished(Entry{m_sources[index], Outcome::Failed, {}, cancelled, 0, index});
        if (m_ready)
            fill();
        return;
    }
    auto byIndex = [index](const std::shared_ptr<Job> &job) { return job->index == index; };
    if (const auto it = std::find_if(m_running.cbegin(), m_running.cend(), byIndex); it != m_running.cend()) {
        const std::shared_ptr<Job> job = *it;
        job->control->cancel();
        // As in cancel(): a cancelled import ends without a word, so the job ends here.
        if (job->link) {
            job->link.reset();
            complete(job, Outcome::Failed, cancelled);
        }
        return;
    }
    if (const auto it = std::find_if(m_speakerQueue.cbegin(), m_speakerQueue.cend(), byIndex);
        it != m_speakerQueue.cend()) {
        const std::shared_ptr<Job> job = *it;
        m_speakerQueue.erase(it);
        return complete(job, Outcome::Failed, cancelled);
    }
    if (m_speakerRunning && m_speakerRunning->index == index) {
        m_speakerRunning->control->cancel();
        m_speakerJob->cancel();
    }
}

void BatchRun::append(const QList<Batch::Source> &sources)
{
    if (m_finished || m_cancelled)
        return;
    m_sources.append(sources);
    if (m_ready)
        fill();
}

QList<BatchRun::Running> BatchRun::running() const
{
    QList<Running> list;
    for (const std::shared_ptr<Job> &job : m_running)
        list.append({job->source.location, job->fraction->load(), job->index});
    return list;
}

QList<qsizetype> BatchRun::separating() const
{
    QList<qsizetype> list;
    if (m_speakerRunning)
        list.append(m_speakerRunning->index);
    for (const std::shared_ptr<Job> &job : m_speakerQueue)
        list.append(job->index);
    return list;
}

void BatchRun::fill()
{
    while (!m_cancelled && m_running.size() < std::max(1, m_options.jobs) && m_next < m_sources.size()) {
        if (m_dropped.contains(m_next)) {
            ++m_next;
            continue;
        }
        auto job = std::make_shared<Job>();
        job->index = m_next;
        job->source = m_sources[m_next++];
        job->clock.start();
        job->displayName = QFileInfo(job->source.location).fileName();
        m_running.append(job);
        begin(job);
    }
    if (m_running.isEmpty() && !m_speakerRunning && m_speakerQueue.isEmpty()
        && (m_cancelled || m_next >= m_sources.size()) && !m_finished) {
        m_next = m_sources.size();
        m_finished = true;
        emit finished();
    }
}

void BatchRun::begin(std::shared_ptr<Job> job)
{
    if (job->source.isLink)
        download(job);
    else
        identify(job, job->source.location);
}

void BatchRun::download(std::shared_ptr<Job> job)
{
    // Resolved and downloaded as a pasted link is.
    job->link = std::make_unique<LinkImport>();
    LinkImport *link = job->link.get();
    connect(link, &LinkImport::progressChanged, this, [job, link] { *job->fraction = link->progress(); });
    connect(link, &LinkImport::failed, this, [this, job](const QString &message) {
        // Its work is done; it is still on the stack that reported.
        job->link.release()->deleteLater();
        complete(job, Outcome::Failed, message);
    });
    connect(link, &LinkImport::downloaded, this, [this, job](const QString &file, const QString &title) {
        job->link.release()->deleteLater();
        job->downloaded = file;
        job->displayName = title;
        *job->fraction = 0;
        identify(job, file);
    });
    link->start(job->source.location);
}

void BatchRun::identify(std::shared_ptr<Job> job, const QString &file)
{
    const CancelTokenPtr control = job->control;
    QtConcurrent::run(&m_pool, [file, control] {
        return BundleStore::sourceContent(file, [control] { return control->isCancelled(); });
    }).then(this, [this, job, file](const std::optional<SourceContent> &content) {
        if (job->control->isCancelled())
            return complete(job, Outcome::Failed, EngineError::cancelled().errorDescription());
        if (!content)
            return complete(job, Outcome::Failed, Tr::tr("Die Datei konnte nicht gelesen werden."));
        job->content = content;
        job->contentKey = QString::number(content->size) + u':' + content->sha256;
        if (const auto known = m_known.constFind(job->contentKey); known != m_known.cend()) {
            job->bundle = known->bundle;
            // Made by a run that ended before its speakers were separated.
            if (m_options.speakers && !known->hasSpeakers)
                return separateSpeakers(job);
            return complete(job, Outcome::Skipped);
        }
        // The same bytes under a second name in this run: the first one makes the bundle.
        if (m_making.contains(job->contentKey))
            return complete(job, Outcome::Skipped);
        m_making.insert(job->contentKey);
        recognise(job, file);
    });
}

namespace {

// Each worker keeps its model loaded from one file to the next: loading it again would
// cost about as much as recognising a short file.
WhisperEngine::LoadedModel &loadedModel(const QString &path)
{
    thread_local std::unique_ptr<WhisperEngine::LoadedModel> loaded;
    thread_local QString loadedPath;
    if (!loaded || loadedPath != path) {
        loaded.reset();
        if (!QFileInfo::exists(path))
            throw EngineError::noModel();
        loaded = std::make_unique<WhisperEngine::LoadedModel>(path);
        loadedPath = path;
    }
    return *loaded;
}

} // namespace

void BatchRun::recognise(std::shared_ptr<Job> job, const QString &file)
{
    struct Made {
        std::optional<LoadedBundle> bundle;
        QString error;
    };
    const QString model = m_options.modelPath, language = m_options.language, name = job->displayName;
    const CancelTokenPtr control = job->control;
    const auto fraction = job->fraction;
    const std::optional<SourceContent> content = job->content;
    QtConcurrent::run(&m_pool, [=]() -> Made {
        try {
            const QDateTime createdAt = QDateTime::currentDateTime();
            const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(file, control);
            if (control->isCancelled())
                throw EngineError::cancelled();
            const TranscriptionResult result = WhisperEngine::transcribe(
                samples, loadedModel(model), language, control, [fraction](double f) { *fraction = f; });
            return {BundleStore::create(name, createdAt, file, result, content), {}};
        } catch (const UserError &e) {
            return {std::nullopt, e.errorDescription()};
        } catch (const std::exception &e) {
            return {std::nullopt, QString::fromLocal8Bit(e.what())};
        }
    }).then(this, [this, job](const Made &made) {
        m_making.remove(job->contentKey);
        if (!made.bundle)
            return complete(job, Outcome::Failed, made.error);
        job->bundle = made.bundle->url;
        m_known.insert(job->contentKey, Known{job->bundle, false});
        if (m_options.speakers)
            return separateSpeakers(job);
        complete(job, Outcome::Done);
    });
}

void BatchRun::separateSpeakers(std::shared_ptr<Job> job)
{
    // The recognition slot is free for the next source while the speakers wait their turn.
    m_running.removeOne(job);
    m_speakerQueue.append(job);
    nextSpeakers();
    fill();
}

void BatchRun::nextSpeakers()
{
    if (m_speakerRunning || m_speakerQueue.isEmpty())
        return;
    const std::shared_ptr<Job> job = m_speakerRunning = m_speakerQueue.takeFirst();
    const std::optional<LoadedBundle> bundle = m_cancelled ? std::nullopt : BundleStore::load(job->bundle);
    if (!bundle) {
        m_speakerRunning.reset();
        complete(job, Outcome::Failed,
                 m_cancelled ? EngineError::cancelled().errorDescription()
                             : Tr::tr("„%1“ ist keine lesbare Transkription.").arg(QDir::toNativeSeparators(job->bundle)));
        return nextSpeakers();
    }
    if (!m_speakerJob) {
        m_speakerJob = std::make_unique<SpeakerJob>();
        connect(m_speakerJob.get(), &SpeakerJob::failed, this,
                [this](const QString &, const QString &message) { m_speakerError = message; });
    }
    m_speakerError.clear();
    // The settings' AI model names the speakers where its key is at hand.
    const int count = *m_options.speakers > 0 ? *m_options.speakers : m_app.speakerCount();
    m_speakerJob->start(BundleStore::historyItem(*bundle), count, m_app.aiKey(), m_app.aiModelId())
        .then(this,
              [this, job](const SpeakerJob::Result &) {
                  m_known[job->contentKey].hasSpeakers = true;
                  m_speakerRunning.reset();
                  complete(job, Outcome::Done);
                  nextSpeakers();
              })
        .onFailed(this, [this, job] {
            m_speakerRunning.reset();
            const QString error = m_cancelled || job->control->isCancelled() ? EngineError::cancelled().errorDescription()
                                  : m_speakerError.isEmpty() ? Tr::tr("Sprechertrennung fehlgeschlagen")
                                                             : m_speakerError;
            complete(job, Outcome::Failed, error);
            nextSpeakers();
        });
}

void BatchRun::complete(std::shared_ptr<Job> job, Outcome outcome, const QString &error)
{
    // A job cancelled while downloading is ended by cancel(); its transfer may still report.
    if (job->completed)
        return;
    job->completed = true;
    m_running.removeOne(job);
    if (job->downloaded)
        QFile::remove(*job->downloaded);
    ++m_completed;
    emit entryFinished(Entry{job->source, outcome, job->bundle, error, job->clock.nsecsElapsed() / 1e9, job->index});
    fill();
}
