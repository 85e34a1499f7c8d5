#include "ui/SystemMonitor.h"

SystemMonitor::SystemMonitor(QObject *parent) : QObject(parent) {}

void SystemMonitor::start()
{
    if (m_timer)
        return;
    sample();
    // A child of the monitor: it ends with it, and its ticks never outlive it.
    m_timer = new QTimer(this);
    m_timer->setInterval(250);
    connect(m_timer, &QTimer::timeout, this, &SystemMonitor::sample);
    m_timer->start();
}

void SystemMonitor::stop()
{
    if (!m_timer)
        return;
    m_timer->stop();
    m_timer->deleteLater();
    m_timer = nullptr;
}

QList<double> SystemMonitor::sampleCPU(const QString &procStat)
{
    const std::optional<QList<SystemLoad::CoreTicks>> ticks = SystemLoad::readProcStat(procStat);
    if (!ticks)
        return m_coreUsage;
    QList<double> loads = SystemLoad::coreLoads(m_prevTicks, *ticks);
    m_prevTicks = *ticks;
    return loads;
}

std::optional<double> SystemMonitor::gpuUtil()
{
    return SystemLoad::gpuUtilization();
}

void SystemMonitor::sample()
{
    const QList<double> cores = sampleCPU();
    if (cores != m_coreUsage) {
        m_coreUsage = cores;
        emit coreUsageChanged();
    }
    const std::optional<double> gpu = gpuUtil();
    if (gpu != m_gpuUtilization) {
        m_gpuUtilization = gpu;
        emit gpuUtilizationChanged();
    }
}
