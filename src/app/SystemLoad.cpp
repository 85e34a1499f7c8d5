#include "app/SystemLoad.h"

#include "app/Nvml.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace SystemLoad {

std::optional<QList<CoreTicks>> parseProcStat(QByteArrayView text)
{
    QList<CoreTicks> cores;
    const QByteArray all = text.toByteArray();
    for (const QByteArray &line : all.split('\n')) {
        // "cpuN user nice system idle iowait ..."; the bare "cpu" line sums them all.
        if (!line.startsWith("cpu") || line.size() < 4 || line[3] < '0' || line[3] > '9')
            continue;
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 5)
            continue;
        bool ok[4] = {};
        const quint64 user = fields[1].toULongLong(&ok[0]);
        const quint64 nice = fields[2].toULongLong(&ok[1]);
        const quint64 system = fields[3].toULongLong(&ok[2]);
        const quint64 idle = fields[4].toULongLong(&ok[3]);
        if (!(ok[0] && ok[1] && ok[2] && ok[3]))
            continue;
        const quint64 busy = user + system + nice;
        cores.append({busy, busy + idle});
    }
    if (cores.isEmpty())
        return std::nullopt;
    return cores;
}

std::optional<QList<CoreTicks>> readProcStat(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // Files under /proc report no size; readAll reads to the end all the same.
    return parseProcStat(file.readAll());
}

QList<double> coreLoads(const QList<CoreTicks> &previous, const QList<CoreTicks> &now)
{
    QList<double> loads;
    loads.reserve(now.size());
    for (qsizetype i = 0; i < now.size(); ++i) {
        if (i >= previous.size()) {
            loads.append(0.0);
            continue;
        }
        const double dTotal = double(now[i].total) - double(previous[i].total);
        if (dTotal == 0) {
            loads.append(0.0);
            continue;
        }
        const double dBusy = double(now[i].busy) - double(previous[i].busy);
        // A processor that went offline and back may run its counters backwards.
        loads.append(std::clamp(dBusy / dTotal, 0.0, 1.0));
    }
    return loads;
}

std::optional<double> drmBusyPercent(const QString &drmDir)
{
    static const QRegularExpression card(QStringLiteral("^card(\\d+)$"));
    QList<std::pair<int, QString>> cards;
    for (const QString &name : QDir(drmDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System)) {
        const QRegularExpressionMatch match = card.match(name);
        if (match.hasMatch())
            cards.append({match.captured(1).toInt(), name});
    }
    std::sort(cards.begin(), cards.end());
    for (const auto &[number, name] : cards) {
        QFile file(drmDir + u'/' + name + QStringLiteral("/device/gpu_busy_percent"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        bool ok = false;
        const double percent = file.readAll().trimmed().toDouble(&ok);
        if (ok)
            return std::clamp(percent, 0.0, 100.0);
    }
    return std::nullopt;
}

std::optional<double> gpuUtilization()
{
    if (const std::optional<double> percent = Nvml::utilization())
        return percent;
    return drmBusyPercent();
}

} // namespace SystemLoad
