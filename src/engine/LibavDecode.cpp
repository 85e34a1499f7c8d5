// In-process decoding with the FFmpeg libraries: the first audio stream of a file,
// down-mixed and resampled to 16 kHz mono signed 16-bit.
#include "engine/Decoder.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/mem.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

namespace Decoder {

namespace {

QString avMessage(int code)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(code, text, sizeof text);
    return QString::fromUtf8(text);
}

struct Decoder {
    AVFormatContext *format = nullptr;
    AVCodecContext *codec = nullptr;
    SwrContext *resampler = nullptr;
    AVPacket *packet = av_packet_alloc();
    AVFrame *frame = av_frame_alloc();
    // What the resampler was set up for; a change mid-stream rebuilds it.
    AVChannelLayout inLayout{};
    int inFormat = -1;
    int inRate = 0;
    QByteArray pcm;
    // Where set, the samples go on as floats frame by frame and `pcm` stays one frame
    // long: a long recording is then never held twice.
    std::vector<float> *floats = nullptr;

    ~Decoder()
    {
        swr_free(&resampler);
        av_channel_layout_uninit(&inLayout);
        av_frame_free(&frame);
        av_packet_free(&packet);
        avcodec_free_context(&codec);
        avformat_close_input(&format);
    }

    void spill()
    {
        if (!floats)
            return;
        const auto *bytes = reinterpret_cast<const uchar *>(pcm.constData());
        for (qsizetype i = 0; i + 1 < pcm.size(); i += 2)
            floats->push_back(static_cast<float>(qFromLittleEndian<qint16>(bytes + i)) / 32768.0f);
        pcm.resize(0);
    }

    // Room for `samples` more output samples, growing geometrically.
    char *reserveTail(int samples)
    {
        const qsizetype needed = pcm.size() + qsizetype(samples) * 2;
        if (needed > pcm.capacity())
            pcm.reserve(std::max(needed, pcm.capacity() * 2));
        return pcm.data() + pcm.size();
    }

    void drainResampler()
    {
        if (!resampler)
            return;
        for (;;) {
            const int room = std::max(swr_get_out_samples(resampler, 0), 0) + 256;
            auto *out = reinterpret_cast<uint8_t *>(reserveTail(room));
            const int got = swr_convert(resampler, &out, room, nullptr, 0);
            if (got <= 0)
                break;
            pcm.resize(pcm.size() + qsizetype(got) * 2);
            spill();
        }
    }

    void setUpResampler()
    {
        AVChannelLayout layout{};
        if (frame->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&layout, frame->ch_layout.nb_channels);
        else
            av_channel_layout_copy(&layout, &frame->ch_layout);
        if (resampler && inFormat == frame->format && inRate == frame->sample_rate
            && av_channel_layout_compare(&inLayout, &layout) == 0) {
            av_channel_layout_uninit(&layout);
            return;
        }
        drainResampler();
        swr_free(&resampler);
        av_channel_layout_uninit(&inLayout);
        inLayout = layout;
        inFormat = frame->format;
        inRate = frame->sample_rate;
        const AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
        if (swr_alloc_set_opts2(&resampler, &mono, AV_SAMPLE_FMT_S16, 16000, &inLayout,
                                static_cast<AVSampleFormat>(inFormat), inRate, 0, nullptr) < 0
            || swr_init(resampler) < 0)
            throw EngineError::convertFailed(QStringLiteral("Reader-Konfiguration"));
    }

    void appendFrame()
    {
        setUpResampler();
        const int room = swr_get_out_samples(resampler, frame->nb_samples) + 16;
        auto *out = reinterpret_cast<uint8_t *>(reserveTail(room));
        const int got = swr_convert(resampler, &out, room, const_cast<const uint8_t **>(frame->extended_data),
                                    frame->nb_samples);
        // A frame that fails to convert is dropped, as a failed buffer copy would be.
        if (got > 0)
            pcm.resize(pcm.size() + qsizetype(got) * 2);
        spill();
    }

    // Takes every frame the decoder has ready; false when the decoder failed.
    bool receiveFrames()
    {
        for (;;) {
            const int rc = avcodec_receive_frame(codec, frame);
            if (rc == AVERROR(EAGAIN) || rc == AVERROR_EOF)
                return true;
            if (rc < 0)
                return false;
            if (frame->nb_samples > 0)
                appendFrame();
            av_frame_unref(frame);
        }
    }

