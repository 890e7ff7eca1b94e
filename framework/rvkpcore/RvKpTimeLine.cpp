// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpTimeLine.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeTimeline.h>

#include <algorithm>
#include <limits>

namespace qrvkp {

namespace {

calls::IdOf<NativeGroup> idOf(const RvKpGroup* group)
{
    return {nativeOf(group)};
}

calls::IdOf<NativeTrack> idOf(const RvITrack* track)
{
    return {NativeTrack::of(track)};
}

std::size_t clampedPosition(int position)
{
    return static_cast<std::size_t>(std::max(position, 0));
}

} // namespace

RvKpTimeLine::RvKpTimeLine()
    : m_native(std::make_unique<NativeTimeline>())
{
}

RvKpTimeLine::~RvKpTimeLine() = default;

RvKpTimeLine* RvKpTimeLine::create()
{
    const bool fails = shouldFail("RvKpTimeLine::create");
    if (fails)
        calls::recordCreation<std::uint64_t>("RvKpTimeLine::create", nullptr);
    else
        calls::record("RvKpTimeLine::create");
    return fails ? nullptr : new RvKpTimeLine();
}

std::vector<RvKpGroup*> RvKpTimeLine::getGroups() const
{
    std::vector<RvKpGroup*> groups;
    groups.reserve(m_native->groups.size());
    m_native->groups.forEach([&](RvKpGroup* group) {
        group->retain();
        groups.push_back(group);
    });
    return groups;
}

std::vector<RvITrack*> RvKpTimeLine::getMixTracks() const
{
    std::vector<RvITrack*> tracks;
    tracks.reserve(m_native->mixTracks.size());
    m_native->mixTracks.forEach([&](RvITrack* track) {
        track->retain();
        tracks.push_back(track);
    });
    return tracks;
}

bool RvKpTimeLine::insertGroup(RvKpGroup* group, int position)
{
    calls::record("RvKpTimeLine::insertGroup", idOf(group), position);
    sceneChanged();
    return !shouldFail("RvKpTimeLine::insertGroup") &&
           m_native->insertGroup(group, clampedPosition(position));
}

bool RvKpTimeLine::pushBackGroup(RvKpGroup* group)
{
    calls::record("RvKpTimeLine::pushBackGroup", idOf(group));
    sceneChanged();
    return !shouldFail("RvKpTimeLine::pushBackGroup") &&
           m_native->insertGroup(group, m_native->groups.size());
}

bool RvKpTimeLine::changeGroupPosition(RvKpGroup* group, int position)
{
    calls::record("RvKpTimeLine::changeGroupPosition", idOf(group), position);
    sceneChanged();
    auto& groups = m_native->groups;
    if (shouldFail("RvKpTimeLine::changeGroupPosition") || !group || !groups.contains(group))
        return false;
    const std::size_t target = std::min(clampedPosition(position), groups.size() - 1);
    if (!groups.isAt(target, group)) {
        groups.erase(group);
        groups.insert(target, group);
    }
    return true;
}

bool RvKpTimeLine::removeGroup(RvKpGroup* group)
{
    calls::record("RvKpTimeLine::removeGroup", idOf(group));
    sceneChanged();
    if (shouldFail("RvKpTimeLine::removeGroup") || !group || !m_native->groups.contains(group))
        return false;
    m_native->removeGroup(group);
    return true;
}

bool RvKpTimeLine::addMixTrack(RvITrack* track)
{
    calls::record("RvKpTimeLine::addMixTrack", idOf(track));
    sceneChanged();
    NativeTrack* native = NativeTrack::of(track);
    if (shouldFail("RvKpTimeLine::addMixTrack") || !native || native->isPlaced())
        return false;
    m_native->addMixTrack(*native);
    return true;
}

bool RvKpTimeLine::removeMixTrack(RvITrack* track)
{
    calls::record("RvKpTimeLine::removeMixTrack", idOf(track));
    sceneChanged();
    NativeTrack* native = NativeTrack::of(track);
    if (shouldFail("RvKpTimeLine::removeMixTrack") || !native || !native->isPlaced() ||
        !m_native->mixTracks.contains(native->listed))
        return false;
    m_native->removeMixTrack(*native);
    return true;
}

long long RvKpTimeLine::getDuration() const
{
    // Sums of what a host may set to anything: saturate instead of overflowing.
    constexpr long long longest = std::numeric_limits<long long>::max();
    const auto sum = [](long long a, long long b) { return a > longest - b ? longest : a + b; };
    long long end = 0;
    m_native->groups.forEach(
        [&](const RvKpGroup* group) { end = sum(end, std::max(group->getDuration(), 0LL)); });
    m_native->mixTracks.forEach([&](const RvITrack* track) {
        end = std::max(end, sum(track->getStartPos(), std::max(track->getDuration(), 0LL)));
    });
    return end;
}

void RvKpTimeLine::invalidate()
{
    calls::record("RvKpTimeLine::invalidate");
    sceneChanged();
}

} // namespace qrvkp
