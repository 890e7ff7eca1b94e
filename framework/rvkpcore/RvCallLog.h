// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <string>
#include <vector>

namespace qrvkp {

/// A record of every framework call that changes something, in the order of the calls.
///
/// An entry reads `Class::operation(object id, arguments...)`, for instance
/// `RvITrack::setAlpha(1042, 0.5)`; a creation ends in ` -> ` and the id of what it made, or
/// ` -> null`. Ids of tracks are their track ids, texts stand in double quotes, a null object is
/// `null`. A timeline has no id: `RvKpTimeLine` calls name the group or track that they are about,
/// a successful `RvKpTimeLine::create()` ends without one, and the player's `setTimeLine` says
/// `timeline` or `null`.
///
/// With the environment variable `RVKP_TRACE=1` every entry is printed to standard error as it
/// happens, whether or not the log was started. All operations are thread-safe.
class RVKPCORE_EXPORT RvCallLog
{
public:
    /// Forgets the entries so far and records from now on.
    static void start();
    /// Stops recording; the entries stay until the next start.
    static void stop();
    /// A copy of the entries recorded since the last start.
    static std::vector<std::string> entries();
    /// The number of entries recorded since the last start.
    static std::size_t count();
};

} // namespace qrvkp
