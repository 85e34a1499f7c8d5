#include "app/InterviewCompletion.h"

#include "app/InterviewJob.h"

#include <QFile>
#include "export/Format.h"
#include "app/PatchQueue.h"
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
        .then([interview](const std::optional<LoadedBundle> &bundle) -> QFuture<std::optional<HistoryItem>> {
            if (!bundle)
                return QtFuture::makeReadyValueFuture(std::optional<HistoryItem>());
            HistoryItem item = BundleStore::historyItem(*bundle);
            if (!interview.speakerText)
                return QtFuture::makeReadyValueFuture(std::optional<HistoryItem>(item));
            // A patch like any other; where it fails, the text lives in memory only.
            item.speakerText = interview.speakerText;
            return PatchQueue::add([url = bundle->url, text = *interview.speakerText] {
                       BundleStore::saveSpeakerText(url, text);
                   }).then([item] { return std::optional<HistoryItem>(item); });
        })
        .unwrap();
}
