// The speaker control and the "Sprecher" view of the result screen, offscreen, over a
// real AppModel in a throw-away session. Also renders its screenshots.
#include "Media.h"
#include "Transcripts.h"

#include "app/AppModel.h"
#include "review/AudioPlayer.h"
#include "review/TranscriptLines.h"
#include "speakers/Diarizer.h"
#include "ui/ResultView.h"
#include "ui/TranscriptTextView.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QInputDialog>
#include <QLabel>
#include <QUndoStack>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace {

class SpeakerViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(qEnvironmentVariable("SAGWERK_SESSION_DIR").isEmpty());
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        app.saveAnthropicKey({});
        app.saveOpenAIKey({});
    }

    // Two voices taking turns every two segments.
    static HistoryItem interview()
    {
        const int segments = 8;
        HistoryItem item =
            Transcripts::item(Transcripts::result(segments, 8), QStringLiteral("Gespräch an der Mühle.m4a"));
        item.audioPath = Media::tone(QStringLiteral("m4a"), 30.0);
        QList<SpeakerSpan> spans;
        for (int i = 0; i < segments; ++i) {
            const TranscriptSegment &s = item.result.segments[i];
            spans.append({s.startMs / 1000.0, s.endMs / 1000.0, (i / 2) % 2 == 0 ? 7 : 2});
        }
        item.speakerText = Diarizer::speakerLabeledText(item.result.segments, spans);
        return item;
    }

    static QStringList pickerTexts(ResultView &view)
    {
        QStringList texts;
        for (QPushButton *b : view.findChildren<QPushButton *>()) {
            if (b->property("view").isValid())
                texts << b->text();
        }
        return texts;
    }

    static void expose(ResultView &view)
    {
        view.resize(1000, 700);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    AppModel app;
};

} // namespace

TEST_F(SpeakerViewTest, ControlFollowsAudioKeyAndBusyState)
{
    HistoryItem item = interview();
    const QString text = *item.speakerText;
    item.speakerText.reset();
    app.setCurrent(item);
    ResultView view(app, nullptr);
    expose(view);
    auto *control = view.findChild<QPushButton *>(QStringLiteral("speakerControl"));
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->text(), QStringLiteral("Sprecher erkennen"));
    EXPECT_TRUE(control->isEnabled()) << "audio can always be separated by voice";
    EXPECT_EQ(control->toolTip(), QStringLiteral("Trennt Sprecher über die Stimme. Ein API-Key ergänzt Namen/Rollen."));
    EXPECT_EQ(pickerTexts(view), QStringList{QStringLiteral("Original")});
    // The count for the next run, at the setting to begin with.
    auto *count = view.findChild<QComboBox *>(QStringLiteral("speakerCount"));
    ASSERT_NE(count, nullptr);
    EXPECT_TRUE(count->isVisible());
    EXPECT_EQ(count->count(), 8);
    EXPECT_EQ(count->currentText(), QStringLiteral("Automatisch"));
    EXPECT_EQ(count->itemText(1), QStringLiteral("2 Sprecher"));

    // Without audio only the AI can divide the text, and that needs a key.
    item.audioPath.reset();
    app.setCurrent(item);
    EXPECT_FALSE(control->isEnabled());
    EXPECT_FALSE(count->isVisible()) << "the AI is told no count";
    app.saveAnthropicKey(QStringLiteral("sk-ant"));
    EXPECT_TRUE(control->isEnabled());
    EXPECT_EQ(control->toolTip(), QStringLiteral("Trennt Sprecher über die Stimme; KI ergänzt Namen/Rollen."));

    // Running: the spinner row with the status, or its default, and a cancel.
    item.speakerBusy = true;
    app.setCurrent(item);
    EXPECT_FALSE(control->isVisible());
    auto *status = view.findChild<QLabel *>(QStringLiteral("speakerStatus"));
    auto *cancel = view.findChild<QToolButton *>(QStringLiteral("speakerCancel"));
    ASSERT_TRUE(status && cancel);
    EXPECT_TRUE(status->isVisible());
    EXPECT_EQ(status->text(), QStringLiteral("Sprecher werden erkannt…"));
    cancel->click(); // nothing runs: harmless

    // The text arrives: the speaker view comes up at once, with its entry in the picker.
    item.speakerBusy = false;
    item.speakerText = text;
    app.setCurrent(item);
    EXPECT_TRUE(control->isVisible());
    EXPECT_EQ(control->text(), QStringLiteral("Neu erkennen"));
    EXPECT_EQ(view.selectedView(), TranscriptLines::speakerView);
    EXPECT_EQ(pickerTexts(view), (QStringList{QStringLiteral("Original"), QStringLiteral("Sprecher")}));
    EXPECT_EQ(view.exportBase(), QStringLiteral("Gespräch an der Mühle-sprecher"));
    view.setShowTimestamps(false);
    EXPECT_EQ(view.currentText(), text);
}

