// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvITrack.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeTrack.h>
#include <rvkpcore/private/TrackCreation.h>

#include <iterator>
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
    calls::change("RvITrack::setTrackID", *m_native, id);
    m_native->setId(id);
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
    calls::change("RvITrack::setTag", *m_native, tag);
    m_native->tag = tag;
}

float RvITrack::getWidth() const
{
    return m_native->isMedia() ? nativeAs<NativeMediaTrack>().width : 0.0F;
}

float RvITrack::getHeight() const
{
    return m_native->isMedia() ? nativeAs<NativeMediaTrack>().height : 0.0F;
}

long long RvITrack::getStartPos() const
{
    return m_native->startPos;
}

void RvITrack::setStartPos(long long startPos)
{
    calls::change("RvITrack::setStartPos", *m_native, startPos);
    m_native->startPos = startPos;
}

long long RvITrack::getDuration() const
{
    return m_native->durationOnTimeline();
}

long long RvITrack::getOriginDuration() const
{
    return m_native->duration;
}

void RvITrack::setDuration(long long duration)
{
    calls::change("RvITrack::setDuration", *m_native, duration);
    m_native->duration = duration;
}

int RvITrack::getOriginZOrder() const
{
    return m_native->zOrder;
}

void RvITrack::setZOrder(int zOrder)
{
    calls::change("RvITrack::setZOrder", *m_native, zOrder);
    m_native->zOrder = zOrder;
}

float RvITrack::getAlpha() const
{
    return m_native->alpha;
}

void RvITrack::setAlpha(float alpha)
{
    calls::change("RvITrack::setAlpha", *m_native, alpha);
    m_native->alpha = alpha;
}

float RvITrack::getSpeed() const
{
    return m_native->speed;
}

void RvITrack::setSpeed(float speed)
{
    calls::change("RvITrack::setSpeed", *m_native, speed);
    m_native->speed = speed;
}

void RvITrack::setVolumeAtTime(float volume, long long time)
{
    calls::change("RvITrack::setVolumeAtTime", *m_native, volume, time);
    m_native->makeRendering().volumes[time] = volume;
}

float RvITrack::getVolumeAtTime(long long time) const
{
    if (!m_native->rendering || m_native->rendering->volumes.empty())
        return 1.0F;
    const auto& volumes = m_native->rendering->volumes;
    const auto next = volumes.lower_bound(time);
    if (next == volumes.end())
        return volumes.rbegin()->second;
    if (next == volumes.begin() || next->first == time)
        return next->second;
    const auto& [before, from] = *std::prev(next);
    const double share = (static_cast<double>(time) - static_cast<double>(before)) /
                         (static_cast<double>(next->first) - static_cast<double>(before));
    return from + (next->second - from) * static_cast<float>(share);
}

void RvITrack::clearVolumes()
{
    calls::change("RvITrack::clearVolumes", *m_native);
    m_native->makeRendering().volumes.clear();
}

} // namespace qrvkp
