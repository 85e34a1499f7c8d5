#include "engine/EngineError.h"

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
        return QCoreApplication::translate("Sagwerk", "Kein Modell ausgewählt/installiert.");
    case Case::cancelled:
        return QCoreApplication::translate("Sagwerk", "Abgebrochen.");
    }
    return {};
}

const char *EngineError::what() const noexcept
{
    m_what = errorDescription().toUtf8();
    return m_what.constData();
}
