// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>
#include <rvkpcore/RvITrack.h>

namespace norvel {

/// Wraps native track handles of the framework in track objects of their own class.
class NORVEL_EXPORT RvTrackFactory
{
public:
    RvTrackFactory() = delete;

    /// A new wrapper of the native track `context`, with one reference that the caller releases; of
    /// the class that belongs to `trackType`, a framework track type (`qrvkp::RvTrackType`). Null
    /// for a null context and for a type without a wrapper (5 and 20004 among them).
    static qrvkp::RvITrack* createTrack(void* context, int trackType);
};

} // namespace norvel
