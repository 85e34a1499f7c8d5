#include "engine/WhisperEngine.h"

#include "core/Text.h"
#include "engine/Decoder.h"
#include "engine/EngineError.h"
#include "engine/VadModel.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QThread>

#include <ggml-backend.h>
#include <whisper.h>

#include <atomic>
#include <mutex>

namespace WhisperEngine {

namespace {

// Handed to the library callbacks as user data.
struct Run {
    CancelTokenPtr control;
    std::function<void(double)> progress;
    int percent = 0;      // the library's last progress, of the piece it was handed
    qint64 sliceCs = 0;   // what it was handed, in its time unit (10 ms)
    qint64 pieceCs = 0;   // where the piece ends; 0 for a run to the end
    bool vad = false;     // the library hears only speech, and counts its progress over that
};

void onProgress(whisper_context *, whisper_state *, int progress, void *userData)
{
    if (!userData)
        return;
    Run *run = static_cast<Run *>(userData);
    run->percent = progress;
    run->progress(progress / 100.0);
}

// Called before each window: a piece ends before the first window that starts at its end.
// The window starts where the last one's last segment ended, or, after windows without
// speech, somewhere later, which the coarse progress then shows.
bool onWindow(whisper_context *, whisper_state *state, void *userData)
{
    const Run *run = static_cast<Run *>(userData);
    if (!run || run->pieceCs == 0)
        return true;
    const int segments = whisper_full_n_segments_from_state(state);
    if (segments > 0 && whisper_full_get_segment_t1_from_state(state, segments - 1) >= run->pieceCs)
        return false;
    // Over speech alone the progress says nothing about where in the recording a window
    // lies; the segments' times, mapped back, do.
    if (run->vad)
        return true;
    return qint64(run->percent) * run->sliceCs < 100 * run->pieceCs;
}

bool onAbort(void *userData)
{
    const Run *run = static_cast<Run *>(userData);
    if (!run || !run->control)
        return false;
    return run->control->isCancelled();
}

void quietLog(ggml_log_level, const char *, void *) {}

QString fromLibrary(const char *text)
{
    return text ? QString::fromUtf8(text) : QString();
}

// Counts the CPUs of a kernel cpu list such as "0-7,16,18-19"; returns their ids.
QList<int> parseCpuList(const QString &list)
{
    QList<int> cpus;
    for (const QString &part : list.trimmed().split(u',', Qt::SkipEmptyParts)) {
        const QStringList range = part.split(u'-');
        bool okA = false, okB = true;
        const int a = range.value(0).toInt(&okA);
        const int b = range.size() > 1 ? range.value(1).toInt(&okB) : a;
        if (!okA || !okB || b < a || b - a > 4096)
            return {};
        for (int i = a; i <= b; ++i)
            cpus << i;
    }
    return cpus;
}

} // namespace

// Debian's ggml brings its CPU variants and GPU backends as modules, which a process
// loads once before its first context. The library's chatter is not for our users.
void prepareLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] {
        whisper_log_set(quietLog, nullptr);
        ggml_log_set(quietLog, nullptr);
        ggml_backend_load_all();
    });
}

namespace {

Device describe(ggml_backend_dev_t dev)
{
    return {fromLibrary(ggml_backend_reg_name(ggml_backend_dev_backend_reg(dev))),
            fromLibrary(ggml_backend_dev_description(dev))};
}

} // namespace

std::optional<Device> gpuDevice()
{
    static std::once_flag once;
    static std::optional<Device> device;
    std::call_once(once, [] {
        prepareLibrary();
        // whisper.cpp takes the first device of either GPU type (gpu_device 0).
        for (size_t i = 0; i < ggml_backend_dev_count(); ++i) {
            ggml_backend_dev_t dev = ggml_backend_dev_get(i);
            const enum ggml_backend_dev_type type = ggml_backend_dev_type(dev);
            if (type == GGML_BACKEND_DEVICE_TYPE_GPU || type == GGML_BACKEND_DEVICE_TYPE_IGPU) {
                device = describe(dev);
                break;
            }
        }
    });
    return device;
}

Device cpuDevice()
{
    prepareLibrary();
    if (ggml_backend_dev_t dev = ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_CPU))
        return describe(dev);
    return {QStringLiteral("CPU"), {}};
}

