// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/NativeTimeline.h>

namespace qrvkp {

NativeTimeline::NativeTimeline()
{
    timeline = this;
}

NativeTimeline::~NativeTimeline()
{
    groups.forEach([](RvKpGroup* group) {
        nativeOf(group)->place = nullptr;
        nativeOf(group)->timeline = nullptr;
        group->release();
    });
    mixTracks.forEach([](RvITrack* track) {
        NativeTrack::of(track)->leave();
        track->release();
    });
}

bool NativeTimeline::insertGroup(RvKpGroup* group, std::size_t position)
{
    NativeGroup* native = nativeOf(group);
    if (!native || native->place)
        return false;
    group->retain();
    groups.insert(position, group);
    native->timeline = this;
    forgetIds();
    return true;
}

void NativeTimeline::removeGroup(RvKpGroup* group)
{
    groups.erase(group);
    nativeOf(group)->place = nullptr;
    nativeOf(group)->timeline = nullptr;
    forgetIds();
    group->release();
}

void NativeTimeline::addMixTrack(NativeTrack& track)
{
    mixTracks.insert(mixTracks.size(), track.enter(*this));
    forgetIds();
}

void NativeTimeline::removeMixTrack(NativeTrack& track)
{
    RvITrack* listed = track.listed;
    mixTracks.erase(listed);
    track.leave();
    forgetIds();
    listed->release();
}

std::shared_ptr<NativeTrack> NativeTimeline::trackWithId(std::uint64_t id) const
{
    if (!m_byId)
        m_byId = collectIds();
    const auto found = m_byId->find(id);
    return found == m_byId->end() ? nullptr : found->second->shared_from_this();
}

NativeTimeline::TracksById NativeTimeline::collectIds() const
{
    TracksById byId;
    const auto add = [&](const RvITrack* track) {
        NativeTrack* native = NativeTrack::of(track);
        byId.emplace(native->id, native);
    };
    groups.forEach([&](const RvKpGroup* group) {
        for (const RvITrack* track : nativeOf(group)->tracks)
            add(track);
    });
    mixTracks.forEach(add);
    return byId;
}

const void*& NativeTimeline::PlaceOf::operator()(const RvKpGroup* group) const
{
    return nativeOf(group)->place;
}

} // namespace qrvkp
