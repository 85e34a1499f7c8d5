#include "capture/InterviewSession.h"

#include "capture/Microphone.h"
#include "core/TranscribeControl.h"
#include "core/Tr.h"
#include "engine/Engine.h"
#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"
#include "speakers/Diarizer.h"

#include <QAudioFormat>
#include <QAudioSource>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMediaDevices>
#include <QPromise>
#include <QtConcurrent/QtConcurrentRun>
#include <QtEndian>

#include <algorithm>
#include <mutex>
#include <stdexcept>

// The session's model, loaded by its first pass and kept for the others: a pass then
// costs only its recognition. One pass uses it at a time.
struct KeptModel {
    explicit KeptModel(QString path) : path(std::move(path)) {}
    const QString path;
    std::mutex lock;
    std::unique_ptr<WhisperEngine::LoadedModel> model;
};

namespace {

constexpr qint64 headerBytes = 44;
constexpr qint64 shortestPassMs = 1000;
constexpr qint64 shortestTailMs = 500;

// The segments of the range starting at `fromMs`, their times made relative to the
// recording; none when the range could not be recognised. Runs on the pool.
std::optional<QList<TranscriptSegment>> recognise(const QString &wav, qint64 fromMs, qint64 toMs,
                                                  const std::shared_ptr<KeptModel> &kept, const QString &language,
                                                  const TranscribeControlPtr &control)
{
    QString chunk;
    try {
        chunk = InterviewSession::extractRange(wav, fromMs, toMs);
        const std::vector<float> samples = Engine::decodeTo16kMonoFloats(chunk, control);
        QFile::remove(chunk);
        chunk.clear();
        const std::lock_guard hold(kept->lock);
        if (!kept->model)
            kept->model = std::make_unique<WhisperEngine::LoadedModel>(kept->path);
        const TranscriptionResult result = WhisperEngine::transcribe(samples, *kept->model, language, control, {});
        QList<TranscriptSegment> shifted;
        for (const TranscriptSegment &s : result.segments) {
            TranscriptSegment segment;
            segment.text = s.text;
            segment.startMs = s.startMs + fromMs;
            segment.endMs = s.endMs + fromMs;
            for (const TranscriptWord &w : s.words)
                segment.words.append({w.text, w.startMs + fromMs, w.endMs + fromMs});
            shifted.append(segment);
        }
        return shifted;
    } catch (...) {
        if (!chunk.isEmpty())
            QFile::remove(chunk);
        return std::nullopt;
    }
}

// The speaker text of the recording up to `toMs` over `segments`; empty when the
// separation found no second speaker, none when it failed. Runs on the pool.
std::optional<QString> separate(const QString &wav, qint64 toMs, const QList<TranscriptSegment> &segments,
                                const DiarizationModels::Paths &models, const TranscribeControlPtr &control)
{
    QString chunk;
    try {
        chunk = InterviewSession::extractRange(wav, 0, toMs);
        const QList<SpeakerSpan> spans = Diarizer::diarize(chunk, models.seg, models.emb, 0.9, 0, control);
        QFile::remove(chunk);
        const QString text = Diarizer::speakerLabeledText(segments, spans);
        return text.contains(u':') ? text : QString();
    } catch (...) {
        if (!chunk.isEmpty())
            QFile::remove(chunk);
        return std::nullopt;
    }
}

} // namespace

struct InterviewSession::Pass {
    qint64 upToMs = 0;
    std::optional<QList<TranscriptSegment>> segments;
};

InterviewSession::InterviewSession(QObject *parent) : QObject(parent), m_control(std::make_shared<TranscribeControl>())
{
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &InterviewSession::tick);
}

InterviewSession::~InterviewSession()
{
    if (m_isRecording)
        cancel();
    m_control->cancel();
}

QString InterviewSession::fullText() const
{
    QStringList texts;
    for (const TranscriptSegment &s : segments())
        texts << s.text;
    return texts.join(u' ');
}

// --- The recording ---

void InterviewSession::start(const QString &modelURL, const QString &language, bool liveSpeakers)
{
    if (m_isRecording || m_isFinalizing)
        return;
    m_modelURL = modelURL;
    m_model = std::make_shared<KeptModel>(modelURL);
    m_language = language;
    m_liveSpeakers = liveSpeakers;
    Microphone::whenAllowed(this, [this] { begin(); }, [this] { m_permissionDenied = true; });
}

