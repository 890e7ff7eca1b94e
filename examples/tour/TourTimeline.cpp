// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourTimeline.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <kparextension/RvARAttribsTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <algorithm>

namespace {

constexpr std::size_t FewestClips = 3;
constexpr long long PictureDuration = 2000; // ms

} // namespace

TourTimeline::TourTimeline(qrvkp::RvKpApplication& application, const TourMedia& media)
    : m_application(application)
    , m_media(media)
    , m_timeline(adopt(qrvkp::RvKpTimeLine::create()))
{
}

TourTimeline::~TourTimeline()
{
    player().setTimeLine(nullptr);
}

bool TourTimeline::build()
{
    if (!m_timeline || !buildMainLine() || !buildMixTracks())
        return false;
    player().setTimeLine(m_timeline.get());
    return true;
}

bool TourTimeline::buildMainLine()
{
    const std::size_t videos = std::max(FewestClips, m_media.videos.size());
    for (std::size_t i = 0; i < videos; ++i) {
        if (!insertClip(newVideo(i), clipCount()))
            return false;
    }
    for (std::size_t i = 1; i < m_media.pictures.size(); ++i) {
        if (!insertClip(newPicture(i, PictureDuration), clipCount()))
            return false;
    }
    return true;
}

bool TourTimeline::buildMixTracks()
{
    for (std::size_t i = 1; i < m_media.sounds.size(); ++i) {
        const auto sound = adopt(qrvkp::RvAudioTrack::create(m_media.sounds[i], 0, -1, 0));
        if (!sound || !m_timeline->addMixTrack(sound.get()))
            return false;
    }
    // The layer stands here from the start and is never taken away: a layer that an undo brings
    // back has another id than before, and none of its values.
    const auto layer =
        adopt(qkpar::RvARAttribsTrack::create("ar/title", 0, m_timeline->getDuration()));
    if (!addMixTrack(MixTrack::Layer, layer.get()))
        return false;
    layer->setScriptParam("title", "A tour");
    layer->setScriptParam("colour", "#ffffff");
    layer->setGlobalParamConfiguration("{\"font\": \"serif\"}");
    return true;
}

std::unique_ptr<norvel::RvTimeLineAttribute> TourTimeline::capture() const
{
    const qrvkp::RvKpConfig* config = m_application.getRvKpConfig();
    return std::unique_ptr<norvel::RvTimeLineAttribute>(
        norvel::RvAttributeUtility::createTimeLineAttribute(
            m_timeline.get(), config->getKpSizeWidth(), config->getKpSizeHeight()));
}

int TourTimeline::clipCount() const
{
    return static_cast<int>(adopt(m_timeline->getGroups()).size());
}

FrameworkRef<qrvkp::RvKpGroup> TourTimeline::group(int position) const
{
    auto groups = adopt(m_timeline->getGroups());
    if (position < 0 || position >= static_cast<int>(groups.size()))
        return nullptr;
    return std::move(groups[static_cast<std::size_t>(position)]);
}

FrameworkRef<qrvkp::RvIMediaTrack> TourTimeline::clip(int position) const
{
    const auto place = group(position);
    if (!place)
        return nullptr;
    auto tracks = adopt(place->getTracks());
    return tracks.empty() ? nullptr : referenceAs<qrvkp::RvIMediaTrack>(std::move(tracks.front()));
}

bool TourTimeline::insertClip(const FrameworkRef<qrvkp::RvIMediaTrack>& track, int position)
{
    if (!track)
        return false;
    const auto group = adopt(qrvkp::RvKpGroup::create(track->getOriginDuration()));
    return group && group->addTrack(track.get()) && m_timeline->insertGroup(group.get(), position);
}

bool TourTimeline::addMixTrack(MixTrack name, qrvkp::RvITrack* track)
{
    if (!m_timeline->addMixTrack(track))
        return false;
    m_mixTrackIds[name] = track->getTrackID();
    return true;
}

FrameworkRef<qrvkp::RvITrack> TourTimeline::findMixTrack(MixTrack name) const
{
    const auto id = m_mixTrackIds.find(name);
    if (id == m_mixTrackIds.end())
        return nullptr;
    return adopt(norvel::RvAttributeUtility::getMixTrack(m_timeline.get(), id->second));
}

bool TourTimeline::removeMixTrack(MixTrack name)
{
    return m_timeline->removeMixTrack(findMixTrack(name).get());
}

FrameworkRef<qrvkp::RvIMediaTrack> TourTimeline::newVideo(std::size_t index) const
{
    const std::string& path = m_media.videos[index % m_media.videos.size()];
    return FrameworkRef<qrvkp::RvIMediaTrack>(qrvkp::RvKpTrack::create(path, 0, -1, 0));
}

FrameworkRef<qrvkp::RvIMediaTrack> TourTimeline::newPicture(std::size_t index,
                                                            long long duration) const
{
    const std::string& path = m_media.pictures[index % m_media.pictures.size()];
    return FrameworkRef<qrvkp::RvIMediaTrack>(qrvkp::RvSpriteTrack::create(path, 0, duration));
}
