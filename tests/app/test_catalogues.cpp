// Every interface text that the code marks for translation has a finished entry in every
// catalogue: lupdate runs over the sources into copies of the catalogues.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

QStringList lines(const char *joined)
{
    return QString::fromUtf8(joined).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

// The arguments of a text; a plural form may leave out the count.
QStringList placeholders(const QString &text, bool withCount)
{
    static const QRegularExpression pattern(QStringLiteral("%L?(\\d{1,2}|n)"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text))
        if (withCount || match.captured(1) != QLatin1String("n"))
            found << match.captured(1);
    found.sort();
    return found;
}

// What is wrong with the entries of one catalogue, one line each.
QStringList problemsOf(const QString &path)
{
    QStringList problems;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("cannot read ") + path};
    QXmlStreamReader xml(&file);
    QString context, source, type;
    QStringList translations;
    bool numerus = false;
    int messages = 0;
    auto report = [&](const QString &problem) {
        problems << QStringLiteral("%1: \"%2\": %3").arg(QFileInfo(path).fileName(), source, problem);
    };
    while (!xml.atEnd()) {
        xml.readNext();
        const auto name = xml.name();
        if (xml.isStartElement() && name == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.isStartElement() && name == QLatin1String("message")) {
            numerus = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
            translations.clear();
            type.clear();
            ++messages;
        } else if (xml.isStartElement() && name == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.isStartElement() && name == QLatin1String("translation")) {
            type = xml.attributes().value(QLatin1String("type")).toString();
            if (!numerus)
                translations << xml.readElementText();
        } else if (xml.isStartElement() && name == QLatin1String("numerusform")) {
            translations << xml.readElementText();
        } else if (xml.isEndElement() && name == QLatin1String("message")) {
            if (context != QLatin1String("Sagwerk"))
                report(QStringLiteral("context \"%1\" instead of \"Sagwerk\"").arg(context));
            if (type == QLatin1String("vanished") || type == QLatin1String("obsolete"))
                report(QStringLiteral("no longer in the code"));
            else if (type == QLatin1String("unfinished"))
                report(QStringLiteral("not translated"));
            else if (translations.isEmpty())
                report(QStringLiteral("no translation"));
            for (const QString &translation : translations) {
                if (!type.isEmpty())
                    break;
                if (translation.trimmed().isEmpty())
                    report(QStringLiteral("empty translation"));
                else if (placeholders(translation, !numerus) != placeholders(source, !numerus))
                    report(QStringLiteral("arguments differ in \"%1\"").arg(translation));
            }
        }
    }
    if (xml.hasError() || messages < 2)
        problems << path + QStringLiteral(": unreadable or empty ") + xml.errorString();
    return problems;
}

} // namespace

TEST(Catalogues, EveryMarkedTextIsTranslatedInEveryLanguage)
{
    const QStringList originals = lines(SAGWERK_TS_FILES);
    ASSERT_EQ(originals.size(), 3);
    QStringList copies;
    for (const QString &original : originals) {
        const QString copy = QDir::tempPath() + QLatin1Char('/') + QFileInfo(original).fileName();
        QFile::remove(copy);
        ASSERT_TRUE(QFile::copy(original, copy)) << original.toStdString();
        QFile(copy).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        copies << copy;
    }

    QProcess lupdate;
    lupdate.start(QStringLiteral(SAGWERK_LUPDATE), lines(SAGWERK_LUPDATE_ARGS) << QStringLiteral("-ts") << copies);
    ASSERT_TRUE(lupdate.waitForFinished(120000));
    ASSERT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().toStdString();
    EXPECT_EQ(lupdate.readAllStandardError().trimmed().toStdString(), "");

    QStringList problems;
    for (const QString &copy : copies)
        problems << problemsOf(copy);
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString()
                                    << "\nRun `cmake --build build --target update_translations`, then translate "
                                       "every entry marked unfinished in translations/*.ts.";
}
