// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARFrameTrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

RvARFrameTrack::~RvARFrameTrack() = default;

qrvkp::RvITrack* RvARFrameTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARFrameTrack(std::move(native));
}

RvARFrameTrack* RvARFrameTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARFrameTrack>("RvARFrameTrack::create", context,
                                              qrvkp::RvTrackTypeARFrame, &wrap);
}

RvARFrameTrack* RvARFrameTrack::create(const std::string& source, long long startPos,
                                       long long duration)
{
    constexpr const char* name = "RvARFrameTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARTrack>(name, qrvkp::RvTrackTypeARFrame, &wrap), source,
                  startPos, duration);
    return qrvkp::publish<RvARFrameTrack>(name, native, source, startPos, duration);
}

} // namespace qkpar
