// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvAudioTrack.h>

#include <rvkpcore/private/MediaCreation.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qrvkp {

RvAudioTrack::~RvAudioTrack() = default;

RvITrack* RvAudioTrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvAudioTrack(std::move(native));
}

RvAudioTrack* RvAudioTrack::create(void* context)
{
    return wrapContext<RvAudioTrack>("RvAudioTrack::create", context, RvTrackTypeAudio, &wrap);
}

RvAudioTrack* RvAudioTrack::create(const std::string& path, long long startPos, long long duration,
                                   long long fileStartTime)
{
    const auto native =
        makeSoundNative("RvAudioTrack::create", path, duration, fileStartTime, &wrap);
    if (native)
        native->startPos = startPos;
    return publish<RvAudioTrack>("RvAudioTrack::create", native, path, startPos, duration,
                                 fileStartTime);
}

long long RvAudioTrack::getFileStartTime() const
{
    return nativeAs<NativeAudioTrack>().fileStartTime;
}

void RvAudioTrack::setFileStartTime(long long fileStartTime)
{
    auto& audio = nativeAs<NativeAudioTrack>();
    calls::change("RvAudioTrack::setFileStartTime", audio, fileStartTime);
    audio.fileStartTime = fileStartTime;
}

} // namespace qrvkp
