#include "app/ItemNames.h"

#include "core/HistoryItem.h"
#include "review/TranscriptLines.h"

QString ItemNames::oneLine(const QString &name)
{
    QString line = name;
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    return line.trimmed();
}

QMap<QString, QString> ItemNames::renamedSpeakers(const HistoryItem &item, const QString &shown, const QString &name)
{
    const QString wanted = oneLine(name);
    QMap<QString, QString> names = item.speakerNames;
    for (const QString &label : TranscriptLines::labelsShownAs(item, shown)) {
        if (wanted.isEmpty() || wanted == label)
            names.remove(label);
        else
            names.insert(label, wanted);
    }
    return names;
}
