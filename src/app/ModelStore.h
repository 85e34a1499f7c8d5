#pragma once

#include "core/WhisperModel.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>
#include <optional>

class QFileSystemWatcher;

// Which catalogue models lie in the models folder, and their downloads and deletions.
// The folder is watched, so that a model that another program puts there (the command
// line's import, a copy in the file manager) shows at once. Lives on the main thread for
// the whole application.
class ModelStore : public QObject {
    Q_OBJECT

public:
    // Running downloads by model id, each with its fraction from 0 to 1.
    using Fractions = QMap<QString, double>;
    // The last failed download of each model, in words for the user; gone when the model
    // is downloaded again.
    using Failures = QMap<QString, QString>;

private:
    Q_PROPERTY(QSet<QString> installed READ installed NOTIFY installedChanged)
    Q_PROPERTY(ModelStore::Fractions downloading READ downloading NOTIFY downloadingChanged)
    Q_PROPERTY(ModelStore::Failures failures READ failures NOTIFY failuresChanged)
    Q_PROPERTY(std::optional<QString> errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString modelsDir READ modelsDir CONSTANT)

public:
    // Creates the models folder, scans it and imports a developer's local model.
    // Files come from `repositoryBase` followed by their names; the default base gives
    // each model's own `url`.
    explicit ModelStore(QObject *parent = nullptr);
    explicit ModelStore(const QUrl &repositoryBase, QObject *parent = nullptr);

    const QSet<QString> &installed() const { return m_installed; }
    const Fractions &downloading() const { return m_downloading; }
    const Failures &failures() const { return m_failures; }
    // The last failure; nothing here clears it.
    const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    const QString &modelsDir() const { return m_modelsDir; }
    // Where the model's file is, or goes.
    QString path(const WhisperModel &model) const { return pathOf(model.fileName); }

    void refresh();
    // A model counts as installed when its file exceeds 90 % of the catalogue size;
    // this keeps an error page that was downloaded in its place from counting.
    bool isInstalled(const WhisperModel &model) const;
    // Starts in the background and returns at once; a second call for a model whose
    // download runs does nothing. An answer that is no model (an error page, a file far
    // too small) fails the download and leaves the folder as it was.
    void download(const WhisperModel &model);
    // Failures are dropped; the refreshed state shows what is left.
    void deleteModel(const WhisperModel &model);
    void importBundledOrDevModel();

signals:
    void installedChanged();
    void downloadingChanged();
    void failuresChanged();
    void errorMessageChanged();

private:
    QString pathOf(const QString &name) const;
    void setErrorMessage(const QString &message);
    void setFraction(const QString &id, double fraction);
    // Ends the download of `id`, with the failure's text unless it is empty.
    void endDownload(const QString &id, const QString &failure);

    QUrl m_repositoryBase;
    QString m_modelsDir;
    QSet<QString> m_installed;
    Fractions m_downloading;
    Failures m_failures;
    QFileSystemWatcher *m_watcher = nullptr;
    std::optional<QString> m_errorMessage;
};
