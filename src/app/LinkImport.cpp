#include "app/LinkImport.h"

#include "app/AppModel.h"
#include "core/Tr.h"
#include "links/MediaDownloader.h"
#include "links/PodcastResolver.h"

LinkImport::LinkImport(AppModel &app) : m_app(app)
{
}

LinkImport::~LinkImport()
{
    if (m_control)
        m_control->cancel();
}

void LinkImport::start(const QString &link)
{
    if (m_app.isBusy() || m_app.linkBusy())
        return;
    const QString text = link.trimmed();
    if (text.isEmpty())
        return;
    m_app.setErrorMessage(std::nullopt);
    m_app.setCurrent(std::nullopt);
    m_app.setInterviewActive(false);
    m_app.m_linkBusy = true;
    m_app.m_linkProgress = 0.0;
    m_app.m_linkStatus = Tr::tr("Link wird aufgelöst…");

    // The user cannot cancel an import; the control only lets this object end the
    // resolution's request when it goes away.
    m_control = std::make_shared<TranscribeControl>();
    PodcastResolver::resolve(text, PodcastResolver::defaultLookupBase, m_control)
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
    m_app.m_linkStatus = Tr::tr("Episode wird geladen…");
    auto *downloader = new MediaDownloader([this](double fraction) { m_app.m_linkProgress = fraction; }, this);
    downloader->download(url)
        .then(this,
              [this, downloader, title](const QString &file) {
                  downloader->deleteLater();
                  end(std::nullopt);
                  // Refused without a word if a job has started meanwhile; the file then
                  // stays in the temporary folder.
                  m_app.stage(file, title);
              })
        .onFailed(this, [this, downloader](const Network::Error &error) {
            downloader->deleteLater();
            end(error.errorDescription());
        });
}

void LinkImport::end(const std::optional<QString> &error)
{
    m_app.m_linkBusy = false;
    m_app.m_linkStatus = std::nullopt;
    m_app.m_linkProgress = 0.0;
    if (error)
        m_app.setErrorMessage(*error);
}
