// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MonotonicClock.h"
#include "Scene.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

namespace rvengine {

/// How sound is kept everywhere: interleaved stereo, -1 to 1, at this rate.
constexpr int SoundRate = 48000;
constexpr int SoundChannels = 2;

/// A time in frames; times that no one ever gets to are limited.
constexpr long long framesOf(long long ms)
{
    constexpr long long framesPerMs = SoundRate / 1000;
    constexpr long long limit = std::numeric_limits<long long>::max() / framesPerMs / 2;
    return (ms < -limit ? -limit : ms > limit ? limit : ms) * framesPerMs;
}

/// Gives the sound of video and sound layers. Used by one thread at a time.
class SoundSource
{
public:
    virtual ~SoundSource() = default;

    /// Writes `frames` frames (samples of all channels) of the layer's sound to `out`, beginning
    /// `offset` frames after the start of the layer, at the layer's speed with the pitch of the
    /// file. `lane` is `MainLane`, or the key of a layer that is heard beside others. False when
    /// there is nothing to hear: the file is silent, over or cannot be read. `out` is then
    /// untouched.
    virtual bool sound(const Layer& layer, std::uintptr_t lane, long long offset,
                       std::size_t frames, float* out) = 0;

    /// A block is finished: files that were not used lately may be closed, and those used in the
    /// block may be used for another layer.
    virtual void endBlock() = 0;
};

/// The source of this build's engine. `now` decides when a file that could not be read is tried
/// again.
std::unique_ptr<SoundSource> makeSoundSource(MonotonicClock now = std::chrono::steady_clock::now);

} // namespace rvengine
