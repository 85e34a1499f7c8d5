#include "links/PodcastError.h"

#include <QCoreApplication>

QString PodcastError::errorDescription() const
{
    switch (m_case) {
    case Case::network:
        return QCoreApplication::translate("Sagwerk", "Netzwerkfehler") + QStringLiteral(": ") + m_message;
    case Case::invalidURL:
        return QCoreApplication::translate("Sagwerk", "Das sieht nicht nach einem gültigen Link aus.");
    case Case::spotify:
        return QCoreApplication::translate(
            "Sagwerk", "Spotify-Links lassen sich nicht laden – Spotify gibt kein herunterladbares Audio heraus. "
                       "Nutze den Apple-Podcasts-, RSS- oder direkten Audio-Link.");
    case Case::appleNotFound:
        return QCoreApplication::translate("Sagwerk", "Diese Apple-Podcasts-Folge konnte nicht aufgelöst werden. "
                                                      "Versuch es mit dem RSS-Feed oder dem direkten Audio-Link.");
    case Case::noEnclosure:
        return QCoreApplication::translate("Sagwerk", "Im Feed wurde keine Audiodatei gefunden.");
    case Case::unsupported:
        return QCoreApplication::translate("Sagwerk", "Unter diesem Link wurde kein Podcast-Audio gefunden. "
                                                      "Nutze einen Apple-Podcasts-, RSS- oder direkten Audio-Link.");
    }
    return {};
}

const char *PodcastError::what() const noexcept
{
    m_what = errorDescription().toUtf8();
    return m_what.constData();
}
