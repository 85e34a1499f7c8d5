#include "ui/BusyView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/TranscriptionJob.h"
#include "ui/Icons.h"
#include "ui/ProcessingVisualizer.h"
#include "ui/Style.h"
#include "ui/SystemMonitor.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

BusyView::BusyView(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    m_monitor = new SystemMonitor(this);
    // A few small files under /sys: read once.
    m_threads = TranscriptionJob::threadCount();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(30, 30, 30, 30);
    layout->setSpacing(20);
    layout->addStretch(1);

    m_visualizer = new ProcessingVisualizer(this);
    m_visualizer->setMaximumSize(660, 300);
    layout->addWidget(m_visualizer, 10, Qt::AlignHCenter);

    m_status = new QLabel(this);
    m_status->setFont(Style::withTabularDigits(Style::font(Style::TextSize::title3)));
    m_status->setAlignment(Qt::AlignCenter);
    Style::setTextColor(m_status, Style::color(palette(), Style::Tone::secondary));
    layout->addWidget(m_status, 0, Qt::AlignHCenter);

    m_cancel = new QPushButton(this);
    m_cancel->setIcon(Icons::icon(QStringLiteral("xmark.circle"), palette()));
    connect(m_cancel, &QPushButton::clicked, &app, &AppModel::cancelTranscription);
    layout->addWidget(m_cancel, 0, Qt::AlignHCenter);
    layout->addStretch(1);

    connect(&app.transcription(), &TranscriptionJob::busyProgressChanged, this, [this] {
        updateStatus();
        updateScene();
    });
    connect(&app.transcription(), &TranscriptionJob::busyElapsedChanged, this, &BusyView::updateStatus);
    connect(&app, &AppModel::selectedModelIdChanged, this, &BusyView::updateScene);
    connect(&app.transcription(), &TranscriptionJob::gpuDeviceChanged, this, &BusyView::updateScene);
    connect(&app.transcription(), &TranscriptionJob::cpuDeviceChanged, this, &BusyView::updateScene);
    connect(m_monitor, &SystemMonitor::coreUsageChanged, this, &BusyView::updateScene);
    connect(m_monitor, &SystemMonitor::gpuUtilizationChanged, this, &BusyView::updateScene);

    retranslate();
    updateScene();
}

QString BusyView::statusText() const
{
    return m_status->text();
}

void BusyView::updateStatus()
{
    const qint64 percent = qint64(std::trunc(m_app.transcription().busyProgress() * 100));
    m_status->setText(Tr::tr("Transkribiere… %1 %      %2 s")
                          .arg(QString::number(percent), QString::number(m_app.transcription().busyElapsed(), 'f', 1)));
}

void BusyView::updateScene()
{
    m_visualizer->setProgress(m_app.transcription().busyProgress());
    m_visualizer->setCores(m_monitor->coreUsage());
    m_visualizer->setGpu(m_monitor->gpuUtilization().value_or(0.0) / 100.0);
    m_visualizer->setDevice(m_app.transcription().gpuDevice(), m_app.transcription().cpuDevice(), m_threads);
    m_visualizer->updateGeometry();
}

void BusyView::retranslate()
{
    m_cancel->setText(Tr::tr("Abbrechen"));
    updateStatus();
}

void BusyView::showEvent(QShowEvent *event)
{
    // The machine is sampled only while the screen shows.
    m_monitor->start();
    QWidget::showEvent(event);
}

void BusyView::hideEvent(QHideEvent *event)
{
    m_monitor->stop();
    QWidget::hideEvent(event);
}

void BusyView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    } else if (event->type() == QEvent::ApplicationPaletteChange) {
        Style::setTextColor(m_status, Style::color(QApplication::palette(), Style::Tone::secondary));
        m_cancel->setIcon(Icons::icon(QStringLiteral("xmark.circle"), QApplication::palette()));
    }
    QWidget::changeEvent(event);
}
