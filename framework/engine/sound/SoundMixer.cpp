// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundMixer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace rvengine {

namespace {

/// The volume along a stretch of a layer: walks the points once.
class Envelope
{
public:
    explicit Envelope(const std::vector<VolumePoint>& points)
        : m_points(points)
    {
    }

    bool isSilent() const
    {
        return std::all_of(m_points.begin(), m_points.end(),
                           [](const VolumePoint& point) { return point.volume == 0.0F; }) &&
               !m_points.empty();
    }

    /// The volume `frame` frames after the start of the layer, 0 when it is no number; called with
    /// rising frames.
    float at(long long frame)
    {
        const float volume = interpolated(frame);
        return std::isfinite(volume) ? volume : 0.0F;
    }

private:
    float interpolated(long long frame)
    {
        if (m_points.empty())
            return 1.0F;
        while (m_next < m_points.size() && framesOf(m_points[m_next].time) <= frame)
            ++m_next;
        if (m_next == 0)
            return m_points.front().volume;
        const VolumePoint& before = m_points[m_next - 1];
        if (m_next == m_points.size())
            return before.volume;
        const VolumePoint& after = m_points[m_next];
        const double from = static_cast<double>(framesOf(before.time));
        const double to = static_cast<double>(framesOf(after.time));
        const double share = (static_cast<double>(frame) - from) / (to - from);
        return before.volume + (after.volume - before.volume) * static_cast<float>(share);
    }

    const std::vector<VolumePoint>& m_points;
    std::size_t m_next = 0; ///< the first point after the frame asked for last
};

bool hasSound(const Layer& layer)
{
    return layer.kind == LayerKind::Video || layer.kind == LayerKind::Sound;
}

} // namespace

SoundMixer::SoundMixer(std::unique_ptr<SoundSource> source)
    : m_source(std::move(source))
{
}

void SoundMixer::mix(const Scene& scene, long long start, std::size_t frames, float* out)
{
    const std::size_t samples = frames * SoundChannels;
    std::fill_n(out, samples, 0.0F);
    for (const PlacedLayer& placed : scene.main)
        add(placed, MainLane, start, frames, out);
    for (const PlacedLayer& placed : scene.mix)
        add(placed, placed.layer->key, start, frames, out);
    m_source->endBlock();
    for (std::size_t i = 0; i < samples; ++i)
        out[i] = std::clamp(out[i], -1.0F, 1.0F);
}

void SoundMixer::add(const PlacedLayer& placed, std::uintptr_t lane, long long start,
                     std::size_t frames, float* out)
{
    const long long layerStart = framesOf(placed.start);
    const long long from = std::max(start, layerStart);
    const long long to = std::min(start + static_cast<long long>(frames), framesOf(placed.end));
    if (from >= to || !hasSound(*placed.layer))
        return;
    Envelope envelope(placed.layer->volume);
    if (envelope.isSilent())
        return;
    const auto count = static_cast<std::size_t>(to - from);
    m_block.resize(count * SoundChannels);
    if (!m_source->sound(*placed.layer, lane, from - layerStart, count, m_block.data()))
        return;
    float* sum = out + (from - start) * SoundChannels;
    for (std::size_t frame = 0; frame < count; ++frame) {
        const float volume = envelope.at(from - layerStart + static_cast<long long>(frame));
        for (int channel = 0; channel < SoundChannels; ++channel, ++sum)
            *sum += volume * m_block[frame * SoundChannels + static_cast<std::size_t>(channel)];
    }
}

} // namespace rvengine