    // Hands one packet (or the end of the stream, for none) to the decoder and takes
    // what comes out; false when the decoder failed on it.
    bool decode(const AVPacket *packet)
    {
        int rc = avcodec_send_packet(codec, packet);
        if (rc == AVERROR(EAGAIN)) {
            // Full: take what is ready, then the packet fits.
            if (!receiveFrames())
                return false;
            rc = avcodec_send_packet(codec, packet);
        }
        if (rc < 0 && rc != AVERROR_EOF)
            return false;
        return receiveFrames();
    }
};

// A failure once reading is under way: FFmpeg's own texts are English and say little
// to a user, so there is one German reason for all of them.
EngineError decodingFailed()
{
    return EngineError::convertFailed(QStringLiteral("Dekodierung fehlgeschlagen"));
}

} // namespace

namespace {

void decodeInto(Decoder &d, const QString &input, const CancelTokenPtr &control)
{
    static std::once_flag setUp;
    std::call_once(setUp, [] {
        av_log_set_level(AV_LOG_QUIET);
        // A size field of a broken file (a WAV's INFO tag, say) must not make FFmpeg
        // allocate and zero gigabytes. No buffer of a demuxer or an audio decoder comes
        // near this; a raw 8K video frame is under 100 MiB. The bound holds for the whole
        // process, the player's FFmpeg included.
        av_max_alloc(512u << 20);
    });

    if (!d.packet || !d.frame)
        throw EngineError::convertFailed(QStringLiteral("Reader-Konfiguration"));

    const QByteArray path = QFile::encodeName(input);
    int rc = avformat_open_input(&d.format, path.constData(), nullptr, nullptr);
    if (rc < 0)
        throw EngineError::convertFailed(avMessage(rc));
    rc = avformat_find_stream_info(d.format, nullptr);
    if (rc < 0)
        throw EngineError::convertFailed(avMessage(rc));

    // Only the first audio stream counts; everything else is skipped while reading.
    int index = -1;
    for (unsigned i = 0; i < d.format->nb_streams; ++i) {
        AVStream *stream = d.format->streams[i];
        if (index < 0 && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            index = int(i);
        else
            stream->discard = AVDISCARD_ALL;
    }
    if (index < 0)
        throw EngineError::convertFailed(QStringLiteral("keine Tonspur"));

    AVStream *stream = d.format->streams[index];
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec || !(d.codec = avcodec_alloc_context3(codec))
        || avcodec_parameters_to_context(d.codec, stream->codecpar) < 0)
        throw EngineError::convertFailed(QStringLiteral("Reader-Konfiguration"));
    d.codec->pkt_timebase = stream->time_base;
    rc = avcodec_open2(d.codec, codec, nullptr);
    if (rc < 0)
        throw EngineError::convertFailed(rc == AVERROR_UNKNOWN ? QStringLiteral("Lesefehler") : avMessage(rc));

    // One allocation for the whole track when the container knows its length. The length
    // is the file's word only: a damaged or hostile header can claim years, so it counts
    // no further than the bytes could hold at a bit rate far below any codec's.
    if (d.format->duration > 0) {
        double seconds = std::min(d.format->duration / double(AV_TIME_BASE), 24.0 * 3600.0);
        if (const int64_t bytes = avio_size(d.format->pb); bytes > 0)
            seconds = std::min(seconds, double(bytes) / 100.0 + 1.0);
        if (d.floats)
            d.floats->reserve(size_t(seconds * 16000.0) + 32768);
        else
            d.pcm.reserve(qsizetype(seconds * 32000.0) + 65536);
    }

    while ((rc = av_read_frame(d.format, d.packet)) >= 0) {
        if (d.packet->stream_index == index) {
            if (control && control->isCancelled())
                throw EngineError::cancelled();
            // Damaged data fails the whole read, and the ffmpeg road decides what to make of
            // the file. A packet that the demuxer had to cut short is where a truncated file
            // ends: it is dropped, and the file gives what it holds.
            const bool cutShort = d.packet->flags & AV_PKT_FLAG_CORRUPT;
            if (!d.decode(d.packet) && !cutShort)
                throw decodingFailed();
        }
        av_packet_unref(d.packet);
    }
    if (rc != AVERROR_EOF)
        throw decodingFailed();

    if (!d.decode(nullptr))
        throw decodingFailed();
    d.drainResampler();
}

} // namespace

QByteArray libavDecodePCM16(const QString &input, const CancelTokenPtr &control)
{
    Decoder d;
    decodeInto(d, input, control);
    return std::move(d.pcm);
}

std::vector<float> libavDecodeFloats(const QString &input, const CancelTokenPtr &control)
{
    std::vector<float> samples;
    Decoder d;
    d.floats = &samples;
    decodeInto(d, input, control);
    return samples;
}

} // namespace Decoder
