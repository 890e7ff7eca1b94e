// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "walk/TimelineState.h"

#include <norvel/attribute/RvEffectAttribute.h>

/// Foretells what a reconciliation makes of a live timeline, on records alone.
///
/// It is a second telling of the bridge's rules, without a framework: which values an update
/// writes, what a creation leaves out, what is bound to what. What an undo cannot bring back is
/// foretold too.
class StepModel
{
public:
    /// Begins with the state before the step.
    explicit StepModel(TimelineState before)
        : m_state(std::move(before))
    {
    }

    /// The state after going from one description to another.
    TimelineState step(const norvel::RvTimeLineAttribute& from,
                       const norvel::RvTimeLineAttribute& to) &&;

private:
    using Records = std::vector<norvel::RvAttribute*>;

    void stepMain(const Records& from, const Records& to);
    void stepMix(const Records& from, const Records& to);
    void stepMixRecord(const Records& from, const norvel::RvAttribute& record);
    void removeStaleGroups(const Records& from);
    void removeStaleMixTracks(const Records& from);

    std::vector<GroupState>::iterator findGroup(std::uint64_t id);
    std::vector<MixState>::iterator findMix(std::uint64_t id);
    bool isMainId(std::uint64_t id) { return findGroup(id) != m_state.groups.end(); }
    bool isDetection(std::uint64_t id);

    /// Writes what an update writes of `record` into what is known of the live track.
    void update(norvel::RvAttribute& live, const norvel::RvAttribute& record);
    /// What a track created from `record` is; null when none is created.
    Record create(const norvel::RvAttribute& record);
    /// Binds as an update or a creation does; what is looked for is there now or not at all.
    void bind(BindingState& asked, const norvel::RvAttribute& record);
    template <class Kind>
    void bindTrack(BindingState& asked, const Kind& record);

    TimelineState m_state;
    std::vector<std::uint64_t> m_kept;
};
