#pragma once

#include "core/Correction.h"
#include "review/TranscriptLayout.h"
#include "core/TranscriptLine.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPointer>
#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>

#include <functional>
#include <optional>

// The long-lived half of the transcript text view: it owns what is laid out in the
// surface's document, rebuilds it only when the screen's key changes, moves the word
// cursor, and turns selection changes into seeks. It needs a document, not a widget;
// the widget hands it selection changes and performs the two things only a widget can
// do, resetting the selection and scrolling a range into view.
class TranscriptDocument {
public:
    using SeekHandler = std::function<void(qint64 ms, bool exact)>;
    using TextHandler = std::function<void(const QString &text)>;

    // The inputs of one refresh, handed over anew each time the screen re-evaluates.
    struct View {
        std::function<QList<TranscriptLine>()> lines; // asked for only when a rebuild runs
        bool showTime = true;
        qint64 currentMs = 0;
        bool isPlaying = false;
        QString rebuildKey;
        QList<Correction> corrections;
        SeekHandler onSeek;
        TextHandler onCreateCorrection;
        TextHandler onSelectionText;
        // The user asked to rename the speaker of a header line (its text as shown).
        TextHandler onRenameHeader;
    };

    // Fonts and colours of the laid-out text; the widget takes them from its palette.
    struct Styles {
        QFont body, time, header;
        QColor accent, label, secondary, green;
    };

    struct Range {
        qsizetype loc = 0;
        qsizetype length = 0;
        bool operator==(const Range &) const = default;
    };

    // What the transcript document needs of the text surface besides its document. Every hook
    // may be left out.
    struct Surface {
        // Puts a newly built document in place of the current one, in one step; the
        // surface takes it over. Without it, the current document is refilled.
        std::function<void(QTextDocument *document)> replaceDocument;
        std::function<void(qsizetype loc, qsizetype length)> setSelection;
        std::function<void(qsizetype loc, qsizetype length)> scrollIntoView;
        // Lights a range in the given format over the text, without changing the
        // document, or puts the light out (length 0). An overlay costs no layout.
        std::function<void(qsizetype loc, qsizetype length, const QTextCharFormat &format)> highlight;
    };

    void attach(QTextDocument *document, Surface surface = {});
    QTextDocument *document() const { return m_document; }
    // New styles take effect with the next refresh, which lays the text out anew.
    void setStyles(const Styles &styles)
    {
        m_styles = styles;
        m_builtKey.clear();
    }

    // Callbacks first, then a rebuild if the key changed, then the word cursor.
    void refresh(const View &view);
    void rebuild(const QList<TranscriptLine> &lines, bool showTime, const QList<Correction> &corrections);
    // Does something only when the lit word changes: moves the light, and scrolls the
    // word into view while playing. The document itself is never touched.
    void updateHighlight(qint64 currentMs, bool isPlaying);

    // Every change of the selected range. `underLeftMouse`: the change came from a press,
    // drag or release of the left button; nothing else seeks.
    void selectionChanged(qsizetype location, qsizetype length, bool underLeftMouse);
    // The context menu offers "Korrektur erstellen…" for a selection of this length.
    static bool offersCorrection(qsizetype length) { return length >= 1; }
    // The menu entry's action, with the selection at the time of the command.
    void makeCorrection(qsizetype location, qsizetype length);

    // The text of the header line at `location`, or none where a body line stands.
    std::optional<QString> headerAt(qsizetype location) const;
    // Hands a header's text to the rename callback; false where there is none to take it.
    bool renameHeader(const QString &header) const;

    const QString &builtKey() const { return m_builtKey; }
    const QList<TranscriptLayout::Anchor> &anchors() const { return m_anchors; }
    const QList<TranscriptLayout::WordAnchor> &wordAnchors() const { return m_wordAnchors; }
    const std::optional<Range> &highlighted() const { return m_highlighted; }

private:
    // The selected text, trimmed of white space and line breaks.
    QString trimmedText(qsizetype location, qsizetype length) const;
    bool fits(const Range &range) const;
    void fill(QTextDocument *document, const TranscriptLayout::Built &built) const;

    QPointer<QTextDocument> m_document;
    Surface m_surface;
    Styles m_styles;

    SeekHandler m_onSeek;
    TextHandler m_onCreateCorrection;
    TextHandler m_onSelectionText;
    TextHandler m_onRenameHeader;

    QString m_builtKey;
    QList<TranscriptLayout::Anchor> m_anchors;
    QList<TranscriptLayout::WordAnchor> m_wordAnchors;
    QList<bool> m_headerLines; // per line (= block) of the built text
    std::optional<Range> m_highlighted;
    bool m_suppressSeek = false;
};
