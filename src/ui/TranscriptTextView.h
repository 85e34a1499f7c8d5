#pragma once

#include "review/TranscriptDocument.h"

#include <QTextEdit>

// The read-only, selectable transcript surface with its time column, correction marks
// and running word cursor. The screen calls refresh() on every re-evaluation; the
// transcript document decides what that costs. Selection changes seek only when a left mouse
// press, drag or release caused them.
class TranscriptTextView : public QTextEdit {
    Q_OBJECT

public:
    explicit TranscriptTextView(QWidget *parent = nullptr);

    void refresh(const TranscriptDocument::View &view);
    const TranscriptDocument &transcriptDocument() const { return m_transcriptDocument; }

    // The least scrolling that shows the range.
    void scrollRangeToVisible(qsizetype location, qsizetype length);
    static void scrollRangeToVisible(QTextEdit &edit, qsizetype location, qsizetype length);

    // The marks of the find bar, drawn under the word cursor.
    void setFindMarks(const QList<ExtraSelection> &marks);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    // Runs a mouse event with the left-button mark set when it concerns that button; a
    // press reports the selection even if it did not change, so that a second click on
    // the same word seeks again.
    template <typename Base>
    void underMouse(QMouseEvent *event, bool left, bool reportAlways, Base base);
    void reportSelection(bool always);
    void applyStyles();
    void showSelections();

    TranscriptDocument m_transcriptDocument;
    TranscriptDocument::View m_lastView;
    QList<ExtraSelection> m_wordLight;
    QList<ExtraSelection> m_findMarks;
    bool m_leftMouse = false;
    bool m_reported = false;
    qsizetype m_location = -1;
    qsizetype m_length = -1;
};
