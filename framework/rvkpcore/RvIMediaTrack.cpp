// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvIMediaTrack.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/NativeTrack.h>

namespace qrvkp {

RvIMediaTrack::~RvIMediaTrack() = default;

void RvIMediaTrack::setWidthAndHeight(float width, float height)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::change("RvIMediaTrack::setWidthAndHeight", media, width, height);
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
    calls::change("RvIMediaTrack::setPosition", media, x, y);
    media.positionX = x;
    media.positionY = y;
}

void RvIMediaTrack::setCenter(float x, float y)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::change("RvIMediaTrack::setCenter", media, x, y);
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
    calls::change("RvIMediaTrack::setScale", media, scale);
    media.scale = scale;
}

float RvIMediaTrack::getRotation() const
{
    return nativeAs<NativeMediaTrack>().rotation;
}

void RvIMediaTrack::setRotation(float rotation)
{
    auto& media = nativeAs<NativeMediaTrack>();
    calls::change("RvIMediaTrack::setRotation", media, rotation);
    media.rotation = rotation;
}

} // namespace qrvkp
