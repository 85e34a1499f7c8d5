// sherpa-diarize: offline speaker diarisation of a 16 kHz mono WAV file over sherpa-onnx's
// C interface. Progress lines ("progress N%") go to standard error, one result line per
// segment ("start -- end speaker_N", seconds) to standard output, sorted by start.
// Exit status 0 on success, 1 on failure, 2 for a wrong command line.
#include <sherpa-onnx/c-api/c-api.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

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

int32_t report(int32_t done, int32_t total, void *)
{
    if (total > 0)
        std::fprintf(stderr, "progress %.1f%%\n", 100.0 * done / total);
    return 0; // go on
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

    SherpaOnnxOfflineSpeakerDiarizationConfig config;
    std::memset(&config, 0, sizeof config);
    config.segmentation.pyannote.model = o.segModel.c_str();
    config.segmentation.num_threads = o.segThreads;
    config.segmentation.provider = o.segProvider.c_str();
    config.embedding.model = o.embModel.c_str();
    config.embedding.num_threads = o.embThreads;
    config.embedding.provider = o.embProvider.c_str();
    config.clustering.num_clusters = o.numClusters;
    config.clustering.threshold = o.threshold;
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

    const SherpaOnnxOfflineSpeakerDiarizationResult *result =
        SherpaOnnxOfflineSpeakerDiarizationProcessWithCallback(sd, wave->samples, wave->num_samples, report, nullptr);
    int status = 1;
    if (result) {
        const int32_t n = SherpaOnnxOfflineSpeakerDiarizationResultGetNumSegments(result);
        const SherpaOnnxOfflineSpeakerDiarizationSegment *segments =
            SherpaOnnxOfflineSpeakerDiarizationResultSortByStartTime(result);
        for (int32_t i = 0; segments && i < n; ++i)
            std::printf("%.3f -- %.3f speaker_%02d\n", segments[i].start, segments[i].end, segments[i].speaker);
        if (segments)
            SherpaOnnxOfflineSpeakerDiarizationDestroySegment(segments);
        SherpaOnnxOfflineSpeakerDiarizationDestroyResult(result);
        status = 0;
    } else {
        std::fprintf(stderr, "diarisation failed\n");
    }
    SherpaOnnxFreeWave(wave);
    SherpaOnnxDestroyOfflineSpeakerDiarization(sd);
    return status;
}
