#include "cli/Commands.h"

#include "core/HistoryItem.h"
#include "export/Format.h"
#include "app/Scripted.h"
#include "core/JsonCoding.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

namespace Cli {

namespace {

QJsonObject itemJson(const HistoryItem &item)
{
    QJsonObject refined;
    for (auto it = item.refined.cbegin(); it != item.refined.cend(); ++it)
        refined.insert(QString::number(it.key()), it.value());
    QJsonArray corrections;
    for (const Correction &c : item.corrections)
        corrections.append(c.toJson());
    QJsonObject o{{"id", item.id},
                  {"fileName", item.fileName},
                  {"date", JsonCoding::dateText(item.date)},
                  {"language", item.result.language},
                  {"processingSeconds", item.result.processingSeconds},
                  {"fullText", item.result.fullText},
                  {"segments", qint64(item.result.segments.size())},
                  {"audioURL", item.audioPath.value_or(QString())},
                  {"bundlePath", item.bundlePath.value_or(QString())},
                  {"smoothed", refined},
                  {"corrections", corrections}};
    if (item.speakerText)
        o.insert("speakerText", *item.speakerText);
    return o;
}

} // namespace

int list(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("json"), QStringLiteral("one JSON array instead of lines")});
    if (!parser.parse(args) || !parser.positionalArguments().isEmpty()) {
        return usageError(parser);
    }

    const QList<HistoryItem> history = Scripted::readAll();

    if (parser.isSet(QStringLiteral("json"))) {
        QJsonArray items;
        for (const HistoryItem &item : history)
            items.append(itemJson(item));
        const QByteArray json = QJsonDocument(items).toJson(QJsonDocument::Indented);
        std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
        return Ok;
    }
    // The interface's date form: German, local time, whatever the language.
    for (const HistoryItem &item : history) {
        const QString line = Format::date(item.date) + u'\t'
                             + item.fileName + u'\t' + item.result.language + u'\t' + item.bundlePath.value_or(QString())
                             + u'\n';
        const QByteArray bytes = line.toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    }
    return Ok;
}

} // namespace Cli
