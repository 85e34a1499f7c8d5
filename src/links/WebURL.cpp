#include "links/WebURL.h"

namespace Links {

bool isWebURL(const QUrl &url)
{
    const QString scheme = url.scheme().toLower();
    return url.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
           && !url.host().isEmpty();
}

std::optional<QUrl> webURL(const QString &text)
{
    if (text.isEmpty())
        return std::nullopt;
    const QUrl url(text);
    return isWebURL(url) ? std::optional<QUrl>(url) : std::nullopt;
}

} // namespace Links
