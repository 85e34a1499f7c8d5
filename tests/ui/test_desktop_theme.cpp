// The result screen under the desktop's own theme, as a user's desktop sets it: the GTK
// platform theme on a real X server, light or dark by GTK_THEME. Every colour the screen
// derives has to read on the window the theme gives. Also renders its screenshots.
#include "Media.h"
#include "Transcripts.h"

#include "app/AppModel.h"
#include "review/TranscriptLines.h"
#include "speakers/Diarizer.h"
#include "ui/ResultView.h"
#include "ui/Style.h"
#include "ui/TranscriptTextView.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace {

QColor average(const QImage &image)
{
    double r = 0, g = 0, b = 0;
    const qint64 n = qint64(image.width()) * image.height();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            r += c.redF(), g += c.greenF(), b += c.blueF();
        }
    return QColor::fromRgbF(float(r / n), float(g / n), float(b / n));
}

} // namespace

TEST(DesktopTheme, SpeakerHeadingsTheRunningWordAndTheChosenViewRead)
{
    const QString theme = qEnvironmentVariable("GTK_THEME");
    ASSERT_EQ(qEnvironmentVariable("QT_QPA_PLATFORMTHEME"), QStringLiteral("gtk3"));
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb")) << "run under with-xvfb.sh";
    const bool dark = theme.endsWith(QStringLiteral(":dark"));
    const QPalette pal = QApplication::palette();
    ASSERT_EQ(Style::isDark(pal), dark) << "the desktop's theme did not reach the palette";
    const QColor window = pal.color(QPalette::Window);
    QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();

    // Two voices taking turns, and a refined level, so that the view buttons show.
    AppModel app;
    HistoryItem item = Transcripts::item(Transcripts::result(8, 8), QStringLiteral("Gespräch.m4a"));
    QList<SpeakerSpan> spans;
    for (int i = 0; i < 8; ++i) {
        const TranscriptSegment &s = item.result.segments[i];
        spans.append({s.startMs / 1000.0, s.endMs / 1000.0, (i / 2) % 2});
    }
    item.speakerText = Diarizer::speakerLabeledText(item.result.segments, spans);
    item.refined.insert(1, QStringLiteral("Leicht geglättet."));
    app.setCurrent(item);
    ResultView view(app, nullptr);
    view.resize(1000, 700);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    QList<QPushButton *> choices;
    for (QPushButton *b : view.findChildren<QPushButton *>())
        if (b->property("view").isValid())
            choices << b;
    ASSERT_EQ(choices.size(), 3);
    QPushButton *speakers = nullptr;
    for (QPushButton *b : choices)
        if (b->property("view").toLongLong() == TranscriptLines::speakerView)
            speakers = b;
    ASSERT_NE(speakers, nullptr);
    speakers->click();
    QTest::qWait(50);

    // The "Sprecher N" headings.
    int headings = 0;
    for (QTextBlock block = view.textView()->document()->begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it)
            if (it.fragment().text().startsWith(QStringLiteral("Sprecher "))) {
                ++headings;
                const QColor c = it.fragment().charFormat().foreground().color();
                EXPECT_GE(Style::contrast(c, window), 3.0) << c.name().toStdString() << " on " << window.name().toStdString();
            }
    EXPECT_GE(headings, 2);

    // The chosen view stands out from the others, and its label reads on it.
    const QColor chosen = average(speakers->grab().toImage());
    for (QPushButton *b : choices) {
        if (b == speakers)
            continue;
        EXPECT_FALSE(b->isChecked());
        EXPECT_GE(Style::contrast(chosen, average(b->grab().toImage())), 1.8) << b->text().toStdString();
    }
    EXPECT_GE(Style::contrast(speakers->palette().color(QPalette::ButtonText),
                              speakers->palette().color(QPalette::Button)),
              4.5);

    // The running word, against the window behind the transcript.
    TranscriptDocument::View running;
    running.lines = [&] { return TranscriptLines::originalLines(item.result); };
    running.rebuildKey = QStringLiteral("running");
    running.currentMs = item.result.segments[2].startMs + 100;
    running.isPlaying = true;
    TranscriptTextView words;
    words.resize(640, 300);
    words.show();
    words.refresh(running);
    ASSERT_EQ(words.extraSelections().size(), 1);
    const QTextCharFormat lit = words.extraSelections()[0].format;
    EXPECT_GE(Style::contrast(lit.foreground().color(), window), 3.0);
    EXPECT_NE(lit.foreground().color(), lit.background().color());

    const QString folder = QString::fromLocal8Bit(qgetenv("SAGWERK_SCREENSHOTS"));
    if (!folder.isEmpty()) {
        QDir().mkpath(folder);
        const QString look = dark ? QStringLiteral("dark") : QStringLiteral("light");
        view.grab().save(folder + QStringLiteral("/gtk-speakers-") + look + QStringLiteral(".png"));
        words.grab().save(folder + QStringLiteral("/gtk-running-word-") + look + QStringLiteral(".png"));
    }
}
