#pragma once

#include "core/HistoryItem.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

class AppModel;
class BatchRun;

// Several files opened or dropped at once: each gets a row, and they run one after the
// other through a batch with the setup chosen when they start. A row that fails or is
// cancelled leaves the others running; what is saved is announced for the history.
class TranscriptionQueue : public QObject {
    Q_OBJECT

public:
    enum class State { Waiting, Running, Done, Failed, Cancelled };
    struct Row {
        int id = 0;
        QString path;
        QString name;
        State state = State::Waiting;
        double progress = 0; // of the recognition, while running
        bool speakers = false; // running: past recognition, its speakers being separated
        QString reason;      // why it failed, in the user's language
        QString bundle;      // the saved transcription, once done
        bool known = false;  // done before: its content was in the history already

        bool operator==(const Row &) const = default;
    };
    // Staged: waiting rows, not started yet, whose setup can still change.
    enum class Phase { Empty, Staged, Running, Ended };

    explicit TranscriptionQueue(AppModel &app);
    ~TranscriptionQueue() override;

    const QList<Row> &rows() const { return m_rows; }
    Phase phase() const;
    // Rows that are neither waiting nor running.
    qsizetype finishedCount() const;

    // Files from the chooser or a drop. One file while nothing waits or runs is staged
    // alone as before; otherwise they join the queue.
    void open(const QStringList &paths);
    // Adds rows: to the running batch, which takes them with its setup, or staged. A
    // folder adds the media files below it; a file already waiting or running is left out.
    void add(const QStringList &paths);
    // Runs the staged rows with the settings' model, language and speaker options. A
    // model that is not installed ends in the app's error message, the rows staged.
    void start();
    // A staged row goes; a waiting or running one in the batch ends as cancelled.
    void cancel(int id);
    // Cancels every waiting and running row of the batch.
    void cancelAll();
    // Drops every row that is not in the running batch.
    void clear();

signals:
    void rowsChanged();
    // A saved transcription, read from its bundle, for the history; also one that was
    // there already and has changed (its speakers separated since).
    void saved(const HistoryItem &item);

private:
    void poll();
    void announce(const QString &bundle);
    Row *row(int id);

    AppModel &m_app;
    QList<Row> m_rows;
    int m_nextId = 1;
    std::unique_ptr<BatchRun> m_run;
    // The row of each source of the running batch, by its index there.
    QList<int> m_runRows;
    QTimer m_poll;
};
