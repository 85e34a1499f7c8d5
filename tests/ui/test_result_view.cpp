// The result screen offscreen, over a real AppModel in a throw-away session and real
// audio. Also renders the screenshots.
#include "Media.h"
#include "Palettes.h"
#include "Transcripts.h"

#include "app/AppModel.h"
#include "review/AudioPlayer.h"
#include "review/TranscriptLines.h"
#include "speakers/Diarizer.h"
#include "ui/CorrectionSheet.h"
#include "ui/FindBar.h"
#include "ui/PlayerBar.h"
#include "ui/ResultView.h"
#include "ui/TranscriptTextView.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace {

class FakeFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public slots:
    void ShowItems(const QStringList &uris, const QString &) { shown << uris; }

public:
    QStringList shown;
};

// Takes what would go to the desktop's default handler of file addresses.
class OpenedUrls : public QObject {
    Q_OBJECT

public slots:
    void open(const QUrl &url) { opened << url; }

public:
    QList<QUrl> opened;
};

QString temp(const QString &name)
{
    return QDir::tempPath() + u'/' + name;
}

// $SAGWERK_SCREENSHOTS, or a folder in the temporary one.
QString screenshots()
{
    QString folder = qEnvironmentVariable("SAGWERK_SCREENSHOTS");
    if (folder.isEmpty())
        folder = temp(QStringLiteral("screenshots"));
    QDir().mkpath(folder);
    return folder;
}

QByteArray contents(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

template <typename Button>
Button *button(QWidget &parent, const QString &text)
{
    for (Button *b : parent.findChildren<Button *>())
        if (b->text() == text || b->toolTip() == text)
            return b;
    return nullptr;
}

class ResultViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(qEnvironmentVariable("SAGWERK_SESSION_DIR").isEmpty());
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
    }

    HistoryItem withAudio(int segments = 6)
    {
        HistoryItem item = Transcripts::item(Transcripts::result(segments, 8), QStringLiteral("Mühle am Fluss.m4a"));
        item.audioPath = Media::tone(QStringLiteral("m4a"), 30.0);
        return item;
    }

    static void expose(ResultView &view, QSize size = {900, 600})
    {
        view.resize(size);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    AppModel app;
};

} // namespace


TEST_F(ResultViewTest, PlaysWithTheWordCursorInStep)
{
    ASSERT_FALSE(qEnvironmentVariable("PULSE_SERVER").isEmpty()) << "run under with-sound-server.sh";
    app.setCurrent(withAudio());
    ResultView view(app, nullptr);
    expose(view);
    const TranscriptDocument &text = view.textView()->transcriptDocument();

    QSet<qsizetype> lit;
    QObject::connect(&view.player(), &AudioPlayer::currentTimeChanged, &view, [&] {
        const auto i = TranscriptLayout::wordAt(text.wordAnchors(), TranscriptLines::currentMs(view.player().currentTime()),
                                                view.player().isPlaying());
        ASSERT_EQ(text.highlighted().has_value(), i.has_value());
        if (i) {
            EXPECT_EQ(text.highlighted()->loc, text.wordAnchors()[*i].loc);
            lit << *i;
        }
    });
    view.player().seek(1.0);
    view.player().togglePlay();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.player().currentTime() > 3.0; }, 15000));
    view.player().pause();
    EXPECT_GE(lit.size(), 4) << "the cursor ran through the words";
}

TEST_F(ResultViewTest, CopyFollowsTheTimestampSwitchAndConfirmsForAWhile)
{
    HistoryItem item = withAudio(3);
    item.corrections << Correction{QUuid::createUuid(), QStringLiteral("Mühle"), QStringLiteral("Mühlrad"), false, false};
    app.setCurrent(item);
    ResultView view(app, nullptr);
    EXPECT_TRUE(view.showTimestamps());
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              Corrections::apply(item.corrections, AppModel::plainText(item, true)).text);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("[0:00] ")));
    EXPECT_TRUE(view.copied());

    view.findChild<QCheckBox *>()->click();
    EXPECT_FALSE(view.showTimestamps());
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), Corrections::apply(item.corrections, item.result.fullText).text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view.copied(); }, 3000));
}

