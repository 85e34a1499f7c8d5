#include "app/InterviewCompletion.h"

#include "app/HistoryEntry.h"
#include "app/InterviewJob.h"
#include "app/PatchQueue.h"
#include "export/Format.h"
#include "storage/BundleStore.h"

#include <QFile>
#include <QtConcurrent/QtConcurrentRun>

QFuture<std::optional<HistoryItem>> InterviewCompletion::store(const InterviewResult &interview)
{
    if (interview.result.segments.isEmpty()) {
        QFile::remove(interview.audio);
        return QtFuture::makeReadyValueFuture(std::optional<HistoryItem>());
    }
    const QDateTime createdAt = QDateTime::currentDateTime();
    const QString name = QStringLiteral("Interview ") + Format::date(createdAt);
    return QtConcurrent::run([=] {
               HistoryEntry::Made made = HistoryEntry::create(name, createdAt, interview.audio, interview.result);
               // The bundle has its copy; without one the recording stays where it is.
               if (made.stored)
                   QFile::remove(interview.audio);
               return made;
           })
        .then([interview](HistoryEntry::Made made) -> QFuture<std::optional<HistoryItem>> {
            HistoryItem item = std::move(made.item);
            item.speakerText = interview.speakerText;
            if (!interview.speakerText || !made.stored)
                return QtFuture::makeReadyValueFuture(std::optional<HistoryItem>(item));
            // A patch like any other; where it fails, the text lives in memory only.
            return PatchQueue::add([path = *item.bundlePath, text = *interview.speakerText] {
                       BundleStore::saveSpeakerText(path, text);
                   }).then([item] { return std::optional<HistoryItem>(item); });
        })
        .unwrap();
}
