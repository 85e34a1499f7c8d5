#include "review/SpeakerTurn.h"

#include "core/Text.h"

#include <QRegularExpression>

std::pair<std::optional<QString>, QString> SpeakerTurn::splitLabel(const QString &line)
{
    const qsizetype colon = line.indexOf(u':');
    if (colon < 0)
        return {std::nullopt, line};
    const QString front = line.left(colon);
    if (Text::characterCount(front) >= 41)
        return {std::nullopt, line};
    static const QRegularExpression blanks(QStringLiteral("[ \\t]"));
    if (front.split(blanks, Qt::SkipEmptyParts).size() >= 6)
        return {std::nullopt, line};
    return {Text::trimBlanks(front), Text::trimBlanks(line.mid(colon + 1))};
}

QStringList SpeakerTurn::normalisedWords(const QString &text)
{
    QStringList words;
    QString word;
    for (const char32_t c : text.toLower().toUcs4()) {
        if (QChar::isLetterOrNumber(c) || QChar::isMark(c)) {
            word += QString::fromUcs4(&c, 1);
        } else if (!word.isEmpty()) {
            words << word;
            word.clear();
        }
    }
    if (!word.isEmpty())
        words << word;
    return words;
}

QList<SpeakerTurn> SpeakerTurn::build(const QString &text, const QList<TranscriptSegment> &segments)
{
    struct Record {
        qint64 lineIndex;
        QString line;
        std::optional<qsizetype> segIdx;
    };
    QList<Record> records;
    qsizetype cursor = 0;
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = Text::trimBlanks(lines[i]);
        if (line.isEmpty())
            continue;
        Record record{i, line, std::nullopt};
        const QStringList cw = normalisedWords(splitLabel(line).second);
        if (!cw.isEmpty()) {
            for (qsizetype s = cursor; s < segments.size(); ++s) {
                const QStringList sw = normalisedWords(segments[s].text);
                const qsizetype k = std::min({qsizetype(3), cw.size(), sw.size()});
                if (k == 0)
                    continue;
                if (cw.mid(0, k) == sw.mid(0, k)) {
                    record.segIdx = s;
                    cursor = s + 1;
                    break;
                }
            }
        }
        records.append(std::move(record));
    }

    QList<SpeakerTurn> turns;
    turns.reserve(records.size());
    for (qsizetype r = 0; r < records.size(); ++r) {
        const Record &record = records[r];
        SpeakerTurn turn;
        turn.id = record.lineIndex;
        turn.text = record.line;
        turn.label = splitLabel(record.line).first;
        if (const std::optional<qsizetype> s = record.segIdx) {
            turn.ms = segments[*s].startMs;
            qsizetype end = segments.size();
            for (qsizetype later = r + 1; later < records.size(); ++later) {
                if (records[later].segIdx && *records[later].segIdx > *s) {
                    end = *records[later].segIdx;
                    break;
                }
            }
            turn.segments = segments.mid(*s, end - *s);
            for (const TranscriptSegment &segment : std::as_const(turn.segments))
                turn.words += segment.words;
        }
        turns.append(std::move(turn));
    }
    return turns;
}
