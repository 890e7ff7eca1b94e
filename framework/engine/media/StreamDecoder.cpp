// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "StreamDecoder.h"

#include <QLatin1String>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace rvengine {

namespace {

/// More pixels than any picture that is worth showing has.
constexpr std::int64_t mostPixels = std::int64_t{16384} * 8192;
/// Without an index, a jump this far ahead is a seek, seconds.
constexpr double farAhead = 3.0;
/// Streams whose pictures are renewed part by part may have no key frame at all.
constexpr int longestSkip = 1000;

/// FFmpeg's own decoders of VP8 and VP9 leave out the transparency.
const AVCodec* decoderWithTransparency(const AVStream& stream)
{
    const AVDictionaryEntry* const mode = av_dict_get(stream.metadata, "alpha_mode", nullptr, 0);
    if (!mode || std::strcmp(mode->value, "1") != 0)
        return nullptr;
    if (stream.codecpar->codec_id == AV_CODEC_ID_VP8)
        return avcodec_find_decoder_by_name("libvpx");
    if (stream.codecpar->codec_id == AV_CODEC_ID_VP9)
        return avcodec_find_decoder_by_name("libvpx-vp9");
    return nullptr;
}

const AVCodec* decoderFor(const AVStream& stream)
{
    const AVCodec* const special = decoderWithTransparency(stream);
    return special ? special : avcodec_find_decoder(stream.codecpar->codec_id);
}

/// Whether all frames of a codec of sound are of one size, but for the first and the last one.
bool hasEqualFrames(const AVCodecParameters& codec)
{
    switch (codec.codec_id) {
    case AV_CODEC_ID_AAC:
    case AV_CODEC_ID_AC3:
    case AV_CODEC_ID_ALAC:
    case AV_CODEC_ID_AMR_NB:
    case AV_CODEC_ID_AMR_WB:
    case AV_CODEC_ID_EAC3:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
    case AV_CODEC_ID_OPUS:
    case AV_CODEC_ID_WMAV1:
    case AV_CODEC_ID_WMAV2:
        return true;
    case AV_CODEC_ID_FLAC:
        // Begins with the least and the greatest size.
        return codec.extradata_size >= 4 &&
               std::equal(codec.extradata, codec.extradata + 2, codec.extradata + 2);
    default:
        return false;
    }
}

/// Whether time stamps after a jump are to be relied on. In files that are bare samples they are
/// what was asked for, which is no start of a block where samples are coded in blocks.
bool isExactAfterJumps(const AVFormatContext& format, const AVCodecParameters& codec)
{
    const bool isPcm = codec.codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
    const QLatin1String name(format.iformat->name);
    return isPcm || (name != QLatin1String("wav") && name != QLatin1String("w64") &&
                     name != QLatin1String("aiff") && name != QLatin1String("au"));
}

/// What the file tells of when the frame is due.
std::int64_t stampOf(const AVFrame& frame)
{
    if (frame.best_effort_timestamp != AV_NOPTS_VALUE)
        return frame.best_effort_timestamp;
    return frame.pts != AV_NOPTS_VALUE ? frame.pts : frame.pkt_dts;
}

bool isTimed(const AVFrame& frame)
{
    return stampOf(frame) != AV_NOPTS_VALUE;
}

} // namespace

std::unique_ptr<StreamDecoder> StreamDecoder::openVideo(const std::string& path,
                                                        Interrupt interrupt)
{
    return opened(path, Kind::Video, std::move(interrupt));
}

std::unique_ptr<StreamDecoder> StreamDecoder::openSound(const std::string& path,
                                                        Interrupt interrupt)
{
    return opened(path, Kind::Sound, std::move(interrupt));
}

std::unique_ptr<StreamDecoder> StreamDecoder::opened(const std::string& path, Kind kind,
                                                     Interrupt interrupt)
{
    std::unique_ptr<StreamDecoder> decoder(new StreamDecoder(path, kind, std::move(interrupt)));
    return decoder->open() ? std::move(decoder) : nullptr;
}

StreamDecoder::StreamDecoder(std::string path, Kind kind, Interrupt interrupt)
    : m_path(std::move(path))
    , m_kind(kind)
    , m_interrupt(std::move(interrupt))
    , m_packet(av_packet_alloc())
{
}

