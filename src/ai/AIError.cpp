#include "ai/AIError.h"

#include "core/Tr.h"

QString AIError::errorDescription() const
{
    switch (m_case) {
    case Case::http:
        if (m_status == 401)
            return QStringLiteral("API-Key ungültig (401). Bitte in den Einstellungen prüfen.");
        if (m_status == 429)
            return QStringLiteral("Zu viele Anfragen (429). Bitte kurz warten und erneut versuchen.");
        return QStringLiteral("API-Fehler (") + QString::number(m_status) + QStringLiteral("): ") + m_message;
    case Case::network:
        return QStringLiteral("Netzwerkfehler: ") + m_message;
    case Case::noKey:
        return Tr::tr("Kein API-Key für den gewählten Anbieter hinterlegt. Bitte in den Einstellungen eintragen.");
    case Case::refusal:
        return Tr::tr("Die Anfrage wurde vom Modell abgelehnt.");
    case Case::badResponse:
        return Tr::tr("Unerwartete Antwort der API.");
    }
    return {};
}
