// Every interface text that the code marks for translation has a finished entry in every
// catalogue: lupdate runs over the sources into copies of the catalogues.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const QString context = QStringLiteral("Sagwerk");
const QString updateHint = QStringLiteral(
    "Run `cmake --build build --target update_translations`, then translate every entry "
    "marked unfinished in translations/*.ts.");

struct Message {
    QString context;
    QString source;
    QString comment;
    QString type; // empty when finished; "unfinished", "vanished" or "obsolete"
    QStringList translations; // one, or one per plural form
    bool numerus = false;
};

struct Catalogue {
    QString language;
    QList<Message> messages;
};

QStringList lines(const char *joined)
{
    return QString::fromUtf8(joined).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

Catalogue read(const QString &path)
{
    Catalogue catalogue;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << path.toStdString();
        return catalogue;
    }
    QXmlStreamReader xml(&file);
    QString currentContext;
    Message message;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const auto name = xml.name();
            if (name == QLatin1String("TS")) {
                catalogue.language = xml.attributes().value(QLatin1String("language")).toString();
            } else if (name == QLatin1String("name")) {
                currentContext = xml.readElementText();
            } else if (name == QLatin1String("message")) {
                message = Message{currentContext, {}, {}, {}, {},
                                  xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes")};
            } else if (name == QLatin1String("source")) {
                message.source = xml.readElementText();
            } else if (name == QLatin1String("comment")) {
                message.comment = xml.readElementText();
            } else if (name == QLatin1String("translation")) {
                message.type = xml.attributes().value(QLatin1String("type")).toString();
                if (!message.numerus)
                    message.translations << xml.readElementText();
            } else if (name == QLatin1String("numerusform")) {
                message.translations << xml.readElementText();
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            catalogue.messages << message;
        }
    }
    if (xml.hasError())
        ADD_FAILURE() << path.toStdString() << ": " << xml.errorString().toStdString();
    return catalogue;
}

QStringList placeholders(const QString &text, bool withCount)
{
    static const QRegularExpression pattern(QStringLiteral("%L?(\\d{1,2}|n)"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text)) {
        if (withCount || match.captured(1) != QLatin1String("n"))
            found << match.captured(1);
    }
    std::sort(found.begin(), found.end());
    return found;
}

QStringList problemsOf(const Message &m)
{
    QStringList problems;
    if (m.context != context)
        problems << QStringLiteral("context \"%1\" instead of \"Sagwerk\"").arg(m.context);
    if (m.type == QLatin1String("vanished") || m.type == QLatin1String("obsolete"))
        return problems << QStringLiteral("no longer in the code");
    if (m.type == QLatin1String("unfinished"))
        return problems << QStringLiteral("not translated");
    for (const QString &translation : m.translations) {
        if (translation.trimmed().isEmpty())
            problems << QStringLiteral("empty translation");
        // A plural form may leave out the count; every other argument must be there.
        else if (placeholders(translation, !m.numerus) != placeholders(m.source, !m.numerus))
            problems << QStringLiteral("arguments differ in \"%1\"").arg(translation);
    }
    if (m.translations.isEmpty())
        problems << QStringLiteral("no translation");
    return problems;
}

} // namespace

TEST(Catalogues, EveryMarkedTextIsTranslatedInEveryLanguage)
{
    const QStringList originals = lines(SAGWERK_TS_FILES);
    ASSERT_EQ(originals.size(), 3);
    const QString dir = QDir::tempPath();
    QStringList copies;
    for (const QString &original : originals) {
        const QString copy = dir + QLatin1Char('/') + QFileInfo(original).fileName();
        QFile::remove(copy);
        ASSERT_TRUE(QFile::copy(original, copy)) << original.toStdString();
        QFile(copy).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        copies << copy;
    }

    QProcess lupdate;
    lupdate.start(QStringLiteral(SAGWERK_LUPDATE),
                  lines(SAGWERK_LUPDATE_ARGS) << QStringLiteral("-ts") << copies);
    ASSERT_TRUE(lupdate.waitForFinished(120000));
    ASSERT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().toStdString();
    EXPECT_EQ(lupdate.readAllStandardError().trimmed().toStdString(), "");

    QStringList problems;
    qsizetype texts = 0;
    for (const QString &copy : copies) {
        const Catalogue catalogue = read(copy);
        const QString file = QFileInfo(copy).fileName();
        texts = std::max(texts, catalogue.messages.size());
        for (const Message &m : catalogue.messages) {
            for (const QString &problem : problemsOf(m))
                problems << QStringLiteral("%1: \"%2\": %3").arg(file, m.source, problem);
        }
    }
    EXPECT_GE(texts, 2);
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString() << "\n"
                                    << updateHint.toStdString();
}

TEST(Catalogues, EmbeddedCataloguesHoldEveryTranslation)
{
    for (const QString &path : lines(SAGWERK_TS_FILES)) {
        const Catalogue catalogue = read(path);
        SCOPED_TRACE(catalogue.language.toStdString());
        QTranslator translator;
        ASSERT_TRUE(translator.load(QStringLiteral(":/i18n/sagwerk_%1.qm").arg(catalogue.language)));
        for (const Message &m : catalogue.messages) {
            if (!m.type.isEmpty() || m.translations.isEmpty())
                continue;
            const QString found = translator.translate(m.context.toUtf8(), m.source.toUtf8(),
                                                       m.comment.toUtf8(), m.numerus ? 1 : -1);
            if (m.numerus)
                EXPECT_TRUE(m.translations.contains(found)) << m.source.toStdString();
            else
                EXPECT_EQ(found, m.translations.first()) << m.source.toStdString();
        }
    }
}
