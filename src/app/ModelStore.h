#pragma once

#include "core/WhisperModel.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>
#include <optional>

// Which catalogue models and Neural Engine packages lie in the models folder, and
// their downloads and deletions. Lives on the main thread for the whole application.
class ModelStore : public QObject {
    Q_OBJECT

public:
    // Running downloads by model id, each with its fraction from 0 to 1.
    using Fractions = QMap<QString, double>;

private:
    Q_PROPERTY(QSet<QString> installed READ installed NOTIFY installedChanged)
    Q_PROPERTY(ModelStore::Fractions downloading READ downloading NOTIFY downloadingChanged)
    Q_PROPERTY(QSet<QString> coreMLInstalled READ coreMLInstalled NOTIFY coreMLInstalledChanged)
    Q_PROPERTY(ModelStore::Fractions coreMLDownloading READ coreMLDownloading NOTIFY coreMLDownloadingChanged)
    Q_PROPERTY(std::optional<QString> errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString modelsDir READ modelsDir CONSTANT)

public:
    // Creates the models folder, scans it and imports a developer's local model.
    // Files come from `repositoryBase` followed by their names; the default base gives
    // each model's own `url` and `coreMLURL`.
    explicit ModelStore(QObject *parent = nullptr);
    explicit ModelStore(const QUrl &repositoryBase, QObject *parent = nullptr);

    const QSet<QString> &installed() const { return m_installed; }
    const Fractions &downloading() const { return m_downloading; }
    const QSet<QString> &coreMLInstalled() const { return m_coreMLInstalled; }
    const Fractions &coreMLDownloading() const { return m_coreMLDownloading; }
    // The last failure; nothing here clears it.
    const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    const QString &modelsDir() const { return m_modelsDir; }
    // Where the model's file is, or goes.
    QString path(const WhisperModel &model) const { return pathOf(model.fileName); }

    void refresh();
    // A model counts as installed when its file exceeds 90 % of the catalogue size;
    // this keeps an error page that was downloaded in its place from counting.
    bool isInstalled(const WhisperModel &model) const;
    // Both start in the background and return at once; a second call for a model
    // whose download runs does nothing.
    void download(const WhisperModel &model);
    void downloadCoreML(const WhisperModel &model);
    // Failures are dropped; the refreshed state shows what is left.
    void deleteModel(const WhisperModel &model);
    void deleteCoreML(const WhisperModel &model);
    void importBundledOrDevModel();

signals:
    void installedChanged();
    void downloadingChanged();
    void coreMLInstalledChanged();
    void coreMLDownloadingChanged();
    void errorMessageChanged();

private:
    QString pathOf(const QString &name) const;
    void setErrorMessage(const QString &message);
    void setFraction(Fractions &map, void (ModelStore::*changed)(), const QString &id, double fraction);
    void endDownload(Fractions &map, void (ModelStore::*changed)(), const QString &id);
    // Ends the package download of `id` when unzip has finished.
    void unpackCoreML(const QString &archive, const QString &id);

    QUrl m_repositoryBase;
    QString m_modelsDir;
    QSet<QString> m_installed;
    Fractions m_downloading;
    QSet<QString> m_coreMLInstalled;
    Fractions m_coreMLDownloading;
    std::optional<QString> m_errorMessage;
};