int threadCount(const QString &performanceCpuList, int onlineCores)
{
    // Physical cores: hyper-threads of one core share its core id.
    const QList<int> cpus = parseCpuList(performanceCpuList);
    QSet<QString> cores;
    for (int cpu : cpus) {
        const QString base = QStringLiteral("/sys/devices/system/cpu/cpu%1/topology/").arg(cpu);
        QFile pkg(base + QStringLiteral("physical_package_id")), core(base + QStringLiteral("core_id"));
        if (pkg.open(QIODevice::ReadOnly) && core.open(QIODevice::ReadOnly))
            cores.insert(QString::fromLatin1(pkg.readAll().trimmed() + ':' + core.readAll().trimmed()));
        else
            cores.insert(QString::number(cpu));
    }
    const int performance = int(cores.size());
    if (performance >= 1)
        return std::clamp(performance, 2, 8);
    return std::clamp(onlineCores - 2, 2, 8);
}

namespace {
std::atomic<int> threadsSet{0};
}

void setThreadCount(std::optional<int> threads)
{
    threadsSet = threads ? std::max(1, *threads) : 0;
}

int threadCount()
{
    if (const int set = threadsSet.load())
        return set;
    QFile list(QStringLiteral("/sys/devices/cpu_core/cpus"));
    const QString cpus = list.open(QIODevice::ReadOnly) ? QString::fromLatin1(list.readAll()) : QString();
    return threadCount(cpus, QThread::idealThreadCount());
}

QList<TranscriptWord> groupWords(const QList<TokenTuple> &tokens)
{
    QList<TranscriptWord> words;
    QString buffer;
    bool started = false;
    qint64 start = 0, end = 0;
    auto close = [&] {
        const QString trimmed = buffer.trimmed();
        if (!trimmed.isEmpty())
            words.append({trimmed, start, end});
        buffer.clear();
    };
    for (const TokenTuple &t : tokens) {
        if (t.text.startsWith(u' ')) {
            if (started)
                close();
            start = t.fromMs;
            end = t.toMs;
        } else if (!started) {
            start = t.fromMs;
            end = t.toMs;
        } else {
            end = std::max(end, t.toMs);
        }
        buffer += t.text;
        started = true;
    }
    close();
    return words;
}

LoadedModel::LoadedModel(const QString &path, int alignmentHeads)
{
    if (!QFileInfo::exists(path))
        throw EngineError::noModel();
    prepareLibrary();
    whisper_context_params contextParams = whisper_context_default_params();
    contextParams.use_gpu = true;
    if (alignmentHeads != WHISPER_AHEADS_NONE) {
        contextParams.dtw_token_timestamps = true;
        contextParams.dtw_aheads_preset = whisper_alignment_heads_preset(alignmentHeads);
    }
    m_ctx = whisper_init_from_file_with_params(QFile::encodeName(path).constData(), contextParams);
    if (!m_ctx)
        throw EngineError::transcribeFailed(QStringLiteral("Modell konnte nicht geladen werden"));
}

LoadedModel::~LoadedModel()
{
    whisper_free(m_ctx);
}

TranscriptionResult transcribe(const std::vector<float> &samples, const QString &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress)
{
    // Checked before the model loads: a refusal costs nothing.
    if (!QFileInfo::exists(model))
        throw EngineError::noModel();
    if (samples.size() > size_t(std::numeric_limits<int>::max()))
        throw EngineError::transcribeFailed(QStringLiteral("Audio zu lang"));
    LoadedModel loaded(model);
    return transcribe(samples, loaded, language, control, progress);
}

