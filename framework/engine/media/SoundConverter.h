// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Ffmpeg.h"

#include <optional>
#include <vector>

namespace rvengine {

/// Converts decoded sound to interleaved stereo at `SoundRate`. Used by one thread at a time.
///
/// It begins only where a sample of the input falls on one of the output, so that what it makes
/// does not depend on where it began.
class SoundConverter
{
public:
    /// Forgets everything; what was not taken is lost.
    void reset();
    /// Leaves out what comes before `time`, seconds since the start of the file, or shortly before.
    /// Holds for what is added first after a `reset`.
    void beginAt(double time) { m_begin = time; }

    /// Whether the frame can be added to what was added before, or is the first one.
    bool follows(const AVFrame& frame, long long place) const;
    /// Converts the samples of a frame that follows, whose first one is at `place`, counted at its
    /// rate from the start of the file, and appends what is ready to `out`. What was there already
    /// is left out. Returns the output's place of the first sample that was appended.
    long long add(const AVFrame& frame, long long place, std::vector<float>& out);
    /// Appends what is still held back to `out`; any frame may come next. Returns the place of the
    /// first sample that was appended.
    long long finish(std::vector<float>& out);

private:
    bool setUp(const AVFrame& frame, long long place);
    void convert(const AVFrame& frame, int from, std::vector<float>& out);
    void take(const unsigned char** in, int count, std::vector<float>& out);

    ResamplerPointer m_resampler;
    std::optional<double> m_begin;
    int m_rate = 0;
    int m_format = -1;
    int m_channels = 0;
    long long m_next = 0;   ///< the place of the sample that the resampler wants next
    long long m_output = 0; ///< the place of the sample that it gives next
};

} // namespace rvengine
