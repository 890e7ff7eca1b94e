// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/private/AttributeIndex.h>
#include <norvel/timeline/private/RecordPrefetch.h>
#include <norvel/timeline/private/TimelineIndex.h>
#include <norvel/timeline/private/TrackTypes.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace norvel {

namespace {

bool isMedia(const RvAttribute* record)
{
    return record && isMediaType(record->type);
}

bool isKnown(RvReturnVlaue result)
{
    return result == ReturnSame || result == ReturnChanged;
}

/// Keeps the identity of a new record. A record of a class of the host's own may be the same track
/// as an old one of another uuid: then the other list may have the one that is kept.
void keep(AttributeIndex& list, AttributeIndex& otherList, std::uint64_t uuid)
{
    if (!list.keep(uuid))
        otherList.keep(uuid);
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

/// Removes the groups of the old description that are not kept, as a main or as a mix track. An
/// identity without a group is handed to the framework all the same, as null, which it bears.
void removeStaleGroups(TimelineIndex& timeline, AttributeIndex& oldMain, AttributeIndex& oldMix)
{
    for (const std::uint64_t id : oldMain.ids()) {
        if (oldMain.isKept(id) || oldMix.isKept(id))
            continue;
        const auto group = timeline.group(id);
        timeline.timeline()->removeGroup(group.get());
        if (group)
            timeline.groupRemoved(id);
    }
}

/// Removes the mix tracks of the old description that are not kept, as a mix or as a main track.
void removeStaleMixTracks(TimelineIndex& timeline, AttributeIndex& oldMain, AttributeIndex& oldMix)
{
    for (const std::uint64_t id : oldMix.ids()) {
        if (oldMix.isKept(id) || oldMain.isKept(id))
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
    int position = 0; // among the media records: nothing else has a place on the main line
    const auto& mainRecords = newDescription->mainAttribs;
    for (std::size_t i = 0; i < mainRecords.size(); ++i) {
        prefetchRecord(mainRecords, i, comparedLines);
        prefetchRecord(oldDescription->mainAttribs, i, comparedLines);
        RvAttribute* record = mainRecords[i];
        if (isMedia(record) && isKnown(updateMainMediaTrack(index, oldMain, record, position++)))
            keep(oldMain, oldMix, record->uuid);
    }

    // The media come first, then the others. Comparing touches no track, so one walk compares all
    // of them and leaves to a second one only the others that differ.
    std::vector<std::pair<RvAttribute*, RvReturnVlaue>> others;
    const auto& mixRecords = newDescription->mixAttribs;
    for (std::size_t i = 0; i < mixRecords.size(); ++i) {
        // An old record mostly stands at the place of the new one.
        prefetchRecord(mixRecords, i, comparedLines);
        prefetchRecord(oldDescription->mixAttribs, i, comparedLines);
        RvAttribute* record = mixRecords[i];
        const bool media = isMedia(record);
        const RvReturnVlaue result =
            media ? updateMixMediaTrack(index, oldMix, record) : oldMix.compare(record);
        if (isKnown(result))
            keep(oldMix, oldMain, record->uuid);
        if (!media && (result == ReturnChanged || result == ReturnNotFound))
            others.emplace_back(record, result);
    }
    for (const auto& [record, result] : others)
        updateMixTrack(index, record, result);

    removeStaleGroups(index, oldMain, oldMix);
    removeStaleMixTracks(index, oldMain, oldMix);
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
    const RvReturnVlaue result = oldMix.compare(record);
    updateMixTrack(timeline, record, result);
    return result;
}

void RvAttributeUtility::updateMixTrack(TimelineIndex& timeline, RvAttribute* record,
                                        RvReturnVlaue result)
{
    if (result == ReturnChanged) {
        if (const auto track = timeline.mixTrack(record->uuid))
            updateTrack(timeline, track.get(), record);
    } else if (result == ReturnNotFound) {
        if (const auto track = adopt(createTrack(timeline, record)))
            addToMix(timeline, track.get());
    }
}

} // namespace norvel
