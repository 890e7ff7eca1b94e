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

/// The very same value: not a number is one too.
bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const QPointF& a, const QPointF& b)
{
    // Not its own operator, to which near points are equal.
    return isSame(a.x(), b.x()) && isSame(a.y(), b.y());
}

bool isSame(const RvARLiquifyOperation& a, const RvARLiquifyOperation& b)
{
    return isSame(a.centerX, b.centerX) && isSame(a.centerY, b.centerY) &&
           isSame(static_cast<double>(a.radius), static_cast<double>(b.radius)) &&
           isSame(static_cast<double>(a.strength), static_cast<double>(b.strength)) &&
           isSame(a.movePoints[0], b.movePoints[0]) && isSame(a.movePoints[1], b.movePoints[1]) &&
           a.liquifyStyle == b.liquifyStyle;
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

void NativeARLiquifyTrack::append(const RvARLiquifyOperation& stroke)
{
    if (std::exchange(m_loadFailed, false) && isSame(stroke, last))
        return;
    // Asked before the pending stroke is confirmed: made twice in a row by a person, it is no
    // repeat of what the track had.
    const bool repeats = isKnown(stroke);
    confirm();
    m_lastBeforeRepeat = repeats ? std::make_optional(last) : std::nullopt;
    last = stroke;
    pending = true;
}

void NativeARLiquifyTrack::confirm()
{
    if (pending)
        confirmed.push_back(last);
    pending = false;
    m_lastBeforeRepeat.reset();
    m_loadFailed = false;
}

void NativeARLiquifyTrack::replace(std::vector<RvARLiquifyOperation> strokes,
                                   const RvARLiquifyOperation& newLast)
{
    confirm();
    confirmed = std::move(strokes);
    last = newLast;
}

void NativeARLiquifyTrack::noteFailedLoad()
{
    if (m_lastBeforeRepeat) {
        last = *m_lastBeforeRepeat;
        pending = false;
    }
    m_lastBeforeRepeat.reset();
    m_loadFailed = true;
}

bool NativeARLiquifyTrack::isKnown(const RvARLiquifyOperation& stroke) const
{
    // What is last and not pending is confirmed, or stands for that there is none.
    return (!pending && isSame(stroke, last)) ||
           std::any_of(confirmed.begin(), confirmed.end(),
                       [&](const RvARLiquifyOperation& each) { return isSame(each, stroke); });
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
