#include "app/MediaTypes.h"

#include <QMimeDatabase>
#include <QSet>

#include <algorithm>

namespace MediaTypes {

const QStringList &extensions()
{
    static const QStringList list = {
        QStringLiteral("m4a"), QStringLiteral("mp3"), QStringLiteral("wav"), QStringLiteral("aac"),
        QStringLiteral("aiff"), QStringLiteral("flac"), QStringLiteral("ogg"), QStringLiteral("opus"),
        QStringLiteral("amr"), QStringLiteral("caf"), QStringLiteral("mp4"), QStringLiteral("m4v"),
        QStringLiteral("mov"), QStringLiteral("mkv"), QStringLiteral("webm"), QStringLiteral("avi"),
        QStringLiteral("wmv"), QStringLiteral("flv"), QStringLiteral("mpg"), QStringLiteral("mpeg"),
        QStringLiteral("3gp"),
    };
    return list;
}

QStringList patterns()
{
    const QMimeDatabase db;
    QSet<QString> found;
    auto take = [&](const QMimeType &type) {
        for (const QString &glob : type.globPatterns())
            found.insert(glob);
    };
    for (const QMimeType &type : db.allMimeTypes()) {
        const QString name = type.name();
        if (name.startsWith(QLatin1String("audio/")) || name.startsWith(QLatin1String("video/")))
            take(type);
    }
    for (const QString &extension : extensions()) {
        for (const QMimeType &type : db.mimeTypesForFileName(QStringLiteral("x.") + extension))
            take(type);
    }
    QStringList list(found.begin(), found.end());
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace MediaTypes
