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

    // The screens offer no cancel; the command line does, and the control ends the
    // resolution's request when this object goes.
    const TranscribeControlPtr control = std::make_shared<TranscribeControl>();
    m_control = control;
    PodcastResolver::resolve(link, PodcastResolver::defaultLookupBase, control)
        .then(this, [this, control](const QFuture<ResolvedMedia> &resolution) {
            if (control->isCancelled())
                return;
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
    m_downloader = downloader;
    // A cancel deletes the downloader; whatever its transfer reports after that is dropped.
    const QPointer<QObject> alive(downloader);
    downloader->download(url)
        .then(this,
              [this, alive, title](const QString &file) {
                  if (!alive)
                      return;
                  alive->deleteLater();
                  end(std::nullopt);
                  emit downloaded(file, title);
              })
        .onFailed(this, [this, alive](const Network::Error &error) {
            if (!alive)
                return;
            alive->deleteLater();
            end(error.errorDescription());
        });
}

void LinkImport::cancel()
{
    if (!m_isBusy)
        return;
    if (m_control)
        m_control->cancel();
    // Deleting the downloader ends the transfer and removes what was written.
    delete m_downloader.data();
    end(std::nullopt);
}

void LinkImport::end(const std::optional<QString> &error)
{
    m_control.reset();
    m_isBusy = false;
    m_status = std::nullopt;
    m_progress = 0.0;
    if (error)
        emit failed(*error);
}
