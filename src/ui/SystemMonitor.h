#pragma once

#include "app/SystemLoad.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

// The machine's load while the processing screen shows: per-core load and GPU
// utilisation, sampled four times a second on the main thread. Owned by its screen,
// which starts it when it appears and stops it when it goes.
class SystemMonitor : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<double> coreUsage READ coreUsage NOTIFY coreUsageChanged)

public:
    explicit SystemMonitor(QObject *parent = nullptr);

    // Load per logical processor, 0 to 1, in the kernel's order; empty before the first
    // sample.
    const QList<double> &coreUsage() const { return m_coreUsage; }
    // GPU load in percent; nothing when no counter answers.
    const std::optional<double> &gpuUtilization() const { return m_gpuUtilization; }

    // Takes a sample now and then every 0.25 seconds; does nothing while sampling runs.
    void start();
    // Ends the sampling; a later start goes on from the counters of the last sample.
    void stop();
    bool isSampling() const { return m_timer != nullptr; }

    // The loads since the previous sample (zeros at first), from `procStat`. When the
    // counters cannot be read, the loads on show stay and the previous sample is kept.
    QList<double> sampleCPU(const QString &procStat = QStringLiteral("/proc/stat"));
    // GPU utilisation in percent, or nothing.
    static std::optional<double> gpuUtil();

signals:
    void coreUsageChanged();
    void gpuUtilizationChanged();

private:
    void sample();

    QList<double> m_coreUsage;
    std::optional<double> m_gpuUtilization;
    QPointer<QTimer> m_timer;
    QList<SystemLoad::CoreTicks> m_prevTicks;
};
