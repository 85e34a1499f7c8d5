// The whole road through the window, on a real display server (Xvfb) with the generated
// model: a dropped file and an opened file each run from the setup through the busy
// screen to a row in the history and the result on show.
#include "ShellFixture.h"

#include "ui/BusyView.h"
#include "ui/ContentView.h"
#include "ui/DetailPane.h"
#include "ui/DropZone.h"
#include "ui/MainWindow.h"
#include "ui/SagwerkApp.h"
#include "ui/Sidebar.h"
#include "ui/SystemMonitor.h"
#include "ui/TranscribeSetupView.h"

#include <QAction>
#include <QGuiApplication>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>

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

    // Drop → setup.
    auto *zone = qobject_cast<DropZone *>(pane.screenWidget());
    ASSERT_TRUE(zone);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(dropped)});
    QDragEnterEvent enter(zone->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(zone, &enter);
    QDropEvent drop(QPointF(zone->rect().center()), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(zone, &drop);
    ASSERT_TRUE(waitFor([&] { return pane.screen() == DetailPane::Screen::setup; }));
    auto *setup = qobject_cast<TranscribeSetupView *>(pane.screenWidget());
    ASSERT_TRUE(setup);
    ASSERT_TRUE(setup->startButton()->isEnabled());

    // Start → busy screen, sampling the machine, toolbar off.
    QTest::mouseClick(setup->startButton(), Qt::LeftButton);
    ASSERT_TRUE(app.isBusy()) << (app.errorMessage() ? app.errorMessage()->toStdString() : "");
    auto *busy = qobject_cast<BusyView *>(pane.screenWidget());
    ASSERT_TRUE(busy);
    EXPECT_TRUE(busy->monitor()->isSampling());
    EXPECT_FALSE(pane.newAction()->isEnabled());
    EXPECT_FALSE(pane.openAction()->isEnabled());
    EXPECT_TRUE(pane.settingsAction()->isEnabled());
    EXPECT_TRUE(busy->statusText().startsWith(QStringLiteral("Transkribiere… ")));

    // → history row and result.
    ASSERT_TRUE(waitFor([&] { return !app.isBusy(); }, 120000));
    ASSERT_FALSE(app.errorMessage().has_value()) << app.errorMessage()->toStdString();
    ASSERT_EQ(app.history().size(), 1);
    EXPECT_EQ(app.history().at(0).fileName, QStringLiteral("tone-3s.wav"));
    EXPECT_EQ(rows->count(), 1);
    EXPECT_EQ(pane.screen(), DetailPane::Screen::result);
    EXPECT_EQ(rows->currentRow(), 0);

    // Open → setup → Return.
    app.setFilePanel([&] { return std::optional<QString>(opened); });
    pane.openAction()->trigger();
    setup = qobject_cast<TranscribeSetupView *>(pane.screenWidget());
    ASSERT_TRUE(setup);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    setup->startButton()->setFocus();
    QTest::keyClick(setup->startButton(), Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return app.isBusy() || !app.history().isEmpty(); }));
    ASSERT_TRUE(waitFor([&] { return !app.isBusy(); }, 120000));
    ASSERT_EQ(app.history().size(), 2);
    EXPECT_EQ(app.history().at(0).fileName, QStringLiteral("tone-2s.mp3"));
    EXPECT_EQ(rows->count(), 2);
    EXPECT_EQ(pane.screen(), DetailPane::Screen::result);
    EXPECT_EQ(app.current()->id, app.history().at(0).id);
}
