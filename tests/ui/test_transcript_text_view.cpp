// The transcript surface with real mouse and key events on the offscreen platform.
#include "Transcripts.h"

#include "review/TranscriptLines.h"
#include "ui/Style.h"
#include "ui/TranscriptTextView.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace {

struct Seek {
    qint64 ms;
    bool exact;
    bool operator==(const Seek &) const = default;
};

class TextViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        view.resize(640, 300);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
        refresh(0, false);
    }

    void refresh(qint64 currentMs, bool isPlaying, const QString &key = QStringLiteral("k1"), bool showTime = true)
    {
        TranscriptDocument::View v;
        v.lines = [this] { return TranscriptLines::originalLines(result); };
        v.showTime = showTime;
        v.currentMs = currentMs;
        v.isPlaying = isPlaying;
        v.rebuildKey = key;
        v.corrections = corrections;
        v.onSeek = [this](qint64 ms, bool exact) { seeks.append({ms, exact}); };
        v.onCreateCorrection = [this](const QString &text) { created.append(text); };
        v.onSelectionText = [this](const QString &text) { selected = text; };
        view.refresh(v);
    }

    QPoint at(qsizetype position)
    {
        QTextCursor c(view.document());
        c.setPosition(position);
        const QRect left = view.cursorRect(c);
        c.setPosition(position + 1);
        return QPoint((left.x() + view.cursorRect(c).x()) / 2, left.center().y());
    }

    void mouse(QEvent::Type type, const QPoint &pos, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent e(type, pos, view.viewport()->mapToGlobal(pos), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &e);
    }

    void select(qsizetype from, qsizetype to)
    {
        QTextCursor c(view.document());
        c.setPosition(from);
        c.setPosition(to, QTextCursor::KeepAnchor);
        view.setTextCursor(c);
    }

    const TranscriptLayout::WordAnchor &word(int i) { return view.transcriptDocument().wordAnchors()[i]; }

    TranscriptionResult result = Transcripts::result(40, 8);
    QList<Correction> corrections;
    TranscriptTextView view;
    QList<Seek> seeks;
    QStringList created;
    QString selected;
};

} // namespace

TEST_F(TextViewTest, ClickSeeksExactlySelectionNotExactlyKeyboardNever)
{
    EXPECT_EQ(view.document()->toPlainText(),
              TranscriptLayout::build(TranscriptLines::originalLines(result), true, {}).text);

    // A click seeks exactly, also twice on the same place; the time column to the line.
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at(word(2).loc + 1));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at(word(2).loc + 1));
    EXPECT_EQ(seeks, (QList<Seek>{{word(2).ms, true}, {word(2).ms, true}}));
    seeks.clear();
    const qsizetype line2 = view.document()->findBlockByNumber(1).position();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at(line2 + 2));
    EXPECT_EQ(seeks, (QList<Seek>{{result.segments[1].startMs, true}}));

    // A drag or a double-click seeks from the selection's start, not exactly.
    seeks.clear();
    mouse(QEvent::MouseButtonPress, at(word(3).loc + 1), Qt::LeftButton, Qt::LeftButton);
    mouse(QEvent::MouseMove, at(word(4).loc + 2), Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseMove, at(word(5).loc + 2), Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at(word(5).loc + 2), Qt::LeftButton, Qt::NoButton);
    ASSERT_GE(seeks.size(), 2);
    EXPECT_EQ(seeks.first(), (Seek{word(3).ms, true}));
    EXPECT_EQ(seeks.last(), (Seek{word(3).ms, false}));
    EXPECT_TRUE(selected.startsWith(view.document()->toPlainText().sliced(word(3).loc + 1, 3)));

    seeks.clear();
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at(word(6).loc + 1));
    ASSERT_FALSE(seeks.isEmpty());
    EXPECT_EQ(seeks.last(), (Seek{word(6).ms, false}));
    EXPECT_FALSE(selected.isEmpty());
    EXPECT_TRUE(view.document()->toPlainText().sliced(word(6).loc, word(6).length).startsWith(selected));

    // The keyboard, other buttons and the program change the selection, never the position.
    seeks.clear();
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_End, Qt::ShiftModifier);
    EXPECT_FALSE(selected.isEmpty());
    mouse(QEvent::MouseButtonPress, at(word(9).loc), Qt::RightButton, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, at(word(9).loc), Qt::RightButton, Qt::NoButton);
    select(word(12).loc, word(12).loc);
    EXPECT_TRUE(seeks.isEmpty());
}