bool StreamDecoder::open()
{
    // Where this fails, which an interrupt may make it, nothing is left of what was.
    forgetPosition();
    m_codec.reset();
    m_stream = nullptr;
    m_file = MediaFile::open(m_path, m_interrupt);
    if (!m_file || !m_packet)
        return false;
    m_stream = m_kind == Kind::Video ? m_file->video() : m_file->sound();
    if (!m_stream || !openCodec())
        return false;
    m_start = m_file->startFor(m_stream);
    m_file->readOnly(m_stream);
    if (m_kind == Kind::Sound)
        meetFirstSound();
    return true;
}

/// Finds out where the sound begins: decoders leave out what codecs begin with, of which few
/// containers tell.
void StreamDecoder::meetFirstSound()
{
    for (int i = 0; i < 2; ++i) {
        FramePointer frame = decodeNext();
        if (!frame)
            break;
        m_waiting.push_back(std::move(frame));
    }
    if (m_waiting.empty())
        return;
    const AVFrame& first = *m_waiting.front();
    m_start = m_file->startOfSound(secondsOf(first.pts, m_stream->time_base));
    m_firstSamples = first.nb_samples;
    if (hasEqualFrames(*m_stream->codecpar))
        m_frameSamples = m_waiting.back()->nb_samples;
    if (!isExactAfterJumps(*m_file->format(), *m_stream->codecpar))
        m_isTimed = false;
}

void StreamDecoder::forgetPosition()
{
    m_isDraining = false;
    m_isAtEnd = false;
    m_nextStamp = AV_NOPTS_VALUE;
    m_lastRead = AV_NOPTS_VALUE;
    m_skippable = 0;
    m_firstStamp = AV_NOPTS_VALUE;
    m_isAfterJump = false;
    m_waiting.clear();
}

bool StreamDecoder::openCodec()
{
    const AVCodec* const decoder = decoderFor(*m_stream);
    m_codec.reset();
    m_threads.reset();
    CodecPointer codec(decoder ? avcodec_alloc_context3(decoder) : nullptr);
    if (!codec || avcodec_parameters_to_context(codec.get(), m_stream->codecpar) < 0)
        return false;
    codec->pkt_timebase = m_stream->time_base;
    codec->max_pixels = mostPixels;
    if (m_kind == Kind::Video)
        m_threads = std::make_unique<DecoderThreads>();
    codec->thread_count = m_threads ? m_threads->count() : 1;
    if (avcodec_open2(codec.get(), decoder, nullptr) < 0)
        return false;
    m_codec = std::move(codec);
    return true;
}

FramePointer StreamDecoder::next()
{
    if (m_waiting.empty())
        return decodeNext();
    FramePointer frame = std::move(m_waiting.front());
    m_waiting.pop_front();
    return frame;
}

FramePointer StreamDecoder::decodeNext()
{
    FramePointer frame(av_frame_alloc());
    while (frame && m_codec && !m_isAtEnd && !m_interrupt.isRaised()) {
        const int result = avcodec_receive_frame(m_codec.get(), frame.get());
        if (result >= 0 && m_isAfterJump && !isTimed(*frame)) {
            // Where it is now cannot be known: it has to go there from the start.
            m_isTimed = false;
            if (!open())
                return nullptr;
            return next();
        }
        if (result >= 0) {
            m_isAfterJump = false;
            stamp(*frame);
            if (m_firstStamp == AV_NOPTS_VALUE || frame->pts >= m_firstStamp)
                return frame;
            continue;
        }
        if (result == AVERROR_EOF || (result != AVERROR(EAGAIN) && m_isDraining))
            m_isAtEnd = true;
        else if (sendNextPacket() < 0)
            return nullptr;
    }
    return nullptr;
}

/// Gives the decoder what it wants. An error means that there is no more for now.
int StreamDecoder::sendNextPacket()
{
    const int result = m_file->read(m_packet.get());
    if (result == AVERROR_EXIT)
        return result;
    if (result < 0) {
        // The rest of a file that is broken is not there.
        m_isDraining = true;
        return avcodec_send_packet(m_codec.get(), nullptr) == AVERROR(ENOMEM) ? AVERROR(ENOMEM) : 0;
    }
    m_lastRead = m_packet->dts != AV_NOPTS_VALUE ? m_packet->dts : m_packet->pts;
    // A packet that cannot be decoded leaves a gap.
    if (isDecodable(*m_packet))
        avcodec_send_packet(m_codec.get(), m_packet.get());
    av_packet_unref(m_packet.get());
    return 0;
}

