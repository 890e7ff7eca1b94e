// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// Pictures a second as a fraction.
struct FrameRate
{
    int numerator = 30;
    int denominator = 1;

    double perSecond() const { return static_cast<double>(numerator) / denominator; }
};

/// The fraction that a file's frame rate was rounded from: whole numbers, those of 1001, or
/// thousandths. 30 for what is no frame rate.
FrameRate frameRateOf(double perSecond);

} // namespace rvengine
