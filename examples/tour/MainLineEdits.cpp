// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"

#include "tour/TourTimeline.h"

#include <rvkpcore/RvKpTrack.h>

#include <algorithm>

namespace {

/// A part of a length, at least 1 ms, so that a short clip is changed as well.
long long quarterOf(long long duration)
{
    return std::max(1LL, duration / 4);
}

FrameworkRef<qrvkp::RvKpTrack> videoClip(const TourTimeline& tour, int position)
{
    return referenceAs<qrvkp::RvKpTrack>(tour.clip(position));
}

/// Lets a clip and its group last `duration` ms.
bool setClipDuration(const TourTimeline& tour, int position, long long duration)
{
    return changed(tour.clip(position), [&](auto& clip) { clip.setDuration(duration); }) &&
           changed(tour.group(position), [&](auto& group) { group.setDuration(duration); });
}

bool appendVideo(TourTimeline& tour)
{
    return tour.insertClip(tour.newVideo(1), tour.clipCount());
}

bool insertPicture(TourTimeline& tour)
{
    return tour.insertClip(tour.newPicture(0, 2000), 0);
}

bool splitSecondClip(TourTimeline& tour)
{
    const auto first = videoClip(tour, 1);
    if (!first)
        return false;
    const long long whole = first->getOriginDuration();
    const long long half = whole / 2;
    FrameworkRef<qrvkp::RvIMediaTrack> second(qrvkp::RvKpTrack::create(
        first->getTrackSource(), 0, whole - half, first->getFileStartTime() + half));
    return setClipDuration(tour, 1, half) && tour.insertClip(second, 2);
}

bool trimHeadOfThirdClip(TourTimeline& tour)
{
    const auto clip = videoClip(tour, 2);
    if (!clip)
        return false;
    const long long cut = quarterOf(clip->getOriginDuration());
    clip->setFileStartTime(clip->getFileStartTime() + cut);
    return setClipDuration(tour, 2, clip->getOriginDuration() - cut);
}

bool trimTailOfFourthClip(TourTimeline& tour)
{
    const auto clip = tour.clip(3);
    if (!clip)
        return false;
    const long long duration = clip->getOriginDuration();
    return setClipDuration(tour, 3, duration - quarterOf(duration));
}

bool moveLastClipToFront(TourTimeline& tour)
{
    const auto group = tour.group(tour.clipCount() - 1);
    return tour.timeline().changeGroupPosition(group.get(), 0);
}

bool deleteThirdClip(TourTimeline& tour)
{
    return tour.timeline().removeGroup(tour.group(2).get());
}

bool replaceSecondClip(TourTimeline& tour)
{
    return tour.timeline().removeGroup(tour.group(1).get()) && tour.insertClip(tour.newVideo(1), 1);
}

bool fadeFirstClip(TourTimeline& tour)
{
    return changed(tour.clip(0), [](auto& clip) { clip.setAlpha(0.7F); });
}

bool fadeAndMoveFirstClip(TourTimeline& tour)
{
    const auto group = tour.group(0);
    return changed(tour.clip(0), [](auto& clip) { clip.setAlpha(0.3F); }) &&
           tour.timeline().changeGroupPosition(group.get(), tour.clipCount() - 1);
}

// The group keeps the length that the clip has at speed 1: that is the length which the bridge
// gives to the group of a changed clip.
bool speedUpSecondClip(TourTimeline& tour)
{
    return changed(tour.clip(1), [](auto& clip) { clip.setSpeed(2.0F); });
}

bool placeThirdClip(TourTimeline& tour)
{
    return changed(tour.clip(2), [](auto& clip) {
        clip.setScale(0.75F);
        clip.setRotation(15.0F);
        clip.setPosition(700.5F, 400.25F);
    });
}

bool stretchFirstClip(TourTimeline& tour)
{
    return changed(tour.clip(0), [](auto& clip) {
        clip.setWidthAndHeight(clip.getWidth() * 2.0F, clip.getHeight() * 0.75F);
    });
}

bool changeCanvasSize(TourTimeline& tour)
{
    tour.application().getRvKpConfig()->setKpSize(1280.0F, 720.0F);
    return true;
}

} // namespace

TourEdits mainLineEdits()
{
    return {
        {"append a video clip", &appendVideo},
        {"insert a picture clip at the front", &insertPicture},
        {"split the second clip", &splitSecondClip},
        {"trim the head of the third clip", &trimHeadOfThirdClip},
        {"trim the tail of the fourth clip", &trimTailOfFourthClip},
        {"move the last clip to the front", &moveLastClipToFront},
        {"delete the third clip", &deleteThirdClip},
        {"replace the second clip by a video", &replaceSecondClip},
        {"fade the first clip", &fadeFirstClip},
        {"play the second clip at double speed", &speedUpSecondClip},
        {"scale, turn and place the third clip", &placeThirdClip},
        {"stretch the first clip", &stretchFirstClip},
        {"fade the first clip and move it to the end", &fadeAndMoveFirstClip},
        {"change the size of the canvas", &changeCanvasSize},
    };
}
