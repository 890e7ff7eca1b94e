// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FrameRate.h"

#include <cmath>

namespace rvengine {

FrameRate frameRateOf(double perSecond)
{
    // Files count in fractions of a second too; nobody shows pictures that fast.
    constexpr double fastest = 480.0;
    constexpr double rounding = 0.002;
    if (!(perSecond > 0.0 && perSecond <= fastest))
        return {};
    const double whole = std::round(perSecond);
    if (whole > 0.0 && std::abs(perSecond - whole) < rounding)
        return {static_cast<int>(whole), 1};
    const double ntsc = std::round(perSecond * 1.001);
    if (ntsc > 0.0 && std::abs(perSecond * 1.001 - ntsc) < rounding)
        return {static_cast<int>(ntsc) * 1000, 1001};
    return {static_cast<int>(std::lround(perSecond * 1000.0)), 1000};
}

} // namespace rvengine
