// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>

namespace rvengine {

/// Plays sound, as `SoundSource` keeps it, at another speed with the same pitch. Used by one thread
/// at a time.
class TempoFilter
{
public:
    /// The speeds that can be made; beyond, nobody would recognise the sound.
    static constexpr double Slowest = 0.05;
    static constexpr double Fastest = 32.0;

    /// A filter that plays `speed` times as fast; null for a speed that cannot be made.
    static std::unique_ptr<TempoFilter> create(double speed);
    ~TempoFilter();

    /// How much too early the sound comes out of the filter at this speed, frames on the average:
    /// what is left is within 15 ms.
    static long long leadAt(double speed);

    /// Gives the filter the next `frames` frames. False when it cannot take them.
    bool push(const float* frames, std::size_t count);
    /// Takes up to `count` frames that are ready; gives their number.
    std::size_t pull(float* frames, std::size_t count);

private:
    struct Graph;
    explicit TempoFilter(std::unique_ptr<Graph> graph);

    const std::unique_ptr<Graph> m_graph;
};

} // namespace rvengine
