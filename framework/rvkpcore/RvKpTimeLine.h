// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>
#include <rvkpcore/RvKpGroup.h>

#include <memory>
#include <vector>

namespace qrvkp {

class NativeTimeline;

/// A timeline: groups one after the other on the main line, and mix tracks over them.
///
/// The timeline holds its groups and tracks itself. Not thread-safe: it belongs to the host's
/// thread, which brackets changes that must be seen together with `RvKpPlayer::lockPlayer`.
class RVKPCORE_EXPORT RvKpTimeLine : public RvRef
{
public:
    /// A new empty timeline, with one reference.
    static RvKpTimeLine* create();

    /// The groups in order, each with one reference.
    std::vector<RvKpGroup*> getGroups() const;
    /// The mix tracks in the order in which they were added, each with one reference: the wrappers
    /// of their own kinds by which the timeline holds them, the same ones each time.
    std::vector<RvITrack*> getMixTracks() const;

    /// Puts a group at `position`: below 0 is the start, beyond the end the end. False and no
    /// change for a null group and for one that already stands on a timeline.
    bool insertGroup(RvKpGroup* group, int position);
    /// Puts a group at the end, as `insertGroup` does.
    bool pushBackGroup(RvKpGroup* group);
    /// Moves a group so that it then stands at `position`, counted without the group itself and
    /// clamped as in `insertGroup`. False and no change for a group that is not on this timeline.
    bool changeGroupPosition(RvKpGroup* group, int position);
    /// Takes a group off the timeline; what is bound to its tracks acts on nothing until tracks of
    /// their ids are back. Does nothing for null and for a group that is not on this timeline
    /// (false).
    bool removeGroup(RvKpGroup* group);

    /// Adds a track over the main line: above those of a lower z-order and, of the same z-order,
    /// above those of a lower id. False and no change for a null track and for one that
    /// already stands in a group or on a timeline.
    bool addMixTrack(RvITrack* track);
    /// Takes a mix track off the timeline; what is bound to it acts on nothing until a track of its
    /// id is back. Does nothing for null and for a track that is not on this timeline (false).
    bool removeMixTrack(RvITrack* track);

    /// Length in ms: where the last group or mix track ends.
    long long getDuration() const;

    /// Says that the timeline was changed, so that the player draws it anew.
    void invalidate();

protected:
    RvKpTimeLine();
    ~RvKpTimeLine() override;

private:
    std::unique_ptr<NativeTimeline> m_native;
};

} // namespace qrvkp
