#include "cli/Commands.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "review/TranscriptLines.h"
#include "app/Scripted.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace Cli {

int exportBundle(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("bundle"), QStringLiteral("folder of a stored transcription"));
    parser.addOption({QStringLiteral("format"), QStringLiteral("txt, srt, vtt or json"), QStringLiteral("format")});
    parser.addOption({QStringLiteral("view"),
                      QStringLiteral("0 for the original, N for AI refinement level N, speakers for the speaker text"),
                      QStringLiteral("view")});
    parser.addOption({QStringLiteral("no-timestamps"), QStringLiteral("plain text without time marks")});
    parser.addOption({QStringLiteral("output"), QStringLiteral("file to write instead of standard output"),
                      QStringLiteral("file")});
    const QString format = parser.parse(args) ? parser.value(QStringLiteral("format")) : QString();
    bool viewOk = true;
    const QString viewName = parser.value(QStringLiteral("view"));
    const qint64 view = !parser.isSet(QStringLiteral("view")) ? TranscriptLines::originalView
        : viewName == QLatin1String("speakers")             ? TranscriptLines::speakerView
                                                             : viewName.toLongLong(&viewOk);
    if (parser.positionalArguments().size() != 1 || !viewOk || (view < 0 && viewName != QLatin1String("speakers"))
        || !QStringList{"txt", "srt", "vtt", "json"}.contains(format)) {
        return usageError(parser);
    }

    const QString folder = QFileInfo(parser.positionalArguments().constFirst()).absoluteFilePath();
    const std::optional<HistoryItem> stored = Scripted::read(folder);
    if (!stored) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("„%1“ ist keine lesbare Transkription.")
                                    .arg(QDir::toNativeSeparators(folder))));
        return Failed;
    }
    const HistoryItem &item = *stored;

    if (view == TranscriptLines::speakerView && !item.speakerText) {
        std::fprintf(stderr, "%s\n", qPrintable(Tr::tr("Diese Transkription hat keinen Sprechertext.")));
        return Failed;
    }
    if (view > 0 && !item.smoothed.contains(view)) {
        std::fprintf(stderr, "%s\n", qPrintable(Tr::tr("Diese Transkription hat keine Stufe %1.").arg(view)));
        return Failed;
    }

    // As the result screen hands text out: the view's text with the corrections; the
    // subtitles and the JSON come from the timed segments, with the speakers' names.
    const QByteArray bytes = format == QLatin1String("json") ? AppModel::transcriptJson(item)
        : format == QLatin1String("vtt")                     ? AppModel::vtt(item).toUtf8()
        : format == QLatin1String("srt")
        ? AppModel::srt(item, view == TranscriptLines::speakerView).toUtf8()
        : TranscriptLines::currentText(item, view, !parser.isSet(QStringLiteral("no-timestamps"))).toUtf8();

    if (!parser.isSet(QStringLiteral("output"))) {
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        return Ok;
    }
    QSaveFile out(parser.value(QStringLiteral("output")));
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(Tr::tr("Die Datei „%1“ konnte nicht geschrieben werden: %2")
                                    .arg(out.fileName(), out.errorString())));
        return Failed;
    }
    return Ok;
}

} // namespace Cli
