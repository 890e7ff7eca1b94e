// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/MediaCreation.h>

#include <engine/media/MediaProbe.h>
#include <rvkpcore/private/CurrentCanvas.h>
#include <rvkpcore/private/FaultPoint.h>

#include <algorithm>

namespace qrvkp {

namespace {

/// The file's values when the creation `name` may succeed.
std::optional<rvengine::MediaInfo> probe(const char* name, const std::string& path,
                                         rvengine::MediaKind kind)
{
    if (shouldFail(name))
        return std::nullopt;
    return rvengine::mediaProbe().probe(path, kind);
}

long long clipDuration(long long duration, long long fileStartTime, long long fileDuration)
{
    if (duration >= 0)
        return duration;
    return std::max(0LL, fileDuration - std::clamp(fileStartTime, 0LL, fileDuration));
}

std::shared_ptr<NativeMediaTrack> makeMediaNative(int trackType, NativeTrack::Wrap wrap,
                                                  const std::string& path,
                                                  const rvengine::MediaInfo& info)
{
    auto native = std::make_shared<NativeMediaTrack>(trackType, wrap);
    const CanvasSize canvas = currentCanvasSize();
    native->source = path;
    native->width = static_cast<float>(info.width);
    native->height = static_cast<float>(info.height);
    native->positionX = canvas.width / 2.0F;
    native->positionY = canvas.height / 2.0F;
    return native;
}

} // namespace

std::shared_ptr<NativeMediaTrack> makeVideoNative(const char* name, const std::string& path,
                                                  long long duration, long long fileStartTime,
                                                  NativeTrack::Wrap wrap)
{
    const auto info = probe(name, path, rvengine::MediaKind::Video);
    if (!info)
        return nullptr;
    auto native = makeMediaNative(RvTrackTypeVideo, wrap, path, *info);
    native->duration = clipDuration(duration, fileStartTime, info->durationMs);
    native->fileStartTime = fileStartTime;
    return native;
}

std::shared_ptr<NativeMediaTrack> makePictureNative(const char* name, const std::string& path,
                                                    NativeTrack::Wrap wrap)
{
    const auto info = probe(name, path, rvengine::MediaKind::Picture);
    return info ? makeMediaNative(RvTrackTypeSprite, wrap, path, *info) : nullptr;
}

std::shared_ptr<NativeAudioTrack> makeSoundNative(const char* name, const std::string& path,
                                                  long long duration, long long fileStartTime,
                                                  NativeTrack::Wrap wrap)
{
    const auto info = probe(name, path, rvengine::MediaKind::Sound);
    if (!info)
        return nullptr;
    auto native = std::make_shared<NativeAudioTrack>(RvTrackTypeAudio, wrap);
    native->source = path;
    native->duration = clipDuration(duration, fileStartTime, info->durationMs);
    native->fileStartTime = fileStartTime;
    return native;
}

} // namespace qrvkp