TEST_F(ResultViewTest, ExportNamesFollowTheViewAndFilesHoldTheText)
{
    HistoryItem item = withAudio(3);
    item.refined.insert(2, QStringLiteral("Eine geglättete Fassung über die Mühle."));
    app.setCurrent(item);
    ResultView view(app, nullptr);
    EXPECT_EQ(view.selectedView(), 0);

    QStringList asked;
    QString answer;
    view.setSavePanel([&](const QString &name, const QString &filter) {
        asked << name + u'|' + filter;
        return answer;
    });
    const auto save = [&](const char *file, void (ResultView::*action)()) {
        answer = file ? temp(QLatin1String(file)) : QString();
        (view.*action)();
    };
    save("a.txt", &ResultView::exportText);
    save("a.srt", &ResultView::exportSubtitles);
    save("a.pdf", &ResultView::exportPDF);
    save("a.docx", &ResultView::exportDocx);
    save("a.vtt", &ResultView::exportVtt);
    save("a.json", &ResultView::exportJson);
    EXPECT_EQ(asked, (QStringList{"Mühle am Fluss.txt|", "Mühle am Fluss.srt|", "Mühle am Fluss.pdf|PDF (*.pdf)",
                                  "Mühle am Fluss.docx|Word (*.docx)", "Mühle am Fluss.vtt|WebVTT (*.vtt)",
                                  "Mühle am Fluss.json|JSON (*.json)"}));
    EXPECT_EQ(contents(temp(QStringLiteral("a.vtt"))), AppModel::vtt(item).toUtf8());
    EXPECT_EQ(contents(temp(QStringLiteral("a.json"))), AppModel::transcriptJson(item));
    EXPECT_EQ(contents(temp(QStringLiteral("a.txt"))), AppModel::plainText(item, true).toUtf8());
    EXPECT_EQ(contents(temp(QStringLiteral("a.srt"))), AppModel::srt(item).toUtf8());
    EXPECT_TRUE(contents(temp(QStringLiteral("a.pdf"))).startsWith("%PDF"));
    EXPECT_TRUE(contents(temp(QStringLiteral("a.docx"))).startsWith("PK"));

    // A refinement's text files carry its level; subtitles stay the segments'.
    asked.clear();
    view.setSelectedView(2);
    save("b.txt", &ResultView::exportText);
    save("b.srt", &ResultView::exportSubtitles);
    EXPECT_EQ(asked, (QStringList{"Mühle am Fluss-stufe2.txt|", "Mühle am Fluss.srt|"}));
    EXPECT_EQ(contents(temp(QStringLiteral("b.txt"))), item.refined[2].toUtf8());
    EXPECT_EQ(contents(temp(QStringLiteral("b.srt"))), AppModel::srt(item).toUtf8());

    // A cancelled panel writes nothing.
    const QStringList before = QDir(QDir::tempPath()).entryList(QDir::Files);
    save(nullptr, &ResultView::exportText);
    save(nullptr, &ResultView::exportPDF);
    EXPECT_EQ(QDir(QDir::tempPath()).entryList(QDir::Files), before);

    // The menu: subtitles need segments, the file manager a bundle.
    auto menuTexts = [&] {
        QMenu *menu = button<QToolButton>(view, QStringLiteral("Exportieren"))->menu();
        emit menu->aboutToShow();
        QStringList texts;
        for (QAction *a : menu->actions())
            texts << (a->isSeparator() ? QStringLiteral("-") : a->text() + (a->isEnabled() ? "" : " (aus)"));
        return texts;
    };
    EXPECT_EQ(menuTexts(), (QStringList{"Textdatei (.txt)", "PDF", "Word (.docx)", "Untertitel (.srt)",
                                        "Untertitel (.vtt)", "JSON (.json)"}));
    item.result.segments.clear();
    item.bundlePath = temp(QStringLiteral("bundle"));
    app.setCurrent(item);
    EXPECT_EQ(menuTexts(),
              (QStringList{"Textdatei (.txt)", "PDF", "Word (.docx)", "Untertitel (.srt) (aus)",
                           "Untertitel (.vtt) (aus)", "JSON (.json)", "-", "Im Dateimanager zeigen"}));
}


