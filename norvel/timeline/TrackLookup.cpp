// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/RvTrackFactory.h>
#include <norvel/timeline/private/Reference.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <algorithm>

namespace norvel {

std::string RvAttributeUtility::_sCacheDir;
std::string RvAttributeUtility::_sCurrentCacheLiquefyDir;

namespace {

/// The first track of a group with a reference of its own, or null.
Reference<qrvkp::RvITrack> firstTrack(const qrvkp::RvKpGroup& group)
{
    const auto tracks = adopt(group.getTracks());
    if (tracks.empty())
        return nullptr;
    tracks.front()->retain();
    return adopt(tracks.front());
}

} // namespace

qrvkp::RvKpGroup* RvAttributeUtility::getGroup(qrvkp::RvKpTimeLine* timeline, std::size_t id)
{
    if (!timeline)
        return nullptr;
    const auto groups = adopt(timeline->getGroups());
    for (qrvkp::RvKpGroup* group : groups) {
        const auto track = firstTrack(*group);
        if (track && track->getTrackID() == id) {
            group->retain();
            return group;
        }
    }
    return nullptr;
}

qrvkp::RvITrack* RvAttributeUtility::getMainTrack(qrvkp::RvKpTimeLine* timeline, std::size_t id)
{
    const auto group = adopt(getGroup(timeline, id));
    if (!group)
        return nullptr;
    const auto track = firstTrack(*group);
    return RvTrackFactory::createTrack(track->getContext(), track->getTrackType());
}

std::vector<qrvkp::RvITrack*> RvAttributeUtility::getMainTracks(qrvkp::RvKpTimeLine* timeline)
{
    std::vector<qrvkp::RvITrack*> tracks;
    if (!timeline)
        return tracks;
    const auto groups = adopt(timeline->getGroups());
    for (const qrvkp::RvKpGroup* group : groups) {
        if (auto track = firstTrack(*group))
            tracks.push_back(track.release());
    }
    return tracks;
}

qrvkp::RvITrack* RvAttributeUtility::getMixTrack(qrvkp::RvKpTimeLine* timeline, std::size_t id)
{
    if (!timeline)
        return nullptr;
    const auto tracks = adopt(timeline->getMixTracks());
    const auto match =
        std::find_if(tracks.begin(), tracks.end(),
                     [id](const qrvkp::RvITrack* track) { return track->getTrackID() == id; });
    if (match == tracks.end())
        return nullptr;
    return RvTrackFactory::createTrack((*match)->getContext(), (*match)->getTrackType());
}

} // namespace norvel
