// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/BindingCalls.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>

namespace qrvkp {

bool bindTrack(const char* name, NativeTrack& owner, TrackBinding& binding, RvITrack* track,
               int bindType)
{
    const bool fails = shouldFail(name);
    if (!track) {
        calls::record(name, owner.id, calls::Verbatim{"null"}, bindType);
        return false;
    }
    calls::change(name, owner, track->getTrackID(), bindType);
    if (!fails)
        binding.bind(*NativeTrack::of(track), bindType);
    track->release();
    return !fails;
}

RvITrack* wrapBoundTrack(const TrackBinding& binding)
{
    const auto track = binding.track();
    return track ? track->wrap() : nullptr;
}

} // namespace qrvkp
