// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpGroup.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeGroup.h>

#include <algorithm>

namespace qrvkp {

RvKpGroup::RvKpGroup(long long duration)
    : m_native(std::make_unique<NativeGroup>())
{
    m_native->duration = duration;
}

RvKpGroup::~RvKpGroup()
{
    for (const auto& track : m_native->tracks)
        track->leave();
}

RvKpGroup* RvKpGroup::create(long long duration)
{
    RvKpGroup* group = shouldFail("RvKpGroup::create") ? nullptr : new RvKpGroup(duration);
    calls::recordCreation("RvKpGroup::create", group ? &group->m_native->id : nullptr, duration);
    return group;
}

std::uint64_t RvKpGroup::getGroupID() const
{
    return m_native->id;
}

void* RvKpGroup::getContext() const
{
    return m_native.get();
}

long long RvKpGroup::getDuration() const
{
    return m_native->duration;
}

void RvKpGroup::setDuration(long long duration)
{
    calls::record("RvKpGroup::setDuration", m_native->id, duration);
    m_native->duration = duration;
}

bool RvKpGroup::addTrack(RvITrack* track)
{
    const auto native = NativeTrack::fromContext(track ? track->getContext() : nullptr);
    calls::record("RvKpGroup::addTrack", m_native->id, calls::IdOf{native.get()});
    if (shouldFail("RvKpGroup::addTrack") || !native || native->isPlaced())
        return false;
    native->grouped = true;
    m_native->tracks.push_back(native);
    return true;
}

bool RvKpGroup::removeTrack(RvITrack* track)
{
    const auto native = NativeTrack::fromContext(track ? track->getContext() : nullptr);
    calls::record("RvKpGroup::removeTrack", m_native->id, calls::IdOf{native.get()});
    auto& tracks = m_native->tracks;
    const auto place = std::find(tracks.begin(), tracks.end(), native);
    if (shouldFail("RvKpGroup::removeTrack") || place == tracks.end())
        return false;
    native->leave();
    tracks.erase(place);
    return true;
}

std::vector<RvITrack*> RvKpGroup::getTracks() const
{
    std::vector<RvITrack*> wrappers;
    wrappers.reserve(m_native->tracks.size());
    for (const auto& track : m_native->tracks)
        wrappers.push_back(track->wrap());
    return wrappers;
}

} // namespace qrvkp
