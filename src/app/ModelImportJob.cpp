#include "app/ModelImportJob.h"

#include "core/Tr.h"
#include "engine/ModelImport.h"
#include "app/ModelStore.h"

#include <QPointer>
#include <QtConcurrent/QtConcurrentRun>

namespace {

struct Outcome {
    bool ok = false;
    bool cancelled = false;
    QString message;
};

} // namespace

ModelImportJob::ModelImportJob(ModelStore &store, QObject *parent) : QObject(parent), m_store(store) {}

ModelImportJob::~ModelImportJob()
{
    if (m_control)
        m_control->cancel();
    if (m_task)
        m_task->waitForFinished();
}

void ModelImportJob::cancel()
{
    if (m_control)
        m_control->cancel();
}

void ModelImportJob::start(const QString &source)
{
    if (m_running)
        return;
    m_running = true;
    m_control = std::make_shared<TranscribeControl>();
    const TranscribeControlPtr control = m_control;
    const QString modelsDir = m_store.modelsDir();
    QPointer<ModelImportJob> self(this);
    // Progress comes from the pool and is only posted here.
    auto report = [self](double fraction) {
        QMetaObject::invokeMethod(
            self.data(), [self, fraction] { if (self) emit self->progress(fraction); }, Qt::QueuedConnection);
    };
    QFuture<Outcome> task = QtConcurrent::run([source, modelsDir, control, report]() -> Outcome {
        try {
            const ModelImport::Result result = ModelImport::importModel(source, modelsDir, control, report);
            return {true, false, Tr::tr("Modell „%1“ importiert: %2").arg(result.model.name, result.path)};
        } catch (const ModelImportError &e) {
            return {false, e.kind() == ModelImportError::Case::cancelled, e.errorDescription()};
        } catch (const std::exception &e) {
            return {false, false, QString::fromLocal8Bit(e.what())};
        }
    });
    m_task = QFuture<void>(task);
    task.then(this, [this](const Outcome &outcome) {
        m_running = false;
        m_store.refresh();
        if (!outcome.cancelled)
            emit finished(outcome.ok, outcome.message);
    });
}
