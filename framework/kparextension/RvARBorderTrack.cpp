// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARBorderTrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

RvARBorderTrack::~RvARBorderTrack() = default;

qrvkp::RvITrack* RvARBorderTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARBorderTrack(std::move(native));
}

RvARBorderTrack* RvARBorderTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARBorderTrack>("RvARBorderTrack::create", context,
                                               qrvkp::RvTrackTypeARBorder, &wrap);
}

RvARBorderTrack* RvARBorderTrack::create(const std::string& source, long long startPos,
                                         long long duration)
{
    constexpr const char* name = "RvARBorderTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARTrack>(name, qrvkp::RvTrackTypeARBorder, &wrap), source,
                  startPos, duration);
    return qrvkp::publish<RvARBorderTrack>(name, native, source, startPos, duration);
}

} // namespace qkpar
