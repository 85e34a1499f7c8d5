// A pasted link on its way to a staged job: resolution on the task pool, the download
// with its progress, and staging as if the file had been dropped.
#include "app/AppModel.h"

#include "links/MediaDownloader.h"
#include "links/PodcastResolver.h"

#include <QCoreApplication>
#include <QtConcurrent/QtConcurrentRun>

namespace {

// What the resolution hands back to the main thread.
struct Resolution {
    std::optional<ResolvedMedia> media;
    QString error;
};

} // namespace

void AppModel::stageLink(const QString &link)
{
    if (m_isBusy || m_linkBusy)
        return;
    const QString text = link.trimmed();
    if (text.isEmpty())
        return;
    setErrorMessage(std::nullopt);
    setCurrent(std::nullopt);
    setInterviewActive(false);
    setLinkBusy(true);
    setLinkProgress(0);
    setLinkStatus(QCoreApplication::translate("Sagwerk", "Link wird aufgelöst…"));

    // The user cannot cancel an import; the control only lets this object stop the
    // resolution when it goes away.
    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_linkControl = control;
    QFuture<Resolution> resolution = QtConcurrent::run([text, control]() -> Resolution {
        try {
            return {PodcastResolver::resolve(text, PodcastResolver::defaultLookupBase, control), {}};
        } catch (const PodcastError &e) {
            return {std::nullopt, e.errorDescription()};
        } catch (const std::exception &e) {
            return {std::nullopt, QString::fromUtf8(e.what())};
        }
    });
    m_linkTask = resolution;
    resolution.then(this, [this](const Resolution &result) {
        m_linkTask.reset();
        m_linkControl.reset();
        if (result.media)
            downloadLink(result.media->url, result.media->title);
        else
            endLink(result.error);
    });
}

void AppModel::downloadLink(const QUrl &url, const QString &title)
{
    setLinkStatus(QCoreApplication::translate("Sagwerk", "Episode wird geladen…"));
    auto *downloader = new MediaDownloader([this](double fraction) { setLinkProgress(fraction); }, this);
    downloader->download(url)
        .then(this,
              [this, downloader, title](const QString &file) {
                  downloader->deleteLater();
                  endLink(std::nullopt);
                  // Refused without a word if a job has started meanwhile; the file then
                  // stays in the temporary folder.
                  stage(file, title);
              })
        .onFailed(this, [this, downloader](const MediaDownloader::Error &error) {
            downloader->deleteLater();
            endLink(error.message());
        });
}

void AppModel::endLink(const std::optional<QString> &error)
{
    setLinkBusy(false);
    setLinkStatus(std::nullopt);
    setLinkProgress(0);
    if (error)
        setErrorMessage(*error);
}

void AppModel::setLinkBusy(bool busy)
{
    if (m_linkBusy != busy) {
        m_linkBusy = busy;
        emit linkBusyChanged();
    }
}

void AppModel::setLinkStatus(const std::optional<QString> &status)
{
    if (m_linkStatus != status) {
        m_linkStatus = status;
        emit linkStatusChanged();
    }
}

void AppModel::setLinkProgress(double fraction)
{
    if (m_linkProgress != fraction) {
        m_linkProgress = fraction;
        emit linkProgressChanged();
    }
}
