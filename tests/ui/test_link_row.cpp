// The link row of the drop zone over a real application state and a local server:
// what the button allows, and what the second row shows while a link runs.
#include "LocalServer.h"
#include "Media.h"

#include "app/AppModel.h"
#include "engine/ModelStore.h"
#include "ui/LinkRow.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

namespace {

void screenshot(QWidget &widget, const QString &name)
{
    const QString folder = qEnvironmentVariable("SAGWERK_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    QCoreApplication::processEvents(); // pending layout passes
    widget.grab().save(folder + u'/' + name + QStringLiteral(".png"));
}

} // namespace

TEST(LinkRow, TheFieldTheButtonAndTheProgressRow)
{
    ASSERT_TRUE(qEnvironmentVariable("SAGWERK_SESSION_DIR").size() > 0);
    QSettings(QStringLiteral("Morvane"), QStringLiteral("Sagwerk")).clear();
    LocalServer server;
    const QByteArray body = randomBytes(2'000'000);
    LocalServer::Answer media;
    media.contentType = "audio/mpeg";
    media.body = body;
    media.holdAfter = 5000; // 0.25 per cent, and more than the probe reads
    server.answer("/episode.mp3", media);
    LocalServer::Answer half = media;
    half.holdAfter = 874'000;
    server.answer("/half.mp3", half);

    AppModel app;
    LinkRow row(app);
    row.resize(540, 80);
    row.show();
    auto *field = row.findChild<QLineEdit *>(QStringLiteral("linkField"));
    auto *load = row.findChild<QPushButton *>(QStringLiteral("load"));
    auto *progressRow = row.findChild<QWidget *>(QStringLiteral("progressRow"));
    auto *percent = row.findChild<QLabel *>(QStringLiteral("percent"));
    auto *status = row.findChild<QLabel *>(QStringLiteral("status"));
    EXPECT_EQ(field->placeholderText(), QStringLiteral("Podcast- oder Audio-Link (Apple Podcasts, RSS, MP3)…"));
    EXPECT_EQ(load->text(), QStringLiteral("Laden"));
    EXPECT_FALSE(load->isEnabled());
    EXPECT_FALSE(progressRow->isVisible());
    screenshot(row, QStringLiteral("link-idle"));

    // Spaces keep the button off; line breaks turn it on, and pressing it does nothing.
    field->setText(QStringLiteral("   "));
    EXPECT_FALSE(load->isEnabled());
    field->setText(QStringLiteral("\n\n"));
    EXPECT_TRUE(load->isEnabled());
    load->click();
    EXPECT_FALSE(app.linkBusy());

    // Return submits; while the link resolves, a spinner stands in the button and the
    // status line below.
    field->setText(server.base().resolved(QUrl("episode.mp3")).toString());
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(app.linkBusy());
    EXPECT_FALSE(field->isEnabled());
    EXPECT_FALSE(load->isEnabled());
    EXPECT_TRUE(load->text().isEmpty());
    EXPECT_TRUE(row.findChild<QWidget *>(QStringLiteral("loadSpinner"))->isVisible());
    EXPECT_TRUE(progressRow->isVisible());
    EXPECT_TRUE(status->isVisible());
    EXPECT_EQ(status->text(), QStringLiteral("Link wird aufgelöst…"));
    screenshot(row, QStringLiteral("link-resolving"));

    // A fraction below one per cent shows as 0 %.
    ASSERT_TRUE(waitFor([&] { return app.linkProgress() >= 0.0025; }));
    EXPECT_TRUE(percent->isVisible());
    EXPECT_FALSE(status->isVisible());
    EXPECT_EQ(percent->text(), QStringLiteral("0 %"));
    server.release();
    ASSERT_TRUE(waitFor([&] { return !app.linkBusy(); }));
    EXPECT_FALSE(progressRow->isVisible());
    EXPECT_EQ(load->text(), QStringLiteral("Laden"));
    EXPECT_TRUE(load->isEnabled());
    EXPECT_EQ(field->text(), server.base().resolved(QUrl("episode.mp3")).toString()) << "the field keeps its text";
    ASSERT_TRUE(app.pending().has_value());

    field->setText(server.base().resolved(QUrl("half.mp3")).toString());
    load->click();
    ASSERT_TRUE(waitFor([&] { return std::abs(app.linkProgress() - 0.437) < 1e-9; }));
    EXPECT_EQ(percent->text(), QStringLiteral("43 %"));
    EXPECT_EQ(row.findChild<QProgressBar *>()->value(), 437);
    screenshot(row, QStringLiteral("link-progress"));
    server.release();
    ASSERT_TRUE(waitFor([&] { return !app.linkBusy(); }));

    // While a transcription runs, field and button rest.
    Media::installTinyModel(app.modelStore()->modelsDir(), QStringLiteral("ggml-base-q5_1.bin"));
    app.modelStore()->refresh();
    app.setSelectedModelId(QStringLiteral("base-q5_1"));
    app.transcribe(Media::tone(QStringLiteral("opus"), 60.0));
    ASSERT_TRUE(app.isBusy());
    EXPECT_FALSE(field->isEnabled());
    EXPECT_FALSE(load->isEnabled());
    app.cancelTranscription();
    ASSERT_TRUE(waitFor([&] { return !app.isBusy(); }, 60'000));
    EXPECT_TRUE(field->isEnabled());
    for (const QString &name : Media::temporaryEntries())
        QFile::remove(QDir::tempPath() + u'/' + name);
}
