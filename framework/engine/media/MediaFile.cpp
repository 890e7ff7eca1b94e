// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MediaFile.h"

#include "FfmpegLog.h"
#include "FileBytes.h"
#include "LocalFile.h"

#include <QFile>
#include <QLatin1String>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace rvengine {

namespace {

constexpr int bufferBytes = 1 << 16;
constexpr int largestSide = 16384;
/// Muxers leave the silence out that a codec begins with, and move the rest: within this, a stream
/// begins with the file, seconds.
constexpr double sameStart = 0.01;

struct FreeInputBuffer
{
    void operator()(AVIOContext* context) const
    {
        av_freep(&context->buffer);
        avio_context_free(&context);
    }
};

bool isMatroska(const AVFormatContext& format)
{
    return std::strstr(format.iformat->name, "matroska") != nullptr;
}

/// Whether a codec is one of picture files; most of them serve moving pictures as well.
bool isPictureCodec(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_APNG:
    case AV_CODEC_ID_BMP:
    case AV_CODEC_ID_DPX:
    case AV_CODEC_ID_EXR:
    case AV_CODEC_ID_GIF:
    case AV_CODEC_ID_JPEG2000:
    case AV_CODEC_ID_MJPEG:
    case AV_CODEC_ID_PNG:
    case AV_CODEC_ID_PPM:
    case AV_CODEC_ID_TARGA:
    case AV_CODEC_ID_TIFF:
    case AV_CODEC_ID_WEBP:
        return true;
    default:
        return false;
    }
}

/// Texts that FFmpeg would draw; scalable pictures are such, and would read other files.
bool isText(AVCodecID codec)
{
    return codec == AV_CODEC_ID_ANSI || codec == AV_CODEC_ID_BINTEXT || codec == AV_CODEC_ID_XBIN ||
           codec == AV_CODEC_ID_IDF || codec == AV_CODEC_ID_SVG;
}

bool isUsable(const AVStream& stream)
{
    const AVCodecParameters& codec = *stream.codecpar;
    if (isText(codec.codec_id) || (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0)
        return false;
    if (codec.codec_type == AVMEDIA_TYPE_AUDIO)
        return codec.sample_rate > 0 && codec.ch_layout.nb_channels > 0;
    return codec.width > 0 && codec.height > 0 && codec.width <= largestSide &&
           codec.height <= largestSide;
}

/// How late the first picture comes out of the decoder, seconds, where the file tells only when one
/// goes in.
double decoderDelay(const AVFormatContext& format, const AVStream& stream)
{
    const AVRational rate = stream.avg_frame_rate;
    if (std::strcmp(format.iformat->name, "avi") != 0 || rate.num <= 0 || rate.den <= 0)
        return 0.0;
    return stream.codecpar->video_delay / av_q2d(rate);
}

/// When what is seen or heard of the stream begins, seconds.
double startOf(const AVFormatContext& format, const AVStream& stream)
{
    const double start =
        stream.start_time == AV_NOPTS_VALUE ? 0.0 : secondsOf(stream.start_time, stream.time_base);
    // The others count without what a codec begins with.
    const AVCodecParameters& codec = *stream.codecpar;
    return isMatroska(format) && codec.sample_rate > 0
               ? start + static_cast<double>(codec.initial_padding) / codec.sample_rate
               : start;
}

} // namespace

struct MediaFile::Input
{
    explicit Input(Interrupt ownersInterrupt)
        : interrupt(std::move(ownersInterrupt))
    {
    }

    bool open(const std::filesystem::path& path)
    {
        // With a buffer of FFmpeg's, one of Qt's would only copy once more.
        if (!openForReading(file, path, QIODevice::ReadOnly | QIODevice::Unbuffered))
            return false;
        auto* const buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
        if (!buffer)
            return false;
        bytes.reset(avio_alloc_context(buffer, bufferBytes, 0, this, &Input::readBytes, nullptr,
                                       &Input::seekBytes));
        return bytes && openFormat(path.filename().u8string());
    }

