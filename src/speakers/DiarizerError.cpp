#include "speakers/DiarizerError.h"

#include "core/Tr.h"

QString DiarizerError::errorDescription() const
{
    switch (m_case) {
    case Case::failed:
        return Tr::tr("Sprechertrennung fehlgeschlagen") + QStringLiteral(": ") + m_detail;
    case Case::cliNotFound:
        return Tr::tr("Programm für die Sprechertrennung nicht gefunden (App beschädigt?).");
    case Case::cancelled:
        return Tr::tr("Abgebrochen.");
    }
    return {};
}
