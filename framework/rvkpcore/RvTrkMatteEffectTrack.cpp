// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <rvkpcore/private/TrackCreation.h>

namespace qrvkp {

RvTrkMatteEffectTrack::~RvTrkMatteEffectTrack() = default;

RvITrack* RvTrkMatteEffectTrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvTrkMatteEffectTrack(std::move(native));
}

RvTrkMatteEffectTrack* RvTrkMatteEffectTrack::create(void* context)
{
    return wrapContext<RvTrkMatteEffectTrack>("RvTrkMatteEffectTrack::create", context,
                                              RvTrackTypeMatte, &wrap);
}

RvTrkMatteEffectTrack* RvTrkMatteEffectTrack::createPathMatteTrack(long long startPos,
                                                                   long long duration)
{
    constexpr const char* name = "RvTrkMatteEffectTrack::createPathMatteTrack";
    const auto native = makeNative<NativeEffectTrack>(name, RvTrackTypeMatte, &wrap);
    if (native) {
        native->startPos = startPos;
        native->duration = duration;
    }
    return publish<RvTrkMatteEffectTrack>(name, native, startPos, duration);
}

} // namespace qrvkp
