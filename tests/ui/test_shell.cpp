// The main window against the real application state: offscreen, and the whole road of a
// file on a real display server (Xvfb).
#include "ShellFixture.h"
#include "app/TranscriptionJob.h"

#include "app/LanguageManager.h"
#include "app/ModelStore.h"
#include "app/Scripted.h"
#include "app/TranscriptionQueue.h"
#include "engine/WhisperEngine.h"
#include "ui/BusyView.h"
#include "ui/ContentView.h"
#include "ui/DetailPane.h"
#include "ui/DropZone.h"
#include "ui/MainWindow.h"
#include "ui/QueueView.h"
#include "ui/SagwerkApp.h"
#include "ui/Sidebar.h"
#include "ui/SystemMonitor.h"
#include "ui/TranscribeSetupView.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScopeGuard>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QLabel>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

namespace {

using Screen = DetailPane::Screen;

QAbstractButton *buttonLabelled(QMessageBox *box, const QString &text)
{
    for (QAbstractButton *button : box->buttons())
        if (button->text() == text)
            return button;
    return nullptr;
}

// Drags `files` onto the screen and drops them there: true when it took both, and a drop
// zone lit up while the drag hovered.
bool drop(QWidget *screen, const QStringList &files)
{
    if (!screen)
        return false;
    auto *zone = qobject_cast<DropZone *>(screen);
    QList<QUrl> urls;
    for (const QString &file : files)
        urls << QUrl::fromLocalFile(file);
    QMimeData data;
    data.setUrls(urls);
    const QPoint at = screen->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(screen, &enter);
    const bool lit = !zone || zone->targeted();
    QDropEvent dropped(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(screen, &dropped);
    return enter.isAccepted() && lit && dropped.isAccepted() && !(zone && zone->targeted());
}

TranscribeSetupView *setupOf(ContentView &view)
{
    return qobject_cast<TranscribeSetupView *>(view.detailPane()->screenWidget());
}

} // namespace

TEST_F(ShellTest, DetailAreaShowsTheFirstScreenWhoseConditionHolds)
{
    EXPECT_EQ(DetailPane::screenFor(true, true, true, true), Screen::interview);
    EXPECT_EQ(DetailPane::screenFor(false, true, true, true), Screen::busy);

    addBundle(QStringLiteral("a.m4a"), QDateTime::currentDateTime().addDays(-1));
    addBundle(QStringLiteral("b.m4a"), QDateTime::currentDateTime());
    AppModel app;
    ContentView view(app);
    view.show();
    DetailPane &pane = *view.detailPane();
    ASSERT_EQ(app.history().size(), 2);
    EXPECT_EQ(pane.screen(), Screen::drop);

    app.setCurrent(app.history().at(0));
    EXPECT_EQ(pane.screen(), Screen::result);
    QWidget *first = pane.screenWidget();
    // Another item is a new screen; the same item changed keeps it.
    app.setCurrent(app.history().at(1));
    QWidget *second = pane.screenWidget();
    EXPECT_NE(second, first);
    app.addCorrection(app.history().at(1).id, QStringLiteral("Hallo"), QStringLiteral("Hi"), false, false);
    EXPECT_EQ(pane.screenWidget(), second);

    app.stage(QStringLiteral("/x/c.mp3"));
    EXPECT_EQ(pane.screen(), Screen::setup);
    app.setCurrent(app.history().at(0));
    EXPECT_EQ(pane.screen(), Screen::setup) << "pending wins over current";

    pane.newAction()->trigger();
    EXPECT_EQ(pane.screen(), Screen::drop);
    EXPECT_FALSE(app.pending() || app.current());
    EXPECT_EQ(app.history().size(), 2);

    app.stageInterview();
    app.startPending();
    EXPECT_EQ(pane.screen(), Screen::interview);
    for (QAction *action : {pane.interviewAction(), pane.openAction(), pane.settingsAction(), pane.helpAction()})
        EXPECT_TRUE(action->isEnabled()) << action->text().toStdString();
}

TEST_F(ShellTest, ToolbarAndSetupFollowTheirEnabledRules)
{
    addBundle(QStringLiteral("a.m4a"), QDateTime::currentDateTime());
    AppModel app;
    ContentView view(app);
    view.show();
    DetailPane &pane = *view.detailPane();

    EXPECT_FALSE(pane.newAction()->isEnabled()) << "nothing to leave";
    EXPECT_FALSE(pane.deleteAction()->isEnabled());
    app.setCurrent(app.history().at(0));
    EXPECT_TRUE(pane.newAction()->isEnabled());
    EXPECT_TRUE(pane.deleteAction()->isEnabled());

    // No model: the drop zone and the setup point to the settings.
    pane.newAction()->trigger();
    auto *zone = qobject_cast<DropZone *>(pane.screenWidget());
    ASSERT_TRUE(zone);
    EXPECT_TRUE(zone->hintButton()->isVisible());
    app.stage(QStringLiteral("/x/Gespräch.m4a"));
    EXPECT_TRUE(pane.newAction()->isEnabled());
    EXPECT_FALSE(pane.deleteAction()->isEnabled()) << "a staged file is nothing to delete";
    TranscribeSetupView *setup = setupOf(view);
    ASSERT_TRUE(setup);
    EXPECT_FALSE(setup->startButton()->isEnabled());
    EXPECT_TRUE(setup->hintButton()->isVisible());
    setup->hintButton()->click();
    EXPECT_TRUE(app.showSettings());
    ASSERT_TRUE(waitFor([&] { return view.settingsSheet() != nullptr; }));
    view.settingsSheet()->reject();
    EXPECT_FALSE(app.showSettings()) << "closing the sheet clears its flag";

    // A model arrives while the setup shows; a stale stored choice is corrected to it.
    installBase();
    app.setSpeechModelId(QStringLiteral("small-q5_1"));
    app.modelStore()->refresh();
    EXPECT_TRUE(setup->startButton()->isEnabled());
    ASSERT_EQ(setup->modelPicker()->count(), 1);
    TranscribeSetupView::ensureValidModel(app);
    EXPECT_EQ(app.speechModelId(), QStringLiteral("base-q5_1"));
    app.setSpeechModelId(QStringLiteral("gone"));
    app.stage(QStringLiteral("/x/Gespräch.m4a"));
    EXPECT_EQ(app.speechModelId(), QStringLiteral("base-q5_1")) << "the setup corrects it when it appears";
    setup = setupOf(view);

    // The count shows only with detection on, and keeps its value.
    EXPECT_TRUE(setup->rowShown(QStringLiteral("Sprechererkennung")));
    EXPECT_FALSE(setup->rowShown(QStringLiteral("Anzahl Sprecher")));
    setup->speakerSwitch()->click();
    EXPECT_TRUE(app.speakerDetection());
    EXPECT_TRUE(setup->rowShown(QStringLiteral("Anzahl Sprecher")));
    QComboBox *count = setup->speakerCountPicker();
    count->setCurrentIndex(1);
    emit count->activated(1);
    EXPECT_EQ(app.speakerCount(), 2);
    app.setSpeakerDetection(false);
    EXPECT_FALSE(setup->rowShown(QStringLiteral("Anzahl Sprecher")));
    EXPECT_EQ(app.speakerCount(), 2);

    app.stageInterview();
    setup = setupOf(view);
    ASSERT_TRUE(setup);
    EXPECT_TRUE(setup->rowShown(QStringLiteral("Live-Sprecher (Beta)")));
    EXPECT_FALSE(setup->rowShown(QStringLiteral("Sprechererkennung")));
    setup->cancelButton()->click();
    EXPECT_FALSE(app.pending().has_value());
}

TEST_F(ShellTest, HistorySearchNarrowsByNameAndByTheTextsInside)
{
    addBundle(QStringLiteral("Gespräch mit Frau Müller.m4a"), QDateTime::currentDateTime().addDays(-2));
    const QString spoken = addBundle(QStringLiteral("Notiz.m4a"), QDateTime::currentDateTime().addDays(-1));
    BundleStore::saveSpeakerText(spoken, QStringLiteral("Sprecher 1: Frau MULLER kommt morgen."));
    addBundle(QStringLiteral("Einkauf.m4a"), QDateTime::currentDateTime());
    AppModel app;
    ContentView view(app);
    view.show();
    QListWidget *list = view.sidebar()->historyList();
    ASSERT_EQ(list->count(), 3);
    const auto shown = [&] {
        QStringList names;
        for (int row = 0; row < list->count(); ++row)
            if (!list->item(row)->isHidden())
                names << list->item(row)->toolTip();
        return names;
    };
    // The name matches at once, blind to case and accents; the speaker text a moment later.
    view.sidebar()->historySearch()->setText(QStringLiteral("muller"));
    EXPECT_TRUE(shown().contains(QStringLiteral("Gespräch mit Frau Müller.m4a")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown().size() == 2; }, 5000)) << shown().join(", ").toStdString();
    EXPECT_EQ(shown(), (QStringList{"Notiz.m4a", "Gespräch mit Frau Müller.m4a"}));
    // Text of every item is searched, the full text too.
    view.sidebar()->historySearch()->setText(QStringLiteral("hallo"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown().size() == 3; }, 5000));
    view.sidebar()->historySearch()->setText(QStringLiteral("nirgends"));
    QTest::qWait(200);
    EXPECT_TRUE(shown().isEmpty());
    view.sidebar()->historySearch()->clear();
    EXPECT_EQ(shown().size(), 3);
}