    bool openFormat(const std::string& name)
    {
        AVFormatContext* context = avformat_alloc_context();
        if (!context)
            return false;
        context->pb = bytes.get();
        context->interrupt_callback = {&Input::isInterrupted, this};
        context->max_streams = MostStreams;
        // No protocol has this name: what a file names inside cannot be opened by any.
        context->protocol_whitelist = av_strdup("none");
        const Deadline limit(*this);
        // The name is a hint for the format only. A context that fails is freed.
        if (avformat_open_input(&context, name.c_str(), nullptr, nullptr) < 0)
            return false;
        format.reset(context);
        return avformat_find_stream_info(context, nullptr) >= 0;
    }

    static int readBytes(void* self, std::uint8_t* to, int size)
    {
        auto* const input = static_cast<Input*>(self);
        if (isInterrupted(self))
            return AVERROR_EXIT;
        return readFrom(input->file, to, size);
    }

    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence)
    {
        return seekIn(static_cast<Input*>(self)->file, offset, whence);
    }

    static int isInterrupted(void* self)
    {
        const auto* const input = static_cast<const Input*>(self);
        return input->interrupt.isRaised() || std::chrono::steady_clock::now() > input->deadline;
    }

    /// Ends what takes too long while it lives.
    class Deadline
    {
    public:
        explicit Deadline(Input& input)
            : m_input(input)
        {
            m_input.deadline = std::chrono::steady_clock::now() + LongestProbing;
        }
        ~Deadline() { m_input.deadline = std::chrono::steady_clock::time_point::max(); }
        Deadline(const Deadline&) = delete;
        Deadline& operator=(const Deadline&) = delete;

    private:
        Input& m_input;
    };

    const Interrupt interrupt;
    std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::time_point::max();
    QFile file;
    std::unique_ptr<AVIOContext, FreeInputBuffer> bytes;
    InputPointer format;
};

std::unique_ptr<MediaFile> MediaFile::open(const std::string& path, Interrupt interrupt)
{
    redirectFfmpegLog();
    const auto local = readableFile(path);
    if (!local)
        return nullptr;
    auto input = std::make_unique<Input>(std::move(interrupt));
    if (!input->open(*local))
        return nullptr;
    std::unique_ptr<MediaFile> file(new MediaFile(std::move(input)));
    return file->findStreams() ? std::move(file) : nullptr;
}

MediaFile::MediaFile(std::unique_ptr<Input> input)
    : m_input(std::move(input))
{
}

MediaFile::~MediaFile() = default;

AVFormatContext* MediaFile::format() const
{
    return m_input->format.get();
}

bool MediaFile::findStreams()
{
    const auto best = [this](AVMediaType type) -> AVStream* {
        const int index = av_find_best_stream(format(), type, -1, -1, nullptr, 0);
        AVStream* const stream = index < 0 ? nullptr : format()->streams[index];
        return stream && isUsable(*stream) ? stream : nullptr;
    };
    m_video = best(AVMEDIA_TYPE_VIDEO);
    m_sound = best(AVMEDIA_TYPE_AUDIO);
    if (!m_video && !m_sound)
        return false;
    m_start = std::numeric_limits<double>::infinity();
    for (const AVStream* stream : {m_video, m_sound}) {
        if (stream)
            m_start = std::min(m_start, startOf(*format(), *stream));
    }
    m_readTo = m_start;
    return true;
}

double MediaFile::startFor(const AVStream* stream) const
{
    const double own = startOf(*format(), *stream);
    const double start = own - m_start <= sameStart ? own : m_start;
    return start + decoderDelay(*format(), *stream);
}

bool MediaFile::hasIndex() const
{
    // Those that may jump in time are made to be received, not to be sought in.
    return (format()->iformat->flags & AVFMT_TS_DISCONT) == 0;
}

double MediaFile::startOfSound(double first) const
{
    return !m_video || std::abs(first - m_start) <= sameStart ? first : m_start;
}

