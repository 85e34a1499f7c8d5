// The one way from a bundle on disk to an item in memory.
#include "storage/BundleStore.h"

#include <QRegularExpression>

namespace {

// A decimal integer with an optional sign, ASCII digits only, within 64 bits. Blanks,
// which QString's own conversion would skip, make it no level.
std::optional<qint64> level(const QString &key)
{
    static const QRegularExpression decimal(QRegularExpression::anchoredPattern(QStringLiteral("[+-]?[0-9]+")));
    if (!decimal.match(key).hasMatch())
        return std::nullopt;
    bool ok = false;
    const qint64 value = key.toLongLong(&ok, 10);
    return ok ? std::optional(value) : std::nullopt;
}

} // namespace

HistoryItem BundleStore::historyItem(const LoadedBundle &bundle)
{
    HistoryItem item;
    item.id = bundle.id;
    item.fileName = bundle.data.displayName;
    item.date = bundle.data.createdAt;
    item.audioPath = bundle.url + u'/' + bundle.data.audioFileName;
    item.bundlePath = bundle.url;
    item.speakerText = bundle.data.speakerText;
    item.corrections = bundle.data.corrections.value_or(QList<Correction>());
    item.speakerNames = bundle.data.speakerNames.value_or(QMap<QString, QString>());
    TranscriptionResult &result = item.result;
    QMap<qint64, QString> &refined = item.refined;
    const BundleData &d = bundle.data;
    result.fullText = d.fullText;
    result.language = d.language;
    result.processingSeconds = d.processingSeconds;
    result.model = d.model.value_or(QString());
    for (const StoredSegment &s : d.segments) {
        TranscriptSegment segment;
        segment.startMs = s.startMs;
        segment.endMs = s.endMs;
        segment.text = s.text;
        for (const StoredWord &w : s.words.value_or(QList<StoredWord>()))
            segment.words.append(TranscriptWord{w.text, w.startMs, w.endMs});
        result.segments.append(segment);
    }
    // Where "1" and "+1" or "01" meet, the plain form is the one this program wrote.
    for (auto it = d.refined.cbegin(); it != d.refined.cend(); ++it) {
        const std::optional<qint64> key = level(it.key());
        if (key && (!refined.contains(*key) || it.key() == QString::number(*key)))
            refined.insert(*key, it.value());
    }
    return item;
}