TEST_F(ShellTest, ToolbarDeleteAsksFirstAndTheRowMenuDoesNot)
{
    const QString older = addBundle(QStringLiteral("older.m4a"), QDateTime::currentDateTime().addDays(-1));
    const QString newer = addBundle(QStringLiteral("newer.m4a"), QDateTime::currentDateTime());
    AppModel app;
    ContentView view(app);
    view.show();
    DetailPane &pane = *view.detailPane();
    app.setCurrent(app.history().at(0));

    pane.deleteAction()->trigger();
    QMessageBox *confirm = pane.deleteConfirmation();
    ASSERT_TRUE(confirm);
    buttonLabelled(confirm, QStringLiteral("Abbrechen"))->click();
    EXPECT_FALSE(pane.showDeleteConfirm());
    EXPECT_EQ(app.history().size(), 2);
    EXPECT_TRUE(QDir(newer).exists());

    pane.deleteAction()->trigger();
    buttonLabelled(pane.deleteConfirmation(), QStringLiteral("Löschen"))->click();
    ASSERT_EQ(app.history().size(), 1);
    EXPECT_FALSE(QDir(newer).exists());
    EXPECT_EQ(pane.screen(), Screen::drop);

    // The row's context menu renames it, into its bundle, ...
    QListWidget *list = view.sidebar()->historyList();
    ASSERT_EQ(list->count(), 1);
    QMenu *menu = view.sidebar()->contextMenu(0);
    ASSERT_EQ(menu->actions().size(), 2);
    menu->actions().first()->trigger();
    menu->close();
    auto *ask = view.sidebar()->findChild<QInputDialog *>(QStringLiteral("nameDialog"));
    ASSERT_NE(ask, nullptr);
    ask->setTextValue(QStringLiteral("Gespräch mit Diane"));
    ask->accept();
    EXPECT_EQ(list->item(0)->toolTip(), QStringLiteral("Gespräch mit Diane"));
    // Read as the application reads it: after the bundle patches under way.
    EXPECT_EQ(Scripted::read(older).value_or(HistoryItem()).fileName, QStringLiteral("Gespräch mit Diane"));
    // ... and deletes it at once.
    menu = view.sidebar()->contextMenu(0);
    menu->actions().last()->trigger();
    menu->close();
    EXPECT_TRUE(app.history().isEmpty());
    EXPECT_FALSE(QDir(older).exists());
    EXPECT_FALSE(view.sidebar()->historyHeading()->isVisible());
}


