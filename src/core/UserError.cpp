#include "core/UserError.h"

#include "core/Tr.h"

QString cancelledText()
{
    return Tr::tr("Abgebrochen.");
}

const char *UserError::what() const noexcept
{
    // Made anew each time: the interface language may have changed.
    m_what = errorDescription().toUtf8();
    return m_what.constData();
}
