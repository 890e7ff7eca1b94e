// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvITrack.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeTrack.h>
#include <rvkpcore/private/TrackCreation.h>

#include <cmath>
#include <limits>
#include <utility>

namespace qrvkp {

RvITrack::RvITrack(std::shared_ptr<NativeTrack> native)
    : m_native(std::move(native))
{
}

RvITrack::~RvITrack() = default;

RvITrack* RvITrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvITrack(std::move(native));
}

RvITrack* RvITrack::create(void* context)
{
    auto native = shouldFail("RvITrack::create") ? nullptr : NativeTrack::fromContext(context);
    return native ? wrap(std::move(native)) : nullptr;
}

RvITrack* RvITrack::create(long long startPos, long long duration)
{
    const auto native = makeNative<NativeTrack>("RvITrack::create", RvTrackTypeGeneric, &wrap);
    if (native) {
        native->startPos = startPos;
        native->duration = duration;
    }
    return publish<RvITrack>("RvITrack::create", native, startPos, duration);
}

void* RvITrack::getContext() const
{
    return m_native.get();
}

int RvITrack::getTrackType() const
{
    return m_native->type;
}

std::uint64_t RvITrack::getTrackID() const
{
    return m_native->id;
}

void RvITrack::setTrackID(std::uint64_t id)
{
    calls::record("RvITrack::setTrackID", m_native->id, id);
    reserveObjectId(id);
    m_native->id = id;
}

std::string RvITrack::getTrackSource() const
{
    return m_native->source;
}

std::string RvITrack::getTag() const
{
    return m_native->tag;
}

void RvITrack::setTag(const std::string& tag)
{
    calls::record("RvITrack::setTag", m_native->id, tag);
    m_native->tag = tag;
}

long long RvITrack::getStartPos() const
{
    return m_native->startPos;
}

void RvITrack::setStartPos(long long startPos)
{
    calls::record("RvITrack::setStartPos", m_native->id, startPos);
    m_native->startPos = startPos;
}

long long RvITrack::getDuration() const
{
    const float speed = m_native->speed;
    if (speed == 1.0F || !std::isfinite(speed) || speed <= 0.0F)
        return m_native->duration;
    const double scaled = static_cast<double>(m_native->duration) / static_cast<double>(speed);
    // Beyond 2^63 a conversion would be undefined: a duration divided by nearly nothing.
    constexpr double limit = 9.2233720368547748e18;
    if (scaled >= limit)
        return std::numeric_limits<long long>::max();
    if (scaled <= -limit)
        return std::numeric_limits<long long>::min();
    return std::llround(scaled);
}

long long RvITrack::getOriginDuration() const
{
    return m_native->duration;
}

void RvITrack::setDuration(long long duration)
{
    calls::record("RvITrack::setDuration", m_native->id, duration);
    m_native->duration = duration;
}

int RvITrack::getOriginZOrder() const
{
    return m_native->zOrder;
}

void RvITrack::setZOrder(int zOrder)
{
    calls::record("RvITrack::setZOrder", m_native->id, zOrder);
    m_native->zOrder = zOrder;
}

float RvITrack::getAlpha() const
{
    return m_native->alpha;
}

void RvITrack::setAlpha(float alpha)
{
    calls::record("RvITrack::setAlpha", m_native->id, alpha);
    m_native->alpha = alpha;
}

float RvITrack::getSpeed() const
{
    return m_native->speed;
}

void RvITrack::setSpeed(float speed)
{
    calls::record("RvITrack::setSpeed", m_native->id, speed);
    m_native->speed = speed;
}

} // namespace qrvkp
