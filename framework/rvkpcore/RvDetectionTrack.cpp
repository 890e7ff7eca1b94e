// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvDetectionTrack.h>

#include <rvkpcore/private/BindingCalls.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qrvkp {

RvDetectionTrack::~RvDetectionTrack() = default;

RvITrack* RvDetectionTrack::wrap(std::shared_ptr<NativeTrack> native)
{
    return new RvDetectionTrack(std::move(native));
}

RvDetectionTrack* RvDetectionTrack::create(void* context)
{
    return wrapContext<RvDetectionTrack>("RvDetectionTrack::create", context, RvTrackTypeDetection,
                                         &wrap);
}

RvDetectionTrack* RvDetectionTrack::create(int mode, const std::string& modelPath)
{
    const auto native =
        makeNative<NativeDetectionTrack>("RvDetectionTrack::create", RvTrackTypeDetection, &wrap);
    if (native) {
        native->mode = mode;
        native->modelPath = modelPath;
    }
    return publish<RvDetectionTrack>("RvDetectionTrack::create", native, mode, modelPath);
}

int RvDetectionTrack::getDetectionMode() const
{
    return nativeAs<NativeDetectionTrack>().mode;
}

void RvDetectionTrack::setDetectionMode(int mode)
{
    auto& detection = nativeAs<NativeDetectionTrack>();
    calls::change("RvDetectionTrack::setDetectionMode", detection, mode);
    detection.mode = mode;
}

std::string RvDetectionTrack::getModelPath() const
{
    return nativeAs<NativeDetectionTrack>().modelPath;
}

void RvDetectionTrack::setModelPath(const std::string& modelPath)
{
    auto& detection = nativeAs<NativeDetectionTrack>();
    calls::change("RvDetectionTrack::setModelPath", detection, modelPath);
    detection.modelPath = modelPath;
}

bool RvDetectionTrack::bind(RvITrack* track, int bindType)
{
    auto& detection = nativeAs<NativeDetectionTrack>();
    return bindTrack("RvDetectionTrack::bind", detection, detection.binding, track, bindType);
}

void RvDetectionTrack::bindDynamic()
{
    auto& detection = nativeAs<NativeDetectionTrack>();
    calls::change("RvDetectionTrack::bindDynamic", detection);
    detection.binding.bindDynamic();
}

void RvDetectionTrack::unbind()
{
    auto& detection = nativeAs<NativeDetectionTrack>();
    calls::change("RvDetectionTrack::unbind", detection);
    detection.binding.unbind();
}

int RvDetectionTrack::getActionRange() const
{
    return nativeAs<NativeDetectionTrack>().binding.actionRange();
}

int RvDetectionTrack::getMediaBindType() const
{
    return nativeAs<NativeDetectionTrack>().binding.bindType();
}

RvITrack* RvDetectionTrack::getBindTrack() const
{
    return wrapBoundTrack(nativeAs<NativeDetectionTrack>().binding);
}

} // namespace qrvkp
