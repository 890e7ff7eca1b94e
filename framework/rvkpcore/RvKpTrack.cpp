// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpTrack.h>

#include <rvkpcore/private/MediaCreation.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qrvkp {

RvKpTrack::~RvKpTrack() = default;

RvITrack* RvKpTrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvKpTrack(std::move(native));
}

RvKpTrack* RvKpTrack::create(void* context)
{
    return wrapContext<RvKpTrack>("RvKpTrack::create", context, RvTrackTypeVideo, &wrap);
}

RvKpTrack* RvKpTrack::create(const std::string& path, long long startPos, long long duration,
                             long long fileStartTime)
{
    const auto native = makeVideoNative("RvKpTrack::create", path, duration, fileStartTime, &wrap);
    if (native)
        native->startPos = startPos;
    return publish<RvKpTrack>("RvKpTrack::create", native, path, startPos, duration, fileStartTime);
}

long long RvKpTrack::getFileStartTime() const
{
    return nativeAs<NativeMediaTrack>().fileStartTime;
}

void RvKpTrack::setFileStartTime(long long fileStartTime)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::change("RvKpTrack::setFileStartTime", media, fileStartTime);
    media.fileStartTime = fileStartTime;
}

} // namespace qrvkp
