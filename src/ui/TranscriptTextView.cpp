#include "ui/TranscriptTextView.h"
#include "core/Tr.h"

#include "ui/Style.h"

#include <QAbstractTextDocumentLayout>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>

TranscriptTextView::TranscriptTextView(QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setLineWrapMode(QTextEdit::WidgetWidth);
    viewport()->setAutoFillBackground(false);
    QPalette p = palette();
    p.setColor(QPalette::Base, Qt::transparent);
    setPalette(p);

    // No inset at the sides, a little above and below.
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    frame.setMargin(0);
    frame.setTopMargin(4);
    frame.setBottomMargin(4);
    document()->rootFrame()->setFrameFormat(frame);

    TranscriptDocument::Surface surface;
    surface.replaceDocument = [this](QTextDocument *fresh) {
        // The view owns the documents it shows. The first one belongs to the editor
        // inside, which deletes it itself when it is replaced.
        const QPointer<QTextDocument> old = document();
        fresh->setParent(this);
        setDocument(fresh);
        if (old && old->parent() == this)
            old->deleteLater();
    };
    surface.setSelection = [this](qsizetype location, qsizetype length) {
        QTextCursor cursor(document());
        cursor.setPosition(location);
        cursor.setPosition(location + length, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
        reportSelection(false); // a new document came with a new cursor, unannounced
    };
    surface.scrollIntoView = [this](qsizetype location, qsizetype length) { scrollRangeToVisible(location, length); };
    surface.highlight = [this](qsizetype location, qsizetype length, const QTextCharFormat &format) {
        m_wordLight.clear();
        if (length > 0) {
            ExtraSelection word;
            word.cursor = QTextCursor(document());
            word.cursor.setPosition(location);
            word.cursor.setPosition(location + length, QTextCursor::KeepAnchor);
            word.format = format;
            m_wordLight << word;
        }
        showSelections();
    };
    m_transcriptDocument.attach(document(), surface);
    applyStyles();

    connect(this, &QTextEdit::selectionChanged, this, [this] { reportSelection(false); });
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { reportSelection(false); });
}

void TranscriptTextView::applyStyles()
{
    const QPalette &p = palette();
    TranscriptDocument::Styles s;
    s.body = font();
    s.time = Style::withTabularDigits(Style::font(Style::TextSize::caption));
    s.header = font();
    s.header.setPointSizeF(font().pointSizeF() + 1);
    s.header.setWeight(QFont::DemiBold);
    // Through the shared tones: a desktop theme's raw accent may not read on its window.
    s.accent = Style::color(p, Style::Tone::accent);
    s.label = Style::color(p, Style::Tone::text);
    s.secondary = Style::color(p, Style::Tone::secondary);
    s.green = Style::color(p, Style::Tone::green);
    m_transcriptDocument.setStyles(s);
}

void TranscriptTextView::refresh(const TranscriptDocument::View &view)
{
    m_lastView = view;
    m_transcriptDocument.refresh(view);
}

void TranscriptTextView::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange
        || event->type() == QEvent::StyleChange) {
        applyStyles();
        if (!m_lastView.rebuildKey.isEmpty())
            m_transcriptDocument.refresh(m_lastView);
    }
}

void TranscriptTextView::reportSelection(bool always)
{
    const QTextCursor cursor = textCursor();
    const qsizetype location = std::min(cursor.anchor(), cursor.position());
    const qsizetype length = std::abs(cursor.position() - cursor.anchor());
    if (!always && location == m_location && length == m_length)
        return;
    m_location = location;
    m_length = length;
    m_reported = true;
    m_transcriptDocument.selectionChanged(location, length, m_leftMouse);
}

template <typename Base>
void TranscriptTextView::underMouse(QMouseEvent *event, bool left, bool reportAlways, Base base)
{
    m_leftMouse = left;
    m_reported = false;
    base(event);
    if (left && reportAlways && !m_reported)
        reportSelection(true);
    m_leftMouse = false;
}