TEST_F(TextViewTest, WordCursorLightsOneWordAndLeavesTheTextAlone)
{
    QSignalSpy changes(view.document(), &QTextDocument::contentsChange);
    auto lit = [&] {
        const QList<QTextEdit::ExtraSelection> light = view.extraSelections();
        return light.size() == 1 ? std::optional(std::pair(light[0].cursor.selectionStart(), light[0].cursor.selectionEnd()))
                                 : std::nullopt;
    };
    refresh(word(5).ms + 10, false);
    ASSERT_TRUE(view.transcriptDocument().highlighted());
    EXPECT_EQ(view.transcriptDocument().highlighted()->loc, word(5).loc);
    EXPECT_EQ(lit(), std::pair(word(5).loc, word(5).loc + word(5).length));
    EXPECT_EQ(view.extraSelections()[0].format.foreground().color(), Style::color(view.palette(), Style::Tone::accent));

    refresh(word(5).ms + 20, true);
    refresh(word(6).ms, true);
    EXPECT_EQ(lit(), std::pair(word(6).loc, word(6).loc + word(6).length));
    EXPECT_EQ(changes.size(), 0);

    // A selection survives playback; a stopped player at the start shows no cursor.
    select(word(1).loc, word(2).loc + 2);
    refresh(word(7).ms, true);
    refresh(word(8).ms, true);
    EXPECT_EQ(view.textCursor().selectionStart(), word(1).loc);
    EXPECT_EQ(view.textCursor().selectionEnd(), word(2).loc + 2);
    refresh(0, false);
    EXPECT_FALSE(view.transcriptDocument().highlighted());
    EXPECT_EQ(lit(), std::nullopt);

    // Only playback scrolls to the word.
    QScrollBar *bar = view.verticalScrollBar();
    bar->setValue(0);
    const int last = int(view.transcriptDocument().wordAnchors().size()) - 1;
    refresh(word(last).ms, false);
    EXPECT_EQ(bar->value(), 0);
    refresh(word(last - 1).ms, true);
    EXPECT_GT(bar->value(), 0);
    QTextCursor c(view.document());
    c.setPosition(word(last - 1).loc);
    EXPECT_TRUE(view.viewport()->rect().contains(view.cursorRect(c)));
}

TEST_F(TextViewTest, RebuildsOnlyWhenTheKeyChanges)
{
    const QString before = view.document()->toPlainText();
    result = Transcripts::result(3, 4);
    refresh(0, false);
    EXPECT_EQ(view.document()->toPlainText(), before);

    select(5, 20);
    EXPECT_FALSE(selected.isEmpty());
    refresh(0, false, QStringLiteral("k2"), false);
    EXPECT_EQ(view.document()->toPlainText(), TranscriptLines::originalLines(result).constFirst().text
                                                  + u'\n' + result.segments[1].text + u'\n' + result.segments[2].text);
    EXPECT_FALSE(view.textCursor().hasSelection());
    EXPECT_TRUE(selected.isEmpty());
    EXPECT_TRUE(seeks.isEmpty()) << "a rebuild never seeks";

    // A replaced text is underlined.
    corrections = {Correction{QUuid::createUuid(), result.segments[0].words[1].text, QStringLiteral("Mahlwerk"), true, false}};
    refresh(0, false, QStringLiteral("k3"), false);
    const qsizetype at = view.document()->toPlainText().indexOf(QStringLiteral("Mahlwerk"));
    ASSERT_GE(at, 0);
    QTextCursor m(view.document());
    m.setPosition(at + 1);
    EXPECT_TRUE(m.charFormat().fontUnderline());
}

TEST_F(TextViewTest, ContextMenuOffersACorrectionOfTheSelection)
{
    select(word(1).loc - 1, word(1).loc + word(1).length); // the blank before it is trimmed
    QContextMenuEvent event(QContextMenuEvent::Mouse, at(word(1).loc), view.viewport()->mapToGlobal(at(word(1).loc)));
    QApplication::sendEvent(view.viewport(), &event);
    QMenu *menu = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *m = qobject_cast<QMenu *>(w); m && m->isVisible())
            menu = m;
    ASSERT_NE(menu, nullptr);
    ASSERT_GE(menu->actions().size(), 2);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Korrektur erstellen…"));
    EXPECT_TRUE(menu->actions()[1]->isSeparator());
    menu->actions()[0]->trigger();
    menu->close();
    EXPECT_EQ(created, QStringList{view.document()->toPlainText().sliced(word(1).loc, word(1).length)});
}
