// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "SoundSource.h"

#include <memory>
#include <vector>

namespace rvengine {

/// Mixes the sound of a scene. Used by one thread at a time.
class SoundMixer
{
public:
    explicit SoundMixer(std::unique_ptr<SoundSource> source);

    /// Writes `frames` frames of the mix to `out`, beginning `start` frames (of `SoundRate`) after
    /// the start of the scene: the sum of all layers with their volume, limited to -1 to 1.
    /// Silence before the start and after the end.
    void mix(const Scene& scene, long long start, std::size_t frames, float* out);

private:
    void add(const PlacedLayer& placed, std::uintptr_t lane, long long start, std::size_t frames,
             float* out);

    const std::unique_ptr<SoundSource> m_source;
    std::vector<float> m_block;
};

} // namespace rvengine