TEST_F(ResultViewTest, FindMarksStepsAndPlaysFromAMatchWithTheKeyboard)
{
    HistoryItem item = withAudio(60);
    // Long enough to hold the second match: a seek past the end plays from the start.
    item.audioPath = Media::tone(QStringLiteral("m4a"), 200.0);
    item.result.segments[4].text = QStringLiteral("Frau Müller kommt.");
    item.result.segments[50].text = QStringLiteral("Und MULLER geht.");
    app.setCurrent(item);
    ResultView view(app, nullptr);
    expose(view);
    TranscriptTextView &text = *view.textView();
    text.setFocus();

    QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(view.findBar()->isVisible());
    QLineEdit *field = view.findBar()->field();
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("muller"));
    auto *count = view.findBar()->findChild<QLabel *>(QStringLiteral("findCount"));
    EXPECT_EQ(count->text(), QStringLiteral("1 von 2"));
    const QString shown = text.document()->toPlainText();
    const auto current = [&] {
        const Corrections::Range r = view.findMatches()[view.currentMatch()];
        return shown.mid(r.start, r.end - r.start);
    };
    EXPECT_EQ(current(), QStringLiteral("Müller"));

    // Enter goes on, Shift+Enter back, F3 on again; the current match comes into view and is marked.
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(count->text(), QStringLiteral("2 von 2"));
    EXPECT_EQ(current(), QStringLiteral("MULLER"));
    QTextCursor at(text.document());
    at.setPosition(int(view.findMatches()[1].start));
    EXPECT_TRUE(text.viewport()->rect().contains(text.cursorRect(at).center()));
    const auto marked = [&] {
        for (const QTextEdit::ExtraSelection &s : text.extraSelections())
            if (s.cursor.selectionStart() == view.findMatches()[view.currentMatch()].start)
                return true;
        return false;
    };
    EXPECT_TRUE(marked());
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(view.currentMatch(), 0);
    QTest::keyClick(field, Qt::Key_F3);
    EXPECT_EQ(view.currentMatch(), 1);
    EXPECT_TRUE(marked());

    // Space in the field is a space; Alt+Enter plays from the match's segment.
    QTest::keyClick(field, Qt::Key_Space);
    EXPECT_EQ(field->text(), QStringLiteral("muller "));
    EXPECT_FALSE(view.player().isPlaying());
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Return, Qt::AltModifier);
    EXPECT_TRUE(view.player().isPlaying());
    EXPECT_NEAR(view.player().currentTime(), item.result.segments[50].startMs / 1000.0, 0.05);

    // Escape closes the bar and takes the marks away; Space in the text pauses.
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(view.findBar()->isVisible());
    EXPECT_TRUE(text.extraSelections().size() <= 1) << "at most the word cursor";
    QTest::keyClick(&text, Qt::Key_Space);
    EXPECT_FALSE(view.player().isPlaying());
    QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), view.currentText());

    // A level's plain text is searched too, but has nothing to play from.
    item.refined.insert(1, QStringLiteral("Frau Müller sagt, Herr Müller kam."));
    app.setCurrent(item);
    view.openFind();
    EXPECT_EQ(view.findMatches().size(), 2);
    EXPECT_FALSE(view.findBar()->findChild<QToolButton *>(QStringLiteral("findPlay"))->isEnabled());
}

TEST_F(ResultViewTest, CorrectionSheetCountsPreviewsAndSavesAChip)
{
    TranscriptionResult r;
    QStringList texts;
    for (const char *t : {"Die Mühle steht am Fluss, die Mühle ist alt.", "Mühlen und MÜHLE gibt es viele.", "Am Ende."}) {
        TranscriptSegment s;
        s.text = QString::fromUtf8(t);
        s.startMs = 1000 * r.segments.size();
        r.segments << s;
        texts << s.text;
    }
    r.fullText = texts.join(u' ');
    HistoryItem item = Transcripts::item(r);
    app.setCurrent(item);
    ResultView view(app, nullptr);

    view.openCorrectionSheet(QStringLiteral("Mühle"));
    auto *sheet = view.findChild<CorrectionSheet *>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->matchCountText(), QStringLiteral("4 Stellen werden ersetzt"));
    ASSERT_EQ(sheet->previews().size(), 4);
    EXPECT_EQ(sheet->previews()[0], QStringLiteral("…Die ⟦Mühle⟧ steht am Fluss, die Müh…"));
    EXPECT_EQ(sheet->previews()[2], QStringLiteral("…uss, die Mühle ist alt. ⟦Mühle⟧n und MÜHLE gibt es viel…"));
    EXPECT_EQ(sheet->previews()[3], QStringLiteral("…hle ist alt. Mühlen und ⟦MÜHLE⟧ gibt es viele. Am Ende.…"));
    EXPECT_FALSE(sheet->canSave()) << "from equals to";

    auto fields = sheet->findChildren<QLineEdit *>();
    auto checks = sheet->findChildren<QCheckBox *>();
    checks[1]->click(); // whole words
    EXPECT_EQ(sheet->ranges().size(), 3);
    checks[0]->click(); // and case
    EXPECT_EQ(sheet->ranges().size(), 2);
    fields[0]->setText(QStringLiteral("Windrad"));
    EXPECT_EQ(sheet->matchCountText(), QStringLiteral("0 Stellen werden ersetzt"));
    EXPECT_TRUE(sheet->previews().isEmpty());
    EXPECT_FALSE(sheet->canSave()) << "nothing matches";
    fields[0]->setText(QStringLiteral("Mühle"));
    fields[1]->setText(QStringLiteral("Mühlrad"));
    ASSERT_TRUE(sheet->canSave());
    QTest::keyClick(fields[1], Qt::Key_Return);

    ASSERT_EQ(app.current()->corrections.size(), 1);
    const Correction saved = app.current()->corrections.first();
    EXPECT_EQ(saved.to, QStringLiteral("Mühlrad"));
    EXPECT_TRUE(saved.caseSensitive && saved.wholeWord);
    EXPECT_TRUE(view.textView()->document()->toPlainText().contains(QStringLiteral("Die Mühlrad steht")));
    EXPECT_TRUE(view.textView()->document()->toPlainText().contains(QStringLiteral("Mühlen und MÜHLE")));

    // The chip removes its rule.
    auto *remove = button<QToolButton>(view, QStringLiteral("Korrektur entfernen"));
    ASSERT_NE(remove, nullptr);
    remove->click();
    EXPECT_TRUE(app.current()->corrections.isEmpty());
    EXPECT_TRUE(view.textView()->document()->toPlainText().contains(QStringLiteral("Die Mühle steht")));

    // "Korrigieren" follows the selection.
    auto *correct = button<QPushButton>(view, QStringLiteral("Korrigieren"));
    ASSERT_NE(correct, nullptr);
    EXPECT_FALSE(correct->isEnabled());
    QTextCursor c(view.textView()->document());
    c.setPosition(view.textView()->document()->toPlainText().indexOf(QStringLiteral("Fluss")));
    c.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    view.textView()->setTextCursor(c);
    EXPECT_TRUE(correct->isEnabled());
    EXPECT_EQ(correct->toolTip(), QStringLiteral("\"Fluss\" korrigieren"));
}

