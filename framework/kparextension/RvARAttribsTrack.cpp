// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARAttribsTrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

RvARAttribsTrack::~RvARAttribsTrack() = default;

qrvkp::RvITrack* RvARAttribsTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARAttribsTrack(std::move(native));
}

RvARAttribsTrack* RvARAttribsTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARAttribsTrack>("RvARAttribsTrack::create", context,
                                                qrvkp::RvTrackTypeARLayer, &wrap);
}

RvARAttribsTrack* RvARAttribsTrack::create(const std::string& source, long long startPos,
                                           long long duration)
{
    constexpr const char* name = "RvARAttribsTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARTrack>(name, qrvkp::RvTrackTypeARLayer, &wrap), source,
                  startPos, duration);
    return qrvkp::publish<RvARAttribsTrack>(name, native, source, startPos, duration);
}

} // namespace qkpar