void TranscriptTextView::mousePressEvent(QMouseEvent *event)
{
    underMouse(event, event->button() == Qt::LeftButton, true, [this](QMouseEvent *e) { QTextEdit::mousePressEvent(e); });
}

void TranscriptTextView::mouseDoubleClickEvent(QMouseEvent *event)
{
    // A double click on a speaker's heading renames the speaker.
    if (event->button() == Qt::LeftButton) {
        const std::optional<QString> header = m_transcriptDocument.headerAt(cursorForPosition(event->pos()).position());
        if (header && m_transcriptDocument.renameHeader(*header))
            return;
    }
    underMouse(event, event->button() == Qt::LeftButton, false,
               [this](QMouseEvent *e) { QTextEdit::mouseDoubleClickEvent(e); });
}

void TranscriptTextView::mouseMoveEvent(QMouseEvent *event)
{
    underMouse(event, event->buttons() & Qt::LeftButton, false, [this](QMouseEvent *e) { QTextEdit::mouseMoveEvent(e); });
}

void TranscriptTextView::mouseReleaseEvent(QMouseEvent *event)
{
    underMouse(event, event->button() == Qt::LeftButton, false,
               [this](QMouseEvent *e) { QTextEdit::mouseReleaseEvent(e); });
}

void TranscriptTextView::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu(event->pos());
    const QTextCursor cursor = textCursor();
    if (TranscriptDocument::offersCorrection(std::abs(cursor.position() - cursor.anchor()))) {
        QAction *first = menu->actions().value(0);
        auto *entry = new QAction(Tr::tr("Korrektur erstellen…"), menu);
        connect(entry, &QAction::triggered, this, [this] {
            const QTextCursor now = textCursor();
            m_transcriptDocument.makeCorrection(std::min(now.anchor(), now.position()),
                                         std::abs(now.position() - now.anchor()));
        });
        menu->insertAction(first, entry);
        menu->insertSeparator(first);
    }
    if (const std::optional<QString> header = m_transcriptDocument.headerAt(cursorForPosition(event->pos()).position());
        header && m_lastView.onRenameHeader) {
        QAction *first = menu->actions().value(0);
        auto *entry = new QAction(Tr::tr("Sprecher umbenennen…"), menu);
        connect(entry, &QAction::triggered, this, [this, name = *header] { m_transcriptDocument.renameHeader(name); });
        menu->insertAction(first, entry);
        menu->insertSeparator(first);
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void TranscriptTextView::setFindMarks(const QList<ExtraSelection> &marks)
{
    m_findMarks = marks;
    showSelections();
}

void TranscriptTextView::showSelections()
{
    // A mark made for an older document would point into nothing.
    m_findMarks.removeIf([this](const ExtraSelection &s) { return s.cursor.document() != document(); });
    setExtraSelections(m_findMarks + m_wordLight);
}

void TranscriptTextView::scrollRangeToVisible(qsizetype location, qsizetype length)
{
    scrollRangeToVisible(*this, location, length);
}

void TranscriptTextView::scrollRangeToVisible(QTextEdit &edit, qsizetype location, qsizetype length)
{
    QTextDocument *document = edit.document();
    auto area = [&] {
        QTextCursor cursor(document);
        cursor.setPosition(int(location));
        const QRect start = edit.cursorRect(cursor);
        cursor.setPosition(int(location + length));
        return start.united(edit.cursorRect(cursor));
    };
    QRect target = area();
    QScrollBar *bar = edit.verticalScrollBar();
    const int height = edit.viewport()->height();
    int value = bar->value();
    if (target.top() < 0)
        value += target.top();
    else if (target.bottom() >= height)
        value += std::min(target.top(), target.bottom() - height + 1);
    if (value > bar->maximum()) {
        // The surface lays a new text out bit by bit; the scroll range grows with it.
        document->documentLayout()->documentSize();
        target = area();
        value = bar->value() + std::min(target.top(), target.bottom() - height + 1);
    }
    bar->setValue(value);
}
