#pragma once

#include "app/TranscriptionQueue.h"

#include <QHash>
#include <QWidget>

class AppModel;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QueueRow;
class TranscribeSetupView;

// The detail area while files queue: the setup of the batch until it starts, then a
// header with the count, and a row per file with its state and its own cancel. Takes
// drops of more files.
class QueueView : public QWidget {
    Q_OBJECT

public:
    explicit QueueView(AppModel &app, QWidget *parent = nullptr);

    // The setup, while the rows wait for their start; else none.
    TranscribeSetupView *setup() const;
    QLabel *titleLabel() const { return m_title; }
    QLabel *countLabel() const { return m_count; }
    QPushButton *clearButton() const { return m_clear; }
    QPushButton *cancelAllButton() const { return m_cancelAll; }
    // The widget of each row, in the queue's order.
    QList<QueueRow *> rowWidgets() const;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void refresh();
    void retranslate();
    void restyle();

    AppModel &m_app;
    TranscribeSetupView *m_setup = nullptr;
    QWidget *m_header = nullptr;
    QLabel *m_icon = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_count = nullptr;
    QPushButton *m_clear = nullptr;
    QPushButton *m_cancelAll = nullptr;
    QWidget *m_card = nullptr;
    QVBoxLayout *m_rowsLayout = nullptr;
    // Kept across updates, so that focus and hover stay on their row.
    QHash<int, QueueRow *> m_rows;
};

// One file of the queue: its name, state, progress while it runs, the reason when it
// failed, and a button to cancel it while it waits or runs, or to open it when done.
class QueueRow : public QWidget {
    Q_OBJECT

public:
    QueueRow(AppModel &app, const TranscriptionQueue::Row &row, QWidget *parent);

    // Shows the row as it is now; nothing to do when it has not changed.
    void setRow(const TranscriptionQueue::Row &row);

    int id() const { return m_row.id; }
    QLabel *nameLabel() const { return m_name; }
    QLabel *stateLabel() const { return m_state; }
    QLabel *reasonLabel() const { return m_reason; }
    class QProgressBar *progressBar() const { return m_progress; }
    class QToolButton *cancelButton() const { return m_cancel; }
    QPushButton *openButton() const { return m_open; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void draw();

    AppModel &m_app;
    TranscriptionQueue::Row m_row;
    QLabel *m_icon = nullptr;
    QLabel *m_name = nullptr;
    QLabel *m_state = nullptr;
    QLabel *m_reason = nullptr;
    QProgressBar *m_progress = nullptr;
    QToolButton *m_cancel = nullptr;
    QPushButton *m_open = nullptr;
};
