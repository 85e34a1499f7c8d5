// The link row of the drop zone over a real application state and a local server.
#include "ShellFixture.h"
#include "app/LinkImport.h"

#include "ui/LinkRow.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

using LinkRowTest = ShellTest;

TEST_F(LinkRowTest, TheFieldTheButtonAndTheProgressRow)
{
    LocalServer server;
    LocalServer::Answer media{.body = randomBytes(2'000'000), .holdAfter = 5000, .contentType = "audio/mpeg"};
    server.answer("/episode.mp3", media);
    media.holdAfter = 874'000;
    server.answer("/half.mp3", media);
    const QString episode = server.base().resolved(QUrl("episode.mp3")).toString();

    AppModel app;
    LinkRow row(app);
    row.resize(540, 80);
    row.show();
    auto *field = row.findChild<QLineEdit *>(QStringLiteral("linkField"));
    auto *load = row.findChild<QPushButton *>(QStringLiteral("load"));
    auto *progressRow = row.findChild<QWidget *>(QStringLiteral("progressRow"));
    auto *percent = row.findChild<QLabel *>(QStringLiteral("percent"));
    auto *status = row.findChild<QLabel *>(QStringLiteral("status"));
    EXPECT_FALSE(load->isEnabled());
    EXPECT_FALSE(progressRow->isVisible());

    // Spaces keep the button off; line breaks turn it on, and pressing it does nothing.
    field->setText(QStringLiteral("   "));
    EXPECT_FALSE(load->isEnabled());
    field->setText(QStringLiteral("\n\n"));
    EXPECT_TRUE(load->isEnabled());
    load->click();
    EXPECT_FALSE(app.linkImport().isBusy());

    // While the link resolves, a spinner stands in the button and the status line below.
    field->setText(episode);
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(app.linkImport().isBusy());
    EXPECT_FALSE(field->isEnabled() || load->isEnabled());
    EXPECT_TRUE(load->text().isEmpty());
    EXPECT_TRUE(row.findChild<QWidget *>(QStringLiteral("loadSpinner"))->isVisible());
    EXPECT_TRUE(progressRow->isVisible() && status->isVisible());

    // A fraction below one per cent shows as 0 %.
    ASSERT_TRUE(waitFor([&] { return app.linkImport().progress() >= 0.0025; }));
    EXPECT_TRUE(percent->isVisible());
    EXPECT_FALSE(status->isVisible());
    EXPECT_EQ(percent->text(), QStringLiteral("0 %"));
    server.release();
    ASSERT_TRUE(waitFor([&] { return !app.linkImport().isBusy(); }));
    EXPECT_FALSE(progressRow->isVisible());
    EXPECT_TRUE(load->isEnabled());
    EXPECT_EQ(field->text(), episode) << "the field keeps its text";
    ASSERT_TRUE(app.pending().has_value());

    field->setText(server.base().resolved(QUrl("half.mp3")).toString());
    load->click();
    ASSERT_TRUE(waitFor([&] { return std::abs(app.linkImport().progress() - 0.437) < 1e-9; }));
    EXPECT_EQ(percent->text(), QStringLiteral("43 %"));
    EXPECT_EQ(row.findChild<QProgressBar *>()->value(), 437);
    server.release();
    ASSERT_TRUE(waitFor([&] { return !app.linkImport().isBusy(); }));
}
