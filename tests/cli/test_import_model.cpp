// sagwerk-cli import-model as a user runs it: the models folder under XDG_DATA_HOME.
#include "CTranslate2Model.h"
#include "Cli.h"

#include <QDir>
#include <QTemporaryDir>

TEST(CliImportModel, InstallsIntoTheModelsFolderOrSaysWhyNot)
{
    QTemporaryDir dir;
    qputenv("XDG_DATA_HOME", dir.filePath(QStringLiteral("data")).toLocal8Bit());
    const QString models = dir.filePath(QStringLiteral("data/Sagwerk/models"));

    CTranslate2Model::write(dir.filePath(QStringLiteral("base")), {.state = 512, .heads = 8, .layers = 6,
        .weights = CTranslate2Model::Weights::Int8, .parts = 2, .patterned = true});
    const CliRun ok = cli({"import-model", dir.filePath(QStringLiteral("base"))});
    EXPECT_EQ(ok.status, 0) << ok.err.toStdString();
    EXPECT_EQ(ok.out, QStringLiteral("Modell „Base“ importiert: %1/ggml-base-q5_1.bin\n").arg(models).toUtf8());
    EXPECT_TRUE(ok.err.isEmpty()) << "no progress bar when stderr is no terminal";
    EXPECT_EQ(QDir(models).entryList(QDir::Files | QDir::Hidden), QStringList{"ggml-base-q5_1.bin"});

    CTranslate2Model::write(dir.filePath(QStringLiteral("english")), {.englishOnly = true});
    const CliRun refused = cli({"import-model", dir.filePath(QStringLiteral("english"))});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.out.isEmpty());
    EXPECT_TRUE(refused.err.contains("ist ein rein englisches Modell")) << refused.err.toStdString();
    EXPECT_EQ(QDir(models).entryList(QDir::Files | QDir::Hidden), QStringList{"ggml-base-q5_1.bin"});

    EXPECT_EQ(cli({"import-model"}).status, 2);
    EXPECT_EQ(cli({"import-model", "a", "b"}).status, 2);
}
