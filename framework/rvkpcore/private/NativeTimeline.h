// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/private/NativeGroup.h>
#include <rvkpcore/private/NativeTrack.h>
#include <rvkpcore/private/OrderedSequence.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

namespace qrvkp {

/// What stands on a timeline, and which track there has an id.
class NativeTimeline : public TrackHolder
{
public:
    NativeTimeline();
    ~NativeTimeline();
    NativeTimeline(const NativeTimeline&) = delete;
    NativeTimeline& operator=(const NativeTimeline&) = delete;

    /// Puts a group, of which it takes a reference, at `position`; false for null and for one that
    /// stands on a timeline.
    bool insertGroup(RvKpGroup* group, std::size_t position);
    /// Takes a group of this timeline off it.
    void removeGroup(RvKpGroup* group);
    void addMixTrack(NativeTrack& track);
    /// Takes a mix track of this timeline off it.
    void removeMixTrack(NativeTrack& track);

    /// The track of this id, wherever on the timeline; of several the first, those of the groups
    /// before the mix tracks; null when there is none.
    std::shared_ptr<NativeTrack> trackWithId(std::uint64_t id) const;
    /// Which tracks stand on the timeline, or their ids, changes.
    void forgetIds() { m_byId.reset(); }

    /// Where the sequences keep the places of their items.
    struct PlaceOf
    {
        const void*& operator()(const RvKpGroup* group) const;
        const void*& operator()(const RvITrack* track) const
        {
            return NativeTrack::of(track)->place;
        }
    };
    // Each item holds one reference of the timeline's. The mix tracks are wrappers made once: a
    // list of them costs no allocation, and does not touch the native tracks.
    OrderedSequence<RvKpGroup*, PlaceOf> groups;
    OrderedSequence<RvITrack*, PlaceOf> mixTracks;

private:
    using TracksById = std::unordered_map<std::uint64_t, NativeTrack*>;
    TracksById collectIds() const;

    /// Made when a binding looks for a track, which few do: most have theirs at hand.
    mutable std::optional<TracksById> m_byId;
};

/// The native of a group, or null for a null one.
inline NativeGroup* nativeOf(const RvKpGroup* group)
{
    return group ? static_cast<NativeGroup*>(group->getContext()) : nullptr;
}

} // namespace qrvkp
