#include "review/TextFind.h"

#include "core/Text.h"

namespace {

// One character folded: canonical decomposition, combining marks dropped, full lower case.
QString foldCharacter(QStringView piece)
{
    if (piece.size() == 1 && piece[0].unicode() < 0x80)
        return QString(piece[0].toLower());
    const QString decomposed = piece.toString().normalized(QString::NormalizationForm_D);
    QString bare;
    bare.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing && c.category() != QChar::Mark_Enclosing)
            bare += c;
    }
    // A mark alone (or an emoji modifier) folds to nothing: keep the character instead,
    // so that every character is still found by itself.
    if (bare.isEmpty())
        bare = decomposed;
    return bare.toLower().normalized(QString::NormalizationForm_C);
}

// Below U+0300, in text without CR LF, every code unit is a character of its own.
bool isSimple(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x300 || (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n'))
            return false;
    }
    return true;
}

} // namespace

TextFind::TextFind(const QString &text) : m_text(text)
{
    m_folded.reserve(text.size());
    m_source.reserve(text.size() + 1);
    m_starts.reserve(text.size() + 1);
    auto add = [&](qsizetype start, QStringView piece) {
        const QString folded = foldCharacter(piece);
        for (qsizetype k = 0; k < folded.size(); ++k) {
            m_source << start;
            m_starts << (k == 0);
        }
        m_folded += folded;
    };
    if (isSimple(text)) {
        for (qsizetype i = 0; i < text.size(); ++i)
            add(i, QStringView(text).mid(i, 1));
    } else {
        qsizetype start = 0;
        for (const qsizetype end : Text::characterEnds(text)) {
            add(start, QStringView(text).mid(start, end - start));
            start = end;
        }
    }
    m_source << text.size();
    m_starts << true;
}

QString TextFind::fold(const QString &text)
{
    return TextFind(text).m_folded;
}

QList<Corrections::Range> TextFind::find(const QString &query) const
{
    QList<Corrections::Range> ranges;
    const QString needle = fold(query);
    if (needle.trimmed().isEmpty())
        return ranges;
    qsizetype from = 0;
    while (true) {
        const qsizetype at = m_folded.indexOf(needle, from);
        if (at < 0)
            break;
        const qsizetype end = at + needle.size();
        // A match that starts or ends inside a character would split it.
        if (m_starts[at] && m_starts[end]) {
            ranges.append({m_source[at], m_source[end]});
            from = end;
        } else {
            from = at + 1;
        }
    }
    return ranges;
}

qsizetype TextFind::step(qsizetype count, qsizetype current, bool forward)
{
    if (count <= 0)
        return -1;
    if (current < 0 || current >= count)
        return forward ? 0 : count - 1;
    return forward ? (current + 1) % count : (current + count - 1) % count;
}
