#include "ui/HelpContent.h"

namespace HelpContent {

const QList<HelpSection> &book(const QString &languageCode)
{
    return languageCode.startsWith(QLatin1String("de")) ? german() : english();
}

} // namespace HelpContent
