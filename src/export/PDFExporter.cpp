#include "export/PDFExporter.h"

#include <QAbstractTextDocumentLayout>
#include <algorithm>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <QTextDocument>

namespace PDFExporter {

void write(const QString &title, const QString &body, const QString &path)
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    {
        QPdfWriter writer(&file);
        writer.setCreator(QStringLiteral("Sagwerk"));
        writer.setTitle(title);
        writer.setPageLayout(QPageLayout(QPageSize(QSizeF(595, 842), QPageSize::Point, QString(),
                                                   QPageSize::ExactMatch),
                                         QPageLayout::Portrait, QMarginsF(48, 48, 48, 48), QPageLayout::Point));

        QTextDocument document;
        // Fonts are measured at the writer's resolution, so points are points on paper.
        document.documentLayout()->setPaintDevice(&writer);
        document.setDocumentMargin(0);
        const QSizeF page(writer.width(), writer.height());
        document.setPageSize(page);

        QFont regular = QGuiApplication::font();
        regular.setPointSizeF(11.5);
        regular.setBold(false);
        QFont bold = regular;
        bold.setPointSizeF(16);
        bold.setBold(true);
        QTextCharFormat titleFormat;
        titleFormat.setFont(bold);
        titleFormat.setForeground(Qt::black);
        QTextCharFormat bodyFormat;
        bodyFormat.setFont(regular);
        bodyFormat.setForeground(Qt::black);

        QTextCursor cursor(&document);
        cursor.setBlockCharFormat(title.isEmpty() ? bodyFormat : titleFormat);
        if (!title.isEmpty()) {
            cursor.insertText(title, titleFormat);
            cursor.insertBlock(QTextBlockFormat(), titleFormat);
            cursor.insertBlock(QTextBlockFormat(), bodyFormat);
        }
        // Each line break of the body becomes a paragraph break.
        QString text = body;
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        cursor.insertText(text, bodyFormat);

        // Pagination starts every line on one page. Each line is drawn once, on the page
        // that holds its middle, so that no line is written twice at a page's edge.
        struct Placed {
            const QTextLayout *layout;
            int line;
        };
        const int pages = std::max(1, document.pageCount());
        QList<QList<Placed>> onPage(pages);
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const QTextLayout *layout = block.layout();
            for (int i = 0; i < layout->lineCount(); ++i) {
                const QTextLine line = layout->lineAt(i);
                const qreal middle = layout->position().y() + line.y() + line.height() / 2;
                onPage[std::clamp(int(middle / page.height()), 0, pages - 1)].append({layout, i});
            }
        }
        QPainter painter;
        if (!painter.begin(&writer))
            return;
        painter.setPen(Qt::black);
        for (int p = 0; p < pages; ++p) {
            if (p > 0)
                writer.newPage();
            for (const Placed &placed : std::as_const(onPage[p]))
                placed.layout->lineAt(placed.line).draw(&painter, placed.layout->position() - QPointF(0, p * page.height()));
        }
        painter.end();
    }
    file.commit();
}

} // namespace PDFExporter
