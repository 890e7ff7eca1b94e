// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <rvkpcore/RvKpApplication.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using Record = std::unique_ptr<norvel::RvAttribute>;
using Description = std::unique_ptr<norvel::RvTimeLineAttribute>;

/// A copy of a record, of its own kind.
Record cloneRecord(const norvel::RvAttribute& record);

/// A group of a live timeline.
struct GroupState
{
    const void* group = nullptr;       ///< null for a group that is expected but not made yet
    std::vector<const void*> contexts; ///< the native tracks; null ones likewise
    std::vector<std::uint64_t> ids;
    Record record; ///< of the first track; null when it is not described
};

/// What a detection or an effect is bound to; ids are 0 where there is none.
struct BindingState
{
    int range = 0; ///< a value of `RvActionRange`
    int bindType = 0;
    std::uint64_t target = 0;
    std::uint64_t detection = 0;

    bool operator==(const BindingState& other) const
    {
        return range == other.range && bindType == other.bindType && target == other.target &&
               detection == other.detection;
    }
};

/// A mix track of a live timeline.
struct MixState
{
    const void* context = nullptr; ///< null for a track that is expected but not made yet
    std::uint64_t id = 0;          ///< 0 when the framework is expected to choose it
    int trackType = 0;
    Record record;      ///< null when the track is not described
    BindingState shown; ///< what the track says that it is bound to
    BindingState asked; ///< what it was bound to last, be that there or not: not read
};

/// All that is known of a live timeline at one moment: which objects stand where, and what the
/// bridge says of them.
struct TimelineState
{
    float width = 0.0F;
    float height = 0.0F;
    std::vector<GroupState> groups;
    std::vector<MixState> mixTracks;

    /// The state as it is, read from the framework and from a new description.
    static TimelineState read(qrvkp::RvKpApplication& application);

    /// Takes over from an earlier state what the tracks were bound to.
    void inherit(const TimelineState& before);
    /// Takes over what the tracks were bound to from the state that this one was expected to be.
    void inheritExpected(const TimelineState& expected);
    /// Takes over what calls of the framework, entries of its log, bind and unbind.
    void applyBindings(const std::vector<std::string>& calls);
    /// Has the tracks and their records say what they are bound to, after what stands on the
    /// timeline: a track that is not there is remembered, and not acted on.
    void showBindings();

    /// How `actual` differs from this expected state, a line for each difference. Objects that are
    /// expected to be untouched must be the same ones.
    std::vector<std::string> differencesTo(const TimelineState& actual) const;
};