/// Whether the packet needs none that were not read, which is so from the first key frame on.
bool StreamDecoder::isDecodable(const AVPacket& packet)
{
    if (m_skippable == 0)
        return true;
    --m_skippable;
    if ((packet.flags & AV_PKT_FLAG_KEY) == 0)
        return m_skippable == 0;
    m_skippable = 0;
    m_firstStamp = packet.pts;
    return true;
}

/// Gives the frame the time stamp at which it is due.
void StreamDecoder::stamp(AVFrame& frame)
{
    if (isTimed(frame))
        frame.pts = stampOf(frame);
    else
        frame.pts = m_nextStamp != AV_NOPTS_VALUE ? m_nextStamp : 0;
    std::int64_t duration = frame.pkt_duration;
    if (m_kind == Kind::Sound && frame.sample_rate > 0) {
        duration =
            av_rescale_q(frame.nb_samples, AVRational{1, frame.sample_rate}, m_stream->time_base);
    } else if (duration <= 0 && m_stream->avg_frame_rate.num > 0) {
        duration = av_rescale_q(1, av_inv_q(m_stream->avg_frame_rate), m_stream->time_base);
    }
    m_nextStamp = frame.pts + duration;
}

bool StreamDecoder::seek(double time)
{
    const bool isToStart = time <= 0.0;
    if (!canSeek(isToStart) || !m_file->seek(m_stream, std::max(time, 0.0))) {
        open();
        return false;
    }
    forgetPosition();
    if (!emptyCodec())
        return false;
    m_isAfterJump = true;
    if (m_kind == Kind::Video && !isToStart)
        m_skippable = longestSkip;
    return true;
}

bool StreamDecoder::canSeek(bool isToStart) const
{
    if (!m_file || !m_stream || !m_isTimed)
        return false;
    // What a codec of sound begins with is read at the start of a file only.
    return !isToStart || (m_kind == Kind::Video && m_file->hasIndex());
}

/// Makes the codec ready for packets of another place. One that rested, or found no threads left
/// when it was opened, may get some now.
bool StreamDecoder::emptyCodec()
{
    const bool lacksThreads = m_threads && m_threads->count() == 1 && DecoderThreads::areLeft();
    if (!m_codec || lacksThreads)
        return openCodec();
    avcodec_flush_buffers(m_codec.get());
    return true;
}

void StreamDecoder::rest()
{
    forgetPosition();
    m_codec.reset();
    m_threads.reset();
}

bool StreamDecoder::isWorthSeeking(double time) const
{
    if (!m_codec || m_isAtEnd)
        return true;
    const double perSecond = 1.0 / av_q2d(m_stream->time_base);
    const double wanted = (m_start + time) * perSecond;
    if (!(std::abs(wanted) < 1e18))
        return false;
    const auto reached = m_lastRead != AV_NOPTS_VALUE
                             ? m_lastRead
                             : static_cast<std::int64_t>(std::llround(m_start * perSecond));
    const auto stamp = static_cast<std::int64_t>(std::llround(wanted));
    // Some formats know only the key frames that were read so far.
    const int entries = m_file->hasIndex() ? avformat_index_get_entries_count(m_stream) : 0;
    const AVIndexEntry* const last =
        entries > 0 ? avformat_index_get_entry(m_stream, entries - 1) : nullptr;
    if (last && last->timestamp >= stamp) {
        const AVIndexEntry* const key =
            avformat_index_get_entry_from_timestamp(m_stream, stamp, AVSEEK_FLAG_BACKWARD);
        return key && key->timestamp > reached;
    }
    return time - (secondsOf(reached, m_stream->time_base) - m_start) > farAhead;
}

double StreamDecoder::timeOf(const AVFrame& frame) const
{
    return secondsOf(frame.pts, m_stream->time_base) - m_start;
}

} // namespace rvengine
