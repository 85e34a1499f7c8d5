#include "links/LinkError.h"
#include "core/Tr.h"

#include <QCoreApplication>

QString LinkError::errorDescription() const
{
    switch (m_case) {
    case Case::network:
        return Tr::tr("Netzwerkfehler") + QStringLiteral(": ") + m_message;
    case Case::invalidURL:
        return Tr::tr("Das sieht nicht nach einem gültigen Link aus.");
    case Case::spotify:
        return Tr::tr("Spotify-Links lassen sich nicht laden – Spotify gibt kein herunterladbares Audio heraus. "
                       "Nutze den Apple-Podcasts-, RSS- oder direkten Audio-Link.");
    case Case::appleNotFound:
        return Tr::tr("Diese Apple-Podcasts-Folge konnte nicht aufgelöst werden. "
                                                      "Versuch es mit dem RSS-Feed oder dem direkten Audio-Link.");
    case Case::noEnclosure:
        return Tr::tr("Im Feed wurde keine Audiodatei gefunden.");
    case Case::unsupported:
        return Tr::tr("Unter diesem Link wurde kein Podcast-Audio gefunden. "
                                                      "Nutze einen Apple-Podcasts-, RSS- oder direkten Audio-Link.");
    }
    return {};
}