TEST_F(ResultViewTest, RevealsTheBundleThroughTheFileManager)
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("file-manager"));
    ASSERT_TRUE(bus.isConnected());
    FakeFileManager fileManager;
    ASSERT_TRUE(bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager,
                                   QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));

    // The item's own folder, even as a path with a trailing slash, is what gets selected.
    const QString folder = temp(QStringLiteral("Aufnahmen/2025-03-14 Mühle"));
    ASSERT_TRUE(QDir().mkpath(folder));
    HistoryItem item = withAudio(2);
    item.bundlePath = folder + u'/';
    app.setCurrent(item);
    ResultView view(app, nullptr);
    view.revealBundle();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !fileManager.shown.isEmpty(); }, 5000));
    EXPECT_EQ(fileManager.shown, QStringList{QUrl::fromLocalFile(folder).toString()});
    bus.unregisterService(QStringLiteral("org.freedesktop.FileManager1"));
    QDBusConnection::disconnectFromBus(QStringLiteral("file-manager"));

    // Without a file manager on the bus the item's folder opens, not the one of all items.
    OpenedUrls handler;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &handler, "open");
    view.revealBundle();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !handler.opened.isEmpty(); }, 5000));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(handler.opened, QList<QUrl>{QUrl::fromLocalFile(folder)});
    QDir(folder).removeRecursively();
}


// The AI menu: disabled without a key, a spinner while a level runs, a finished level
// shown from the menu without a new request. Screenshots of the running state.
TEST_F(ResultViewTest, AIControlFollowsTheKeyAndTheRunningLevel)
{
    HistoryItem item = withAudio();
    item.refined.insert(1, QStringLiteral("Leicht geglättet."));
    app.setCurrent(item);
    ResultView view(app, nullptr);
    expose(view);
    auto *menu = view.findChild<QToolButton *>(QStringLiteral("aiControl"));
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->isEnabled());
    EXPECT_EQ(menu->toolTip(), QStringLiteral("API-Key nötig (Einstellungen)"));

    app.saveAnthropicKey(QStringLiteral("sk-ant"));
    EXPECT_TRUE(menu->isEnabled());
    EXPECT_TRUE(menu->toolTip().startsWith(QStringLiteral("Stufe 1: schonend")));
    emit menu->menu()->aboutToShow();
    const QList<QAction *> levels = menu->menu()->actions();
    ASSERT_EQ(levels.size(), 3);
    EXPECT_EQ(levels[0]->text(), QStringLiteral("Stufe 1 · leicht geglättet"));
    EXPECT_EQ(levels[2]->text(), QStringLiteral("Stufe 3 · komplett neu"));

    // A finished level is only shown.
    levels[0]->trigger();
    EXPECT_EQ(view.selectedView(), 1);
    EXPECT_FALSE(app.current()->refiningLevel);

    // A running level replaces the menu by its spinner row.
    item = *app.current();
    item.refiningLevel = 2;
    app.setCurrent(item);
    EXPECT_FALSE(menu->isVisible());
    auto *running = button<QLabel>(view, QStringLiteral("Stufe 2…"));
    ASSERT_NE(running, nullptr);
    EXPECT_TRUE(running->isVisible());

    const QString folder = screenshots();
    QTest::qWait(20); // the row lays out with the next turn of the event loop
    EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/result-ai-running.png")));

    // The finished level arrives: the view jumps to it and the menu is back.
    item.refiningLevel.reset();
    item.refined.insert(2, QStringLiteral("Überarbeitet."));
    app.setCurrent(item);
    EXPECT_EQ(view.selectedView(), 2);
    EXPECT_TRUE(menu->isVisible());
    QTest::qWait(20);
    EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/result-ai-level.png")));
}

