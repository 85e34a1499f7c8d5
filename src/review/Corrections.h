#pragma once

#include "core/Correction.h"

#include <QList>
#include <QString>

// Find-and-replace rules laid over a transcript whenever it is shown or handed out;
// the stored text never changes. Positions count user-perceived characters while
// matching; the ranges handed back are UTF-16 offsets, as the text view uses them.
namespace Corrections {

struct Range {
    qsizetype start = 0; // UTF-16 offset, inclusive
    qsizetype end = 0;   // UTF-16 offset, exclusive
    bool operator==(const Range &) const = default;
};

struct Applied {
    QString text;
    QList<Range> ranges; // the inserted replacements, ascending
};

// One left-to-right pass: at each position the first matching rule in list order wins,
// its replacement is never searched again, and rules do not chain.
Applied apply(const QList<Correction> &rules, const QString &text);

// Where a single rule would match, without overlaps: for the correction sheet's count
// and previews.
QList<Range> matchRanges(const QString &from, bool caseSensitive, bool wholeWord, const QString &text);

} // namespace Corrections