void InterviewSession::begin()
{
    m_segments.setValueBypassingBindings({});
    m_segments.notify();
    m_speakerText = std::nullopt;
    m_lastMs = 0;
    m_lastDiarMs = 0;
    m_elapsed = 0.0;
    m_status = QString();

    // A machine without any microphone reads like a refusal: the user has to act.
    const QAudioDevice device = QMediaDevices::defaultAudioInput();
    if (device.isNull()) {
        m_permissionDenied = true;
        return;
    }
    const QString path = QDir::tempPath() + QStringLiteral("/interview-") + uuidText(QUuid::createUuid())
        + QStringLiteral(".wav");
    m_file.setFileName(path);
    // Unbuffered, so that the file's size tells how much was recorded.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        || m_file.write(wavHeader(0)) != headerBytes) {
        m_status = m_file.errorString();
        m_file.close();
        QFile::remove(path);
        return;
    }
    QAudioFormat format;
    format.setSampleRate(sampleRate);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    m_source = std::make_unique<QAudioSource>(device, format);
    m_source->start(&m_file);
    if (m_source->error() != QAudio::NoError) {
        m_source.reset();
        m_file.close();
        QFile::remove(path);
        m_status = Tr::tr("Aufnahme konnte nicht gestartet werden.");
        return;
    }
    m_wavURL = path;
    m_isRecording = true;
    m_timer.start();
    // Nor for the voice-activity model: passes before it is there hear all they are given,
    // and the engine skips what is plainly silent.
    VadModel::ensure(m_control).then(this, [](const QString &) {});
    // The recording does not wait for the speaker models; without them nobody is separated.
    if (m_liveSpeakers) {
        DiarizationModels::ensure([](const QString &) {}, m_control)
            .then(this, [this](const DiarizationModels::Paths &paths) { m_models = paths; })
            .onFailed(this, [] {});
    }
}

void InterviewSession::endRecording()
{
    m_timer.stop();
    if (m_source) {
        m_source->stop();
        m_source.reset();
    }
    if (m_file.isOpen()) {
        // Nothing here reads the sizes, but every other program that opens the file does.
        const qint64 size = m_file.size();
        if (m_file.seek(0))
            m_file.write(wavHeader(std::max<qint64>(0, size - headerBytes)));
        m_file.close();
    }
    m_isRecording = false;
}

void InterviewSession::cancel()
{
    endRecording();
    m_control->cancel();
    m_model.reset();
    if (m_wavURL) {
        QFile::remove(*m_wavURL);
        m_wavURL.reset();
    }
}

// --- The rolling loop ---

void InterviewSession::tick()
{
    if (!m_isRecording || !m_wavURL)
        return;
    const qint64 d = durationMs(*m_wavURL);
    m_elapsed = double(d) / 1000.0;
    if (!m_pass && d - m_lastMs >= transcribeIntervalMs)
        transcribeNext(d);
    if (m_liveSpeakers && !m_diarization && m_models && !segments().isEmpty() && d - m_lastDiarMs >= diarIntervalMs)
        diarizeAll(d);
}

void InterviewSession::diarizeAll(qint64 upToMs)
{
    if (!m_wavURL || !m_models)
        return;
    const QString wav = *m_wavURL;
    const QList<TranscriptSegment> segments = this->segments();
    const DiarizationModels::Paths models = *m_models;
    const TranscribeControlPtr control = m_control;
    m_diarization = QtConcurrent::run([=] { return separate(wav, upToMs, segments, models, control); })
                        .then(this, [this, upToMs](const std::optional<QString> &text) {
                            m_diarization.reset();
                            // A failed separation is tried again at the next free tick; one
                            // that found a single voice waits for the next interval.
                            if (!text)
                                return;
                            m_lastDiarMs = upToMs;
                            if (!text->isEmpty())
                                m_speakerText = *text;
                        });
}

void InterviewSession::transcribeNext(qint64 upToMs)
{
    if (!m_wavURL || !m_modelURL || upToMs - m_lastMs < shortestPassMs)
        return;
    const QString wav = *m_wavURL;
    const std::shared_ptr<KeptModel> model = m_model;
    const QString language = m_language;
    const qint64 from = m_lastMs;
    const TranscribeControlPtr control = m_control;
    QFuture<Pass> pass = QtConcurrent::run([=] {
        return Pass{upToMs, recognise(wav, from, upToMs, model, language, control)};
    });
    m_pass = pass.then(this, [this](const Pass &done) {
        m_pass.reset();
        // A failed range stays unprocessed; the next pass takes it with what came since.
        if (done.segments)
            append(*done.segments, done.upToMs);
    });
}

void InterviewSession::append(const QList<TranscriptSegment> &segments, qint64 upToMs)
{
    // An empty result still moves on, so that a silent stretch is not heard twice.
    const qint64 from = m_lastMs;
    m_lastMs = upToMs;
    if (!segments.isEmpty()) {
        m_segments.setValueBypassingBindings(m_segments.value() + segments);
        m_segments.notify();
    }
    if (upToMs > from)
        emit rangeHeard(from, upToMs);
}

// --- The end ---

