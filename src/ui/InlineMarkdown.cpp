#include "ui/InlineMarkdown.h"

namespace InlineMarkdown {

namespace {

bool isPunctuation(QChar c)
{
    return c.isPunct() || c.isSymbol();
}

// Where a run of `marker` (one or two characters) that opens at `from` is closed, or -1.
// An opener must be followed by a non-blank, a closer preceded by one, as CommonMark asks
// of flanking delimiters; underscores also must not sit inside a word.
qsizetype findCloser(const QString &text, qsizetype from, const QString &marker)
{
    const qsizetype n = marker.size();
    for (qsizetype i = from + n; i + n <= text.size(); ++i) {
        if (text[i] == u'\\') {
            ++i;
            continue;
        }
        if (text[i] == u'`') {
            // Code spans bind tighter than emphasis.
            const qsizetype end = text.indexOf(u'`', i + 1);
            if (end < 0)
                continue;
            i = end;
            continue;
        }
        if (QStringView(text).mid(i, n) != marker)
            continue;
        if (i == from + n || text[i - 1].isSpace())
            continue;
        // A double marker must not be read as the closer of a single one.
        if (n == 1 && i + 1 < text.size() && text[i + 1] == marker[0]) {
            ++i;
            continue;
        }
        if (marker[0] == u'_' && i + n < text.size() && text[i + n].isLetterOrNumber())
            continue;
        return i;
    }
    return -1;
}

QString escaped(QChar c)
{
    switch (c.unicode()) {
    case '<': return QStringLiteral("&lt;");
    case '>': return QStringLiteral("&gt;");
    case '&': return QStringLiteral("&amp;");
    case '"': return QStringLiteral("&quot;");
    case '\n': return QStringLiteral("<br>");
    default: return QString(c);
    }
}

QString render(const QString &text);

// Strong or plain emphasis opening at `i`: appends it to `out` and returns the number of
// characters it took, or 0 when the marker has no partner.
qsizetype emphasis(const QString &text, qsizetype i, QString &out)
{
    const QChar c = text[i];
    // An underscore inside a word is no delimiter.
    if (c == u'_' && i > 0 && text[i - 1].isLetterOrNumber())
        return 0;
    for (const qsizetype n : {2, 1}) {
        const QString marker(n, c);
        if (QStringView(text).mid(i, n) != marker || i + n >= text.size() || text[i + n].isSpace())
            continue;
        const qsizetype end = findCloser(text, i, marker);
        if (end < 0)
            continue;
        const QString tag = n == 2 ? QStringLiteral("b") : QStringLiteral("i");
        out += u'<' + tag + u'>' + render(text.mid(i + n, end - i - n)) + QStringLiteral("</") + tag + u'>';
        return end + n - i;
    }
    return 0;
}

QString render(const QString &text)
{
    QString out;
    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text[i];
        if (c == u'\\' && i + 1 < text.size() && isPunctuation(text[i + 1])) {
            out += escaped(text[i + 1]);
            i += 2;
            continue;
        }
        if (c == u'`') {
            const qsizetype end = text.indexOf(u'`', i + 1);
            if (end > i + 1) {
                out += QStringLiteral("<code>") + text.mid(i + 1, end - i - 1).toHtmlEscaped() + QStringLiteral("</code>");
                i = end + 1;
                continue;
            }
        }
        if (c == u'[') {
            const qsizetype close = text.indexOf(u']', i + 1);
            if (close > i && close + 1 < text.size() && text[close + 1] == u'(') {
                const qsizetype end = text.indexOf(u')', close + 2);
                if (end > close + 2) {
                    const QString url = text.mid(close + 2, end - close - 2).trimmed();
                    out += QStringLiteral("<a href=\"") + url.toHtmlEscaped() + QStringLiteral("\">")
                           + render(text.mid(i + 1, close - i - 1)) + QStringLiteral("</a>");
                    i = end + 1;
                    continue;
                }
            }
        }
        if (c == u'*' || c == u'_') {
            if (const qsizetype used = emphasis(text, i, out)) {
                i += used;
                continue;
            }
            // An unmatched run stays literal as a whole.
            qsizetype run = i;
            while (run < text.size() && text[run] == c)
                ++run;
            out += text.mid(i, run - i);
            i = run;
            continue;
        }
        out += escaped(c);
        ++i;
    }
    return out;
}

} // namespace

QString toHtml(const QString &markdown)
{
    // Blanks are kept as written.
    return QStringLiteral("<span style=\"white-space: pre-wrap;\">") + render(markdown) + QStringLiteral("</span>");
}

} // namespace InlineMarkdown
