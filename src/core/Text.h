#pragma once

#include <QString>

// Character classes that several subsystems share.
namespace Text {

// A blank is a Unicode space separator or the tab; line breaks are not blanks.
bool isBlank(QChar c);

// Removes blanks at both ends, keeping line breaks.
QString trimBlanks(const QString &s);

// The number of user-perceived characters (extended grapheme clusters).
qsizetype characterCount(const QString &s);

} // namespace Text
