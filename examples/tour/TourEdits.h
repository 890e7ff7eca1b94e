// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

class TourTimeline;

/// One edit of the kind that an editor makes: what the user would call it, and how it is done.
struct TourEdit
{
    const char* name;
    /// Makes the edit. False when it cannot be made, for want of a track or because the framework
    /// makes none.
    bool (*apply)(TourTimeline& timeline);
};

using TourEdits = std::vector<TourEdit>;

/// Edits of the main line and of the canvas.
TourEdits mainLineEdits();
/// Edits of the pictures, videos and sounds over the main line.
TourEdits mixEdits();
/// Edits of detections and AR effects.
TourEdits effectEdits();
/// Edits that delete what the ones before have made.
TourEdits deletingEdits();

/// All of the above in order, each to be made on what the one before has left.
TourEdits tourEdits();
/// The edits made in place of the second half of those.
TourEdits branchEdits();

/// Hands a track or a group to `change`. False when there is none.
template <class Reference, class Change>
bool changed(const Reference& reference, Change&& change)
{
    if (!reference)
        return false;
    change(*reference);
    return true;
}
