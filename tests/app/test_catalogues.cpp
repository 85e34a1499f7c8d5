// Every interface text that the code marks for translation has a finished entry in every
// catalogue: lupdate runs over the sources into copies of the catalogues. The German
// catalogue holds just the texts that name another platform, worded for Linux, the
// singular of counted texts, and texts where the program's name stands for a transcript.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

QStringList lines(const char *joined)
{
    return QString::fromUtf8(joined).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

// What the texts written for the original platform name; no translation may name it.
const QRegularExpression platformWords(
    QStringLiteral("\\b(Mac|macOS|Finder|Metal|Systemeinstellungen|Neural Engine|Apple [Ss]ilicon)\\b"));

// Runs lupdate over the sources into `catalogues`; empty when it went well.
std::string runLupdate(const QStringList &catalogues)
{
    QProcess lupdate;
    lupdate.start(QStringLiteral(SAGWERK_LUPDATE), lines(SAGWERK_LUPDATE_ARGS) << QStringLiteral("-ts") << catalogues);
    if (!lupdate.waitForFinished(120000))
        return "lupdate did not finish";
    return (lupdate.exitCode() == 0 ? QByteArray() : QByteArray("lupdate failed: "))
           .append(lupdate.readAllStandardError().trimmed())
           .toStdString();
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

// What is wrong with the entries of one catalogue, one line each; and its entries, source
// text and translation (plural forms joined).
QStringList problemsOf(const QString &path, QMap<QString, QString> *entries = nullptr,
                       QSet<QString> *counted = nullptr)
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
            if (entries)
                entries->insert(source, translations.join(u'\n'));
            if (counted && numerus)
                counted->insert(source);
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

// A text whose German key says "Sagwerk" where the transcript is meant, which the German
// catalogue puts right.
bool namesTheProgram(QMap<QString, QString>::const_iterator entry)
{
    const QString name = QStringLiteral("Sagwerk");
    return entry.key().contains(name) && !entry.value().contains(name);
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

    ASSERT_EQ(runLupdate(copies), "");

    QStringList problems;
    for (const QString &copy : copies) {
        QMap<QString, QString> entries;
        problems << problemsOf(copy, &entries);
        // Texts written for the original platform say what is true on Linux.
        for (auto it = entries.begin(); it != entries.end(); ++it)
            if (it.key().contains(platformWords) && it.value().contains(platformWords))
                problems << QStringLiteral("%1: \"%2\": still names the other platform")
                                .arg(QFileInfo(copy).fileName(), it.value());
    }
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString()
                                    << "\nRun `cmake --build build --target update_translations`, then translate "
                                       "every entry marked unfinished in translations/*.ts.";
}

TEST(Catalogues, GermanRewordsJustTheTextsThatNameAnotherPlatform)
{
    // Every marked text, as lupdate finds it, in a catalogue of its own.
    const QString marked = QDir::tempPath() + QStringLiteral("/marked.ts");
    QFile::remove(marked);
    ASSERT_EQ(runLupdate({marked}), "");
    QMap<QString, QString> code, entries;
    problemsOf(marked, &code);
    ASSERT_FALSE(code.isEmpty());

    QSet<QString> counted;
    QStringList problems = problemsOf(QStringLiteral(SAGWERK_GERMAN_TS), &entries, &counted);
    const auto report = [&](const QString &text, const char *problem) {
        problems << QStringLiteral("sagwerk_de.ts: \"%1\": %2").arg(text, QLatin1String(problem));
    };
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if (!code.contains(it.key()))
            report(it.key(), "no longer in the code");
        else if (!it.key().contains(platformWords) && !counted.contains(it.key()) && !namesTheProgram(it))
            report(it.key(), "names no other platform, counts nothing and does not misname the transcript, so "
                             "the German source text stands");
        if (it.value().contains(platformWords))
            report(it.value(), "still names the other platform");
    }
    for (const QString &text : code.keys())
        if (text.contains(platformWords) && !entries.contains(text))
            report(text, "names another platform and has no German entry for Linux");
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString()
                                    << "\nWrite the Linux wording of each text that names the other platform into "
                                       "translations/sagwerk_de.ts by hand, and only of those.";
}
