// The record sheet on a real sound server, and without any input.
#include "ShellFixture.h"
#include "app/RecordingJob.h"
#include "app/TranscriptionJob.h"

#include "capture/Recorder.h"
#include "ui/RecordSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>

namespace {

QPushButton *button(QWidget &sheet, const char *name)
{
    return sheet.findChild<QPushButton *>(QLatin1String(name));
}

class RecordSheetTest : public ShellTest {
    void SetUp() override
    {
        ShellTest::SetUp();
        installBase();
    }
};
using RecordSheetWithoutInput = RecordSheetTest;

} // namespace

TEST_F(RecordSheetTest, ARecordingEndsAsATranscript)
{
    AppModel app;
    app.setShowRecorder(true);
    RecordSheet sheet(app);
    sheet.show();
    QLabel *time = sheet.findChild<QLabel *>(QStringLiteral("time"));
    QPushButton *go = button(sheet, "go");
    EXPECT_FALSE(sheet.findChild<QLabel *>(QStringLiteral("permissionDenied"))->isVisible());
    // The setup screen asked already: the sheet records as it opens.
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().isRecording(); }, 10'000));
    EXPECT_EQ(go->text(), QStringLiteral("Stopp && Transkribieren")) << "an ampersand, not a shortcut mark";
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().elapsed() >= 2.2; }, 15'000));
    EXPECT_EQ(time->text(), QStringLiteral("00:02"));

    // Return is the sheet's default: stop and transcribe, once the file is closed.
    QSignalSpy busy(&app.transcription(), &TranscriptionJob::isBusyChanged);
    QTest::keyClick(&sheet, Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return !sheet.isVisible(); }, 15'000));
    EXPECT_FALSE(app.showRecorder());
    ASSERT_GE(busy.count(), 1) << "the job starts as the sheet closes";
    ASSERT_TRUE(waitFor([&] { return !app.transcription().isBusy(); }, 180'000));
    EXPECT_FALSE(app.errorMessage().has_value()) << app.errorMessage().value_or("").toStdString();
    ASSERT_EQ(app.history().size(), 1);
    const HistoryItem &item = app.history().first();
    EXPECT_TRUE(QRegularExpression("^Aufnahme \\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d$").match(item.fileName).hasMatch())
        << item.fileName.toStdString();
    EXPECT_TRUE(item.audioURL.value_or(QString()).endsWith(QStringLiteral(".m4a")));
}

TEST_F(RecordSheetTest, CancellingThrowsTheRecordingAway)
{
    AppModel app;
    app.setShowRecorder(true);
    RecordSheet sheet(app);
    sheet.show();
    ASSERT_TRUE(waitFor([&] { return sheet.recorder().isRecording(); }, 10'000));
    const QString file = sheet.recorder().filePath().value_or(QString());
    ASSERT_TRUE(QFile::exists(file));
    QTest::keyClick(&sheet, Qt::Key_Escape);
    EXPECT_FALSE(sheet.isVisible() || app.showRecorder() || app.transcription().isBusy());
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(app.history().isEmpty());

    for (auto [seconds, text] : {std::pair{0.0, "00:00"}, {59.99, "00:59"}, {61.2, "01:01"}, {6000.5, "100:00"}})
        EXPECT_EQ(RecordSheet::timeString(seconds), QLatin1String(text)) << seconds;
}

TEST_F(RecordSheetWithoutInput, ShowsTheRefusal)
{
    AppModel app;
    RecordSheet sheet(app);
    sheet.show();
    QPushButton *go = button(sheet, "go");
    QLabel *denied = sheet.findChild<QLabel *>(QStringLiteral("permissionDenied"));
    ASSERT_TRUE(waitFor([&] { return denied->isVisible(); }, 10'000));
    EXPECT_EQ(denied->text(),
              QStringLiteral("Kein Mikrofon-Zugriff. Bitte ein Mikrofon anschließen und in den Toneinstellungen des "
                             "Desktops als Eingabe wählen."));
    EXPECT_TRUE(sheet.isVisible()) << "the user can retry or cancel";
    EXPECT_EQ(go->text(), QStringLiteral("Aufnahme starten")) << "a retry after the refusal";
    go->click();
    ASSERT_TRUE(waitFor([&] { return denied->isVisible(); }, 10'000));
    button(sheet, "cancel")->click();
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