TEST_F(ShellTest, OpenPanelAndDropStageASingleFile)
{
    AppModel app;
    ContentView view(app);
    view.show();
    std::optional<QString> answer;
    int asked = 0;
    app.setFilePanel([&] {
        ++asked;
        return answer;
    });
    view.detailPane()->openAction()->trigger(); // cancelled: nothing happens
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(app.pending().has_value());
    answer = QStringLiteral("/x/Vortrag.mkv");
    auto *zone = qobject_cast<DropZone *>(view.detailPane()->screenWidget());
    ASSERT_TRUE(zone);
    zone->openButton()->click();
    ASSERT_TRUE(app.pending().has_value());
    EXPECT_EQ(std::get<PendingItem::File>(app.pending()->kind).name, QStringLiteral("Vortrag.mkv"));

    // A dropped file is staged whatever its type.
    app.setPending(std::nullopt);
    EXPECT_TRUE(drop(view.detailPane()->screenWidget(), {QStringLiteral("/x/notes.txt")}));
    ASSERT_TRUE(waitFor([&] { return app.pending().has_value(); }));
    EXPECT_EQ(std::get<PendingItem::File>(app.pending()->kind).url, QStringLiteral("/x/notes.txt"));
}


// Several files, dropped or opened, queue in rows: the batch's setup first, then a row
// per file with its state, its reason when it failed and its own cancel; what was saved
// is in the history and opens from its row.
TEST_F(ShellTest, SeveralFilesQueueInRowsOfTheirOwn)
{
    installBase();
    AppModel app;
    ContentView view(app);
    view.resize(900, 640);
    view.show();
    DetailPane &pane = *view.detailPane();
    const QString first = Media::tone(QStringLiteral("mp3")), broken = Media::textFileNamedMp3(),
                  third = Media::tone(QStringLiteral("wav"), 3.0), dropped = Media::tone(QStringLiteral("wav"));
    auto names = [](QueueView *queue) {
        QStringList list;
        for (QueueRow *row : queue->rowWidgets())
            list << row->nameLabel()->text() + u'/' + row->stateLabel()->text();
        return list;
    };

    EXPECT_TRUE(drop(pane.screenWidget(), {first, broken}));
    ASSERT_TRUE(waitFor([&] { return pane.screen() == Screen::queue; }));
    auto *queue = qobject_cast<QueueView *>(pane.screenWidget());
    ASSERT_TRUE(queue && queue->setup());
    // One more from the chooser and one dropped on the queue join the staged rows.
    app.setFilePanel([&] { return QStringList{third}; });
    pane.openAction()->trigger();
    EXPECT_TRUE(drop(queue, {dropped}));
    ASSERT_TRUE(waitFor([&] { return queue->rowWidgets().size() == 4; }));
    EXPECT_EQ(pane.screenWidget(), queue) << "the queue stays on show while rows come";
    QueueRow *last = queue->rowWidgets().last();
    EXPECT_TRUE(last->cancelButton()->isVisibleTo(queue));
    EXPECT_EQ(last->cancelButton()->accessibleName(), QStringLiteral("„tone-2s.wav“ abbrechen"));
    last->cancelButton()->click();
    EXPECT_EQ(names(queue), QStringList({"tone-2s.mp3/Wartet", "notes.mp3/Wartet", "tone-3s.wav/Wartet"}));

    queue->setup()->startButton()->click();
    EXPECT_FALSE(queue->setup()) << "the setup applies to the batch and goes with its start";
    ASSERT_TRUE(waitFor([&] { return app.queue().phase() == TranscriptionQueue::Phase::Ended; }, 120'000));
    EXPECT_EQ(names(queue), QStringList({"tone-2s.mp3/Fertig", "notes.mp3/Fehlgeschlagen", "tone-3s.wav/Fertig"}));
    QueueRow *failed = queue->rowWidgets()[1];
    EXPECT_TRUE(failed->reasonLabel()->isVisibleTo(queue));
    EXPECT_TRUE(failed->reasonLabel()->text().startsWith(QStringLiteral("Audio konnte nicht")));
    EXPECT_FALSE(failed->cancelButton()->isVisibleTo(queue));
    EXPECT_FALSE(failed->openButton()->isVisibleTo(queue));
    EXPECT_EQ(queue->countLabel()->text(), QStringLiteral("3 von 3 Dateien erledigt · 1 fehlgeschlagen"));
    EXPECT_EQ(view.sidebar()->historyList()->count(), 2);

    // A saved one opens as any item; "Neu" comes back to the rows, until they are cleared.
    queue->rowWidgets()[0]->openButton()->click();
    ASSERT_EQ(pane.screen(), Screen::result);
    EXPECT_EQ(app.current()->fileName, QStringLiteral("tone-2s.mp3"));
    pane.newAction()->trigger();
    ASSERT_EQ(pane.screen(), Screen::queue);
    queue = qobject_cast<QueueView *>(pane.screenWidget());
    ASSERT_TRUE(queue && queue->clearButton()->isVisibleTo(queue));
    queue->clearButton()->click();
    EXPECT_EQ(pane.screen(), Screen::drop);
}


// An error shows the user's text, a program's own lines behind "Details", and a retry
// where the failed work can be tried again.
TEST_F(ShellTest, TheErrorAlertKeepsDetailsBackAndOffersARetry)
{
    AppModel app;
    ContentView view(app);
    view.show();
    int retried = 0;
    app.setErrorMessage(QStringLiteral("Die Datei ist beschädigt."), QStringLiteral("[mov] moov atom not found"),
                        [&] { ++retried; });
    auto *alert = view.findChild<QMessageBox *>();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->informativeText(), QStringLiteral("Die Datei ist beschädigt."));
    EXPECT_EQ(alert->detailedText(), QStringLiteral("[mov] moov atom not found"));
    QAbstractButton *retry = buttonLabelled(alert, QStringLiteral("Erneut versuchen"));
    ASSERT_TRUE(retry);
    retry->click();
    EXPECT_EQ(retried, 1);
    EXPECT_FALSE(app.errorMessage().has_value());

    // Without a retry there is only OK.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(view.findChild<QMessageBox *>()) << "the first alert is gone";
    app.setErrorMessage(QStringLiteral("Kein Modell ausgewählt/installiert."));
    alert = view.findChild<QMessageBox *>();
    ASSERT_TRUE(alert);
    EXPECT_FALSE(buttonLabelled(alert, QStringLiteral("Erneut versuchen")));
    EXPECT_TRUE(alert->detailedText().isEmpty());
}

// The link field's hint shows whole in the window at its first size, in every language.
TEST_F(ShellTest, TheLinkHintShowsWholeInEveryLanguage)
{
    SagwerkApp sagwerk;
    MainWindow *window = sagwerk.mainWindow();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    const auto restore = qScopeGuard([] { LanguageManager::instance().setLanguage(QStringLiteral("de")); });
    for (const QString code : {"de", "en", "fr", "sv"}) {
        LanguageManager::instance().setLanguage(code);
        QCoreApplication::processEvents();
        auto *field = window->findChild<QLineEdit *>(QStringLiteral("linkField"));
        ASSERT_TRUE(field && field->isVisible());
        // Where the field draws its text, as the line edit itself works it out.
        QStyleOptionFrame option;
        option.initFrom(field);
        option.rect = field->rect();
        option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
        const QRect contents = field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
        const int room = contents.width() - field->textMargins().left() - field->textMargins().right() - 4;
        EXPECT_GE(room, field->fontMetrics().horizontalAdvance(field->placeholderText()))
            << code.toStdString() << ": " << field->placeholderText().toStdString();
    }
}


// The desktop's standard keys: Ctrl+O opens the chooser, F1 the help, Escape closes help
// and about, Ctrl+Q quits.
TEST_F(ShellTest, StandardShortcuts)
{
    SagwerkApp sagwerk;
    MainWindow *window = sagwerk.mainWindow();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    int asked = 0;
    sagwerk.model().setFilePanel([&] {
        ++asked;
        return std::optional<QString>();
    });
    QTest::keyClick(window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(asked, 1);

    // The menu shows F1, and F1 and Ctrl+? both open the help.
    EXPECT_EQ(window->helpAction()->shortcut(), QKeySequence(Qt::Key_F1));
    for (const QKeyCombination key : {QKeyCombination(Qt::Key_F1), Qt::CTRL | Qt::Key_Question}) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, key.key(), key.keyboardModifiers());
        QWidget *help = sagwerk.window(QStringLiteral("help"));
        ASSERT_TRUE(help && help->isVisible()) << QKeySequence(key).toString().toStdString();
        ASSERT_TRUE(QTest::qWaitForWindowActive(help));
        QTest::keyClick(help, Qt::Key_Escape);
        EXPECT_FALSE(help->isVisible());
    }

    sagwerk.openWindow(QStringLiteral("about"));
    QWidget *about = sagwerk.window(QStringLiteral("about"));
    ASSERT_TRUE(about && about->isVisible());
    ASSERT_TRUE(QTest::qWaitForWindowActive(about));
    QTest::keyClick(about, Qt::Key_Escape);
    EXPECT_FALSE(about->isVisible());

    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}


