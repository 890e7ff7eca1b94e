// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpTimeLine.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeGroup.h>
#include <rvkpcore/private/OrderedSequence.h>

#include <algorithm>
#include <limits>

namespace qrvkp {

namespace {

NativeGroup* nativeOf(const RvKpGroup* group)
{
    return group ? static_cast<NativeGroup*>(group->getContext()) : nullptr;
}

calls::IdOf<NativeGroup> idOf(const RvKpGroup* group)
{
    return {nativeOf(group)};
}

calls::IdOf<NativeTrack> idOf(const RvITrack* track)
{
    return {NativeTrack::of(track)};
}

/// Where a timeline's sequences keep the places of its groups and mix tracks.
struct PlaceOf
{
    const void*& operator()(const RvKpGroup* group) const { return nativeOf(group)->place; }
    const void*& operator()(const RvITrack* track) const { return NativeTrack::of(track)->place; }
};

std::size_t clampedPosition(int position)
{
    return static_cast<std::size_t>(std::max(position, 0));
}

/// The group leaves its timeline: its tracks stay in it, but the bindings to them end.
void leave(NativeGroup& group)
{
    group.place = nullptr;
    for (const RvITrack* track : group.tracks)
        ++NativeTrack::of(track)->detachments;
}

} // namespace

struct RvKpTimeLine::Content
{
    // Each item holds one reference of the timeline's. The mix tracks are wrappers made once: a
    // list of them costs no allocation, and does not touch the native tracks.
    OrderedSequence<RvKpGroup*, PlaceOf> groups;
    OrderedSequence<RvITrack*, PlaceOf> mixTracks;

    bool insert(RvKpGroup* group, std::size_t position)
    {
        NativeGroup* native = nativeOf(group);
        if (!native || native->place)
            return false;
        group->retain();
        groups.insert(position, group);
        return true;
    }
};

RvKpTimeLine::RvKpTimeLine()
    : m_content(std::make_unique<Content>())
{
}

RvKpTimeLine::~RvKpTimeLine()
{
    m_content->groups.forEach([](RvKpGroup* group) {
        leave(*nativeOf(group));
        group->release();
    });
    m_content->mixTracks.forEach([](RvITrack* track) {
        NativeTrack::of(track)->leave();
        track->release();
    });
}

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
    groups.reserve(m_content->groups.size());
    m_content->groups.forEach([&](RvKpGroup* group) {
        group->retain();
        groups.push_back(group);
    });
    return groups;
}

std::vector<RvITrack*> RvKpTimeLine::getMixTracks() const
{
    std::vector<RvITrack*> tracks;
    tracks.reserve(m_content->mixTracks.size());
    m_content->mixTracks.forEach([&](RvITrack* track) {
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
           m_content->insert(group, clampedPosition(position));
}

bool RvKpTimeLine::pushBackGroup(RvKpGroup* group)
{
    calls::record("RvKpTimeLine::pushBackGroup", idOf(group));
    sceneChanged();
    return !shouldFail("RvKpTimeLine::pushBackGroup") &&
           m_content->insert(group, m_content->groups.size());
}

bool RvKpTimeLine::changeGroupPosition(RvKpGroup* group, int position)
{
    calls::record("RvKpTimeLine::changeGroupPosition", idOf(group), position);
    sceneChanged();
    auto& groups = m_content->groups;
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
    if (shouldFail("RvKpTimeLine::removeGroup") || !group || !m_content->groups.contains(group))
        return false;
    m_content->groups.erase(group);
    leave(*nativeOf(group));
    group->release();
    return true;
}

bool RvKpTimeLine::addMixTrack(RvITrack* track)
{
    calls::record("RvKpTimeLine::addMixTrack", idOf(track));
    sceneChanged();
    NativeTrack* native = NativeTrack::of(track);
    if (shouldFail("RvKpTimeLine::addMixTrack") || !native || native->isPlaced())
        return false;
    native->listed = native->wrap();
    m_content->mixTracks.insert(m_content->mixTracks.size(), native->listed);
    return true;
}

bool RvKpTimeLine::removeMixTrack(RvITrack* track)
{
    calls::record("RvKpTimeLine::removeMixTrack", idOf(track));
    sceneChanged();
    NativeTrack* native = NativeTrack::of(track);
    if (shouldFail("RvKpTimeLine::removeMixTrack") || !native || !native->isPlaced() ||
        !m_content->mixTracks.contains(native->listed))
        return false;
    RvITrack* listed = native->listed;
    m_content->mixTracks.erase(listed);
    native->leave();
    listed->release();
    return true;
}

long long RvKpTimeLine::getDuration() const
{
    // Sums of what a host may set to anything: saturate instead of overflowing.
    constexpr long long longest = std::numeric_limits<long long>::max();
    const auto sum = [](long long a, long long b) { return a > longest - b ? longest : a + b; };
    long long end = 0;
    m_content->groups.forEach(
        [&](const RvKpGroup* group) { end = sum(end, std::max(group->getDuration(), 0LL)); });
    m_content->mixTracks.forEach([&](const RvITrack* track) {
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
