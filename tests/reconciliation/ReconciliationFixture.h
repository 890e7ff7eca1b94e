// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ObjectNames.h"

#include "support/TimelineSamples.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A live timeline that is reconciled, and the calls that this made.
///
/// In the calls the groups that stand on the timeline before are #0, #1, ... in their order, what
/// is created meanwhile has the numbers after them.
class ReconciliationTest : public testing::Test
{
protected:
    using Calls = std::vector<std::string>;
    using Ids = std::vector<std::uint64_t>;

    /// Makes the live timeline the one that is described.
    void setLive(const norvel::RvTimeLineAttribute& description);
    /// Reconciles the live timeline; every call that it made.
    Calls update(const norvel::RvTimeLineAttribute& from, const norvel::RvTimeLineAttribute& to);
    /// Only the calls that create something or change what stands where.
    static Calls structural(const Calls& calls);
    /// The call that every reconciliation ends with.
    static std::string invalidate() { return "RvKpTimeLine::invalidate()"; }
    static std::string move(std::size_t group, std::size_t position);

    Ids mainIds() const { return TimelineSamples::mainIds(*timeline); }
    Ids mixIds() const { return TimelineSamples::mixIds(*timeline); }
    /// The live mix track with the id as a track of its own class.
    template <class Class>
    norvel::Reference<Class> mixTrack(std::uint64_t id) const
    {
        const auto track = norvel::adopt(
            norvel::RvAttributeUtility::getMixTrack(timeline.get(), static_cast<std::size_t>(id)));
        return norvel::adopt(track ? Class::create(track->getContext()) : nullptr);
    }

    /// Adds a new record to a list and gives it as a record of its own class.
    template <class Record = norvel::RvAttribute>
    static Record& add(std::vector<norvel::RvAttribute*>& list, int recordType, std::uint64_t id)
    {
        list.push_back(TimelineSamples::record(recordType, id));
        return dynamic_cast<Record&>(*list.back());
    }
    /// Takes a record out of a list and deletes it.
    static void erase(std::vector<norvel::RvAttribute*>& list, std::size_t index);
    static void moveRecord(std::vector<norvel::RvAttribute*>& list, std::size_t from,
                           std::size_t to);

    TimelineSamples::Timeline timeline = TimelineSamples::timeline();
    const norvel::RvTimeLineAttribute empty;
};
