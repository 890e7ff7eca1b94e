// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <rvkpcore/private/CurrentCanvas.h>
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
    const auto native = makeNative<NativeMatteTrack>(name, RvTrackTypeMatte, &wrap);
    if (native) {
        native->startPos = startPos;
        native->duration = duration;
        const CanvasSize canvas = currentCanvasSize();
        native->centerX = canvas.width / 2.0F;
        native->centerY = canvas.height / 2.0F;
    }
    return publish<RvTrkMatteEffectTrack>(name, native, startPos, duration);
}

void RvTrkMatteEffectTrack::setMattePath(QPainterPath* path, float width, float height, float scale,
                                         RvMattePathType type)
{
    auto& matte = nativeAs<NativeMatteTrack>();
    calls::change("RvTrkMatteEffectTrack::setMattePath", matte,
                  calls::Verbatim{path ? "path" : "null"}, width, height, scale, type);
    matte.path.reset(path);
    matte.width = width;
    matte.height = height;
    matte.scale = scale;
    matte.pathType = type;
    matte.touchShape();
}

QPainterPath RvTrkMatteEffectTrack::getMattePath() const
{
    const auto& path = nativeAs<NativeMatteTrack>().path;
    return path ? *path : QPainterPath();
}

RvMattePathType RvTrkMatteEffectTrack::getMattePathType() const
{
    return static_cast<RvMattePathType>(nativeAs<NativeMatteTrack>().pathType);
}

void RvTrkMatteEffectTrack::setMatteCenter(float x, float y)
{
    auto& matte = nativeAs<NativeMatteTrack>();
    calls::change("RvTrkMatteEffectTrack::setMatteCenter", matte, x, y);
    matte.centerX = x;
    matte.centerY = y;
}

float RvTrkMatteEffectTrack::getMatteCenterX() const
{
    return nativeAs<NativeMatteTrack>().centerX;
}

float RvTrkMatteEffectTrack::getMatteCenterY() const
{
    return nativeAs<NativeMatteTrack>().centerY;
}

void RvTrkMatteEffectTrack::setMatteEclosionPercent(float percent)
{
    auto& matte = nativeAs<NativeMatteTrack>();
    calls::change("RvTrkMatteEffectTrack::setMatteEclosionPercent", matte, percent);
    matte.feather = percent;
    matte.touchShape();
}

float RvTrkMatteEffectTrack::getMatteEclosionPercent() const
{
    return nativeAs<NativeMatteTrack>().feather;
}

void RvTrkMatteEffectTrack::setEnableDrawPathSizeLimit(bool enable)
{
    auto& matte = nativeAs<NativeMatteTrack>();
    calls::change("RvTrkMatteEffectTrack::setEnableDrawPathSizeLimit", matte, enable);
    matte.limitedToBox = enable;
    matte.touchShape();
}

bool RvTrkMatteEffectTrack::getEnableDrawPathSizeLimit() const
{
    return nativeAs<NativeMatteTrack>().limitedToBox;
}

void RvTrkMatteEffectTrack::setMatteBlendMode(RvMatteBlendMode mode)
{
    auto& matte = nativeAs<NativeMatteTrack>();
    calls::change("RvTrkMatteEffectTrack::setMatteBlendMode", matte, mode);
    matte.blendMode = mode;
}

RvMatteBlendMode RvTrkMatteEffectTrack::getMatteBlendMode() const
{
    return static_cast<RvMatteBlendMode>(nativeAs<NativeMatteTrack>().blendMode);
}

} // namespace qrvkp
