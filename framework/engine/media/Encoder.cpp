// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Encoder.h"

namespace rvengine {

const AVCodec* Encoder::find(const AVOutputFormat& format, std::initializer_list<const char*> names,
                             AVCodecID fallback)
{
    for (const char* name : names) {
        const AVCodec* const codec = avcodec_find_encoder_by_name(name);
        if (codec && avformat_query_codec(&format, codec->id, FF_COMPLIANCE_NORMAL) == 1)
            return codec;
    }
    return fallback == AV_CODEC_ID_NONE ? nullptr : avcodec_find_encoder(fallback);
}

Encoder::Encoder(const AVCodec* codec)
    : m_codec(avcodec_alloc_context3(codec))
    , m_packet(av_packet_alloc())
{
}

int Encoder::start(AVFormatContext& muxer)
{
    if ((muxer.oformat->flags & AVFMT_GLOBALHEADER) != 0)
        m_codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const int opened = avcodec_open2(m_codec.get(), m_codec->codec, nullptr);
    if (opened < 0)
        return opened;
    m_stream = avformat_new_stream(&muxer, nullptr);
    if (!m_stream || !m_packet)
        return AVERROR(ENOMEM);
    m_stream->time_base = m_codec->time_base;
    m_stream->avg_frame_rate = m_codec->framerate;
    m_stream->sample_aspect_ratio = m_codec->sample_aspect_ratio;
    return avcodec_parameters_from_context(m_stream->codecpar, m_codec.get());
}

int Encoder::encode(AVFormatContext& muxer, const AVFrame* frame)
{
    int result = avcodec_send_frame(m_codec.get(), frame);
    while (result >= 0) {
        result = avcodec_receive_packet(m_codec.get(), m_packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return 0;
        if (result < 0)
            return result;
        if (!m_hasLeadIn && m_packet->pts < 0) {
            av_packet_unref(m_packet.get());
            continue;
        }
        av_packet_rescale_ts(m_packet.get(), m_codec->time_base, m_stream->time_base);
        m_packet->stream_index = m_stream->index;
        result = av_interleaved_write_frame(&muxer, m_packet.get());
    }
    return result;
}

} // namespace rvengine
