#include "storage/BundleError.h"

#include <QCoreApplication>

QString BundleError::errorDescription() const
{
    switch (m_case) {
    case Case::folderNotCreated:
        return QCoreApplication::translate("Sagwerk", "Der Ordner „%1“ konnte nicht angelegt werden.").arg(m_path);
    case Case::documentNotWritten:
        return QCoreApplication::translate("Sagwerk", "Die Datei „%1“ konnte nicht geschrieben werden: %2")
            .arg(m_path, m_detail);
    }
    return {};
}

const char *BundleError::what() const noexcept
{
    m_what = errorDescription().toUtf8();
    return m_what.constData();
}
