// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>

#include <cstddef>
#include <memory>
#include <string>

namespace rvengine {

/// Reads the sound of one file, interleaved stereo at `SoundRate`. Used by one thread at a time.
///
/// Each sample stands at the place that its time stamp tells, counted from the start of the file,
/// which may be one of its pictures: what is missing is silence. After a jump the samples are the
/// same as without it, but for what the decoder of a lossy format has forgotten.
class SoundReader
{
public:
    /// A reader that has nothing but silence for a video without sound; null when the file cannot
    /// be read at all.
    static std::unique_ptr<SoundReader> open(const std::string& path, Interrupt interrupt = {});
    ~SoundReader();

    /// Writes `frames` frames beginning `start` frames after the start of the file; silence before
    /// that and beyond its end. False when nothing more is to be heard: the file is silent or over.
    /// One channel is heard on both sides as it is, more than two are mixed into them.
    bool read(long long start, std::size_t frames, float* out);

private:
    struct Media;
    explicit SoundReader(std::unique_ptr<Media> media);

    const std::unique_ptr<Media> m_media; ///< null for silence
};

} // namespace rvengine
