// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/private/AttributeIndex.h>
#include <norvel/timeline/private/TimelineIndex.h>
#include <norvel/timeline/private/TrackTypes.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace norvel {

namespace {

/// The identities that survive a reconciliation, main and mix together.
class KeptIds
{
public:
    explicit KeptIds(std::size_t expected) { m_ids.reserve(expected); }
    void add(std::uint64_t id) { m_ids.add(id, {}); }
    bool contains(std::uint64_t id) { return m_ids.find(id) != nullptr; }

private:
    struct Nothing
    {
    };
    IdTable<Nothing> m_ids;
};

bool isMedia(const RvAttribute* record)
{
    return record && isMediaType(record->type);
}

/// Calls `function` with the media records of a description's list, and then with the others, each
/// in the given order.
template <class Function>
void mediaFirst(const std::vector<RvAttribute*>& records, const Function& function)
{
    std::vector<RvAttribute*> others;
    for (RvAttribute* record : records) {
        if (isMedia(record))
            function(record);
        else
            others.push_back(record);
    }
    for (RvAttribute* record : others)
        function(record);
}

bool isKnown(RvReturnVlaue result)
{
    return result == ReturnSame || result == ReturnChanged;
}

/// Puts a created track over the main line.
void addToMix(TimelineIndex& timeline, qrvkp::RvITrack* track)
{
    if (timeline.timeline()->addMixTrack(track))
        timeline.mixTrackAdded(*track);
}

/// Puts a created track on the main line, in a group of its own.
void insertIntoMain(TimelineIndex& timeline, qrvkp::RvITrack* track, long long duration,
                    int position)
{
    const auto group = adopt(qrvkp::RvKpGroup::create(duration));
    if (!group)
        return;
    const bool added = group->addTrack(track);
    if (timeline.timeline()->insertGroup(group.get(), position) && added)
        timeline.groupInserted(*group, *track);
}

/// Removes the groups of the old description that were not kept. An identity without a group is
/// handed to the framework all the same, as null, which it bears.
void removeStaleGroups(TimelineIndex& timeline, const AttributeIndex& oldMain, KeptIds& kept)
{
    for (const std::uint64_t id : oldMain.ids()) {
        if (kept.contains(id))
            continue;
        const auto group = timeline.group(id);
        timeline.timeline()->removeGroup(group.get());
        if (group)
            timeline.groupRemoved(id);
    }
}

void removeStaleMixTracks(TimelineIndex& timeline, const AttributeIndex& oldMix, KeptIds& kept)
{
    for (const std::uint64_t id : oldMix.ids()) {
        if (kept.contains(id))
            continue;
        if (const auto track = timeline.mixTrack(id)) {
            timeline.timeline()->removeMixTrack(track.get());
            timeline.mixTrackRemoved(id);
        }
    }
}

} // namespace

RvReturnVlaue RvAttributeUtility::compare(const RvAttribute* attribute,
                                          const std::vector<RvAttribute*>& list)
{
    return compareWithList(attribute, list);
}

void RvAttributeUtility::updateTimeLine(qrvkp::RvKpTimeLine* timeline,
                                        const RvTimeLineAttribute* oldDescription,
                                        const RvTimeLineAttribute* newDescription)
{
    if (!timeline)
        return;
    TimelineIndex index(timeline);
    AttributeIndex oldMain(oldDescription->mainAttribs);
    AttributeIndex oldMix(oldDescription->mixAttribs);
    KeptIds kept(newDescription->mainAttribs.size() + newDescription->mixAttribs.size());
    const auto keep = [&kept](const RvAttribute* record, RvReturnVlaue result) {
        if (isKnown(result))
            kept.add(record->uuid);
    };

    int position = 0;
    mediaFirst(newDescription->mainAttribs, [&](RvAttribute* record) {
        if (isMedia(record)) // what is no media has no place on the main line
            keep(record, updateMainMediaTrack(index, oldMain, record, position++));
    });
    mediaFirst(newDescription->mixAttribs, [&](RvAttribute* record) {
        keep(record, isMedia(record) ? updateMixMediaTrack(index, oldMix, record)
                                     : updateMixTrack(index, oldMix, record));
    });
    removeStaleGroups(index, oldMain, kept);
    removeStaleMixTracks(index, oldMix, kept);
    timeline->invalidate();
}

RvReturnVlaue RvAttributeUtility::updateMainMediaTrack(TimelineIndex& timeline,
                                                       AttributeIndex& oldMain, RvAttribute* record,
                                                       int position)
{
    const RvReturnVlaue result = oldMain.compare(record);
    switch (result) {
    case ReturnSame:
        if (const auto group = timeline.group(record->uuid))
            timeline.timeline()->changeGroupPosition(group.get(), position);
        return result;
    case ReturnChanged:
        if (const auto group = timeline.group(record->uuid)) {
            group->setDuration(record->duration);
            timeline.timeline()->changeGroupPosition(group.get(), position);
            const auto tracks = adopt(group->getTracks());
            updateTrack(timeline, tracks.front(), record);
        }
        return result;
    case ReturnNotFound:
        if (const auto track = adopt(createTrack(timeline, record)))
            insertIntoMain(timeline, track.get(), record->duration, position);
        return result;
    default:
        return ReturnInvalid;
    }
}

RvReturnVlaue RvAttributeUtility::updateMixMediaTrack(TimelineIndex& timeline,
                                                      AttributeIndex& oldMix, RvAttribute* record)
{
    return updateMixTrack(timeline, oldMix, record);
}

RvReturnVlaue RvAttributeUtility::updateMixTrack(TimelineIndex& timeline, AttributeIndex& oldMix,
                                                 RvAttribute* record)
{
    const RvReturnVlaue result = oldMix.compare(record);
    switch (result) {
    case ReturnSame:
        return result;
    case ReturnChanged:
        if (const auto track = timeline.mixTrack(record->uuid))
            updateTrack(timeline, track.get(), record);
        return result;
    case ReturnNotFound:
        if (const auto track = adopt(createTrack(timeline, record)))
            addToMix(timeline, track.get());
        return result;
    default:
        return ReturnInvalid;
    }
}

} // namespace norvel
