#pragma once

#include <QList>
#include <QTransform>
#include <QWidget>

class QTimer;

// The animated scene of a running job: the "Quelle" jar drains into the "Sagwerk" jar
// as the run advances, with the machine's load between them: the device that recognises
// and the processor's cores. Redrawn at the display's
// frame rate; every frame is a function of the five inputs and the wall clock.
class ProcessingVisualizer : public QWidget {
    Q_OBJECT

public:
    explicit ProcessingVisualizer(QWidget *parent = nullptr);

    void setProgress(double progress);
    void setCores(const QList<double> &cores);
    // 0 to 1.
    void setGpu(double gpu);
    // What recognition runs on: a graphics device by name; else the processor by name,
    // with the threads recognition uses. Both names are empty until a job has found out.
    void setDevice(const QString &gpuName, const QString &cpuName, int threads);

    double progress() const { return m_progress; }
    const QList<double> &cores() const { return m_cores; }
    double gpu() const { return m_gpu; }
    // The device badge: "GPU" or "CPU", the device's name or the thread count, and the
    // whole name for its tooltip.
    QString deviceTitle() const;
    QString deviceSubtitle() const;
    QString deviceToolTip() const;
    // Where the badge lies in the widget.
    QRect badgeArea() const;

    // The scene's own size, before it is scaled down to fit.
    QSizeF naturalSize() const;
    // Draws the scene at `phase` into `rect`, scaled down to fit and centred.
    void paintScene(QPainter &painter, const QRectF &rect, double phase) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    double coreChip() const;
    bool onGpu() const;
    double deviceActivity() const;
    // Scene coordinates: the natural size, scaled down and centred in the widget.
    QTransform sceneTransform(const QRectF &rect) const;
    QRectF centreRect() const;
    QRectF badgeRect() const;

    double m_progress = 0;
    QList<double> m_cores;
    double m_gpu = 0;
    QTimer *m_frames = nullptr;
    QString m_source; // the translated label of the first jar
    QString m_gpuDevice;
    QString m_cpuDevice;
    int m_threads = 0;
};