// The screen with a long transcript, two corrections and the cursor lit, the correction
// sheet, and the speaker view while a new separation runs; light and dark.
TEST_F(ResultViewTest, Screenshots)
{
    const QString folder = screenshots();
    HistoryItem item = withAudio(400);
    item.fileName = QStringLiteral("Interview mit Herrn Schäfer über die alte Mühle am Fluss, Teil 2.m4a");
    item.corrections << Correction{QUuid::createUuid(), QStringLiteral("Schäfer"), QStringLiteral("Schaefer"), true, true}
                     << Correction{QUuid::createUuid(), QStringLiteral("Wasserrad"), QStringLiteral("Mühlrad"), false, false};
    item.refined.insert(1, QStringLiteral("Leicht geglättet."));
    // The offscreen platform names no icon theme.
    const QStringList iconPaths = QIcon::themeSearchPaths();
    QIcon::setThemeSearchPaths(iconPaths + QStringList{QStringLiteral("/usr/share/icons")});
    for (const bool dark : {false, true}) {
        const QString name = dark ? QStringLiteral("dark") : QStringLiteral("light");
        QApplication::setPalette(dark ? Palettes::dark() : Palettes::light());
        QIcon::setThemeName(dark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
        app.setCurrent(item);
        ResultView view(app, nullptr);
        expose(view, {1000, 700});
        view.player().seek(item.result.segments[2].words[4].startMs / 1000.0);
        QTest::qWait(50);
        QTextCursor c(view.textView()->document());
        c.setPosition(view.textView()->document()->toPlainText().indexOf(QStringLiteral("Mehl")));
        c.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
        view.textView()->setTextCursor(c);
        const QImage image = view.grab().toImage();
        EXPECT_EQ(image.width(), 1000);
        EXPECT_TRUE(image.save(folder + QStringLiteral("/result-%1.png").arg(name)));

        view.openCorrectionSheet(QStringLiteral("Mühle"));
        auto *sheet = view.findChild<CorrectionSheet *>();
        ASSERT_NE(sheet, nullptr);
        sheet->findChildren<QLineEdit *>()[1]->setText(QStringLiteral("Mühlrad"));
        QTest::qWait(20); // new preview lines show with the next turn of the event loop
        EXPECT_TRUE(sheet->grab().save(folder + QStringLiteral("/correction-%1.png").arg(name)));
        sheet->close();

        HistoryItem speaking = item;
        QList<SpeakerSpan> spans;
        for (qsizetype i = 0; i < speaking.result.segments.size(); ++i) {
            const TranscriptSegment &s = speaking.result.segments[i];
            spans.append({s.startMs / 1000.0, s.endMs / 1000.0, int(i / 2) % 2});
        }
        speaking.speakerText = Diarizer::speakerLabeledText(speaking.result.segments, spans);
        speaking.speakerBusy = true;
        app.setCurrent(speaking);
        view.setSelectedView(TranscriptLines::speakerView);
        QTest::qWait(50);
        EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/result-speakers-%1.png").arg(name)));

        // A speaker with a name, and the find bar over the text.
        speaking.speakerBusy = false;
        speaking.speakerNames.insert(QStringLiteral("Sprecher 1"), QStringLiteral("Diane Miller"));
        app.setCurrent(speaking);
        view.openFind();
        view.findBar()->field()->setText(QStringLiteral("mühle"));
        view.stepFind(true);
        QTest::qWait(50);
        EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/result-find-%1.png").arg(name)));
        view.closeFind();
    }
    QIcon::setThemeName(QString());
    QIcon::setThemeSearchPaths(iconPaths);
    QApplication::setPalette(Palettes::light());
}

#include "test_result_view.moc"
