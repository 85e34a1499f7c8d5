// The interview screen over a real session, offscreen, while a private sound server's
// microphone hears speech: the text grows, the stop stores it. Screenshots while recording
// and while finalising.
#include "Home.h"
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "app/InterviewJob.h"
#include "ui/InterviewView.h"

#include <QDir>
#include <QLabel>
#include <QRegularExpression>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

TEST(InterviewViewTest, RecordsShowsTheTextAndStoresOnStop)
{
    ASSERT_FALSE(qEnvironmentVariable("PULSE_SERVER").isEmpty()) << "run under with-sound-server.sh --speech";
    useThrowawayHome();
    QSettings settings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk"));
    settings.clear();
    settings.setValue(QStringLiteral("selectedModelId"), QStringLiteral("base-q5_1"));
    Media::installBase();
    QString folder = qEnvironmentVariable("SAGWERK_SCREENSHOTS");
    if (folder.isEmpty())
        folder = QDir::tempPath() + QStringLiteral("/screenshots");
    QDir().mkpath(folder);

    AppModel app;
    app.setInterviewActive(true);
    InterviewView view(app);
    view.resize(800, 500);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    auto *stop = view.findChildren<QPushButton *>().last();
    EXPECT_EQ(stop->text(), QStringLiteral("Stopp && Speichern")) << "an ampersand, not a shortcut mark";
    ASSERT_TRUE(waitFor([&] { return view.session().isRecording(); }, 5'000));
    EXPECT_TRUE(stop->isEnabled());

    // The first stretch is heard after five seconds; its rows (if the model found words)
    // and the running time show.
    ASSERT_TRUE(waitFor([&] { return view.session().transcribedMs() >= 5000; }, 30'000));
    QTest::qWait(50);
    EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/interview-recording.png")));
    // (A slow machine may show a later second by the time it looks.)
    static const QRegularExpression clock(QStringLiteral("^0:([0-5][0-9])$"));
    bool timeShown = false;
    for (QLabel *label : view.findChildren<QLabel *>()) {
        const QRegularExpressionMatch m = clock.match(label->text());
        timeShown = timeShown || (m.hasMatch() && m.captured(1).toInt() >= 5);
    }
    EXPECT_TRUE(timeShown);

    // Return stops it, as the button does.
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(stop->text(), QStringLiteral("Wird abgeschlossen…"))
        << view.session().isRecording() << view.session().isFinalizing() << qPrintable(view.session().status());
    EXPECT_FALSE(stop->isEnabled());
    QTest::qWait(20);
    EXPECT_TRUE(view.grab().save(folder + QStringLiteral("/interview-finalizing.png")));
    ASSERT_TRUE(waitFor([&] { return !app.interviewActive() && (app.current() || !view.session().isFinalizing()); },
                        60'000));
    ASSERT_TRUE(waitFor([&] { return app.current().has_value() || view.session().segments().isEmpty(); }, 30'000));
    if (!view.session().segments().isEmpty()) {
        EXPECT_TRUE(app.current()->fileName.startsWith(QStringLiteral("Interview ")));
    }
}
