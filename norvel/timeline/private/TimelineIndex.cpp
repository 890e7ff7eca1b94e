// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/TimelineIndex.h>

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTrackFactory.h>

namespace norvel {

TimelineIndex::Place* TimelineIndex::Places::known(std::uint64_t id)
{
    if (auto* entry = m_walked.find(id)) {
        const auto* next = entry + 1;
        if (next != m_walked.end() && next->id == id)
            entry->value.needsWalk = true;
        return &entry->value;
    }
    const auto added = m_added.find(id);
    return added == m_added.end() ? nullptr : &added->second;
}

void TimelineIndex::Places::add(std::uint64_t id, const Place& place)
{
    if (Place* first = known(id))
        first->needsWalk = true;
    else
        m_added.emplace(id, place);
}

void TimelineIndex::Places::remove(std::uint64_t id)
{
    if (Place* first = known(id))
        first->needsWalk = true;
}

const TimelineIndex::Place* TimelineIndex::Places::find(std::uint64_t id)
{
    return known(id);
}

TimelineIndex::Place TimelineIndex::placeOf(const qrvkp::RvITrack& track, qrvkp::RvKpGroup* group)
{
    return {group, track.getContext(), track.getTrackType(), false};
}

TimelineIndex::Places& TimelineIndex::mainPlaces()
{
    if (m_mainWalked || !m_timeline)
        return m_main;
    m_mainWalked = true;
    auto groups = adopt(m_timeline->getGroups());
    m_main.reserve(groups.size());
    groups.consume([this](qrvkp::RvKpGroup* group) {
        const auto tracks = adopt(group->getTracks());
        if (!tracks.empty())
            m_main.fill(tracks.front()->getTrackID(), placeOf(*tracks.front(), group));
    });
    return m_main;
}

TimelineIndex::Places& TimelineIndex::mixPlaces()
{
    if (m_mixWalked || !m_timeline)
        return m_mix;
    m_mixWalked = true;
    auto tracks = adopt(m_timeline->getMixTracks());
    m_mix.reserve(tracks.size());
    tracks.consume([this](const qrvkp::RvITrack* track) {
        m_mix.fill(track->getTrackID(), placeOf(*track, nullptr));
    });
    return m_mix;
}

Reference<qrvkp::RvKpGroup> TimelineIndex::group(std::uint64_t id)
{
    const Place* place = mainPlaces().find(id);
    if (!place)
        return nullptr;
    if (place->needsWalk)
        return adopt(RvAttributeUtility::getGroup(m_timeline, id));
    place->group->retain();
    return adopt(place->group);
}

Reference<qrvkp::RvITrack> TimelineIndex::mainTrack(std::uint64_t id)
{
    const Place* place = mainPlaces().find(id);
    if (!place)
        return nullptr;
    return adopt(place->needsWalk ? RvAttributeUtility::getMainTrack(m_timeline, id)
                                  : RvTrackFactory::createTrack(place->context, place->trackType));
}

Reference<qrvkp::RvITrack> TimelineIndex::mixTrack(std::uint64_t id)
{
    const Place* place = mixPlaces().find(id);
    if (!place)
        return nullptr;
    return adopt(place->needsWalk ? RvAttributeUtility::getMixTrack(m_timeline, id)
                                  : RvTrackFactory::createTrack(place->context, place->trackType));
}

void TimelineIndex::groupInserted(qrvkp::RvKpGroup& group, const qrvkp::RvITrack& firstTrack)
{
    if (m_mainWalked)
        m_main.add(firstTrack.getTrackID(), placeOf(firstTrack, &group));
}

void TimelineIndex::groupRemoved(std::uint64_t id)
{
    m_main.remove(id);
}

void TimelineIndex::mixTrackAdded(const qrvkp::RvITrack& track)
{
    if (m_mixWalked)
        m_mix.add(track.getTrackID(), placeOf(track, nullptr));
}

void TimelineIndex::mixTrackRemoved(std::uint64_t id)
{
    m_mix.remove(id);
}

} // namespace norvel
