#include "storage/BundleError.h"
#include "core/Tr.h"

#include <QCoreApplication>

QString BundleError::errorDescription() const
{
    switch (m_case) {
    case Case::folderNotCreated:
        return Tr::tr("Der Ordner „%1“ konnte nicht angelegt werden.").arg(m_path);
    case Case::documentNotWritten:
        return Tr::tr("Die Datei „%1“ konnte nicht geschrieben werden: %2")
            .arg(m_path, m_detail);
    }
    return {};
}
