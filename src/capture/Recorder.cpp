#include "capture/Recorder.h"

#include "capture/Microphone.h"

#include "core/TranscriptionResult.h"

#include <QAudioDevice>
#include <QAudioInput>
#include <QAudioSource>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QMediaFormat>
#include <QMediaRecorder>
#include <QPermission>
#include <QPromise>
#include <QTimer>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <cmath>

namespace {

constexpr int tickMs = 100;
// How long a stopped recording waits for the encoder to close the file.
constexpr int finishTimeoutMs = 10'000;
// The power of digital silence, as the meter reports it.
constexpr float silenceDb = -160.0f;

} // namespace

// One running recording: the recorder writing the file, and beside it a second stream
// from the same input that feeds the meter, since the recorder reports no level.
struct Recorder::Capture {
    QMediaCaptureSession session;
    QAudioInput input;
    QMediaRecorder recorder;
    std::unique_ptr<QAudioSource> meter;
    QIODevice *meterStream = nullptr;
    QAudioFormat meterFormat;
    double sumOfSquares = 0;
    qint64 frames = 0;

    explicit Capture(const QAudioDevice &device) : input(device) {}

    void startMeter(const QAudioDevice &device)
    {
        QAudioFormat format;
        format.setSampleRate(44100);
        format.setChannelCount(1);
        format.setSampleFormat(QAudioFormat::Float);
        if (!device.isFormatSupported(format))
            format = device.preferredFormat();
        meterFormat = format;
        meter = std::make_unique<QAudioSource>(device, format);
        meterStream = meter->start();
        if (meterStream)
            QObject::connect(meterStream, &QIODevice::readyRead, meterStream, [this] { measure(); });
    }

    // Adds the squares of channel 0's samples that have arrived.
    void measure()
    {
        const QByteArray bytes = meterStream->readAll();
        const int frameBytes = meterFormat.bytesPerFrame();
        if (frameBytes <= 0)
            return;
        const qint64 count = bytes.size() / frameBytes;
        for (qint64 i = 0; i < count; ++i) {
            const double v = meterFormat.normalizedSampleValue(bytes.constData() + i * frameBytes);
            sumOfSquares += v * v;
        }
        frames += count;
    }

    // The average power in dB since the last call.
    float averagePowerDb()
    {
        if (meterStream)
            measure();
        const double mean = frames > 0 ? sumOfSquares / double(frames) : 0.0;
        sumOfSquares = 0;
        frames = 0;
        if (mean <= 0)
            return silenceDb;
        return std::max(silenceDb, float(10.0 * std::log10(mean)));
    }
};

// A stopped recording until the encoder has closed its file. It lives on its own (under
// the application), so that a recorder that goes away meanwhile neither cuts the file
// short nor has to wait for it.
class Recorder::Closing : public QObject {
public:
    Closing(std::unique_ptr<Capture> capture, const QString &file)
        : QObject(QCoreApplication::instance()), m_capture(std::move(capture)), m_file(file)
    {
        m_promise.start();
        QMediaRecorder &recorder = m_capture->recorder;
        connect(&recorder, &QMediaRecorder::recorderStateChanged, this, [this](QMediaRecorder::RecorderState state) {
            if (state == QMediaRecorder::StoppedState)
                finish();
        });
        connect(&recorder, &QMediaRecorder::errorOccurred, this, &Closing::finish);
        QTimer::singleShot(finishTimeoutMs, this, &Closing::finish);
        if (recorder.recorderState() != QMediaRecorder::StoppedState)
            recorder.stop();
        if (recorder.recorderState() == QMediaRecorder::StoppedState)
            finish();
    }

    QFuture<std::optional<QString>> future() { return m_promise.future(); }
    bool isFinished() const { return m_finished; }

    // The file goes now, and again once closed in case the encoder was still at it; the
    // future delivers nothing.
    void discard()
    {
        m_discarded = true;
        QFile::remove(m_file);
    }

private:
    void finish()
    {
        if (m_finished)
            return;
        m_finished = true;
        if (m_discarded)
            QFile::remove(m_file);
        m_promise.addResult(m_discarded ? std::nullopt : std::optional<QString>(m_file));
        m_promise.finish();
        // Not here: the recorder that reports must not be deleted inside its own signal.
        deleteLater();
    }

    std::unique_ptr<Capture> m_capture;
    QString m_file;
    QPromise<std::optional<QString>> m_promise;
    bool m_finished = false;
    bool m_discarded = false;
};

Recorder::Recorder(QObject *parent) : QObject(parent) {}

