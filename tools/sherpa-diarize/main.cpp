// sherpa-diarize: offline speaker diarisation of a 16 kHz mono WAV file over sherpa-onnx's
// C interface. Progress lines ("progress N%") go to standard error, one result line per
// segment ("start -- end speaker_N", seconds) to standard output, sorted by start.
// Exit status 0 on success, 1 on failure, 2 for a wrong command line.
//
// With --clustering.num-clusters the count is given. Without it the program finds the
// count itself. sherpa-onnx's own threshold works on embeddings of short local pieces,
// where two clearly different voices can lie within any threshold that keeps one voice
// together; so the first pass splits finely, each piece of at least two seconds gets an
// embedding of its own over its whole length, and those are joined while they lie
// closer than a distance measured on real and synthetic conversations (Clustering.h).
// A cluster with less than three seconds of such pieces is no voice of its own.
// A cluster threshold given on the command line is accepted and has no effect then.
// SHERPA_DIARIZE_DEBUG=1 tells on standard error how the count came about.
#include "Clustering.h"

#include <sherpa-onnx/c-api/c-api.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Options {
    std::string wav, segModel, embModel;
    std::string segProvider = "cpu", embProvider = "cpu";
    int numClusters = 0;
    float threshold = 0.5f;
    int segThreads = 1, embThreads = 1;
    float minDurationOn = 0.3f, minDurationOff = 0.5f;
};

bool takeValue(std::string_view arg, std::string_view name, std::string &value)
{
    if (arg.size() <= name.size() || arg.substr(0, name.size()) != name || arg[name.size()] != '=')
        return false;
    value = std::string(arg.substr(name.size() + 1));
    return true;
}

bool parse(int argc, char **argv, Options &o)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        std::string v;
        if (takeValue(arg, "--clustering.num-clusters", v))
            o.numClusters = std::atoi(v.c_str());
        else if (takeValue(arg, "--clustering.cluster-threshold", v))
            o.threshold = std::strtof(v.c_str(), nullptr);
        else if (takeValue(arg, "--segmentation.pyannote-model", v))
            o.segModel = v;
        else if (takeValue(arg, "--embedding.model", v))
            o.embModel = v;
        else if (takeValue(arg, "--embedding.provider", v))
            o.embProvider = v;
        else if (takeValue(arg, "--segmentation.provider", v))
            o.segProvider = v;
        else if (takeValue(arg, "--embedding.num-threads", v))
            o.embThreads = std::atoi(v.c_str());
        else if (takeValue(arg, "--segmentation.num-threads", v))
            o.segThreads = std::atoi(v.c_str());
        else if (takeValue(arg, "--min-duration-on", v))
            o.minDurationOn = std::strtof(v.c_str(), nullptr);
        else if (takeValue(arg, "--min-duration-off", v))
            o.minDurationOff = std::strtof(v.c_str(), nullptr);
        else if (arg.substr(0, 2) != "--" && o.wav.empty())
            o.wav = std::string(arg);
        else
            return false;
    }
    return !o.wav.empty() && !o.segModel.empty() && !o.embModel.empty();
}

// Progress of the diarisation pass, scaled into the share of the whole run it stands for.
struct Share {
    double from = 0, to = 100;
};

int32_t report(int32_t done, int32_t total, void *arg)
{
    const Share &share = *static_cast<const Share *>(arg);
    if (total > 0)
        std::fprintf(stderr, "progress %.1f%%\n", share.from + (share.to - share.from) * done / total);
    return 0; // go on
}

struct Span {
    double start, end;
    int speaker;
};

// The count is at most this.
constexpr int maxCount = 8;
// Distance threshold of the first pass: low enough that no two voices share a cluster;
// the pieces are joined again afterwards.
constexpr float fineThreshold = 0.2f;
// Pieces at least this long carry an embedding that tells voices apart; shorter ones are
// placed by the clusters of the long ones, the shortest by their neighbours in time.
constexpr double solidSeconds = 2.0;
constexpr double minEmbedSeconds = 0.5;
// An embedding of at most this much of a piece's middle stands for all of it.
constexpr double maxEmbedSeconds = 10.0;
// Cosine distance below which two clusters of solid pieces are one voice. Measured on
// real and synthetic conversations: pieces of one voice lie within 0.30 of each other,
// different voices 0.38 and more apart.
constexpr double sameVoiceDistance = 0.35;
// A voice of its own holds at least this much solid speech. Where two voices follow each
// other within a piece, the piece's embedding lies between them and would otherwise
// count as a third.
constexpr double minVoiceSeconds = 3.0;

bool debugging()
{
    const char *v = std::getenv("SHERPA_DIARIZE_DEBUG");
    return v && *v && std::strcmp(v, "0") != 0;
}

