#include "app/Scripted.h"

#include "app/PatchQueue.h"
#include "core/UserError.h"
#include "engine/Engine.h"
#include "engine/ModelImport.h"
#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"
#include "storage/BundleStore.h"
#include "storage/KeychainStore.h"

#include <QFile>

namespace Scripted {

std::optional<HistoryItem> read(const QString &folder)
{
    PatchQueue::drain();
    QFile document(folder + QStringLiteral("/sagwerk.json"));
    if (!document.open(QIODevice::ReadOnly))
        return std::nullopt;
    const std::optional<BundleData> data = BundleData::decode(document.readAll());
    if (!data)
        return std::nullopt;
    return BundleStore::historyItem(LoadedBundle{folder, folder, *data});
}

QList<HistoryItem> readAll()
{
    QList<HistoryItem> items;
    PatchQueue::drain();
    for (const LoadedBundle &bundle : BundleStore::list())
        items.append(BundleStore::historyItem(bundle));
    return items;
}

QFuture<std::optional<QString>> storedKey(AIProvider provider)
{
    return KeychainStore::load(provider == AIProvider::openai ? QString(KeychainStore::openaiAccount)
                                                              : QString(KeychainStore::anthropicAccount));
}

QString deviceReport()
{
    if (const std::optional<WhisperEngine::Device> gpu = WhisperEngine::gpuDevice())
        return QStringLiteral("Recognition: %1 backend, device %2").arg(gpu->backend, gpu->name);
    const WhisperEngine::Device cpu = WhisperEngine::cpuDevice();
    return QStringLiteral("Recognition: %1 backend, device %2, %3 threads")
        .arg(cpu.backend, cpu.name)
        .arg(WhisperEngine::threadCount());
}

QFuture<void> prepareRecognition(const TranscribeControlPtr &control)
{
    return VadModel::ensure(control).then([](const QString &) {});
}

TranscriptionResult transcribe(const QString &path, const QString &modelPath, const QString &language,
                               const TranscribeControlPtr &control, const std::function<void(double)> &progress)
{
    return Engine::transcribe(path, modelPath, language, control, progress);
}

namespace {

// The import's failure as a user error, so that callers need not know its type.
class ImportFailed : public UserError {
public:
    ImportFailed(QString text, bool cancelled) : m_text(std::move(text)), m_cancelled(cancelled) {}
    QString errorDescription() const override { return m_text; }
    bool isCancelled() const override { return m_cancelled; }

private:
    QString m_text;
    bool m_cancelled;
};

} // namespace

ImportedModel importModel(const QString &source, const QString &modelsDir, const TranscribeControlPtr &control,
                          const std::function<void(double)> &progress)
{
    try {
        const ModelImport::Result result = ModelImport::importModel(source, modelsDir, control, progress);
        return {result.model, result.path};
    } catch (const ModelImportError &error) {
        throw ImportFailed(error.errorDescription(), error.kind() == ModelImportError::Case::cancelled);
    }
}

} // namespace Scripted