Recorder::~Recorder()
{
    if (m_recorder || (m_closing && !m_closing->isFinished()))
        cancel();
}

float Recorder::levelFor(float powerDb)
{
    const float level = std::pow(10.0f, powerDb / 20.0f) * 1.6f;
    if (!(level > 0.0f))
        return 0.0f;
    return std::min(level, 1.0f);
}

void Recorder::start()
{
    if (m_recorder)
        return;
    Microphone::whenAllowed(this, [this] { begin(); }, [this] { setPermissionDenied(true); });
}

void Recorder::begin()
{
    if (m_recorder)
        return;
    // A machine without any microphone reads like a refusal: the user has to act.
    const QAudioDevice device = QMediaDevices::defaultAudioInput();
    if (device.isNull()) {
        setPermissionDenied(true);
        return;
    }

    const QString path
        = QDir::tempPath() + QStringLiteral("/aufnahme-") + uuidText(QUuid::createUuid()) + QStringLiteral(".m4a");
    auto capture = std::make_unique<Capture>(device);
    capture->session.setAudioInput(&capture->input);
    capture->session.setRecorder(&capture->recorder);
    if (!capture->recorder.isAvailable()) {
        setPermissionDenied(false);
        return;
    }
    QMediaFormat format(QMediaFormat::Mpeg4Audio);
    format.setAudioCodec(QMediaFormat::AudioCodec::AAC);
    capture->recorder.setMediaFormat(format);
    capture->recorder.setAudioSampleRate(44100);
    capture->recorder.setAudioChannelCount(1);
    capture->recorder.setQuality(QMediaRecorder::HighQuality);
    capture->recorder.setEncodingMode(QMediaRecorder::ConstantQualityEncoding);
    capture->recorder.setOutputLocation(QUrl::fromLocalFile(path));

    capture->recorder.record();
    if (capture->recorder.error() != QMediaRecorder::NoError
        || capture->recorder.recorderState() != QMediaRecorder::RecordingState) {
        QFile::remove(path);
        return;
    }
    // A failure while recording (the device gone, the disk full) ends the recording
    // as if it had never started.
    // Queued: the recorder that reports must not be deleted inside its own signal.
    Capture *running = capture.get();
    connect(
        &capture->recorder, &QMediaRecorder::errorOccurred, this,
        [this, running] {
            if (m_recorder.get() == running)
                abandon();
        },
        Qt::QueuedConnection);
    capture->startMeter(device);

    m_recorder = std::move(capture);
    m_filePath = path;
    setRecording(true);
    setElapsed(0);

    m_timer = new QTimer(this);
    m_timer->setInterval(tickMs);
    connect(m_timer, &QTimer::timeout, this, &Recorder::tick);
    m_timer->start();
}

void Recorder::tick()
{
    if (!m_recorder || m_recorder->recorder.recorderState() != QMediaRecorder::RecordingState)
        return;
    setElapsed(double(m_recorder->recorder.duration()) / 1000.0);
    setLevel(levelFor(m_recorder->averagePowerDb()));
}

QFuture<std::optional<QString>> Recorder::stop()
{
    if (m_timer) {
        m_timer->stop();
        m_timer->deleteLater();
        m_timer = nullptr;
    }
    if (m_recorder) {
        std::unique_ptr<Capture> capture = std::move(m_recorder);
        if (capture->meter)
            capture->meter->stop();
        capture->recorder.disconnect(this);
        m_closing = new Closing(std::move(capture), m_filePath.value_or(QString()));
    }
    setRecording(false);
    setLevel(0);
    if (m_closing)
        return m_closing->future();
    return QtFuture::makeReadyValueFuture(m_filePath);
}

void Recorder::cancel()
{
    stop();
    if (m_closing)
        m_closing->discard();
    else if (m_filePath)
        QFile::remove(*m_filePath);
    m_filePath.reset();
    setElapsed(0);
}

void Recorder::abandon()
{
    cancel();
}

void Recorder::setRecording(bool on)
{
    if (m_isRecording != on) {
        m_isRecording = on;
        emit isRecordingChanged();
    }
}

void Recorder::setElapsed(double seconds)
{
    if (m_elapsed != seconds) {
        m_elapsed = seconds;
        emit elapsedChanged();
    }
}

void Recorder::setLevel(float level)
{
    if (m_level != level) {
        m_level = level;
        emit levelChanged();
    }
}

void Recorder::setPermissionDenied(bool denied)
{
    if (m_permissionDenied != denied) {
        m_permissionDenied = denied;
        emit permissionDeniedChanged();
    }
}
