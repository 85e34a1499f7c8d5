// Renders the application's SVG icon as square PNG files for the hicolor theme:
//
//   render-icon ICON.svg OUTDIR SIZE...
//
// writes OUTDIR/SIZExSIZE/apps/<name of ICON>.png for each size.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() < 3) {
        std::fprintf(stderr, "usage: render-icon ICON.svg OUTDIR SIZE...\n");
        return 2;
    }
    const QString svg = args.at(0);
    const QString name = QFileInfo(svg).completeBaseName();
    for (const QString &arg : args.mid(2)) {
        bool ok = false;
        const int size = arg.toInt(&ok);
        if (!ok || size < 1) {
            std::fprintf(stderr, "render-icon: not a size: %s\n", qPrintable(arg));
            return 2;
        }
        // A reader per size, so that the vector picture is drawn at each size rather
        // than scaled from one bitmap.
        QImageReader reader(svg, "svg");
        reader.setScaledSize(QSize(size, size));
        QImage image = reader.read();
        if (image.isNull()) {
            std::fprintf(stderr, "render-icon: %s: %s\n", qPrintable(svg), qPrintable(reader.errorString()));
            return 1;
        }
        const QString dir = QStringLiteral("%1/%2x%2/apps").arg(args.at(1)).arg(size);
        QDir().mkpath(dir);
        const QString out = dir + u'/' + name + QStringLiteral(".png");
        if (!image.convertToFormat(QImage::Format_ARGB32).save(out, "PNG")) {
            std::fprintf(stderr, "render-icon: cannot write %s\n", qPrintable(out));
            return 1;
        }
    }
    return 0;
}
