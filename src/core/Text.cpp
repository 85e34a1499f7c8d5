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
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, s);
    qsizetype count = 0;
    while (finder.toNextBoundary() > 0)
        ++count;
    return count;
}

} // namespace Text
