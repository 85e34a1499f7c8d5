#include "review/TranscriptDocument.h"

#include <QTextBlock>

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextFrame>

namespace {

QTextBlockFormat bodyParagraph()
{
    QTextBlockFormat f;
    // Times end at 44 and the text starts at 54; wrapped lines indent to the text.
    f.setTabPositions({QTextOption::Tab(44, QTextOption::RightTab), QTextOption::Tab(54, QTextOption::LeftTab)});
    f.setLeftMargin(54);
    f.setTextIndent(-54);
    f.setBottomMargin(5);
    f.setLineHeight(1, QTextBlockFormat::LineDistanceHeight);
    return f;
}

QTextBlockFormat headerParagraph()
{
    QTextBlockFormat f;
    f.setTopMargin(12);
    f.setBottomMargin(3);
    return f;
}

QTextCharFormat charFormat(const QFont &font, const QColor &color)
{
    QTextCharFormat f;
    f.setFont(font);
    f.setForeground(color);
    return f;
}

} // namespace

void TranscriptDocument::attach(QTextDocument *document, Surface surface)
{
    m_document = document;
    m_surface = std::move(surface);
    // The text is only ever replaced whole; an undo stack would hold every old text.
    if (document)
        document->setUndoRedoEnabled(false);
}

void TranscriptDocument::refresh(const View &view)
{
    m_onSeek = view.onSeek;
    m_onCreateCorrection = view.onCreateCorrection;
    m_onSelectionText = view.onSelectionText;
    m_onRenameHeader = view.onRenameHeader;
    if (m_builtKey != view.rebuildKey) {
        rebuild(view.lines ? view.lines() : QList<TranscriptLine>(), view.showTime, view.corrections);
        m_builtKey = view.rebuildKey;
    }
    updateHighlight(view.currentMs, view.isPlaying);
}

std::optional<QString> TranscriptDocument::headerAt(qsizetype location) const
{
    if (!m_document)
        return std::nullopt;
    const QTextBlock block = m_document->findBlock(int(location));
    if (!block.isValid() || !m_headerLines.value(block.blockNumber()))
        return std::nullopt;
    return block.text();
}

bool TranscriptDocument::renameHeader(const QString &header) const
{
    if (!m_onRenameHeader)
        return false;
    m_onRenameHeader(header);
    return true;
}

void TranscriptDocument::rebuild(const QList<TranscriptLine> &lines, bool showTime, const QList<Correction> &corrections)
{
    QTextDocument *doc = m_document;
    if (!doc)
        return;
    m_suppressSeek = true;
    m_anchors.clear();
    m_wordAnchors.clear();
    m_headerLines.clear();
    for (const TranscriptLine &line : lines)
        m_headerLines << line.isHeader;

    const TranscriptLayout::Built built = TranscriptLayout::build(lines, showTime, corrections);
    if (m_surface.highlight)
        m_surface.highlight(0, 0, QTextCharFormat());
    if (m_surface.replaceDocument) {
        // A document built aside and put in whole is new to the surface, which then lays
        // it out bit by bit in the background; a document changed in place is laid out
        // at once, in full, and the surface's cursor drags along through all of it.
        auto *fresh = new QTextDocument;
        fresh->setUndoRedoEnabled(false);
        fresh->setDefaultFont(doc->defaultFont());
        fresh->setDefaultTextOption(doc->defaultTextOption());
        fresh->rootFrame()->setFrameFormat(doc->rootFrame()->frameFormat());
        fill(fresh, built);
        m_document = fresh;
        m_surface.replaceDocument(fresh);
    } else {
        fill(doc, built);
    }

    m_anchors = built.anchors;
    m_wordAnchors = built.words;
    m_highlighted.reset();
    if (m_surface.setSelection)
        m_surface.setSelection(0, 0);
    m_suppressSeek = false;
}

