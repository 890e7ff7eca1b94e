// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/private/NativeTrack.h>
#include <rvkpcore/private/SceneChanges.h>

#include <memory>
#include <vector>

namespace qrvkp {

/// What a group is, for the timeline that holds it.
struct NativeGroup : TrackHolder
{
    const std::uint64_t id = newObjectId();
    long long duration = 0;
    std::vector<RvITrack*> tracks; ///< each holds one reference of the group's

    /// Its players have something new to show.
    void touch() { sceneChanged(); }

    /// What of a timeline holds the group, which can stand in one place only; or null.
    const void* place = nullptr;
};

} // namespace qrvkp
