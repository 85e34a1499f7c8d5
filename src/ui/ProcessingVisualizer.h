#pragma once

#include <QList>
#include <QWidget>

class QTimer;

// The animated scene of a running job: the "Quelle" jar drains into the "Sagwerk" jar
// as the run advances, with the machine's load between them. Redrawn at the display's
// frame rate; every frame is a function of the five inputs and the wall clock.
class ProcessingVisualizer : public QWidget {
    Q_OBJECT

public:
    explicit ProcessingVisualizer(QWidget *parent = nullptr);

    void setProgress(double progress);
    void setCores(const QList<double> &cores);
    // 0 to 1.
    void setGpu(double gpu);
    void setNeuralEngineActive(bool active);
    // The GPU badge names the device when one recognises; empty names the interface.
    void setGpuDevice(const QString &name);

    double progress() const { return m_progress; }
    const QList<double> &cores() const { return m_cores; }
    double gpu() const { return m_gpu; }
    const QString &gpuDevice() const { return m_gpuDevice; }
    bool neuralEngineActive() const { return m_aneActive; }

    // The scene's own size, before it is scaled down to fit.
    QSizeF naturalSize() const;
    // Draws the scene at `phase` into `rect`, scaled down to fit and centred.
    void paintScene(QPainter &painter, const QRectF &rect, double phase) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    double coreChip() const;

    double m_progress = 0;
    QList<double> m_cores;
    double m_gpu = 0;
    bool m_aneActive = false;
    QTimer *m_frames = nullptr;
    QString m_source; // the translated label of the first jar
    QString m_active;
    QString m_off;
    QString m_gpuInterface;
    QString m_gpuDevice;
};
