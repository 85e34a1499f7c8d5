#pragma once

#include "core/CancelToken.h"

#include <QFuture>
#include <QObject>
#include <QString>

#include <optional>

class ModelStore;

// Imports a Whisper model file or CTranslate2 model folder into the models folder on the
// pool, as `sagwerk-cli import-model` does, for the settings. Progress and the end come
// back on the main thread; the store is refreshed before the end is told.
class ModelImportJob : public QObject {
    Q_OBJECT

public:
    explicit ModelImportJob(ModelStore &store, QObject *parent = nullptr);
    // A running import is cancelled and waited for: it leaves the folder as it was.
    ~ModelImportJob() override;

    bool isRunning() const { return m_running; }
    // Does nothing while an import runs.
    void start(const QString &source);
    void cancel();

signals:
    void progress(double fraction);
    // `message` is the user's text: what was imported, or why not. Silent on a cancel.
    void finished(bool ok, const QString &message);

private:
    ModelStore &m_store;
    bool m_running = false;
    CancelTokenPtr m_control;
    std::optional<QFuture<void>> m_task;
};
