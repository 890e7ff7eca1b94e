// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpGroup.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeGroup.h>
#include <rvkpcore/private/NativeTimeline.h>

#include <algorithm>

namespace qrvkp {

RvKpGroup::RvKpGroup(long long duration)
    : m_native(std::make_unique<NativeGroup>())
{
    m_native->duration = duration;
}

RvKpGroup::~RvKpGroup()
{
    for (RvITrack* track : m_native->tracks) {
        NativeTrack::of(track)->leave();
        track->release();
    }
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
    calls::change("RvKpGroup::setDuration", *m_native, duration);
    m_native->duration = duration;
}

bool RvKpGroup::addTrack(RvITrack* track)
{
    NativeTrack* native = NativeTrack::of(track);
    calls::change("RvKpGroup::addTrack", *m_native, calls::IdOf{native});
    if (shouldFail("RvKpGroup::addTrack") || !native || native->isPlaced())
        return false;
    m_native->tracks.push_back(native->enter(*m_native));
    if (m_native->timeline)
        m_native->timeline->forgetIds();
    return true;
}

bool RvKpGroup::removeTrack(RvITrack* track)
{
    NativeTrack* native = NativeTrack::of(track);
    calls::change("RvKpGroup::removeTrack", *m_native, calls::IdOf{native});
    if (shouldFail("RvKpGroup::removeTrack") || !native || !native->isPlaced())
        return false;
    auto& tracks = m_native->tracks;
    const auto place = std::find(tracks.begin(), tracks.end(), native->listed);
    if (place == tracks.end())
        return false;
    RvITrack* listed = *place;
    tracks.erase(place);
    if (m_native->timeline)
        m_native->timeline->forgetIds();
    native->leave();
    listed->release();
    return true;
}

std::vector<RvITrack*> RvKpGroup::getTracks() const
{
    for (RvITrack* track : m_native->tracks)
        track->retain();
    return m_native->tracks;
}

} // namespace qrvkp