std::vector<Span> diarize(const SherpaOnnxOfflineSpeakerDiarization *sd, const SherpaOnnxWave *wave, Share share,
                          bool &ok)
{
    std::vector<Span> spans;
    const SherpaOnnxOfflineSpeakerDiarizationResult *result = SherpaOnnxOfflineSpeakerDiarizationProcessWithCallback(
        sd, wave->samples, wave->num_samples, report, &share);
    ok = result != nullptr;
    if (!result)
        return spans;
    const int32_t n = SherpaOnnxOfflineSpeakerDiarizationResultGetNumSegments(result);
    const SherpaOnnxOfflineSpeakerDiarizationSegment *segments =
        SherpaOnnxOfflineSpeakerDiarizationResultSortByStartTime(result);
    for (int32_t i = 0; segments && i < n; ++i)
        spans.push_back({segments[i].start, segments[i].end, segments[i].speaker});
    if (segments)
        SherpaOnnxOfflineSpeakerDiarizationDestroySegment(segments);
    SherpaOnnxOfflineSpeakerDiarizationDestroyResult(result);
    return spans;
}

std::vector<float> embed(const SherpaOnnxSpeakerEmbeddingExtractor *ex, const SherpaOnnxWave *wave, const Span &s)
{
    const double middle = (s.start + s.end) / 2;
    const double half = std::min(s.end - s.start, maxEmbedSeconds) / 2;
    const int32_t rate = wave->sample_rate;
    const int32_t from = std::clamp(int32_t((middle - half) * rate), 0, wave->num_samples);
    const int32_t to = std::clamp(int32_t((middle + half) * rate), from, wave->num_samples);
    const SherpaOnnxOnlineStream *stream = SherpaOnnxSpeakerEmbeddingExtractorCreateStream(ex);
    SherpaOnnxOnlineStreamAcceptWaveform(stream, rate, wave->samples + from, to - from);
    SherpaOnnxOnlineStreamInputFinished(stream);
    std::vector<float> v;
    if (SherpaOnnxSpeakerEmbeddingExtractorIsReady(ex, stream)) {
        const float *e = SherpaOnnxSpeakerEmbeddingExtractorComputeEmbedding(ex, stream);
        if (e) {
            v.assign(e, e + SherpaOnnxSpeakerEmbeddingExtractorDim(ex));
            SherpaOnnxSpeakerEmbeddingExtractorDestroyEmbedding(e);
        }
    }
    SherpaOnnxDestroyOnlineStream(stream);
    return v;
}