void TranscriptDocument::fill(QTextDocument *doc, const TranscriptLayout::Built &built) const
{
    const QTextBlockFormat body = bodyParagraph();
    const QTextBlockFormat header = headerParagraph();
    const QTextCharFormat bodyChars = charFormat(m_styles.body, m_styles.label);
    const QTextCharFormat timeChars = charFormat(m_styles.time, m_styles.secondary);
    const QTextCharFormat headerChars = charFormat(m_styles.header, m_styles.accent);

    QTextCursor cursor(doc);
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    cursor.setBlockFormat(body);
    cursor.setBlockCharFormat(bodyChars);
    qsizetype run = 0;
    for (qsizetype line = 0; line < built.headerParagraphs.size(); ++line) {
        if (line > 0)
            cursor.insertBlock(built.headerParagraphs[line] ? header : body, bodyChars);
        const qsizetype lineEnd = built.text.indexOf(u'\n', cursor.position());
        const qsizetype end = lineEnd < 0 ? built.text.size() : lineEnd;
        for (; run < built.runs.size() && built.runs[run].start < end; ++run) {
            const TranscriptLayout::Run &r = built.runs[run];
            const QTextCharFormat &format = r.style == TranscriptLayout::Style::Time ? timeChars
                : r.style == TranscriptLayout::Style::Header                      ? headerChars
                                                                                  : bodyChars;
            cursor.insertText(built.text.sliced(r.start, r.length), format);
        }
    }
    QTextCharFormat mark;
    mark.setFontUnderline(true);
    mark.setUnderlineStyle(QTextCharFormat::SingleUnderline);
    mark.setUnderlineColor(m_styles.green);
    QColor markBackground = m_styles.green;
    markBackground.setAlphaF(0.14f);
    mark.setBackground(markBackground);
    for (const Corrections::Range &r : built.replaced) {
        if (r.end <= r.start)
            continue;
        cursor.setPosition(r.start);
        cursor.setPosition(r.end, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(mark);
    }
    cursor.endEditBlock();
}

bool TranscriptDocument::fits(const Range &range) const
{
    // The document counts one more character than its text: the final paragraph mark.
    return range.loc >= 0 && range.loc + range.length <= m_document->characterCount() - 1;
}

void TranscriptDocument::updateHighlight(qint64 currentMs, bool isPlaying)
{
    if (!m_document)
        return;
    std::optional<Range> target;
    if (const std::optional<qsizetype> i = TranscriptLayout::wordAt(m_wordAnchors, currentMs, isPlaying))
        target = Range{m_wordAnchors[*i].loc, m_wordAnchors[*i].length};
    if (target == m_highlighted)
        return;

    // The old light goes with the new one: there is one overlay at most.
    if (target && fits(*target)) {
        QTextCharFormat lit;
        lit.setForeground(m_styles.accent);
        QColor background = m_styles.accent;
        background.setAlphaF(0.15f);
        lit.setBackground(background);
        if (m_surface.highlight)
            m_surface.highlight(target->loc, target->length, lit);
        if (isPlaying && m_surface.scrollIntoView)
            m_surface.scrollIntoView(target->loc, target->length);
    } else if (m_surface.highlight) {
        m_surface.highlight(0, 0, QTextCharFormat());
    }
    m_highlighted = target;
}

QString TranscriptDocument::trimmedText(qsizetype location, qsizetype length) const
{
    if (!m_document || length < 1 || location < 0 || location + length > m_document->characterCount() - 1)
        return {};
    QTextCursor cursor(m_document);
    cursor.setPosition(location);
    cursor.setPosition(location + length, QTextCursor::KeepAnchor);
    QString text = cursor.selectedText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    return text.trimmed();
}

void TranscriptDocument::selectionChanged(qsizetype location, qsizetype length, bool underLeftMouse)
{
    if (m_onSelectionText)
        m_onSelectionText(trimmedText(location, length));
    if (m_suppressSeek || !underLeftMouse)
        return;
    if (const std::optional<TranscriptLayout::Seek> seek = TranscriptLayout::seekFor(m_anchors, location, length)) {
        if (m_onSeek)
            m_onSeek(seek->ms, seek->exact);
    }
}

void TranscriptDocument::makeCorrection(qsizetype location, qsizetype length)
{
    if (length < 1)
        return;
    const QString text = trimmedText(location, length);
    if (!text.isEmpty() && m_onCreateCorrection)
        m_onCreateCorrection(text);
}
