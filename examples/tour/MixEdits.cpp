// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"

#include "tour/TourTimeline.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <algorithm>

namespace {

template <class Change>
bool changePicture(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qrvkp::RvSpriteTrack>(MixTrack::OverlayPicture), change);
}

template <class Change>
bool changeVideo(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qrvkp::RvKpTrack>(MixTrack::OverlayVideo), change);
}

template <class Change>
bool changeSound(const TourTimeline& tour, Change change)
{
    return changed(tour.mixTrack<qrvkp::RvAudioTrack>(MixTrack::Sound), change);
}

/// Begins a quarter of the track later in its file; the end stays.
template <class Track>
void trimHead(Track& track)
{
    const long long cut = std::max(1LL, track.getOriginDuration() / 4);
    track.setFileStartTime(track.getFileStartTime() + cut);
    track.setDuration(track.getOriginDuration() - cut);
    track.setStartPos(track.getStartPos() + cut);
}

bool overlayPicture(TourTimeline& tour)
{
    const auto track = tour.newPicture(0, 1500);
    if (!tour.addMixTrack(MixTrack::OverlayPicture, track.get()))
        return false;
    track->setStartPos(500);
    track->setZOrder(10);
    track->setTag("logo");
    return true;
}

bool overlayVideo(TourTimeline& tour)
{
    const auto track = tour.newVideo(1);
    if (!tour.addMixTrack(MixTrack::OverlayVideo, track.get()))
        return false;
    track->setZOrder(20);
    track->setTag("picture in picture");
    return true;
}

bool fadePicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) { track.setAlpha(0.5F); });
}

bool scalePicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) { track.setScale(1.5F); });
}

bool turnPicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) { track.setRotation(30.0F); });
}

bool placePicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) { track.setPosition(100.0F, 620.0F); });
}

bool movePicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) { track.setStartPos(1200); });
}

bool trimVideo(TourTimeline& tour)
{
    return changeVideo(tour, [](auto& track) { trimHead(track); });
}

bool speedUpVideo(TourTimeline& tour)
{
    return changeVideo(tour, [](auto& track) { track.setSpeed(2.0F); });
}

// A tag is no part of what records compare: were it changed alone, the track would count as the
// same and an undo would leave it its new name. So the name changes together with the order.
bool renameAndRaisePicture(TourTimeline& tour)
{
    return changePicture(tour, [](auto& track) {
        track.setTag("水印");
        track.setZOrder(30);
    });
}

bool addSound(TourTimeline& tour)
{
    const auto track = adopt(qrvkp::RvAudioTrack::create(tour.media().sounds.front(), 250, -1, 0));
    return tour.addMixTrack(MixTrack::Sound, track.get());
}

bool trimSound(TourTimeline& tour)
{
    return changeSound(tour, [](auto& track) { trimHead(track); });
}

bool moveSound(TourTimeline& tour)
{
    return changeSound(tour, [](auto& track) { track.setStartPos(1800); });
}

bool slowSoundDown(TourTimeline& tour)
{
    return changeSound(tour, [](auto& track) { track.setSpeed(0.8F); });
}

} // namespace

TourEdits mixEdits()
{
    return {
        {"overlay a picture", &overlayPicture},
        {"overlay a video", &overlayVideo},
        {"fade the overlay picture", &fadePicture},
        {"scale the overlay picture", &scalePicture},
        {"turn the overlay picture", &turnPicture},
        {"place the overlay picture elsewhere", &placePicture},
        {"move the overlay picture in time", &movePicture},
        {"trim the head of the overlay video", &trimVideo},
        {"play the overlay video at double speed", &speedUpVideo},
        {"rename and raise the overlay picture", &renameAndRaisePicture},
        {"add a sound", &addSound},
        {"trim the head of the sound", &trimSound},
        {"move the sound in time", &moveSound},
        {"play the sound slower", &slowSoundDown},
    };
}
