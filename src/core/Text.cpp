#include "core/Text.h"

#include <QTextBoundaryFinder>

namespace Text {

bool isBlank(QChar c)
{
    // Every space separator lies in the Basic Multilingual Plane.
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

QString trimBlanks(const QString &s)
{
    qsizetype begin = 0, end = s.size();
    while (begin < end && isBlank(s.at(begin)))
        ++begin;
    while (end > begin && isBlank(s.at(end - 1)))
        --end;
    return s.mid(begin, end - begin);
}

qsizetype characterCount(const QString &s)
{
    return characterEnds(s).size();
}

QList<qsizetype> characterEnds(const QString &s)
{
    QList<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, s);
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary())
        ends.append(end);
    return ends;
}

qsizetype stepCharacters(const QString &s, qsizetype from, int count, bool forward)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, s);
    finder.setPosition(from);
    qsizetype at = from;
    for (int i = 0; i < count; ++i) {
        const qsizetype next = forward ? finder.toNextBoundary() : finder.toPreviousBoundary();
        if (next < 0)
            break;
        at = next;
    }
    return at;
}

} // namespace Text
