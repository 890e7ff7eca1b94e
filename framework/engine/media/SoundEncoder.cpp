// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundEncoder.h"

#include <engine/base/SoundFormat.h>

extern "C" {
#include <libavutil/audio_fifo.h>
}

#include <algorithm>
#include <cstdlib>

namespace rvengine {

namespace {

/// What encoders without a block of their own get at a time.
constexpr int usualBlock = 1024;

int rateOf(const AVCodec& codec)
{
    const int* rate = codec.supported_samplerates;
    if (!rate)
        return SoundRate;
    int nearest = *rate;
    for (; *rate != 0; ++rate) {
        if (std::abs(*rate - SoundRate) < std::abs(nearest - SoundRate))
            nearest = *rate;
    }
    return nearest;
}

} // namespace

void SoundEncoder::FreeFifo::operator()(AVAudioFifo* fifo) const
{
    av_audio_fifo_free(fifo);
}

SoundEncoder::SoundEncoder(const AVCodec* codec, int bitRate)
    : m_encoder(codec)
{
    AVCodecContext& context = m_encoder.codec();
    context.sample_rate = rateOf(*codec);
    context.sample_fmt = codec->sample_fmts ? codec->sample_fmts[0] : AV_SAMPLE_FMT_FLTP;
    av_channel_layout_default(&context.ch_layout, SoundChannels);
    context.time_base = {1, context.sample_rate};
    constexpr int goodRate = 192000;
    context.bit_rate = bitRate > 0 ? bitRate : goodRate;
    // Some encoders of FFmpeg itself are called experimental.
    context.strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
}

SoundEncoder::~SoundEncoder() = default;

int SoundEncoder::start(AVFormatContext& muxer)
{
    const int started = m_encoder.start(muxer);
    if (started < 0)
        return started;
    const AVCodecContext& codec = m_encoder.codec();
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    SwrContext* resampler = nullptr;
    const int made = swr_alloc_set_opts2(&resampler, &stereo, codec.sample_fmt, codec.sample_rate,
                                         &stereo, AV_SAMPLE_FMT_FLT, SoundRate, 0, nullptr);
    m_resampler.reset(resampler);
    m_fifo.reset(av_audio_fifo_alloc(codec.sample_fmt, SoundChannels, usualBlock));
    if (made < 0 || !m_fifo)
        return AVERROR(ENOMEM);
    return swr_init(resampler);
}

int SoundEncoder::add(AVFormatContext& muxer, const std::vector<float>& samples)
{
    const int result = convert(samples.data(), static_cast<int>(samples.size() / SoundChannels));
    return result < 0 ? result : encodeBlocks(muxer, false);
}

int SoundEncoder::finish(AVFormatContext& muxer)
{
    int result = convert(nullptr, 0);
    if (result >= 0)
        result = encodeBlocks(muxer, true);
    return result < 0 ? result : m_encoder.encode(muxer, nullptr);
}

/// Puts samples into the form of the encoder; none of them is the end.
int SoundEncoder::convert(const float* samples, int count)
{
    const FramePointer frame = newFrame(std::max(swr_get_out_samples(m_resampler.get(), count), 1));
    if (!frame)
        return AVERROR(ENOMEM);
    const auto* in = reinterpret_cast<const unsigned char*>(samples);
    const int given = swr_convert(m_resampler.get(), frame->extended_data, frame->nb_samples,
                                  samples ? &in : nullptr, count);
    if (given <= 0)
        return given;
    void** const planes = reinterpret_cast<void**>(frame->extended_data);
    return av_audio_fifo_write(m_fifo.get(), planes, given) < given ? AVERROR(ENOMEM) : 0;
}

int SoundEncoder::encodeBlocks(AVFormatContext& muxer, bool isEnd)
{
    const int own = m_encoder.codec().frame_size;
    const int block = own > 0 ? own : usualBlock;
    int result = 0;
    while (result >= 0 && av_audio_fifo_size(m_fifo.get()) >= block)
        result = encodeBlock(muxer, block);
    const int rest = av_audio_fifo_size(m_fifo.get());
    return result >= 0 && isEnd && rest > 0 ? encodeBlock(muxer, rest) : result;
}

int SoundEncoder::encodeBlock(AVFormatContext& muxer, int count)
{
    const FramePointer frame = newFrame(count);
    if (!frame || av_audio_fifo_read(m_fifo.get(), reinterpret_cast<void**>(frame->extended_data),
                                     count) < count)
        return AVERROR(ENOMEM);
    frame->pts = m_encoded;
    m_encoded += count;
    return m_encoder.encode(muxer, frame.get());
}

FramePointer SoundEncoder::newFrame(int count) const
{
    const AVCodecContext& codec = m_encoder.codec();
    FramePointer frame(av_frame_alloc());
    if (!frame)
        return nullptr;
    frame->nb_samples = count;
    frame->format = codec.sample_fmt;
    frame->sample_rate = codec.sample_rate;
    av_channel_layout_copy(&frame->ch_layout, &codec.ch_layout);
    return av_frame_get_buffer(frame.get(), 0) < 0 ? nullptr : std::move(frame);
}

} // namespace rvengine