// Gives the finely split spans their voices: the solid pieces by clustering their own
// embeddings, shorter ones by the nearest of those clusters, the shortest by the nearest
// placed span in time. Neighbours of one voice are joined.
std::vector<Span> chooseVoices(const std::vector<Span> &spans, const SherpaOnnxSpeakerEmbeddingExtractor *ex,
                               const SherpaOnnxWave *wave, double minGap)
{
    std::vector<std::vector<float>> embeddings(spans.size());
    size_t solid = 0;
    for (size_t i = 0; i < spans.size(); ++i) {
        const double length = spans[i].end - spans[i].start;
        if (length >= minEmbedSeconds)
            embeddings[i] = embed(ex, wave, spans[i]);
        if (length >= solidSeconds && !embeddings[i].empty())
            ++solid;
        std::fprintf(stderr, "progress %.1f%%\n", 80.0 + 20.0 * double(i + 1) / double(spans.size()));
    }
    // A short recording may have too few solid pieces; then every piece with an
    // embedding takes part.
    const double cut = solid >= 2 ? solidSeconds : minEmbedSeconds;
    std::vector<clustering::Piece> pieces;
    std::vector<size_t> pieceOf; // span index of each piece
    for (size_t i = 0; i < spans.size(); ++i) {
        if (spans[i].end - spans[i].start >= cut && !embeddings[i].empty()) {
            pieces.push_back({embeddings[i], spans[i].end - spans[i].start});
            pieceOf.push_back(i);
        }
    }
    std::vector<int> labels = clustering::agglomerate(pieces, sameVoiceDistance, maxCount);
    if (cut == solidSeconds)
        labels = clustering::dropSlight(pieces, labels, minVoiceSeconds);

    std::vector<int> voice(spans.size(), -1);
    for (size_t p = 0; p < pieces.size(); ++p)
        voice[pieceOf[p]] = labels[p];
    for (size_t i = 0; i < spans.size(); ++i) {
        if (voice[i] < 0 && !embeddings[i].empty())
            voice[i] = clustering::nearest(pieces, labels, embeddings[i]);
    }
    std::vector<int> placed = voice;
    for (size_t i = 0; i < spans.size(); ++i) {
        if (placed[i] >= 0)
            continue;
        double nearest = std::numeric_limits<double>::max();
        voice[i] = 0;
        for (size_t j = 0; j < spans.size(); ++j) {
            if (placed[j] < 0)
                continue;
            const double d = std::max({0.0, spans[j].start - spans[i].end, spans[i].start - spans[j].end});
            if (d < nearest) {
                nearest = d;
                voice[i] = placed[j];
            }
        }
    }
    if (debugging()) {
        std::fprintf(stderr, "spans %zu, clustered %zu (at least %.1f s), count %d\n", spans.size(), pieces.size(),
                     cut, labels.empty() ? 1 : *std::max_element(labels.begin(), labels.end()) + 1);
    }

    std::vector<Span> out;
    for (size_t i = 0; i < spans.size(); ++i) {
        const Span s{spans[i].start, spans[i].end, voice[i]};
        if (!out.empty() && out.back().speaker == s.speaker && s.start - out.back().end <= minGap)
            out.back().end = std::max(out.back().end, s.end);
        else
            out.push_back(s);
    }
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    Options o;
    if (!parse(argc, argv, o)) {
        std::fprintf(stderr,
                     "usage: sherpa-diarize --segmentation.pyannote-model=FILE --embedding.model=FILE\n"
                     "       [--clustering.num-clusters=N | --clustering.cluster-threshold=X] [...] WAV\n");
        return 2;
    }
    const bool automatic = o.numClusters < 1;

    SherpaOnnxOfflineSpeakerDiarizationConfig config;
    std::memset(&config, 0, sizeof config);
    config.segmentation.pyannote.model = o.segModel.c_str();
    config.segmentation.num_threads = o.segThreads;
    config.segmentation.provider = o.segProvider.c_str();
    config.embedding.model = o.embModel.c_str();
    config.embedding.num_threads = o.embThreads;
    config.embedding.provider = o.embProvider.c_str();
    config.clustering.num_clusters = automatic ? -1 : o.numClusters;
    config.clustering.threshold = automatic ? fineThreshold : o.threshold;
    config.min_duration_on = o.minDurationOn;
    config.min_duration_off = o.minDurationOff;

    const SherpaOnnxOfflineSpeakerDiarization *sd = SherpaOnnxCreateOfflineSpeakerDiarization(&config);
    if (!sd) {
        std::fprintf(stderr, "cannot load the models\n");
        return 1;
    }
    const SherpaOnnxWave *wave = SherpaOnnxReadWave(o.wav.c_str());
    if (!wave) {
        std::fprintf(stderr, "cannot read %s\n", o.wav.c_str());
        SherpaOnnxDestroyOfflineSpeakerDiarization(sd);
        return 1;
    }
    if (wave->sample_rate != SherpaOnnxOfflineSpeakerDiarizationGetSampleRate(sd)) {
        std::fprintf(stderr, "expected %d Hz, got %d Hz\n", SherpaOnnxOfflineSpeakerDiarizationGetSampleRate(sd),
                     wave->sample_rate);
        SherpaOnnxFreeWave(wave);
        SherpaOnnxDestroyOfflineSpeakerDiarization(sd);
        return 1;
    }

    bool ok = false;
    std::vector<Span> spans;
    if (!automatic) {
        spans = diarize(sd, wave, {0, 100}, ok);
    } else {
        SherpaOnnxSpeakerEmbeddingExtractorConfig ec;
        std::memset(&ec, 0, sizeof ec);
        ec.model = o.embModel.c_str();
        ec.num_threads = o.embThreads;
        ec.provider = o.embProvider.c_str();
        const SherpaOnnxSpeakerEmbeddingExtractor *ex = SherpaOnnxCreateSpeakerEmbeddingExtractor(&ec);
        if (ex) {
            spans = diarize(sd, wave, {0, 80}, ok);
            if (ok)
                spans = chooseVoices(spans, ex, wave, o.minDurationOff);
            SherpaOnnxDestroySpeakerEmbeddingExtractor(ex);
        } else {
            std::fprintf(stderr, "cannot load the embedding model\n");
        }
    }
    if (ok) {
        std::stable_sort(spans.begin(), spans.end(), [](const Span &a, const Span &b) { return a.start < b.start; });
        for (const Span &s : spans)
            std::printf("%.3f -- %.3f speaker_%02d\n", s.start, s.end, s.speaker);
    } else {
        std::fprintf(stderr, "diarisation failed\n");
    }
    SherpaOnnxFreeWave(wave);
    SherpaOnnxDestroyOfflineSpeakerDiarization(sd);
    return ok ? 0 : 1;
}
