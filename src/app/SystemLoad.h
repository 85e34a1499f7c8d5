#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

// The machine's load while a job runs: per-processor tick counters from the kernel and
// the graphics processor's utilisation, with the arithmetic that turns two samples into
// loads. No state here; SystemMonitor keeps the previous sample.
namespace SystemLoad {

// The cumulative ticks of one logical processor: busy = user + system + nice,
// total = busy + idle.
struct CoreTicks {
    quint64 busy = 0;
    quint64 total = 0;
    bool operator==(const CoreTicks &) const = default;
};

// The per-processor lines ("cpu0", "cpu1", ...) of /proc/stat text, in the order they
// stand; the summary line "cpu" is not one of them. Nothing when there is no such line.
std::optional<QList<CoreTicks>> parseProcStat(QByteArrayView text);
// The same, read from the file; nothing when it cannot be read.
std::optional<QList<CoreTicks>> readProcStat(const QString &path = QStringLiteral("/proc/stat"));

// The load of each processor between two samples, 0 to 1: 0 for a processor that the
// previous sample lacks or whose counters did not move, otherwise the busy ticks over
// all ticks of the interval, at most 1.
QList<double> coreLoads(const QList<CoreTicks> &previous, const QList<CoreTicks> &now);

// GPU utilisation in percent, 0 to 100, from the first card under `drmDir` ("card0",
// "card1", ... in number order) whose driver reports device/gpu_busy_percent.
std::optional<double> drmBusyPercent(const QString &drmDir = QStringLiteral("/sys/class/drm"));
// The NVIDIA management library's figure (Nvml::utilization), else the kernel's
// counter, else nothing.
std::optional<double> gpuUtilization();

} // namespace SystemLoad
