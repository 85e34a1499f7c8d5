#include "app/Refinement.h"

#include "core/AIModel.h"
#include "ai/SmoothingError.h"
#include "ai/Smoother.h"
#include "core/HistoryItem.h"
#include "app/PatchQueue.h"
#include "storage/BundleStore.h"

QFuture<void> Refinement::start(const HistoryItem &item, qint64 level, const QString &key, const QString &modelId)
{
    if (key.isEmpty()) {
        emit keyMissing(SmoothingError::noKey().errorDescription());
        return QtFuture::makeReadyVoidFuture();
    }
    if (item.smoothingLevel)
        return QtFuture::makeReadyVoidFuture();
    const QString input = item.speakerText.value_or(item.result.fullText);
    if (input.isEmpty())
        return QtFuture::makeReadyVoidFuture();
    const QString id = item.id;
    const std::optional<QString> bundle = item.bundleURL;
    emit began(id, level);

    return Smoother::smooth(input, key, AIModel::by(modelId), level, item.speakerText.has_value())
        .then(this,
              [this, id, level, bundle](const QString &text) {
                  emit finished(id, level, text);
                  if (!bundle)
                      return QtFuture::makeReadyVoidFuture();
                  return PatchQueue::add([bundle = *bundle, level, text] { BundleStore::saveSmoothed(bundle, level, text); });
              })
        .unwrap()
        .onFailed(this, [this, id](const SmoothingError &error) { emit failed(id, error.errorDescription()); });
}
