#pragma once

#include <QString>
#include <QUrl>
#include <optional>

namespace Links {

// An address the link import may fetch: absolute, http or https, with a host. What a
// feed or a page names under another scheme (file:, data:, javascript:) counts as no
// address at all, so that a remote document can never point the download elsewhere.
std::optional<QUrl> webURL(const QString &text);
bool isWebURL(const QUrl &url);

} // namespace Links
