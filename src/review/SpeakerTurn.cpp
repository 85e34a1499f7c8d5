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

QString SpeakerTurn::renamed(const QString &text, const QMap<QString, QString> &names)
{
    if (names.isEmpty())
        return text;
    QStringList lines = text.split(u'\n');
    for (QString &line : lines) {
        const std::optional<QString> label = splitLabel(line).first;
        if (!label || !names.contains(*label))
            continue;
        // Keep the blanks in front and everything from the colon on.
        const qsizetype lead = line.indexOf(*label);
        line = line.left(lead) + names.value(*label) + line.mid(line.indexOf(u':'));
    }
    return lines.join(u'\n');
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

namespace {

// A place where a line may begin: a segment's start (word 0), or one of its words after
// the first, where the labelling cut a segment at a change of speaker.
struct Place {
    qsizetype segment = 0;
    qsizetype word = 0;
    auto operator<=>(const Place &) const = default;
};

// Segment `s` from word `from` up to, not including, word `to`; whole when it spans all.
std::optional<TranscriptSegment> piece(const TranscriptSegment &s, qsizetype from, qsizetype to)
{
    if (from == 0 && to >= s.words.size())
        return s;
    if (from >= to)
        return std::nullopt;
    TranscriptSegment cut;
    cut.id = s.id; // a piece of that segment still: exports find the segment by it
    cut.startMs = from == 0 ? s.startMs : s.words[from].startMs;
    cut.endMs = to >= s.words.size() ? s.endMs : s.words[to - 1].endMs;
    cut.words = s.words.mid(from, to - from);
    QStringList texts;
    for (const TranscriptWord &w : std::as_const(cut.words))
        texts << w.text;
    cut.text = texts.join(u' ');
    return cut;
}

} // namespace

QList<SpeakerTurn> SpeakerTurn::build(const QString &text, const QList<TranscriptSegment> &segments)
{
    // Each segment's normalised words from its text (for its start), and the first three
    // from each of its timed words on (for the places inside it). These run on into the
    // segments after it: a line that begins with a segment's last word goes on in the next.
    QList<QStringList> starts;
    starts.reserve(segments.size());
    for (const TranscriptSegment &segment : segments)
        starts << normalisedWords(segment.text);
    QList<QList<QStringList>> tails(segments.size());
    QStringList following;
    for (qsizetype s = segments.size() - 1; s >= 0; --s) {
        const QList<TranscriptWord> &words = segments[s].words;
        QList<QStringList> tail(words.size());
        QStringList after = following;
        for (qsizetype w = words.size() - 1; w >= 1; --w) {
            after = normalisedWords(words[w].text) + after;
            tail[w] = after.mid(0, 3);
        }
        tails[s] = tail;
        following = (starts[s] + following).mid(0, 3);
    }

    struct Record {
        qint64 lineIndex;
        QString line;
        std::optional<Place> anchor;
    };
    QList<Record> records;
    Place cursor;
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = Text::trimBlanks(lines[i]);
        if (line.isEmpty())
            continue;
        Record record{i, line, std::nullopt};
        const QStringList cw = normalisedWords(splitLabel(line).second);
        for (qsizetype s = cursor.segment; !cw.isEmpty() && s < segments.size() && !record.anchor; ++s) {
            const bool fromStart = s > cursor.segment || cursor.word == 0;
            const QStringList &sw = starts[s];
            const qsizetype k = std::min({qsizetype(3), cw.size(), sw.size()});
            if (fromStart && k > 0 && cw.mid(0, k) == sw.mid(0, k)) {
                record.anchor = Place{s, 0};
                break;
            }
            // Inside a segment all of the line's first words (up to three) must follow.
            const qsizetype need = std::min(qsizetype(3), cw.size());
            for (qsizetype w = fromStart ? 1 : cursor.word; w < tails[s].size(); ++w) {
                if (tails[s][w].size() >= need && cw.mid(0, need) == tails[s][w].mid(0, need)) {
                    record.anchor = Place{s, w};
                    break;
                }
            }
        }
        if (record.anchor) {
            const Place a = *record.anchor;
            cursor = a.word + 1 < segments[a.segment].words.size() ? Place{a.segment, a.word + 1}
                                                                   : Place{a.segment + 1, 0};
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
        if (const std::optional<Place> a = record.anchor) {
            Place end{segments.size(), 0};
            for (qsizetype later = r + 1; later < records.size(); ++later) {
                if (records[later].anchor && *records[later].anchor > *a) {
                    end = *records[later].anchor;
                    break;
                }
            }
            for (qsizetype s = a->segment; s < segments.size() && Place{s, 0} < end; ++s) {
                const qsizetype from = s == a->segment ? a->word : 0;
                const qsizetype to = s == end.segment ? end.word : segments[s].words.size();
                if (std::optional<TranscriptSegment> p = piece(segments[s], from, std::max(to, from)))
                    turn.segments << *p;
            }
            if (turn.segments.isEmpty()) // a segment without words, cut nowhere
                turn.segments << segments[a->segment];
            turn.ms = turn.segments.first().startMs;
            for (const TranscriptSegment &segment : std::as_const(turn.segments))
                turn.words += segment.words;
        }
        turns.append(std::move(turn));
    }
    return turns;
}
