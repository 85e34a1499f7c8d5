#include "links/FeedParser.h"
#include "core/Tr.h"

#include "links/WebURL.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

namespace {

bool isItem(const QString &name)
{
    return name == QLatin1String("item") || name == QLatin1String("entry");
}

} // namespace

void FeedParser::startElement(const QString &name, const QString &url, bool hasUrl)
{
    if (isItem(name)) {
        itemCount += 1;
        if (itemCount == 1)
            inFirstItem = true;
    } else if (inFirstItem && name == QLatin1String("title")) {
        inTitle = true;
    } else if (inFirstItem && name == QLatin1String("enclosure") && !enclosure) {
        if (hasUrl)
            enclosure = url;
    }
}

bool FeedParser::endElement(const QString &name)
{
    if (name == QLatin1String("title"))
        inTitle = false;
    if (isItem(name) && inFirstItem) {
        inFirstItem = false;
        return false;
    }
    return true;
}

std::optional<ResolvedMedia> FeedParser::firstEpisode(const QByteArray &feed)
{
    FeedParser state;
    QXmlStreamReader reader(feed);
    reader.setNamespaceProcessing(false);
    bool going = true;
    while (going && !reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QXmlStreamAttributes attributes = reader.attributes();
            state.startElement(reader.qualifiedName().toString().toLower(),
                               attributes.value(QLatin1String("url")).toString(),
                               attributes.hasAttribute(QLatin1String("url")));
            break;
        }
        case QXmlStreamReader::Characters:
            // Text and CDATA sections alike: many feeds wrap their titles in CDATA.
            if (state.inTitle)
                state.title += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            going = state.endElement(reader.qualifiedName().toString().toLower());
            break;
        default:
            break;
        }
    }

    if (!state.enclosure)
        return std::nullopt;
    const std::optional<QUrl> url = Links::webURL(state.enclosure->trimmed());
    if (!url)
        return std::nullopt;
    const QString title = state.title.trimmed();
    return ResolvedMedia{*url, title.isEmpty() ? Tr::tr("Podcast-Episode") : title};
}
