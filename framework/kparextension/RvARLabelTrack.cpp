// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARLabelTrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

RvARLabelTrack::~RvARLabelTrack() = default;

qrvkp::RvITrack* RvARLabelTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARLabelTrack(std::move(native));
}

RvARLabelTrack* RvARLabelTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARLabelTrack>("RvARLabelTrack::create", context,
                                              qrvkp::RvTrackTypeARLabel, &wrap);
}

RvARLabelTrack* RvARLabelTrack::create(const std::string& source, long long startPos,
                                       long long duration)
{
    constexpr const char* name = "RvARLabelTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARTrack>(name, qrvkp::RvTrackTypeARLabel, &wrap), source,
                  startPos, duration);
    return qrvkp::publish<RvARLabelTrack>(name, native, source, startPos, duration);
}

} // namespace qkpar