namespace {

// Reads the segments of the library's last run, times moved by `offsetMs`. The token
// times are read through the calls that map them back to the recording where the
// voice-activity stage cut the silence out; the token data keeps the cut timeline.
void appendSegments(whisper_context *ctx, qint64 offsetMs, bool dtw, TranscriptionResult &result)
{
    const int segmentCount = whisper_full_n_segments(ctx);
    for (int i = 0; i < segmentCount; ++i) {
        TranscriptSegment segment;
        segment.startMs = offsetMs + whisper_full_get_segment_t0(ctx, i) * 10;
        segment.endMs = offsetMs + whisper_full_get_segment_t1(ctx, i) * 10;
        QList<TokenTuple> tokens;
        const int tokenCount = whisper_full_n_tokens(ctx, i);
        for (int j = 0; j < tokenCount; ++j) {
            const whisper_token_data data = whisper_full_get_token_data(ctx, i, j);
            const QString tokenText = fromLibrary(whisper_full_get_token_text(ctx, i, j));
            // Timestamp and control tokens all read "[_...]".
            if (tokenText.startsWith(QStringLiteral("[_")))
                continue;
            qint64 t0 = whisper_full_get_token_t0(ctx, i, j), t1 = whisper_full_get_token_t1(ctx, i, j);
            if (dtw && data.t_dtw >= 0)
                t0 = std::min<qint64>(data.t_dtw, t1);
            tokens.append({tokenText, offsetMs + t0 * 10, offsetMs + t1 * 10});
        }
        segment.text = Text::trimBlanks(fromLibrary(whisper_full_get_segment_text(ctx, i)));
        segment.words = groupWords(tokens);
        result.segments.append(std::move(segment));
    }
}

} // namespace

TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress)
{
    return transcribe(samples, model, language, control, progress, kPieceSeconds);
}

TranscriptionResult transcribe(const std::vector<float> &samples, LoadedModel &model, const QString &language,
                               const CancelTokenPtr &control, const std::function<void(double)> &progress,
                               int pieceSeconds, const Setup &setup)
{
    // One run holds at most INT_MAX samples; a wrapped count must never reach the library.
    if (samples.size() > size_t(std::numeric_limits<int>::max()))
        throw EngineError::transcribeFailed(QStringLiteral("Audio zu lang"));
    whisper_context *ctx = model.context();

    if (control && control->isCancelled())
        throw EngineError::cancelled();

    const QString requested = language.isEmpty() ? QStringLiteral("auto") : language;
    QByteArray languageUtf8 = requested.toUtf8();
    const size_t total = samples.size();
    size_t start = 0, count = total;
    double reported = -1;
    Run run{control, [&](double f) {
                // The library counts over all it was handed, past the piece's end.
                const double at = std::min(double(start) + f * double(count), double(total));
                if (progress && total > 0 && at / double(total) > reported)
                    progress(reported = at / double(total));
            }};

    const bool beam = setup.beamSize > 1;
    whisper_full_params params =
        whisper_full_default_params(beam ? WHISPER_SAMPLING_BEAM_SEARCH : WHISPER_SAMPLING_GREEDY);
    if (beam)
        params.beam_search.beam_size = setup.beamSize;
    params.no_speech_thold = setup.noSpeechThold;
    // The model file is looked at once per run: one fetched while the application runs
    // counts from the next recognition on.
    const QByteArray vadModel = setup.vad && VadModel::installed() ? QFile::encodeName(VadModel::path()) : QByteArray();
    if (!vadModel.isEmpty()) {
        params.vad = true;
        params.vad_model_path = vadModel.constData();
        params.vad_params = whisper_vad_default_params();
        run.vad = true;
    }
    params.n_threads = threadCount();
    params.n_max_text_ctx = 0;
    params.translate = false;
    params.print_special = false;
    params.print_progress = false;
    params.print_realtime = false;
    params.print_timestamps = false;
    params.token_timestamps = true;
    params.suppress_nst = true;
    params.entropy_thold = 2.4f;
    params.logprob_thold = -1.0f;
    params.progress_callback = onProgress;
    params.progress_callback_user_data = &run;
    params.abort_callback = onAbort;
    params.abort_callback_user_data = &run;
    params.encoder_begin_callback = onWindow;
    params.encoder_begin_callback_user_data = &run;

    // The library keeps a padded copy of what it is handed, its log-mel spectrogram and
    // one energy value a sample: two and a half times the recording. A long recording
    // therefore goes in pieces, each handed with 40 seconds more than it covers, so that
    // every window it recognises hears real audio (30 s, plus the slack of the coarse
    // progress). The library stops before the first window that starts past the piece,
    // and the next piece starts where that window would have, at the last segment's end.
    // No context passes between windows (n_max_text_ctx 0), so the windows are the ones
    // a single run would have made.
    const size_t piece = size_t(std::max(1, pieceSeconds)) * WHISPER_SAMPLE_RATE;
    const size_t lookahead = size_t(40) * WHISPER_SAMPLE_RATE;
    constexpr size_t samplesPerCs = WHISPER_SAMPLE_RATE / 100;

    TranscriptionResult result;
    result.language = requested;
    bool languageFound = false;
    QElapsedTimer clock;
    clock.start();
    while (true) {
        const bool last = total - start <= piece + lookahead;
        count = last ? total - start : piece + lookahead;
        run.percent = 0;
        run.sliceCs = qint64(count / samplesPerCs);
        run.pieceCs = last ? 0 : qint64(piece / samplesPerCs);
        params.language = languageUtf8.constData();
        const qint64 offsetMs = qint64(start) * 1000 / WHISPER_SAMPLE_RATE;
        const qsizetype before = result.segments.size();
        if (isSilent(samples, start, count)) {
            if (last)
                break;
            start += piece;
            continue;
        }
        const int rc = whisper_full(ctx, params, samples.data() + start, int(count));

        // Checked before rc: a run stopped by the abort callback always reads as cancelled.
        if (control && control->isCancelled())
            throw EngineError::cancelled();
        if (rc != 0)
            throw EngineError::transcribeFailed(QStringLiteral("whisper_full rc=") + QString::number(rc));

        appendSegments(ctx, offsetMs, setup.dtw, result);
        // Over speech alone the library may run one window past the piece; what starts
        // there is the next piece's.
        if (!last && run.vad) {
            const qint64 endMs = offsetMs + qint64(piece) * 1000 / WHISPER_SAMPLE_RATE;
            while (result.segments.size() > before && result.segments.constLast().startMs >= endMs)
                result.segments.removeLast();
        }
        if (!languageFound) {
            languageFound = true;
            const int languageId = whisper_full_lang_id(ctx);
            const char *detected = languageId >= 0 ? whisper_lang_str(languageId) : nullptr;
            result.language = detected ? QString::fromUtf8(detected) : requested;
            // Later pieces keep what the first one found rather than guessing again.
            if (detected)
                languageUtf8 = QByteArray(detected);
        }
        if (last)
            break;
        // Without a segment, the piece was silence to its end.
        size_t next = start + piece;
        if (result.segments.size() > before)
            next = size_t(result.segments.constLast().endMs) * (WHISPER_SAMPLE_RATE / 1000);
        start = next > start ? std::min(next, total) : start + piece;
    }
    result.processingSeconds = clock.nsecsElapsed() / 1e9;
    run.progress(1.0);

    QStringList texts;
    for (const TranscriptSegment &segment : std::as_const(result.segments))
        texts << segment.text;
    result.fullText = texts.join(u' ');
    return result;
}