std::optional<double> MediaFile::measureLength()
{
    const std::optional<double> told = toldLength();
    return told && *told > 0.0 ? told : scannedLength();
}

std::optional<double> MediaFile::toldLength() const
{
    const AVFormatContext& context = *format();
    const bool isKnown = context.duration != AV_NOPTS_VALUE;
    const double whole = static_cast<double>(context.duration) / AV_TIME_BASE;
    if (!isKnown || context.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE)
        return std::nullopt;
    if (context.duration_estimation_method == AVFMT_DURATION_FROM_PTS)
        return whole;
    // It counts from the time stamp 0, wherever its pictures and sounds begin.
    if (isMatroska(context))
        return whole - m_start;
    double end = -std::numeric_limits<double>::infinity();
    for (const AVStream* stream : {m_video, m_sound}) {
        if (!stream)
            continue;
        if (stream->duration == AV_NOPTS_VALUE || stream->start_time == AV_NOPTS_VALUE)
            return whole;
        end = std::max(end,
                       startOf(context, *stream) + secondsOf(stream->duration, stream->time_base));
    }
    return end - m_start;
}

std::optional<double> MediaFile::scannedLength()
{
    // Streams of pictures alone, whose times would be guessed.
    if ((format()->iformat->flags & AVFMT_NOTIMESTAMPS) != 0)
        return std::nullopt;
    const Input::Deadline limit(*m_input);
    const PacketPointer packet(av_packet_alloc());
    int result = 0;
    while (packet && (result = av_read_frame(format(), packet.get())) >= 0) {
        noteEnd(*packet);
        av_packet_unref(packet.get());
    }
    if (result != AVERROR_EOF || m_readTo <= m_start)
        return std::nullopt;
    return m_readTo - m_start;
}

void MediaFile::noteEnd(const AVPacket& packet)
{
    const AVStream* const stream = format()->streams[packet.stream_index];
    const auto stamp = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if ((stream == m_video || stream == m_sound) && stamp != AV_NOPTS_VALUE) {
        m_readTo = std::max(m_readTo, secondsOf(stamp + std::max<std::int64_t>(packet.duration, 0),
                                                stream->time_base));
    }
}

bool MediaFile::isPictureFormat() const
{
    // All of FFmpeg's formats for these have such names.
    const QLatin1String name(format()->iformat->name);
    return m_video && (name.endsWith(QLatin1String("_pipe")) || name == QLatin1String("image2"));
}

bool MediaFile::isSinglePicture()
{
    if (isPictureFormat())
        return true;
    if (!m_video || !isPictureCodec(m_video->codecpar->codec_id))
        return false;
    const PacketPointer packet(av_packet_alloc());
    for (int pictures = 0; pictures < 2; ++pictures) {
        do {
            av_packet_unref(packet.get());
            if (av_read_frame(format(), packet.get()) < 0)
                return true;
            noteEnd(*packet);
        } while (packet->stream_index != m_video->index);
    }
    return false;
}

void MediaFile::readOnly(const AVStream* stream)
{
    for (unsigned i = 0; i < format()->nb_streams; ++i) {
        AVStream* const other = format()->streams[i];
        other->discard = other == stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

int MediaFile::read(AVPacket* packet)
{
    for (;;) {
        const int result = av_read_frame(format(), packet);
        if (result < 0)
            return result;
        // Some formats give what is to be discarded all the same.
        if (format()->streams[packet->stream_index]->discard != AVDISCARD_ALL)
            return 0;
        av_packet_unref(packet);
    }
}

bool MediaFile::seek(const AVStream* stream, double time)
{
    const double stamp = (startFor(stream) + time) * stream->time_base.den / stream->time_base.num;
    constexpr double most = 1e18;
    return av_seek_frame(format(), stream->index, std::llround(std::clamp(stamp, -most, most)),
                         AVSEEK_FLAG_BACKWARD) >= 0;
}

} // namespace rvengine
