#include "export/Format.h"

#include <QLocale>

namespace Format {

QString date(const QDateTime &date)
{
    return QLocale(QLocale::German, QLocale::Germany).toString(date.toLocalTime(), QStringLiteral("dd.MM.yyyy HH:mm"));
}

} // namespace Format
