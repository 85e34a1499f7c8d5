#pragma once

#include "core/UserError.h"

#include <QByteArray>
#include <QString>


// Why a bundle could not be created. `errorDescription` is the text the user sees; the
// detail is the file system's own message.
class BundleError : public UserError {
public:
    enum class Case { folderNotCreated, documentNotWritten };

    static BundleError folderNotCreated(const QString &path) { return {Case::folderNotCreated, path, {}}; }
    static BundleError documentNotWritten(const QString &path, const QString &detail)
    {
        return {Case::documentNotWritten, path, detail};
    }

    Case kind() const { return m_case; }
    const QString &path() const { return m_path; }

    QString errorDescription() const override;

private:
    BundleError(Case c, QString path, QString detail)
        : m_case(c), m_path(std::move(path)), m_detail(std::move(detail))
    {
    }

    Case m_case;
    QString m_path;
    QString m_detail;
};