QFuture<std::optional<InterviewResult>> InterviewSession::stop()
{
    endRecording();
    if (!m_wavURL || !m_modelURL)
        return QtFuture::makeReadyValueFuture(std::optional<InterviewResult>());
    m_isFinalizing = true;
    m_status = Tr::tr("Aufnahme wird abgeschlossen…");

    // A rolling pass still under way ends first; its range then lies before the tail's.
    auto promise = std::make_shared<QPromise<std::optional<InterviewResult>>>();
    promise->start();
    const auto proceed = [this, promise] {
        finish().then(this, [promise](const std::optional<InterviewResult> &value) {
            promise->addResult(value);
            promise->finish();
        });
    };
    if (m_pass)
        m_pass->then(this, proceed);
    else
        proceed();
    return promise->future();
}

QFuture<std::optional<InterviewResult>> InterviewSession::finish()
{
    const QString wav = *m_wavURL;
    // The tail is the last pass: the model goes when it is done.
    const std::shared_ptr<KeptModel> model = std::exchange(m_model, {});
    const QString language = m_language;
    const qint64 from = m_lastMs;
    const qint64 d = durationMs(wav);
    const TranscribeControlPtr control = m_control;
    return QtConcurrent::run([=] {
               // A tail shorter than half a second is not heard.
               if (d - from < shortestTailMs)
                   return Pass{from, QList<TranscriptSegment>()};
               return Pass{d, recognise(wav, from, d, model, language, control)};
           })
        .then(this, [this, wav, language, d, control](const Pass &tail) {
            // A failed tail is dropped; the rest stands.
            if (tail.segments)
                append(*tail.segments, tail.upToMs);
            InterviewResult value;
            value.audio = wav;
            value.result.segments = segments();
            value.result.fullText = fullText();
            value.result.language = language;
            value.result.processingSeconds = 0;
            value.speakerText = speakerText();
            // The recording is the receiver's from now on.
            m_wavURL.reset();
            // A last separation over everything, the tail included; where it fails, the
            // last rolling one stands.
            QFuture<std::optional<QString>> last = QtFuture::makeReadyValueFuture(std::optional<QString>());
            if (m_liveSpeakers && m_models && !value.result.segments.isEmpty()) {
                const DiarizationModels::Paths models = *m_models;
                const QList<TranscriptSegment> all = value.result.segments;
                last = QtConcurrent::run([=] { return separate(wav, d, all, models, control); });
            }
            return last.then(this, [this, value](const std::optional<QString> &text) mutable {
                if (text && !text->isEmpty())
                    value.speakerText = text;
                m_isFinalizing = false;
                return std::optional<InterviewResult>(value);
            });
        })
        .unwrap();
}

// --- The file ---

qint64 InterviewSession::durationMs(const QString &url, int rate)
{
    const QFileInfo info(url);
    if (!info.exists() || info.size() < headerBytes + 1)
        return 0;
    const qint64 samples = (info.size() - headerBytes) / 2;
    return samples * 1000 / rate;
}

QString InterviewSession::extractRange(const QString &url, qint64 fromMs, qint64 toMs, int rate)
{
    QFile recording(url);
    if (!recording.open(QIODevice::ReadOnly))
        throw std::runtime_error(recording.errorString().toStdString());
    const qint64 first = fromMs * rate / 1000;
    const qint64 last = toMs * rate / 1000;
    QByteArray bytes;
    if (last > first) {
        if (!recording.seek(headerBytes + 2 * first))
            throw std::runtime_error(recording.errorString().toStdString());
        // Never more than the recording holds: a reader asks for the buffer it names.
        const qint64 held = std::max<qint64>(0, recording.size() - recording.pos());
        bytes = recording.read(std::min(2 * (last - first), held));
    }
    const QString path = QDir::tempPath() + QStringLiteral("/chunk-") + uuidText(QUuid::createUuid())
        + QStringLiteral(".wav");
    QFile chunk(path);
    if (!chunk.open(QIODevice::WriteOnly) || chunk.write(wavHeader(bytes.size(), rate) + bytes) != headerBytes + bytes.size()) {
        chunk.remove();
        throw std::runtime_error(chunk.errorString().toStdString());
    }
    return path;
}

QByteArray InterviewSession::wavHeader(qint64 dataSize, int rate)
{
    QByteArray header(headerBytes, '\0');
    char *h = header.data();
    const auto put32 = [h](int at, quint32 value) { qToLittleEndian(value, h + at); };
    const auto put16 = [h](int at, quint16 value) { qToLittleEndian(value, h + at); };
    memcpy(h, "RIFF", 4);
    put32(4, quint32(dataSize + 36));
    memcpy(h + 8, "WAVEfmt ", 8);
    put32(16, 16);
    put16(20, 1); // PCM
    put16(22, 1); // mono
    put32(24, quint32(rate));
    put32(28, quint32(rate * 2));
    put16(32, 2);
    put16(34, 16);
    memcpy(h + 36, "data", 4);
    put32(40, quint32(dataSize));
    return header;
}
