// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/media/SoundReader.h>
#include <engine/media/TempoFilter.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace rvengine {

/// Reads the sound of one file at a speed, with the pitch of the file. Used by one thread at a
/// time.
class SpeedReader
{
public:
    /// Null when the file or the speed cannot be played.
    static std::unique_ptr<SpeedReader> open(const std::string& path, double speed,
                                             Interrupt interrupt = {});

    /// Writes `frames` frames beginning `start` frames after the start of the file, counted at the
    /// speed; silence before that and beyond its end. False when nothing more is to be heard: the
    /// file is silent or over.
    bool read(long long start, std::size_t frames, float* out);

private:
    SpeedReader(std::unique_ptr<SoundReader> reader, double speed);

    bool moveTo(long long start);
    bool refill();

    const std::unique_ptr<SoundReader> m_reader;
    const double m_speed;
    std::unique_ptr<TempoFilter> m_filter; ///< null at speed 1, and before the first block
    long long m_next = -1;                 ///< the frame that the filter gives next
    long long m_fileNext = 0;              ///< the frame of the file that it takes next
    std::vector<float> m_block;
};

} // namespace rvengine
