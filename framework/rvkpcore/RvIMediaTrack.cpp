// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvIMediaTrack.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/NativeTrack.h>

namespace qrvkp {

RvIMediaTrack::~RvIMediaTrack() = default;

float RvIMediaTrack::getWidth() const
{
    return nativeAs<NativeMediaTrack>().width;
}

float RvIMediaTrack::getHeight() const
{
    return nativeAs<NativeMediaTrack>().height;
}

void RvIMediaTrack::setWidthAndHeight(float width, float height)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::record("RvIMediaTrack::setWidthAndHeight", media.id, width, height);
    media.width = width;
    media.height = height;
}

float RvIMediaTrack::getPositionX() const
{
    return nativeAs<NativeMediaTrack>().positionX;
}

float RvIMediaTrack::getPositionY() const
{
    return nativeAs<NativeMediaTrack>().positionY;
}

void RvIMediaTrack::setPosition(float x, float y)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::record("RvIMediaTrack::setPosition", media.id, x, y);
    media.positionX = x;
    media.positionY = y;
}

void RvIMediaTrack::setCenter(float x, float y)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::record("RvIMediaTrack::setCenter", media.id, x, y);
    media.positionX = x;
    media.positionY = y;
}

float RvIMediaTrack::getScale() const
{
    return nativeAs<NativeMediaTrack>().scale;
}

void RvIMediaTrack::setScale(float scale)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::record("RvIMediaTrack::setScale", media.id, scale);
    media.scale = scale;
}

float RvIMediaTrack::getRotation() const
{
    return nativeAs<NativeMediaTrack>().rotation;
}

void RvIMediaTrack::setRotation(float rotation)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::record("RvIMediaTrack::setRotation", media.id, rotation);
    media.rotation = rotation;
}

} // namespace qrvkp