TEST_F(SpeakerViewTest, SpeakerLinesCarryHeadersAndTheWordCursor)
{
    // A stored item is shown before its segments come from disk.
    const HistoryItem item = interview();
    HistoryItem listed = item;
    listed.result.segments.clear();
    listed.segmentsPending = true;
    app.setCurrent(listed);
    ResultView view(app, nullptr);
    expose(view);
    view.setSelectedView(TranscriptLines::speakerView);
    app.setCurrent(item);
    const QString shown = view.textView()->document()->toPlainText();
    // Four turns: a header each, then its two segments with their own times.
    EXPECT_EQ(shown.count(QStringLiteral("Sprecher 1")), 2) << qPrintable(shown);
    EXPECT_EQ(shown.count(QStringLiteral("Sprecher 2")), 2);
    EXPECT_TRUE(shown.contains(item.result.segments[3].text));
    EXPECT_FALSE(shown.contains(QStringLiteral("Sprecher 1: "))) << "the label stands alone on its header";

    // The cursor lights the word at the player's position, in the speaker view too.
    const TranscriptDocument &text = view.textView()->transcriptDocument();
    EXPECT_EQ(text.wordAnchors().size(), 8 * 8);
    const TranscriptWord &word = item.result.segments[5].words[3];
    view.player().seek((word.startMs + 10) / 1000.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return text.highlighted().has_value(); }, 3000));
    const auto range = *text.highlighted();
    EXPECT_EQ(shown.mid(range.loc, range.length), word.text);

    // The speaker text goes: the original lines come back.
    HistoryItem without = item;
    without.speakerText.reset();
    app.setCurrent(without);
    EXPECT_FALSE(view.textView()->document()->toPlainText().contains(QStringLiteral("Sprecher 1")));
}

TEST_F(SpeakerViewTest, ASpeakerRenamedFromItsHeadingIsNamedEverywhereAndTheRenameUndoes)
{
    const HistoryItem item = interview();
    app.setCurrent(item);
    ResultView view(app, nullptr);
    expose(view);
    view.setSelectedView(TranscriptLines::speakerView);
    TranscriptTextView &text = *view.textView();

    // A double click on the heading asks for the name.
    QTextCursor heading(text.document());
    heading.setPosition(int(text.document()->toPlainText().indexOf(QStringLiteral("Sprecher 1"))) + 2);
    QTest::mouseDClick(text.viewport(), Qt::LeftButton, {}, text.cursorRect(heading).center());
    QInputDialog *ask = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (ask = view.findChild<QInputDialog *>("nameDialog")) != nullptr; }, 2000));
    EXPECT_EQ(ask->textValue(), QStringLiteral("Sprecher 1"));
    ask->setTextValue(QStringLiteral("  Diane Miller "));
    ask->accept();

    const QString shown = text.document()->toPlainText();
    EXPECT_EQ(shown.count(QStringLiteral("Diane Miller")), 2) << qPrintable(shown);
    EXPECT_FALSE(shown.contains(QStringLiteral("Sprecher 1")));
    EXPECT_EQ(app.current()->speakerNames, (QMap<QString, QString>{{"Sprecher 1", "Diane Miller"}}));
    EXPECT_TRUE(view.currentText().contains(QStringLiteral("] Diane Miller: "))) << "with time marks, as the switch says";
    QString saved;
    view.setSavePanel([&](const QString &name, const QString &) { return saved = QDir::tempPath() + u'/' + name; });
    view.exportSubtitles();
    EXPECT_TRUE(QString::fromUtf8(Media::readFile(saved)).contains(QStringLiteral("\nDiane Miller: ")));
    QFile::remove(saved);

    // Renaming the name again, then undoing both steps, gives the label back.
    view.renameSpeaker(QStringLiteral("Diane Miller"), QStringLiteral("Dr. Diane Miller"));
    EXPECT_EQ(app.current()->speakerNames.value(QStringLiteral("Sprecher 1")), QStringLiteral("Dr. Diane Miller"));
    view.undoStack()->undo();
    view.undoStack()->undo();
    EXPECT_TRUE(app.current()->speakerNames.isEmpty());
    EXPECT_EQ(text.document()->toPlainText().count(QStringLiteral("Sprecher 1")), 2);
    view.undoStack()->redo();
    EXPECT_EQ(text.document()->toPlainText().count(QStringLiteral("Diane Miller")), 2);
}
