#include "Transcripts.h"

#include <QStringList>

namespace Transcripts {

TranscriptionResult result(int segments, int wordsPerSegment)
{
    static const QStringList vocabulary = QStringLiteral(
        "wir haben damals im Sommer angefangen die alte Mühle am Fluss wieder aufzubauen und "
        "natürlich wusste niemand genau wie das Wasserrad früher gelaufen ist Herr Schäfer "
        "erzählte dass sein Großvater noch Mehl gemahlen hat bis neunzehnhundertzweiundfünfzig "
        "danach stand alles still über Jahrzehnte eigentlich bis heute")
                                              .split(u' ');
    TranscriptionResult r;
    QStringList texts;
    qint64 ms = 400;
    int n = 0;
    for (int s = 0; s < segments; ++s) {
        TranscriptSegment segment;
        segment.startMs = ms;
        QStringList words;
        for (int w = 0; w < wordsPerSegment; ++w, ++n) {
            QString word = vocabulary[(n * 7 + s) % vocabulary.size()];
            if (w == 0)
                word[0] = word[0].toUpper();
            if (w == wordsPerSegment - 1)
                word += (s % 3 == 2) ? u'?' : u'.';
            else if (w % 6 == 5)
                word += u',';
            const qint64 length = 300 + (n * 37) % 120;
            segment.words.append(TranscriptWord{word, ms, ms + length});
            words << word;
            ms += length + 40;
        }
        segment.endMs = ms;
        segment.text = words.join(u' ');
        texts << segment.text;
        r.segments.append(segment);
        ms += 500;
    }
    r.fullText = texts.join(u' ');
    r.language = QStringLiteral("de");
    r.processingSeconds = 12.34;
    return r;
}

HistoryItem item(const TranscriptionResult &result, const QString &fileName)
{
    HistoryItem item;
    item.id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    item.fileName = fileName;
    item.date = QDateTime(QDate(2025, 3, 14), QTime(9, 30));
    item.result = result;
    return item;
}

} // namespace Transcripts
