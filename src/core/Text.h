#pragma once

#include <QList>
#include <QString>

// Character classes that several subsystems share.
namespace Text {

// A blank is a Unicode space separator or the tab; line breaks are not blanks.
bool isBlank(QChar c);

// Removes blanks at both ends, keeping line breaks.
QString trimBlanks(const QString &s);

// The number of user-perceived characters (extended grapheme clusters).
qsizetype characterCount(const QString &s);
// The offset where each user-perceived character of `s` ends, in order.
QList<qsizetype> characterEnds(const QString &s);
// The offset `count` user-perceived characters before or after `from`, stopping at the ends.
qsizetype stepCharacters(const QString &s, qsizetype from, int count, bool forward);

} // namespace Text
