// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/private/ObjectIndex.h>
#include <norvel/timeline/private/Reference.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>

namespace norvel {

/// The lookups by id of `RvAttributeUtility` for one operation on a timeline, in constant time.
///
/// It gives what a walk of the live timeline would give at that moment: the walk is made once, at
/// the first lookup, and the operation tells the index what it then inserts and removes. An id that
/// several tracks share, or that was taken away, is looked up by a walk each time: which of the
/// tracks comes first changes with every move.
class TimelineIndex
{
public:
    /// The timeline may be null: then nothing is found.
    explicit TimelineIndex(qrvkp::RvKpTimeLine* timeline)
        : m_timeline(timeline)
    {
    }

    qrvkp::RvKpTimeLine* timeline() const { return m_timeline; }

    /// The group whose first track has the id, or null.
    Reference<qrvkp::RvKpGroup> group(std::uint64_t id);
    /// A new wrapper of that group's first track, or null.
    Reference<qrvkp::RvITrack> mainTrack(std::uint64_t id);
    /// A new wrapper of the mix track with the id, or null.
    Reference<qrvkp::RvITrack> mixTrack(std::uint64_t id);

    /// A group with a first track was put on the timeline.
    void groupInserted(qrvkp::RvKpGroup& group, const qrvkp::RvITrack& firstTrack);
    /// The group found under the id was taken off the timeline.
    void groupRemoved(std::uint64_t id);
    /// A track was added to the mix tracks.
    void mixTrackAdded(qrvkp::RvITrack& track);
    /// The mix track found under the id was taken off the timeline.
    void mixTrackRemoved(std::uint64_t id);

private:
    ObjectIndex<qrvkp::RvKpGroup>& groups();
    ObjectIndex<qrvkp::RvITrack>& mixTracks();

    qrvkp::RvKpTimeLine* const m_timeline;
    ObjectIndex<qrvkp::RvKpGroup> m_groups; ///< by the id of the first track
    ObjectIndex<qrvkp::RvITrack> m_mixTracks;
    bool m_groupsWalked = false;
    bool m_mixTracksWalked = false;
};

} // namespace norvel
