// Cutting a text into requests of bounded length, at sentence ends where it can.
#include "ai/Smoother.h"

#include "core/Text.h"


namespace Smoother {

namespace {

// Space separators, line and paragraph separators, U+000A to U+000D and U+0085; the tab
// is not among them.
bool isWhitespace(char32_t c)
{
    if ((c >= 0x0A && c <= 0x0D) || c == 0x85)
        return true;
    switch (QChar::category(c)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString trimmed(const QString &text)
{
    const QList<uint> codes = text.toUcs4();
    qsizetype begin = 0;
    qsizetype end = codes.size();
    while (begin < end && isWhitespace(codes[begin]))
        ++begin;
    while (end > begin && isWhitespace(codes[end - 1]))
        --end;
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(codes.constData() + begin), end - begin);
}

// The user-perceived characters of `text`.
QStringList graphemes(const QString &text)
{
    QStringList result;
    qsizetype start = 0;
    for (const qsizetype end : Text::characterEnds(text)) {
        result.append(text.mid(start, end - start));
        start = end;
    }
    return result;
}

} // namespace

QStringList sentenceUnits(const QString &text, int maxChars)
{
    QList<QStringList> units; // each unit as its characters
    QString buffer;
    const auto flush = [&] {
        const QString unit = trimmed(buffer);
        if (!unit.isEmpty())
            units.append(graphemes(unit));
        buffer.clear();
    };
    for (const QString &character : graphemes(text)) {
        buffer += character;
        if (character == u"." || character == u"!" || character == u"?" || character == u"\n")
            flush();
    }
    flush();

    QStringList result;
    for (const QStringList &unit : units) {
        // Hard cuts look for no word boundary and are not trimmed.
        for (qsizetype from = 0; from < unit.size(); from += maxChars)
            result.append(unit.mid(from, maxChars).join(QString()));
    }
    return result;
}

QStringList chunk(const QString &text, int maxChars)
{
    const QString whole = trimmed(text);
    if (Text::characterCount(whole) <= maxChars)
        return {whole};

    QStringList result;
    QString current;
    qsizetype currentLength = 0;
    for (const QString &unit : sentenceUnits(whole, maxChars)) {
        const qsizetype unitLength = Text::characterCount(unit);
        if (current.isEmpty()) {
            current = unit;
            currentLength = unitLength;
        } else if (currentLength + 1 + unitLength <= maxChars) {
            current += u' ' + unit;
            currentLength += 1 + unitLength;
        } else {
            result.append(current);
            current = unit;
            currentLength = unitLength;
        }
    }
    if (!current.isEmpty())
        result.append(current);
    return result;
}

} // namespace Smoother
