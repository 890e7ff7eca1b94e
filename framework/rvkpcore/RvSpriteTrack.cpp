// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvSpriteTrack.h>

#include <rvkpcore/private/MediaCreation.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qrvkp {

RvSpriteTrack::~RvSpriteTrack() = default;

RvITrack* RvSpriteTrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvSpriteTrack(std::move(native));
}

RvSpriteTrack* RvSpriteTrack::create(void* context)
{
    return wrapContext<RvSpriteTrack>("RvSpriteTrack::create", context, RvTrackTypeSprite, &wrap);
}

RvSpriteTrack* RvSpriteTrack::create(const std::string& path, long long startPos,
                                     long long duration)
{
    const auto native = makePictureNative("RvSpriteTrack::create", path, &wrap);
    if (native) {
        native->startPos = startPos;
        native->duration = duration;
    }
    return publish<RvSpriteTrack>("RvSpriteTrack::create", native, path, startPos, duration);
}

} // namespace qrvkp
