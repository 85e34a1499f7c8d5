// PDF and Word files read back, and failures that leave nothing behind. The files stay
// in the test's temporary folder, where scripts/check-documents renders them.
#include "Media.h"

#include "export/DocxExporter.h"
#include "export/PDFExporter.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

#include <gtest/gtest.h>

namespace {

QString temp(const QString &name)
{
    return QDir::tempPath() + u'/' + name;
}

QString run(const QString &program, const QStringList &arguments)
{
    QProcess p;
    p.start(program, arguments);
    p.waitForFinished(-1);
    EXPECT_EQ(p.exitCode(), 0) << program.toStdString() << ": " << p.readAllStandardError().toStdString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

// Every fifth line long enough to wrap several times.
QString longBody(int lines)
{
    QStringList out;
    for (int i = 0; i < lines; ++i) {
        QString line = QStringLiteral("[%1:%2] Zeile %3 über die Mühle am Fluss").arg(i / 60).arg(i % 60, 2, 10, QChar(u'0')).arg(i);
        if (i % 5 == 0)
            line += QStringLiteral(" und was danach geschah, erzählt von Herrn Schäfer, der sich an jedes Detail "
                                   "erinnert, an jedes Zahnrad und an jeden Winter, Ende%1")
                        .arg(i);
        out << line;
    }
    return out.join(u'\n');
}

struct Word {
    QString text;
    double xMin, yMin, xMax, yMax;
    int page;
};

QList<Word> pdfWords(const QString &path)
{
    const QString html = run(QStringLiteral("pdftotext"), {"-bbox", path, "-"});
    static const QRegularExpression page(QStringLiteral("<page "));
    static const QRegularExpression word(QStringLiteral(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    QList<Word> words;
    const QStringList pages = html.split(page);
    for (int p = 1; p < pages.size(); ++p) {
        for (auto it = word.globalMatch(pages[p]); it.hasNext();) {
            const auto m = it.next();
            words.append({m.captured(5), m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                          m.captured(4).toDouble(), p});
        }
    }
    return words;
}

struct Paragraph {
    QString text;
    bool bold = false;
    int halfPoints = 0;
};

// With the properties of the first run, or of the paragraph mark when there is none.
QList<Paragraph> docxParagraphs(const QString &path, QStringList *entries = nullptr)
{
    QuaZip zip(path);
    EXPECT_TRUE(zip.open(QuaZip::mdUnzip));
    if (entries)
        *entries = zip.getFileNameList();
    EXPECT_TRUE(zip.setCurrentFile(QStringLiteral("word/document.xml")));
    QuaZipFile part(&zip);
    EXPECT_TRUE(part.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(part.readAll());
    QList<Paragraph> paragraphs;
    bool inRun = false, runSeen = false;
    while (!xml.atEnd()) {
        xml.readNext();
        const QStringView name = xml.qualifiedName();
        if (xml.isStartElement()) {
            if (name == u"w:p") {
                paragraphs.append(Paragraph());
                runSeen = false;
            } else if (name == u"w:r") {
                inRun = true;
            } else if (name == u"w:b" && (inRun || !runSeen)) {
                paragraphs.last().bold = true;
            } else if (name == u"w:sz") {
                paragraphs.last().halfPoints = xml.attributes().value(u"w:val").toInt();
            } else if (name == u"w:t") {
                paragraphs.last().text += xml.readElementText();
            } else if (name == u"w:tab") {
                paragraphs.last().text += u'\t';
            }
        } else if (xml.isEndElement() && name == u"w:r") {
            inRun = false;
            runSeen = true;
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return paragraphs;
}

} // namespace

TEST(PDFExporter, A4PagesWithSelectableTextTitleAboveSmallerBody)
{
    const QString path = temp(QStringLiteral("long.pdf"));
    PDFExporter::write(QStringLiteral("Mühle am Fluss.m4a"), longBody(400), path);

    const QString info = run(QStringLiteral("pdfinfo"), {path});
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts")))) << info.toStdString();
    const int pages = QRegularExpression(QStringLiteral("Pages:\\s+(\\d+)")).match(info).captured(1).toInt();
    EXPECT_GE(pages, 8);

    const QList<Word> words = pdfWords(path);
    ASSERT_FALSE(words.isEmpty());
    // The title at the top margin, larger than the body; every word within the margins.
    EXPECT_EQ(words[0].text, QStringLiteral("Mühle"));
    EXPECT_NEAR(words[0].yMin, 48, 4);
    EXPECT_NEAR(words[0].xMin, 48, 1);
    const Word &firstBody = *std::find_if(words.begin(), words.end(), [](const Word &w) { return w.text == u"Zeile"; });
    EXPECT_GT(words[0].yMax - words[0].yMin, (firstBody.yMax - firstBody.yMin) * 1.25);
    for (const Word &w : words) {
        ASSERT_GE(w.xMin, 47.5) << w.text.toStdString();
        ASSERT_LE(w.xMax, 595 - 47.5) << w.text.toStdString();
        ASSERT_GE(w.yMin, 47.5) << w.text.toStdString();
        ASSERT_LE(w.yMax, 842 - 47.5) << w.text.toStdString();
    }
    QStringList texts;
    for (const Word &w : words)
        texts << w.text;
    EXPECT_TRUE(texts.contains(QStringLiteral("Ende395"))) << "the end of a wrapped line";
    EXPECT_EQ(texts.last(), QStringLiteral("Fluss"));
    EXPECT_EQ(words.last().page, pages);
    EXPECT_EQ(texts.count(QStringLiteral("Zeile")), 400);

    // Without a title the body starts at the top.
    const QString untitled = temp(QStringLiteral("untitled.pdf"));
    PDFExporter::write(QString(), QStringLiteral("Erste Zeile\nZweite Zeile"), untitled);
    const QList<Word> two = pdfWords(untitled);
    ASSERT_EQ(two.size(), 4);
    EXPECT_EQ(two[0].text, QStringLiteral("Erste"));
    EXPECT_NEAR(two[0].yMin, 48, 4);
    EXPECT_GT(two[2].yMin, two[0].yMax - 1) << "the line break is a paragraph break";
}

TEST(DocxExporter, MinimalPackageWithTitleAndBodyRuns)
{
    const QString path = temp(QStringLiteral("long.docx"));
    DocxExporter::write(QStringLiteral("Mühle & Fluss <1>.m4a"), QStringLiteral("[0:00] Erste Zeile\r\n\nmit\tTab  und Blanks"),
                        path);
    QStringList entries;
    const QList<Paragraph> p = docxParagraphs(path, &entries);
    EXPECT_TRUE(entries.contains(QStringLiteral("[Content_Types].xml")));
    EXPECT_TRUE(entries.contains(QStringLiteral("_rels/.rels")));
    ASSERT_EQ(p.size(), 5);
    EXPECT_EQ(p[0].text, QStringLiteral("Mühle & Fluss <1>.m4a"));
    EXPECT_TRUE(p[0].bold);
    EXPECT_EQ(p[0].halfPoints, 32);
    EXPECT_EQ(p[1].text, QString());
    EXPECT_EQ(p[2].text, QStringLiteral("[0:00] Erste Zeile"));
    EXPECT_FALSE(p[2].bold);
    EXPECT_EQ(p[2].halfPoints, 24);
    EXPECT_EQ(p[3].text, QString()) << "an empty line stays an empty paragraph";
    EXPECT_EQ(p[4].text, QStringLiteral("mit\tTab  und Blanks"));

    // Without a title the body starts at once; without a body the title stands alone.
    DocxExporter::write(QString(), QStringLiteral("Nur Text"), temp(QStringLiteral("untitled.docx")));
    const QList<Paragraph> q = docxParagraphs(temp(QStringLiteral("untitled.docx")));
    ASSERT_EQ(q.size(), 1);
    EXPECT_EQ(q[0].text, QStringLiteral("Nur Text"));
    DocxExporter::write(QStringLiteral("Titel"), QString(), temp(QStringLiteral("title-only.docx")));
    const QList<Paragraph> r = docxParagraphs(temp(QStringLiteral("title-only.docx")));
    ASSERT_EQ(r.size(), 3);
    EXPECT_EQ(r[0].text, QStringLiteral("Titel"));

    DocxExporter::write(QStringLiteral("Mühle am Fluss.m4a"), longBody(400), temp(QStringLiteral("long-body.docx")));
}

TEST(Documents, FailuresAreSilentAndLeaveNothingBehind)
{
    const QStringList before = Media::temporaryEntries();
    // A folder in the file's place, and a path below a file.
    const QString folder = temp(QStringLiteral("folder.pdf"));
    QDir().mkpath(folder);
    PDFExporter::write(QStringLiteral("T"), QStringLiteral("B"), folder);
    DocxExporter::write(QStringLiteral("T"), QStringLiteral("B"), folder);
    const QString blocker = temp(QStringLiteral("blocker"));
    ASSERT_TRUE(QFile(blocker).open(QIODevice::WriteOnly));
    PDFExporter::write(QStringLiteral("T"), QStringLiteral("B"), blocker + QStringLiteral("/x.pdf"));
    DocxExporter::write(QStringLiteral("T"), QStringLiteral("B"), blocker + QStringLiteral("/x.docx"));
    QStringList after = Media::temporaryEntries();
    after.removeAll(QStringLiteral("folder.pdf"));
    after.removeAll(QStringLiteral("blocker"));
    EXPECT_EQ(after, before);
    EXPECT_TRUE(QDir(folder).isEmpty());

    // Text that XML cannot carry is left out rather than spoiling the document.
    const QString odd = temp(QStringLiteral("odd.docx"));
    DocxExporter::write(QStringLiteral("A\x01" "B"), QStringLiteral("C\x0b" "D"), odd);
    const QList<Paragraph> p = docxParagraphs(odd);
    ASSERT_EQ(p.size(), 3);
    EXPECT_EQ(p[0].text, QStringLiteral("AB"));
    EXPECT_EQ(p[2].text, QStringLiteral("CD"));
    QFile::remove(odd);
}
