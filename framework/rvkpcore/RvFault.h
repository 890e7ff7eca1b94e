// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <string>

namespace qrvkp {

/// Makes framework calls fail on purpose, for tests of what happens then.
///
/// A creation fails by giving null (wrapping a native handle with `create(void*)` counts as a call
/// of the same name), an operation with a boolean result by doing nothing and giving false. Calls
/// that cannot fail cannot be made to. All operations are thread-safe.
class RVKPCORE_EXPORT RvFault
{
public:
    /// Makes the `nth` next call of `name` (for instance "RvKpTrack::create") fail, once; 1 is the
    /// very next one, below 1 is no request. Replaces an earlier request for the same name.
    static void failNext(const std::string& name, int nth = 1);
    /// True while a request for `name` has not come true yet.
    static bool isPending(const std::string& name);
    /// Takes back every request.
    static void clear();
};

} // namespace qrvkp
