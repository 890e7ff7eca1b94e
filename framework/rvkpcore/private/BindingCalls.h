// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>
#include <rvkpcore/private/NativeTrack.h>

namespace qrvkp {

/// The `bind` of detections and effects, under its public `name`: takes over a reference of
/// `track`, and does nothing but that when it was asked to fail.
bool bindTrack(const char* name, NativeTrack& owner, TrackBinding& binding, RvITrack* track,
               int bindType);
/// A wrapper of the bound track with one reference, or null.
RvITrack* wrapBoundTrack(const TrackBinding& binding);

} // namespace qrvkp
