// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRgb>

namespace rvengine {

/// The four channels of a pixel, 16 bits for each, so that all are weighed by one multiplication.
using PixelLanes = quint64;

constexpr PixelLanes PixelLaneMask = 0x00FF00FF00FF00FFULL;   ///< the value of each channel
constexpr PixelLanes PixelLaneHalves = 0x0080008000800080ULL; ///< 128 in each channel

constexpr PixelLanes toLanes(QRgb pixel)
{
    return (pixel | PixelLanes(pixel) << 24) & PixelLaneMask;
}

/// Of lanes below 256.
constexpr QRgb fromLanes(PixelLanes lanes)
{
    return static_cast<QRgb>(lanes | lanes >> 24);
}

} // namespace rvengine