// A dropped and an opened file from the setup through the busy screen to the history.
TEST_F(ShellTest, RoadFromDropAndOpenToHistory)
{
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb")) << "meant for a real display server";
    installBase();
    const QString dropped = Media::tone(QStringLiteral("wav"), 3.0);
    const QString opened = Media::tone(QStringLiteral("mp3"), 2.0);

    SagwerkApp sagwerk;
    AppModel &app = sagwerk.model();
    MainWindow *window = sagwerk.mainWindow();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    DetailPane &pane = *window->content()->detailPane();
    QListWidget *rows = window->content()->sidebar()->historyList();

    ASSERT_TRUE(drop(pane.screenWidget(), {dropped}));
    ASSERT_TRUE(waitFor([&] { return pane.screen() == DetailPane::Screen::setup; }));
    auto *setup = qobject_cast<TranscribeSetupView *>(pane.screenWidget());
    ASSERT_TRUE(setup);
    ASSERT_TRUE(setup->startButton()->isEnabled());

    QTest::mouseClick(setup->startButton(), Qt::LeftButton);
    ASSERT_TRUE(app.transcription().isBusy()) << (app.errorMessage() ? app.errorMessage()->toStdString() : "");
    auto *busy = qobject_cast<BusyView *>(pane.screenWidget());
    ASSERT_TRUE(busy);
    EXPECT_TRUE(busy->monitor()->isSampling());
    EXPECT_FALSE(pane.newAction()->isEnabled() || pane.openAction()->isEnabled());
    EXPECT_TRUE(pane.settingsAction()->isEnabled());
    EXPECT_TRUE(busy->statusText().startsWith(QStringLiteral("Transkribiere… ")));
    // The badge's device is the one the engine recognises on, as sagwerk-cli --verbose
    // names it: here no GPU is visible, so the processor.
    ASSERT_TRUE(waitFor([&] { return !app.transcription().gpuDevice().isEmpty() || !app.transcription().cpuDevice().isEmpty(); }));
    const std::optional<WhisperEngine::Device> gpu = WhisperEngine::gpuDevice();
    EXPECT_EQ(app.transcription().gpuDevice(), gpu ? gpu->name : QString());
    EXPECT_EQ(app.transcription().cpuDevice(), gpu ? QString() : WhisperEngine::cpuDevice().name);

    ASSERT_TRUE(waitFor([&] { return !app.transcription().isBusy(); }, 120000));
    ASSERT_FALSE(app.errorMessage().has_value()) << app.errorMessage()->toStdString();
    ASSERT_EQ(app.history().size(), 1);
    EXPECT_EQ(app.history().at(0).fileName, QStringLiteral("tone-3s.wav"));
    EXPECT_EQ(rows->count(), 1);
    EXPECT_EQ(pane.screen(), DetailPane::Screen::result);
    EXPECT_EQ(rows->currentRow(), 0);

    // Open, then Return starts.
    app.setFilePanel([&] { return std::optional<QString>(opened); });
    pane.openAction()->trigger();
    setup = qobject_cast<TranscribeSetupView *>(pane.screenWidget());
    ASSERT_TRUE(setup);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    setup->startButton()->setFocus();
    QTest::keyClick(setup->startButton(), Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return app.transcription().isBusy() || !app.history().isEmpty(); }));
    ASSERT_TRUE(waitFor([&] { return !app.transcription().isBusy(); }, 120000));
    ASSERT_EQ(app.history().size(), 2);
    EXPECT_EQ(app.history().at(0).fileName, QStringLiteral("tone-2s.mp3"));
    EXPECT_EQ(rows->count(), 2);
    EXPECT_EQ(pane.screen(), DetailPane::Screen::result);
    EXPECT_EQ(app.current()->id, app.history().at(0).id);
}
