// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/TimelineIndex.h>

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTrackFactory.h>

#include <optional>

namespace norvel {

namespace {

std::optional<std::uint64_t> firstTrackId(const qrvkp::RvKpGroup& group)
{
    const auto tracks = adopt(group.getTracks());
    if (tracks.empty())
        return std::nullopt;
    return tracks.front()->getTrackID();
}

Reference<qrvkp::RvITrack> newWrapper(const qrvkp::RvITrack& track)
{
    return adopt(RvTrackFactory::createTrack(track.getContext(), track.getTrackType()));
}

} // namespace

ObjectIndex<qrvkp::RvKpGroup>& TimelineIndex::groups()
{
    if (m_timeline && !m_groupsWalked) {
        m_groupsWalked = true;
        m_groups.fill(adopt(m_timeline->getGroups()), firstTrackId);
    }
    return m_groups;
}

ObjectIndex<qrvkp::RvITrack>& TimelineIndex::mixTracks()
{
    if (m_timeline && !m_mixTracksWalked) {
        m_mixTracksWalked = true;
        m_mixTracks.fill(adopt(m_timeline->getMixTracks()),
                         [](const qrvkp::RvITrack& track) -> std::optional<std::uint64_t> {
                             return track.getTrackID();
                         });
    }
    return m_mixTracks;
}

Reference<qrvkp::RvKpGroup> TimelineIndex::group(std::uint64_t id)
{
    const auto found = groups().find(id);
    if (found.needsWalk)
        return adopt(RvAttributeUtility::getGroup(m_timeline, id));
    if (found.object)
        found.object->retain();
    return adopt(found.object);
}

Reference<qrvkp::RvITrack> TimelineIndex::mainTrack(std::uint64_t id)
{
    const auto found = groups().find(id);
    if (found.needsWalk)
        return adopt(RvAttributeUtility::getMainTrack(m_timeline, id));
    if (!found.object)
        return nullptr;
    const auto tracks = adopt(found.object->getTracks());
    return newWrapper(*tracks.front());
}

Reference<qrvkp::RvITrack> TimelineIndex::mixTrack(std::uint64_t id)
{
    const auto found = mixTracks().find(id);
    if (found.needsWalk)
        return adopt(RvAttributeUtility::getMixTrack(m_timeline, id));
    return found.object ? newWrapper(*found.object) : nullptr;
}

void TimelineIndex::groupInserted(qrvkp::RvKpGroup& group, const qrvkp::RvITrack& firstTrack)
{
    if (m_groupsWalked)
        m_groups.add(firstTrack.getTrackID(), group);
}

void TimelineIndex::groupRemoved(std::uint64_t id)
{
    m_groups.remove(id);
}

void TimelineIndex::mixTrackAdded(qrvkp::RvITrack& track)
{
    if (m_mixTracksWalked)
        m_mixTracks.add(track.getTrackID(), track);
}

void TimelineIndex::mixTrackRemoved(std::uint64_t id)
{
    m_mixTracks.remove(id);
}

} // namespace norvel
