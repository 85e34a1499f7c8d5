// sagwerk-cli models and download as a user runs them, against a local HTTP server.
#include "Cli.h"
#include "Home.h"
#include "Media.h"

#include <QDir>
#include <QFile>

TEST(CliModels, ListsTheCatalogueAndDownloadsOrSaysWhyNot)
{
    const QString models = useThrowawayHome() + QStringLiteral("/.local/share/Sagwerk/models");
    Media::writeFile(models + QStringLiteral("/ggml-small-q5_1.bin"), {});
    ASSERT_TRUE(QFile::resize(models + QStringLiteral("/ggml-small-q5_1.bin"), 181 * 900'000 + 1));

    const CliRun list = cli({"models"});
    ASSERT_EQ(list.status, 0) << list.err.toStdString();
    const QList<QByteArray> lines = list.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0).simplified(), "ID NAME SIZE MODEL");
    EXPECT_EQ(lines.at(1).simplified(), "base-q5_1 Base 57 MB -");
    EXPECT_EQ(lines.at(2).simplified(), "small-q5_1 Small 181 MB installed");
    EXPECT_EQ(lines.at(4).simplified(), "large-v3-turbo-q5_0 Large v3 Turbo 547 MB -");

    QFile::remove(models + QStringLiteral("/ggml-small-q5_1.bin"));
    LocalServer server;
    const QByteArray body = randomBytes(57 * 900'000 + 100);
    server.answer(QStringLiteral("/ggml-base-q5_1.bin"), {.body = body});
    server.answer(QStringLiteral("/ggml-medium-q5_0.bin"), {.body = body, .holdAfter = 1000});
    const QString from = server.base().toString();

    const CliRun ok = cli({"download", "base-q5_1", "--from", from});
    ASSERT_EQ(ok.status, 0) << ok.err.toStdString();
    EXPECT_EQ(ok.out, (models + QStringLiteral("/ggml-base-q5_1.bin\n")).toUtf8());
    EXPECT_TRUE(ok.err.isEmpty()) << "no progress bar when stderr is no terminal";
    EXPECT_TRUE(Media::readFile(models + QStringLiteral("/ggml-base-q5_1.bin")) == body);

    const CliRun errorPage = cli({"download", "small-q5_1", "--from", from});
    EXPECT_EQ(errorPage.status, 1);
    EXPECT_TRUE(errorPage.err.contains("Fehlerseite")) << errorPage.err.toStdString();
    EXPECT_TRUE(errorPage.out.isEmpty());

    const CliRun interrupted = cli({"download", "medium-q5_0", "--from", from}, [&] { return server.held() == 1; });
    EXPECT_EQ(interrupted.status, 130);
    EXPECT_EQ(interrupted.err, "Abgebrochen.\n");

    const QString gone = LocalServer().base().toString();
    const CliRun refused = cli({"download", "small-q5_1", "--from", gone});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "Download fehlgeschlagen: Der Server ist nicht erreichbar. Bitte die Internetverbindung prüfen.\n");

    EXPECT_EQ(cli({"download", "tiny"}).status, 2);
    EXPECT_EQ(cli({"download"}).status, 2);
    EXPECT_TRUE(Media::temporaryEntries().isEmpty());
}
