// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>

#include <array>

namespace qkpar {

/// One stroke of the liquify tool, in pixels of the picture (origin at the top left, y down).
struct RvARLiquifyOperation
{
    double centerX = 0.0;
    double centerY = 0.0;
    float radius = 0.0F;               ///< pixels around the centre that the stroke moves
    float strength = 0.0F;             ///< 0 none to 1 full
    std::array<QPointF, 2> movePoints; ///< the stroke goes from point 0 to point 1
    int liquifyStyle = 0;              ///< the tool: push, bloat, pinch, ...
};

} // namespace qkpar
