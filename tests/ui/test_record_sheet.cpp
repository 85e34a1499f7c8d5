// The record sheet on a real sound server: a recording ends as a transcript in the
// history, a cancelled one leaves nothing, and without any input the sheet says so.
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "capture/Recorder.h"
#include "ui/RecordSheet.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QString dataDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Sagwerk");
}

// Pictures for a look at the screens, where SAGWERK_SCREENSHOTS names a folder.
void screenshot(QWidget &widget, const QString &name)
{
    const QString folder = qEnvironmentVariable("SAGWERK_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    QCoreApplication::processEvents(); // pending layout passes
    widget.grab().save(folder + u'/' + name + QStringLiteral(".png"));
}

QPushButton *button(QWidget &sheet, const char *name)
{
    return sheet.findChild<QPushButton *>(QLatin1String(name));
}

class RecordSheetTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
        QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
        QDir(dataDir()).removeRecursively();
        Media::installTinyModel(dataDir() + QStringLiteral("/models"), QStringLiteral("ggml-base-q5_1.bin"));
    }
};

using RecordSheetWithoutInput = RecordSheetTest;

} // namespace

TEST_F(RecordSheetTest, ARecordingEndsAsATranscript)
{
    AppModel app;
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    app.setShowRecorder(true);
    RecordSheet sheet(app);
    sheet.show();
    QLabel *time = sheet.findChild<QLabel *>(QStringLiteral("time"));
    QPushButton *go = button(sheet, "go");
    EXPECT_EQ(go->text(), QStringLiteral("Aufnahme starten"));
    EXPECT_EQ(time->text(), QStringLiteral("00:00"));
    EXPECT_FALSE(sheet.findChild<QLabel *>(QStringLiteral("permissionDenied"))->isVisible());
    screenshot(sheet, QStringLiteral("record-ready"));

    go->click();
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().isRecording(); }, 10'000));
    EXPECT_EQ(go->text(), QStringLiteral("Stopp && Transkribieren")) << "an ampersand, not a shortcut mark";
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().elapsed() >= 2.2; }, 15'000));
    EXPECT_EQ(time->text(), QStringLiteral("00:02"));
    screenshot(sheet, QStringLiteral("record-running"));

    // Return is the sheet's default: stop and transcribe.
    QTest::keyClick(&sheet, Qt::Key_Return);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_FALSE(app.showRecorder());
    ASSERT_TRUE(app.isBusy());
    ASSERT_TRUE(waitFor([&] { return !app.isBusy(); }, 180'000));
    EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or("").toStdString();
    ASSERT_EQ(app.history().size(), 1);
    const HistoryItem &item = app.history().first();
    EXPECT_TRUE(QRegularExpression("^Aufnahme \\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d$").match(item.fileName).hasMatch())
        << item.fileName.toStdString();
    ASSERT_TRUE(item.audioURL.has_value());
    EXPECT_TRUE(item.audioURL->endsWith(QStringLiteral(".m4a")));
}

TEST_F(RecordSheetTest, CancellingThrowsTheRecordingAway)
{
    AppModel app;
    app.setShowRecorder(true);
    RecordSheet sheet(app);
    sheet.show();
    button(sheet, "go")->click();
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().isRecording(); }, 10'000));
    const QString file = sheet.recorder().fileURL().value_or(QString());
    ASSERT_TRUE(QFile::exists(file));
    QTest::keyClick(&sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_FALSE(app.showRecorder());
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_FALSE(app.isBusy());
    EXPECT_TRUE(app.history().isEmpty());

    EXPECT_EQ(RecordSheet::timeString(0), QStringLiteral("00:00"));
    EXPECT_EQ(RecordSheet::timeString(59.99), QStringLiteral("00:59"));
    EXPECT_EQ(RecordSheet::timeString(61.2), QStringLiteral("01:01"));
    EXPECT_EQ(RecordSheet::timeString(6000.5), QStringLiteral("100:00"));
}

TEST_F(RecordSheetWithoutInput, ShowsTheRefusal)
{
    AppModel app;
    RecordSheet sheet(app);
    sheet.show();
    QPushButton *go = button(sheet, "go");
    go->click();
    QLabel *denied = sheet.findChild<QLabel *>(QStringLiteral("permissionDenied"));
    ASSERT_TRUE(waitFor([&] { return denied->isVisible(); }, 10'000));
    EXPECT_EQ(denied->text(),
              QStringLiteral("Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben."));
    EXPECT_TRUE(sheet.isVisible()) << "the user can retry or cancel";
    EXPECT_EQ(go->text(), QStringLiteral("Aufnahme starten"));
    screenshot(sheet, QStringLiteral("record-denied"));
    button(sheet, "cancel")->click();
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
