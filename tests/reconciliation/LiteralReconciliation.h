// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvReturnVlaue.h>
#include <norvel/timeline/RvTimeLineAttribute.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <vector>

/// What a reconciliation does, as a plain walk: every lookup goes through the lists of the live
/// timeline anew, every comparison through the list of the old description, and what is kept stands
/// in a vector that is searched from its start.
///
/// The library gets to the same calls through indexes; the tests hold it against this walk, which
/// is slow and has no cleverness in it. Only the values of a single track are left to the library
/// (`RvAttributeUtility::createTrack` and `updateTrack`).
class LiteralReconciliation
{
public:
    static norvel::RvReturnVlaue compare(norvel::RvAttribute* attribute,
                                         const std::vector<norvel::RvAttribute*>& list);

    // Null, or one reference that the caller releases.
    static qrvkp::RvKpGroup* getGroup(qrvkp::RvKpTimeLine* timeline, std::uint64_t id);
    static qrvkp::RvITrack* getMainTrack(qrvkp::RvKpTimeLine* timeline, std::uint64_t id);
    static qrvkp::RvITrack* getMixTrack(qrvkp::RvKpTimeLine* timeline, std::uint64_t id);

    static void updateTimeLine(qrvkp::RvKpTimeLine* timeline,
                               const norvel::RvTimeLineAttribute* oldDescription,
                               const norvel::RvTimeLineAttribute* newDescription);

private:
    static norvel::RvReturnVlaue updateMainMediaTrack(qrvkp::RvKpTimeLine* timeline,
                                                      const norvel::RvTimeLineAttribute* old,
                                                      norvel::RvAttribute* record, int position);
    static norvel::RvReturnVlaue updateMixMediaTrack(qrvkp::RvKpTimeLine* timeline,
                                                     const norvel::RvTimeLineAttribute* old,
                                                     norvel::RvAttribute* record);
};
