#pragma once

#include "review/Corrections.h"

#include <QList>
#include <QString>

// Finds what the user types in the text on show, blind to case and to accents: each
// user-perceived character is compared in its canonical form, lower-cased in full (as the
// corrections compare without case) and stripped of its combining marks, so "muller"
// finds "Müller" and "MÜLLER". A match always covers whole characters. The text is folded
// once; each search is then a plain scan of the folded text.
class TextFind {
public:
    TextFind() = default;
    explicit TextFind(const QString &text);

    const QString &text() const { return m_text; }

    // Every match of `query`, without overlaps, as UTF-16 ranges of the text, in order.
    // An empty query, or one of blanks only, finds nothing.
    QList<Corrections::Range> find(const QString &query) const;

    // The folded form of a text, as matching compares it.
    static QString fold(const QString &text);

    // The match to show after `current` when stepping `forward` or back, wrapping round;
    // none without matches. From no current match, forward is the first and back the last.
    static qsizetype step(qsizetype count, qsizetype current, bool forward);

private:
    QString m_text;
    QString m_folded;
    // Per folded code unit: the source offset of the character it comes from, and whether
    // a character starts there. One more entry at the end for the text's end.
    QList<qsizetype> m_source;
    QList<bool> m_starts;
};
