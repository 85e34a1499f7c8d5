#include "app/InterviewCompletion.h"

#include "app/InterviewJob.h"

#include <QFile>
#include "export/Format.h"
#include "storage/BundleStore.h"

#include <QtConcurrent/QtConcurrentRun>

QFuture<std::optional<HistoryItem>> InterviewCompletion::store(const InterviewResult &interview)
{
    if (interview.result.segments.isEmpty()) {
        QFile::remove(interview.audio);
        return QtFuture::makeReadyValueFuture(std::optional<HistoryItem>());
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
        .then([interview](const std::optional<LoadedBundle> &bundle) -> std::optional<HistoryItem> {
            if (!bundle)
                return std::nullopt;
            HistoryItem item = BundleStore::historyItem(*bundle);
            if (interview.speakerText) {
                // A patch like any other; where it fails, the text lives in memory only.
                item.speakerText = interview.speakerText;
                BundleStore::saveSpeakerText(bundle->url, *interview.speakerText);
            }
            return item;
        });
}
