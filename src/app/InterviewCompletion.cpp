#include "app/InterviewCompletion.h"

#include "app/AppModel.h"
#include "capture/InterviewSession.h"
#include "export/Format.h"
#include "storage/BundleStore.h"

#include <QtConcurrent/QtConcurrentRun>

QFuture<void> InterviewCompletion::finish(AppModel &app, const InterviewResult &interview)
{
    app.setInterviewActive(false);
    if (interview.result.segments.isEmpty()) {
        QFile::remove(interview.audio);
        return QtFuture::makeReadyVoidFuture();
    }
    const QDateTime createdAt = QDateTime::currentDateTime();
    const QString name = QStringLiteral("Interview ") + Format::date(createdAt);
    return QtConcurrent::run([=]() -> std::optional<LoadedBundle> {
               try {
                   const LoadedBundle bundle = BundleStore::create(name, createdAt, interview.audio, interview.result);
                   QFile::remove(interview.audio);
                   return bundle;
               } catch (...) {
                   return std::nullopt;
               }
           })
        .then(&app, [&app, interview](const std::optional<LoadedBundle> &bundle) {
            if (!bundle)
                return;
            HistoryItem item = BundleStore::historyItem(*bundle);
            if (interview.speakerText) {
                // A patch like any other; where it fails, the text lives in memory only.
                item.speakerText = interview.speakerText;
                BundleStore::saveSpeakerText(bundle->url, *interview.speakerText);
            }
            app.prependToHistory(item);
            app.setCurrent(item);
        });
}
