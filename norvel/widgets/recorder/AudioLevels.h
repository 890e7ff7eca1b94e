// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

class QAudioBuffer;
class QAudioFormat;

namespace norvel {

/// The value of a sample at full scale, by which levels are normalised: of integers the largest one
/// of their size, of 32-bit floats a hair above 1. 0 for what is no PCM, and for sizes that no
/// level is known of.
double getPeakValue(const QAudioFormat& format);

/// How loud each channel of the buffer is at its loudest, as a fraction of full scale; in channel
/// order. Unsigned samples are judged by their largest value alone, by its distance from mid-scale.
/// 0 for every channel when the peak value is 0; no levels at all when the buffer is invalid, not
/// little-endian or no PCM.
std::vector<double> getBufferLevels(const QAudioBuffer& buffer);

} // namespace norvel
