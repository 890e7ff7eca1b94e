// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundConverter.h"

#include <engine/base/SoundFormat.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace rvengine {

namespace {

/// The channels of a frame in an order that can be mixed.
class ChannelLayout
{
public:
    explicit ChannelLayout(const AVFrame& frame)
    {
        if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&m_layout, frame.ch_layout.nb_channels);
        else
            av_channel_layout_copy(&m_layout, &frame.ch_layout);
    }
    ~ChannelLayout() { av_channel_layout_uninit(&m_layout); }
    ChannelLayout(const ChannelLayout&) = delete;
    ChannelLayout& operator=(const ChannelLayout&) = delete;

    AVChannelLayout* get() { return &m_layout; }

private:
    AVChannelLayout m_layout{};
};

/// The last multiple of `step` up to `value`.
long long aligned(long long value, long long step)
{
    const long long rest = value % step;
    return value - (rest < 0 ? rest + step : rest);
}

} // namespace

void SoundConverter::reset()
{
    m_resampler.reset();
    m_begin.reset();
}

bool SoundConverter::follows(const AVFrame& frame, long long place) const
{
    return !m_resampler || (frame.sample_rate == m_rate && frame.format == m_format &&
                            frame.ch_layout.nb_channels == m_channels && place <= m_next);
}

long long SoundConverter::add(const AVFrame& frame, long long place, std::vector<float>& out)
{
    if (!m_resampler && !setUp(frame, place))
        return m_output;
    const long long position = m_output;
    const long long from = m_next - place;
    if (from < frame.nb_samples)
        convert(frame, static_cast<int>(from), out);
    return position;
}

long long SoundConverter::finish(std::vector<float>& out)
{
    const long long position = m_output;
    if (m_resampler)
        take(nullptr, 0, out);
    m_resampler.reset();
    return position;
}

bool SoundConverter::setUp(const AVFrame& frame, long long place)
{
    m_rate = frame.sample_rate;
    m_format = frame.format;
    m_channels = frame.ch_layout.nb_channels;
    ChannelLayout layout(frame);
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    SwrContext* resampler = nullptr;
    if (swr_alloc_set_opts2(&resampler, &stereo, AV_SAMPLE_FMT_FLT, SoundRate, layout.get(),
                            static_cast<AVSampleFormat>(m_format), m_rate, 0, nullptr) < 0)
        return false;
    m_resampler.reset(resampler);
    // By itself it makes one channel quieter on two sides.
    constexpr std::array<double, SoundChannels> bothSides{1.0, 1.0};
    if (m_channels == 1 && swr_set_matrix(resampler, bothSides.data(), 1) < 0)
        return false;
    if (swr_init(resampler) < 0) {
        m_resampler.reset();
        return false;
    }
    const int common = std::gcd(m_rate, SoundRate);
    const long long step = m_rate / common;
    const long long begin = m_begin ? std::llround(std::clamp(*m_begin, 0.0, 1e9) * m_rate) : place;
    m_begin.reset();
    m_next = std::max(aligned(std::max(begin, place), step), 0LL);
    m_output = m_next / step * (SoundRate / common);
    if (place > m_next) {
        swr_inject_silence(resampler, static_cast<int>(place - m_next));
        m_next = place;
    }
    return true;
}

/// Converts the samples of the frame from one of them on.
void SoundConverter::convert(const AVFrame& frame, int from, std::vector<float>& out)
{
    const auto format = static_cast<AVSampleFormat>(m_format);
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const int bytes = av_get_bytes_per_sample(format) * (isPlanar ? 1 : m_channels);
    std::vector<const unsigned char*> planes(static_cast<std::size_t>(isPlanar ? m_channels : 1));
    for (std::size_t i = 0; i < planes.size(); ++i)
        planes[i] = frame.extended_data[i] + static_cast<std::ptrdiff_t>(from) * bytes;
    const int count = frame.nb_samples - from;
    take(planes.data(), count, out);
    m_next += count;
}

void SoundConverter::take(const unsigned char** in, int count, std::vector<float>& out)
{
    const int most = swr_get_out_samples(m_resampler.get(), count);
    if (most <= 0)
        return;
    const std::size_t before = out.size();
    out.resize(before + static_cast<std::size_t>(most) * SoundChannels);
    auto* to = reinterpret_cast<unsigned char*>(out.data() + before);
    const int given = std::max(swr_convert(m_resampler.get(), &to, most, in, count), 0);
    out.resize(before + static_cast<std::size_t>(given) * SoundChannels);
    m_output += given;
}

} // namespace rvengine