bool isSilent(const std::vector<float> &samples, size_t from, size_t count)
{
    // Speech has 30 ms stretches above -55 dBFS even when spoken softly into a poor
    // microphone; a muted line or digital silence has none.
    constexpr size_t frame = WHISPER_SAMPLE_RATE * 30 / 1000;
    constexpr double floor = 0.00178 * 0.00178;
    const size_t end = std::min(samples.size(), count == size_t(-1) ? samples.size() : from + count);
    for (size_t at = from; at < end; at += frame) {
        const size_t stop = std::min(end, at + frame);
        double energy = 0;
        for (size_t i = at; i < stop; ++i)
            energy += double(samples[i]) * samples[i];
        if (energy / double(stop - at) > floor)
            return false;
    }
    return true;
}

TranscriptionResult transcribeFile(const QString &input, const QString &model, const QString &language,
                                   const CancelTokenPtr &control, const std::function<void(double)> &progress)
{
    if (!QFileInfo::exists(model))
        throw EngineError::noModel();
    if (control && control->isCancelled())
        throw EngineError::cancelled();
    const std::vector<float> samples = Decoder::decodeTo16kMonoFloats(input, control);
    if (control && control->isCancelled())
        throw EngineError::cancelled();
    TranscriptionResult result =
        transcribe(samples, model, language, control, progress ? progress : [](double) {});
    result.model = QFileInfo(model).fileName();
    return result;
}

} // namespace WhisperEngine
