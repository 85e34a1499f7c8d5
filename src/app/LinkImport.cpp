#include "app/LinkImport.h"

#include "core/Tr.h"
#include "links/MediaDownloader.h"
#include "links/PodcastResolver.h"

LinkImport::LinkImport(QObject *parent) : QObject(parent) {}

LinkImport::~LinkImport()
{
    if (m_control)
        m_control->cancel();
}

void LinkImport::start(const QString &link)
{
    if (m_isBusy)
        return;
    m_isBusy = true;
    m_progress = 0.0;
    m_status = Tr::tr("Link wird aufgelöst…");

    // The user cannot cancel an import; the control only lets this object end the
    // resolution's request when it goes away.
    m_control = std::make_shared<TranscribeControl>();
    PodcastResolver::resolve(link, PodcastResolver::defaultLookupBase, m_control)
        .then(this, [this](const QFuture<ResolvedMedia> &resolution) {
            m_control.reset();
            try {
                const ResolvedMedia media = resolution.result();
                download(media.url, media.title);
            } catch (const UserError &e) {
                end(e.errorDescription());
            } catch (const std::exception &e) {
                end(QString::fromUtf8(e.what()));
            }
        });
}

void LinkImport::download(const QUrl &url, const QString &title)
{
    m_status = Tr::tr("Episode wird geladen…");
    auto *downloader = new MediaDownloader([this](double fraction) { m_progress = fraction; }, this);
    downloader->download(url)
        .then(this,
              [this, downloader, title](const QString &file) {
                  downloader->deleteLater();
                  end(std::nullopt);
                  emit downloaded(file, title);
              })
        .onFailed(this, [this, downloader](const Network::Error &error) {
            downloader->deleteLater();
            end(error.errorDescription());
        });
}

void LinkImport::end(const std::optional<QString> &error)
{
    m_isBusy = false;
    m_status = std::nullopt;
    m_progress = 0.0;
    if (error)
        emit failed(*error);
}
