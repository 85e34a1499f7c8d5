#pragma once

#include "core/CancelToken.h"

#include <QElapsedTimer>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QProcessEnvironment>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <optional>
#include <variant>

class AppModel;
class SpeakerJob;

// Many sources into the history, resumably and in shares: what `sagwerk-cli batch` runs.
namespace Batch {

// One file or link to transcribe. `key` names it the same way on every machine, whatever
// the mount point of the shared folder: the path below the folder it was found in, a list
// file's line as written, or the argument itself.
struct Source {
    QString location; // an absolute path, or a link
    QString key;
    bool isLink = false;

    bool operator==(const Source &) const = default;
};

struct Expansion {
    QList<Source> sources;
    // Arguments that name nothing usable, with the reason, in the user's language.
    QList<std::pair<QString, QString>> problems;
};

// Files (a media file, or a text file listing one path or link a line; blank lines and
// lines starting with "#" are skipped, relative paths are taken from the list's folder),
// folders (every file of a media type below them) and links. Each location once, in a
// stable order.
Expansion expand(const QStringList &arguments);

// Which of `count` shares this process takes; `index` counts from 0.
struct Shard {
    int index = 0;
    int count = 1;
};

// "K/N" with 0 <= K < N, or "auto": the share the scheduler gave this process, from
// Slurm job arrays (SLURM_ARRAY_TASK_ID, _MIN, _STEP, _COUNT), a Kubernetes Indexed Job
// (JOB_COMPLETION_INDEX), HTCondor (SAGWERK_SHARD_INDEX set to $(Process)) or GNU
// parallel (PARALLEL_SEQ); the three without a count of their own read it from
// SAGWERK_SHARD_COUNT. The failure's text otherwise.
std::variant<Shard, QString> parseShard(const QString &text, const QProcessEnvironment &environment);

// The sources of `shard`, by a hash of each key that every machine computes alike.
QList<Source> select(const QList<Source> &sources, const Shard &shard);

// Threads per recognition when `jobs` run side by side on `cores`: jobs × threads ≤ cores.
int threadsPerJob(int jobs, int cores);

} // namespace Batch

// Runs the sources, `jobs` at a time. A source whose content is in the history already
// is skipped; one that fails is reported and the rest go on. Lives on the main thread;
// decoding, recognition and the bundle run on a pool of its own.
class BatchRun : public QObject {
    Q_OBJECT

public:
    struct Options {
        QString modelPath;
        QString language;
        int jobs = 1;
        // Separates the speakers of each bundle, also of one made before without them:
        // that many speakers, or as many as found with 0.
        std::optional<int> speakers;
    };

    enum class Outcome { Done, Skipped, Failed };
    struct Entry {
        Batch::Source source;
        Outcome outcome = Outcome::Failed;
        QString bundle; // the new or the existing bundle
        QString error;
        double seconds = 0;
        qsizetype index = 0; // of the source in the run
    };
    // A source being worked on; `fraction` of its recognition.
    struct Running {
        QString location;
        double fraction = 0;
        qsizetype index = 0;
    };

    BatchRun(AppModel &app, QList<Batch::Source> sources, Options options);
    // Cancels and waits for the pool.
    ~BatchRun() override;

    void start();
    // Stops the running work; what was finished stays. `finished` follows.
    void cancel();
    // Stops one source, waiting or running; the others go on. Its entry follows, failed
    // as cancelled, with the bundle where one was made before its speakers.
    void cancel(qsizetype index);
    // More sources for a run that has not finished; they run with its options.
    void append(const QList<Batch::Source> &sources);

    QList<Running> running() const;
    // The sources past recognition whose speakers are separated or wait for it.
    QList<qsizetype> separating() const;
    qsizetype total() const { return m_sources.size(); }
    qsizetype completed() const { return m_completed; }
    bool cancelled() const { return m_cancelled; }

    // The model file and language of a batch: those named, else the settings'. The
    // failure's text, as a job gives it, otherwise.
    static std::variant<std::pair<QString, QString>, QString>
    modelAndLanguage(const AppModel &app, const std::optional<QString> &model, const std::optional<QString> &language);

signals:
    void entryFinished(const BatchRun::Entry &entry);
    void finished();

private:
    struct Job;

    void fill();
    void begin(std::shared_ptr<Job> job);
    void download(std::shared_ptr<Job> job);
    void identify(std::shared_ptr<Job> job, const QString &file);
    void recognise(std::shared_ptr<Job> job, const QString &file);
    void separateSpeakers(std::shared_ptr<Job> job);
    void nextSpeakers();
    void complete(std::shared_ptr<Job> job, Outcome outcome, const QString &error = {});

    AppModel &m_app;
    QList<Batch::Source> m_sources;
    // Waiting sources cancelled one by one, passed over when their turn comes.
    QSet<qsizetype> m_dropped;
    const Options m_options;
    QThreadPool m_pool;
    qsizetype m_next = 0;
    qsizetype m_completed = 0;
    bool m_cancelled = false;
    bool m_started = false;
    bool m_ready = false; // the voice-activity model is settled
    bool m_finished = false;
    QList<std::shared_ptr<Job>> m_running;
    // Content keys ("size:sha256") of the history, with the bundle that holds each, and
    // the keys of what this run is making now.
    struct Known {
        QString bundle;
        bool hasSpeakers = false;
    };
    QHash<QString, Known> m_known;
    QSet<QString> m_making;
    // Speaker separation runs one bundle at a time, beside the recognitions.
    std::unique_ptr<SpeakerJob> m_speakerJob;
    // What the speaker job said of its last failure.
    QString m_speakerError;
    QList<std::shared_ptr<Job>> m_speakerQueue;
    std::shared_ptr<Job> m_speakerRunning;
    const CancelTokenPtr m_vadControl = std::make_shared<CancelToken>();
};
