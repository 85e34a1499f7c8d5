#include "app/InterviewJob.h"

#include "capture/LiveRecording.h"

#include "capture/Microphone.h"
#include "core/TranscribeControl.h"
#include "core/Tr.h"
#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"
#include "speakers/DiarizationModels.h"
#include "speakers/Diarizer.h"

#include <QFile>
#include <QPromise>
#include <QSet>
#include <QtConcurrent/QtConcurrentRun>

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

// The speaker models once they are there.
struct SpeakerModels {
    DiarizationModels::Paths paths;
};

namespace {

constexpr qint64 shortestPassMs = 1000;
constexpr qint64 shortestTailMs = 500;

// The segments of the range starting at `fromMs`, their times made relative to the
// recording; none when the range could not be recognised. Runs on the pool.
std::optional<QList<TranscriptSegment>> recognise(const QString &wav, qint64 fromMs, qint64 toMs,
                                                  const std::shared_ptr<KeptModel> &kept, const QString &language,
                                                  const TranscribeControlPtr &control)
{
    try {
        const std::vector<float> samples = LiveRecording::samples(wav, fromMs, toMs);
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
        chunk = LiveRecording::extractRange(wav, 0, toMs);
        const QList<SpeakerSpan> spans = Diarizer::diarize(chunk, models.seg, models.emb, Diarizer::defaultThreshold, 0, control);
        QFile::remove(chunk);
        // Labels over a single voice tell nothing; they come once a second one is heard.
        QSet<int> voices;
        for (const SpeakerSpan &span : spans)
            voices.insert(span.speaker);
        if (voices.size() < 2)
            return QString();
        const QString text = Diarizer::speakerLabeledText(segments, spans);
        return text.contains(u':') ? text : QString();
    } catch (...) {
        if (!chunk.isEmpty())
            QFile::remove(chunk);
        return std::nullopt;
    }
}

} // namespace

struct InterviewJob::Pass {
    qint64 upToMs = 0;
    std::optional<QList<TranscriptSegment>> segments;
};

InterviewJob::InterviewJob(QObject *parent)
    : QObject(parent), m_recording(std::make_unique<LiveRecording>()), m_control(std::make_shared<TranscribeControl>())
{
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &InterviewJob::tick);
}

InterviewJob::~InterviewJob()
{
    if (m_isRecording)
        cancel();
    m_control->cancel();
}

QString InterviewJob::fullText() const
{
    QStringList texts;
    for (const TranscriptSegment &s : segments())
        texts << s.text;
    return texts.join(u' ');
}

// --- The recording ---

void InterviewJob::start(const QString &modelPath, const QString &language, bool liveSpeakers)
{
    if (m_isRecording || m_isFinalizing)
        return;
    m_modelPath = modelPath;
    m_model = std::make_shared<KeptModel>(modelPath);
    m_language = language;
    m_liveSpeakers = liveSpeakers;
    m_permissionDenied = false;
    Microphone::whenAllowed(this, [this] { begin(); }, [this] { m_permissionDenied = true; });
}

void InterviewJob::reset()
{
    if (m_isRecording || m_isFinalizing)
        return;
    m_segments.setValueBypassingBindings({});
    m_segments.notify();
    m_speakerText = std::nullopt;
    m_lastMs = 0;
    m_lastDiarMs = 0;
    m_elapsed = 0.0;
    m_status = QString();
    m_permissionDenied = false;
}

void InterviewJob::begin()
{
    reset();

    QString error;
    switch (m_recording->start(&error)) {
    case LiveRecording::Start::noMicrophone:
        m_permissionDenied = true;
        return;
    case LiveRecording::Start::failed:
        m_status = error;
        return;
    case LiveRecording::Start::recording:
        break;
    }
    m_wavPath = *m_recording->path();
    m_isRecording = true;
    m_timer.start();
    // Nor for the voice-activity model: passes before it is there hear all they are given,
    // and the engine skips what is plainly silent.
    VadModel::ensure(m_control).then(this, [](const QString &) {});
    // The recording does not wait for the speaker models; without them nobody is separated.
    if (m_liveSpeakers) {
        DiarizationModels::ensure([](const QString &) {}, m_control)
            .then(this, [this](const DiarizationModels::Paths &paths) { m_models = std::make_shared<SpeakerModels>(SpeakerModels{paths}); })
            .onFailed(this, [] {});
    }
}

void InterviewJob::endRecording()
{
    m_timer.stop();
    m_recording->stop();
    m_isRecording = false;
}

void InterviewJob::cancel()
{
    endRecording();
    m_control->cancel();
    m_model.reset();
    if (m_wavPath) {
        m_recording->discard();
        m_wavPath.reset();
    }
}

// --- The rolling loop ---

void InterviewJob::tick()
{
    if (!m_isRecording || !m_wavPath)
        return;
    const qint64 d = LiveRecording::durationMs(*m_wavPath);
    m_elapsed = double(d) / 1000.0;
    if (!m_pass && d - m_lastMs >= transcribeIntervalMs)
        transcribeNext(d);
    if (m_liveSpeakers && !m_diarization && m_models && !segments().isEmpty() && d - m_lastDiarMs >= diarIntervalMs)
        diarizeAll(d);
}

void InterviewJob::diarizeAll(qint64 upToMs)
{
    if (!m_wavPath || !m_models)
        return;
    const QString wav = *m_wavPath;
    const QList<TranscriptSegment> segments = this->segments();
    const DiarizationModels::Paths models = m_models->paths;
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

void InterviewJob::transcribeNext(qint64 upToMs)
{
    if (!m_wavPath || !m_modelPath || upToMs - m_lastMs < shortestPassMs)
        return;
    const QString wav = *m_wavPath;
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

void InterviewJob::append(const QList<TranscriptSegment> &segments, qint64 upToMs)
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

QFuture<std::optional<InterviewResult>> InterviewJob::stop()
{
    endRecording();
    if (!m_wavPath || !m_modelPath)
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

QFuture<std::optional<InterviewResult>> InterviewJob::finish()
{
    const QString wav = *m_wavPath;
    // The tail is the last pass: the model goes when it is done.
    const std::shared_ptr<KeptModel> model = std::exchange(m_model, {});
    const QString language = m_language;
    const qint64 from = m_lastMs;
    const qint64 d = LiveRecording::durationMs(wav);
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
            m_wavPath.reset();
            m_recording->release();
            // A last separation over everything, the tail included; where it fails, the
            // last rolling one stands.
            QFuture<std::optional<QString>> last = QtFuture::makeReadyValueFuture(std::optional<QString>());
            if (m_liveSpeakers && m_models && !value.result.segments.isEmpty()) {
                const DiarizationModels::Paths models = m_models->paths;
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
