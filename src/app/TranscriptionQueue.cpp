#include "app/TranscriptionQueue.h"

#include "app/AppModel.h"
#include "app/Batch.h"
#include "storage/BundleStore.h"

#include <QFileInfo>

#include <algorithm>

TranscriptionQueue::TranscriptionQueue(AppModel &app) : m_app(app)
{
    // Progress lives in the batch's jobs; reading it a few times a second is enough for a bar.
    m_poll.setInterval(200);
    connect(&m_poll, &QTimer::timeout, this, &TranscriptionQueue::poll);
}

// The batch stops and waits for its pool before the rows it reports into go.
TranscriptionQueue::~TranscriptionQueue() = default;

TranscriptionQueue::Phase TranscriptionQueue::phase() const
{
    if (m_run)
        return Phase::Running;
    if (std::any_of(m_rows.cbegin(), m_rows.cend(), [](const Row &r) { return r.state == State::Waiting; }))
        return Phase::Staged;
    return m_rows.isEmpty() ? Phase::Empty : Phase::Ended;
}

qsizetype TranscriptionQueue::finishedCount() const
{
    return std::count_if(m_rows.cbegin(), m_rows.cend(), [](const Row &r) {
        return r.state != State::Waiting && r.state != State::Running;
    });
}

TranscriptionQueue::Row *TranscriptionQueue::row(int id)
{
    const auto it = std::find_if(m_rows.begin(), m_rows.end(), [id](const Row &r) { return r.id == id; });
    return it == m_rows.end() ? nullptr : &*it;
}

void TranscriptionQueue::open(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const bool idle = phase() == Phase::Empty || phase() == Phase::Ended;
    if (paths.size() == 1 && idle && !QFileInfo(paths.first()).isDir())
        return m_app.stage(paths.first());
    add(paths);
}

void TranscriptionQueue::add(const QStringList &paths)
{
    QStringList files;
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir()) {
            files.append(path);
            continue;
        }
        for (const Batch::Source &source : Batch::expand({path}).sources)
            files.append(source.location);
    }
    QList<Batch::Source> sources;
    for (const QString &file : std::as_const(files)) {
        const bool queued = std::any_of(m_rows.cbegin(), m_rows.cend(), [&](const Row &r) {
            return r.path == file && (r.state == State::Waiting || r.state == State::Running);
        });
        if (queued)
            continue;
        Row added;
        added.id = m_nextId++;
        added.path = file;
        added.name = QFileInfo(file).fileName();
        m_rows.append(added);
        if (m_run) {
            sources.append(Batch::Source{file, file, false});
            m_runRows.append(added.id);
        }
    }
    if (m_run && !sources.isEmpty())
        m_run->append(sources);
    // The queue takes the detail area from whatever was on show.
    m_app.setPending(std::nullopt);
    m_app.setCurrent(std::nullopt);
    emit rowsChanged();
}

void TranscriptionQueue::start()
{
    if (m_run)
        return;
    const auto chosen = BatchRun::modelAndLanguage(m_app, std::nullopt, std::nullopt);
    if (const QString *error = std::get_if<QString>(&chosen)) {
        m_app.setErrorMessage(*error);
        return;
    }
    const auto &[model, language] = std::get<std::pair<QString, QString>>(chosen);
    BatchRun::Options options;
    options.modelPath = model;
    options.language = language;
    // One file at a time has every core for its recognition.
    options.jobs = 1;
    if (m_app.speakerDetection())
        options.speakers = m_app.speakerCount();

    QList<Batch::Source> sources;
    m_runRows.clear();
    for (const Row &r : std::as_const(m_rows)) {
        if (r.state != State::Waiting)
            continue;
        sources.append(Batch::Source{r.path, r.path, false});
        m_runRows.append(r.id);
    }
    if (sources.isEmpty())
        return;
    m_app.setErrorMessage(std::nullopt);
    m_run = std::make_unique<BatchRun>(m_app, sources, options);
    connect(m_run.get(), &BatchRun::entryFinished, this, [this](const BatchRun::Entry &entry) {
        Row *r = row(m_runRows.value(entry.index));
        if (!r)
            return;
        const bool cancelled = r->state == State::Cancelled;
        r->progress = 0;
        r->speakers = false;
        if (entry.outcome != BatchRun::Outcome::Failed) {
            r->state = State::Done;
            r->known = entry.outcome == BatchRun::Outcome::Skipped;
        } else if (!cancelled) {
            r->state = State::Failed;
            r->reason = entry.error;
        }
        r->bundle = entry.bundle;
        // Also a cancel during the speakers leaves a saved transcription.
        if (!entry.bundle.isEmpty())
            announce(entry.bundle);
        emit rowsChanged();
    });
    connect(m_run.get(), &BatchRun::finished, this, [this] {
        m_poll.stop();
        // Gone after the signal that is still on the stack.
        m_run.release()->deleteLater();
        m_runRows.clear();
        emit rowsChanged();
    });
    m_run->start();
    m_poll.start();
    emit rowsChanged();
}

void TranscriptionQueue::poll()
{
    if (!m_run)
        return;
    bool changed = false;
    for (const BatchRun::Running &running : m_run->running()) {
        Row *r = row(m_runRows.value(running.index));
        if (!r || r->state == State::Cancelled)
            continue;
        if (r->state != State::Running || !qFuzzyCompare(1 + r->progress, 1 + running.fraction)) {
            r->state = State::Running;
            r->progress = running.fraction;
            changed = true;
        }
    }
    for (const qsizetype index : m_run->separating()) {
        Row *r = row(m_runRows.value(index));
        if (!r || r->state == State::Cancelled || r->speakers)
            continue;
        r->state = State::Running;
        r->speakers = true;
        changed = true;
    }
    if (changed)
        emit rowsChanged();
}

void TranscriptionQueue::cancel(int id)
{
    Row *r = row(id);
    if (!r || (r->state != State::Waiting && r->state != State::Running))
        return;
    const qsizetype index = m_run ? m_runRows.indexOf(id) : -1;
    if (index < 0) {
        m_rows.removeIf([id](const Row &x) { return x.id == id; });
        emit rowsChanged();
        return;
    }
    // Marked first: the batch may report the entry before it returns.
    r->state = State::Cancelled;
    r->progress = 0;
    emit rowsChanged();
    m_run->cancel(index);
}

void TranscriptionQueue::cancelAll()
{
    if (!m_run)
        return;
    // Marked first: the batch reports only what it had begun, and it ends before it returns.
    for (Row &r : m_rows) {
        if (m_runRows.contains(r.id) && (r.state == State::Waiting || r.state == State::Running)) {
            r.state = State::Cancelled;
            r.progress = 0;
            r.speakers = false;
        }
    }
    emit rowsChanged();
    m_run->cancel();
}

void TranscriptionQueue::clear()
{
    const qsizetype before = m_rows.size();
    m_rows.removeIf([this](const Row &r) { return !m_runRows.contains(r.id); });
    if (m_rows.size() != before)
        emit rowsChanged();
}

void TranscriptionQueue::announce(const QString &bundle)
{
    if (const std::optional<LoadedBundle> loaded = BundleStore::load(bundle))
        emit saved(BundleStore::historyItem(*loaded));
}
