// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/private/NativeARTrack.h>

#include <algorithm>
#include <cmath>

namespace qkpar {

namespace {

rvengine::LiquifyStroke strokeOf(const RvARLiquifyOperation& operation)
{
    return {QPointF(operation.centerX, operation.centerY),
            operation.movePoints[0],
            operation.movePoints[1],
            static_cast<double>(operation.radius),
            static_cast<double>(operation.strength),
            operation.liquifyStyle};
}

} // namespace

bool NativeARFilterTrack::describe(rvengine::Layer& layer) const
{
    if (type != qrvkp::RvTrackTypeARFilter)
        return false;
    layer.kind = rvengine::LayerKind::Filter;
    layer.strength =
        std::isnan(filterAlpha) ? 0.0F : std::clamp(filterAlpha, 0.0F, 1.0F) * layer.alpha;
    return true;
}

bool NativeARLiquifyTrack::describe(rvengine::Layer& layer) const
{
    layer.kind = rvengine::LayerKind::Liquify;
    layer.strokes.reserve(confirmed.size() + 1);
    for (const RvARLiquifyOperation& operation : confirmed)
        layer.strokes.push_back(strokeOf(operation));
    if (pending)
        layer.strokes.push_back(strokeOf(last));
    return true;
}

} // namespace qkpar
