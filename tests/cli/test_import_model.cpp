// sagwerk-cli import-model as a user runs it: the models folder under XDG_DATA_HOME.
#include "CTranslate2Model.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct CliRun {
    int status = -1;
    QByteArray out, err;
};

CliRun importModel(const QStringList &args, const QString &dataHome)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(SAGWERK_CLI), QStringList{"import-model"} + args);
    p.waitForFinished(-1);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

} // namespace

TEST(CliImportModel, InstallsIntoTheModelsFolderOrSaysWhyNot)
{
    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("data"));
    const QString models = data + QStringLiteral("/Sagwerk/models");

    CTranslate2Model::Options base;
    base.state = 512;
    base.heads = 8;
    base.layers = 6;
    base.weights = CTranslate2Model::Weights::Int8;
    base.parts = 2;
    base.patterned = true;
    CTranslate2Model::write(dir.filePath(QStringLiteral("base")), base);
    const CliRun ok = importModel({dir.filePath(QStringLiteral("base"))}, data);
    EXPECT_EQ(ok.status, 0) << ok.err.toStdString();
    EXPECT_EQ(ok.out, QStringLiteral("Modell „Base“ importiert: %1/ggml-base-q5_1.bin\n").arg(models).toUtf8());
    EXPECT_TRUE(ok.err.isEmpty()) << "no progress bar when stderr is no terminal";
    EXPECT_EQ(QDir(models).entryList(QDir::Files | QDir::Hidden), QStringList{"ggml-base-q5_1.bin"});

    CTranslate2Model::Options english;
    english.englishOnly = true;
    CTranslate2Model::write(dir.filePath(QStringLiteral("english")), english);
    const CliRun refused = importModel({dir.filePath(QStringLiteral("english"))}, data);
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.out.isEmpty());
    EXPECT_TRUE(refused.err.contains("ist ein rein englisches Modell")) << refused.err.toStdString();
    EXPECT_EQ(QDir(models).entryList(QDir::Files | QDir::Hidden), QStringList{"ggml-base-q5_1.bin"});

    EXPECT_EQ(importModel({}, data).status, 2);
    EXPECT_EQ(importModel({"a", "b"}, data).status, 2);
}
