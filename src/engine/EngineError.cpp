#include "engine/EngineError.h"
#include "core/Tr.h"

#include <QCoreApplication>

QString EngineError::errorDescription() const
{
    // The two prefixes stay German in every interface language; only the two
    // whole sentences follow the language.
    switch (m_case) {
    case Case::convertFailed:
        return QStringLiteral("Audio konnte nicht nach 16 kHz konvertiert werden: ") + m_message;
    case Case::transcribeFailed:
        return QStringLiteral("Transkription fehlgeschlagen: ") + m_message;
    case Case::noModel:
        return Tr::tr("Kein Modell ausgewählt/installiert.");
    case Case::cancelled:
        return Tr::tr("Abgebrochen.");
    }
    return {};
}
