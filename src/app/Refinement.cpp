#include "app/Refinement.h"

#include "ai/AIModel.h"
#include "ai/SmoothingError.h"
#include "ai/Smoother.h"
#include "app/AppModel.h"
#include "storage/BundleStore.h"

QFuture<void> Refinement::start(AppModel &app, const HistoryItem &item, qint64 level, const Overrides &overrides)
{
    // Fixed for this run: later changes of the settings don't reach it.
    const QString key = overrides.apiKey.value_or(app.activeKey());
    if (key.isEmpty()) {
        app.setErrorMessage(SmoothingError::noKey().errorDescription());
        app.setShowSettings(true);
        return QtFuture::makeReadyVoidFuture();
    }
    if (item.smoothingLevel)
        return QtFuture::makeReadyVoidFuture();
    const QString input = item.speakerText.value_or(item.result.fullText);
    if (input.isEmpty())
        return QtFuture::makeReadyVoidFuture();
    const AIModel model = AIModel::by(overrides.modelId.value_or(app.activeModelId()));
    const QString id = item.id;
    const std::optional<QString> bundle = item.bundleURL;
    app.updateItem(id, [level](HistoryItem &h) { h.smoothingLevel = level; });

    return Smoother::smooth(input, key, model, level, item.speakerText.has_value())
        .then(&app,
              [&app, id, level, bundle](const QString &text) {
                  app.updateItem(id, [&](HistoryItem &h) {
                      h.smoothed.insert(level, text);
                      h.smoothingLevel.reset();
                  });
                  if (bundle)
                      BundleStore::saveSmoothed(*bundle, level, text);
              })
        .onFailed(&app, [&app, id](const SmoothingError &error) {
            app.updateItem(id, [](HistoryItem &h) { h.smoothingLevel.reset(); });
            app.setErrorMessage(error.errorDescription());
        });
}
