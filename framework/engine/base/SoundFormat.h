// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <limits>

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

} // namespace rvengine
