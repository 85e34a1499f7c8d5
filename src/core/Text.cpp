#include "core/Text.h"

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

} // namespace Text
