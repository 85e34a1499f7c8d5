#include "export/DocxExporter.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QSaveFile>
#include <QXmlStreamWriter>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

namespace DocxExporter {

namespace {

const QString wordNamespace = QStringLiteral("http://schemas.openxmlformats.org/wordprocessingml/2006/main");

const char contentTypes[] = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">
<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
<Default Extension="xml" ContentType="application/xml"/>
<Override PartName="/word/document.xml" ContentType="application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/>
</Types>
)";

const char packageRelationships[] = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/>
</Relationships>
)";

struct RunStyle {
    bool bold = false;
    int halfPoints = 24;
};

// XML 1.0 cannot carry most control characters; they would make the document unreadable.
QString xmlSafe(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= 0x20 || u == u'\t')
            out += c;
    }
    return out;
}

void writeRunProperties(QXmlStreamWriter &xml, const RunStyle &style, const QString &family)
{
    xml.writeStartElement(QStringLiteral("w:rPr"));
    if (!family.isEmpty()) {
        xml.writeEmptyElement(QStringLiteral("w:rFonts"));
        for (const char *slot : {"w:ascii", "w:hAnsi", "w:cs", "w:eastAsia"})
            xml.writeAttribute(QLatin1String(slot), family);
    }
    if (style.bold) {
        xml.writeEmptyElement(QStringLiteral("w:b"));
        xml.writeEmptyElement(QStringLiteral("w:bCs"));
    }
    for (const char *size : {"w:sz", "w:szCs"}) {
        xml.writeEmptyElement(QLatin1String(size));
        xml.writeAttribute(QStringLiteral("w:val"), QString::number(style.halfPoints));
    }
    xml.writeEndElement();
}

// One paragraph; the paragraph mark takes the run's style, so an empty line keeps its size.
void writeParagraph(QXmlStreamWriter &xml, const QString &text, const RunStyle &style, const QString &family)
{
    xml.writeStartElement(QStringLiteral("w:p"));
    xml.writeStartElement(QStringLiteral("w:pPr"));
    writeRunProperties(xml, style, family);
    xml.writeEndElement();
    if (!text.isEmpty()) {
        xml.writeStartElement(QStringLiteral("w:r"));
        writeRunProperties(xml, style, family);
        const QStringList pieces = xmlSafe(text).split(u'\t');
        for (qsizetype i = 0; i < pieces.size(); ++i) {
            if (i > 0)
                xml.writeEmptyElement(QStringLiteral("w:tab"));
            if (pieces[i].isEmpty())
                continue;
            xml.writeStartElement(QStringLiteral("w:t"));
            xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
            xml.writeCharacters(pieces[i]);
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

QByteArray documentPart(const QString &title, const QString &body)
{
    // The interface's own font family where there is one; otherwise the reader's default.
    const QString family = qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        ? QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()
        : QString();
    QByteArray out;
    QXmlStreamWriter xml(&out);
    xml.writeStartDocument(QStringLiteral("1.0"), true);
    xml.writeStartElement(QStringLiteral("w:document"));
    xml.writeNamespace(wordNamespace, QStringLiteral("w"));
    xml.writeStartElement(QStringLiteral("w:body"));
    if (!title.isEmpty()) {
        const RunStyle heading{true, 32};
        writeParagraph(xml, title, heading, family);
        writeParagraph(xml, QString(), heading, family);
    }
    QString text = body;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QString &line : text.split(u'\n'))
        writeParagraph(xml, line, RunStyle{false, 24}, family);
    // A4 with margins of 48 pt, as the PDF has them (sizes in twentieths of a point).
    xml.writeStartElement(QStringLiteral("w:sectPr"));
    xml.writeEmptyElement(QStringLiteral("w:pgSz"));
    xml.writeAttribute(QStringLiteral("w:w"), QStringLiteral("11906"));
    xml.writeAttribute(QStringLiteral("w:h"), QStringLiteral("16838"));
    xml.writeEmptyElement(QStringLiteral("w:pgMar"));
    for (const char *side : {"w:top", "w:right", "w:bottom", "w:left"})
        xml.writeAttribute(QLatin1String(side), QStringLiteral("960"));
    for (const char *edge : {"w:header", "w:footer", "w:gutter"})
        xml.writeAttribute(QLatin1String(edge), QStringLiteral("0"));
    xml.writeEndElement(); // sectPr
    xml.writeEndElement(); // body
    xml.writeEndElement(); // document
    xml.writeEndDocument();
    return out;
}

bool addEntry(QuaZip &zip, const QString &name, const QByteArray &data)
{
    QuaZipFile entry(&zip);
    if (!entry.open(QIODevice::WriteOnly, QuaZipNewInfo(name)))
        return false;
    const bool written = entry.write(data) == data.size();
    entry.close();
    return written && entry.getZipError() == ZIP_OK;
}

} // namespace

void write(const QString &title, const QString &body, const QString &path)
{
    const QByteArray document = documentPart(title, body);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    {
        QuaZip zip(&file);
        // The file is committed here, and only once the whole package is written.
        zip.setAutoClose(false);
        if (!zip.open(QuaZip::mdCreate))
            return;
        const bool ok = addEntry(zip, QStringLiteral("[Content_Types].xml"), contentTypes)
            && addEntry(zip, QStringLiteral("_rels/.rels"), packageRelationships)
            && addEntry(zip, QStringLiteral("word/document.xml"), document);
        zip.close();
        if (!ok || zip.getZipError() != ZIP_OK)
            return;
    }
    file.commit();
}

} // namespace DocxExporter
