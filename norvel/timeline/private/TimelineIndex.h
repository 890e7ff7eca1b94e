// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/private/IdTable.h>
#include <norvel/timeline/private/Reference.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <unordered_map>

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
    void mixTrackAdded(const qrvkp::RvITrack& track);
    /// The mix track found under the id was taken off the timeline.
    void mixTrackRemoved(std::uint64_t id);

private:
    /// Where an id leads. The timeline keeps group and native track alive.
    struct Place
    {
        qrvkp::RvKpGroup* group = nullptr; ///< null for a mix track
        void* context = nullptr;
        int trackType = 0;
        bool needsWalk = false;
    };
    class Places
    {
    public:
        /// Fills in what stands on the timeline, in its order.
        void fill(std::uint64_t id, const Place& place) { m_walked.add(id, place); }
        void reserve(std::size_t count) { m_walked.reserve(count); }

        /// What is inserted and removed later.
        void add(std::uint64_t id, const Place& place);
        void remove(std::uint64_t id);

        const Place* find(std::uint64_t id);

    private:
        Place* known(std::uint64_t id);

        IdTable<Place> m_walked;
        std::unordered_map<std::uint64_t, Place> m_added; ///< no id of m_walked
    };

    static Place placeOf(const qrvkp::RvITrack& track, qrvkp::RvKpGroup* group);
    Places& mainPlaces();
    Places& mixPlaces();

    qrvkp::RvKpTimeLine* const m_timeline;
    Places m_main;
    Places m_mix;
    bool m_mainWalked = false;
    bool m_mixWalked = false;
};

} // namespace norvel
