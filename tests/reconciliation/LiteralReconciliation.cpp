// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LiteralReconciliation.h"

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTrackFactory.h>

#include <algorithm>
#include <typeinfo>

using norvel::ReturnChanged;
using norvel::ReturnInvalid;
using norvel::ReturnNotFound;
using norvel::ReturnSame;
using norvel::RvAttribute;
using norvel::RvAttributeUtility;
using norvel::RvReturnVlaue;
using norvel::RvTimeLineAttribute;
using norvel::RvTrackFactory;
using qrvkp::RvITrack;
using qrvkp::RvKpGroup;
using qrvkp::RvKpTimeLine;

namespace {

/// Releases every reference of a list.
template <class Object>
void releaseAll(const std::vector<Object*>& list)
{
    for (Object* object : list)
        object->release();
}

bool isMedia(const RvAttribute* record)
{
    return record != nullptr && (record->type == 2 || record->type == 3);
}

bool mediaStandsBeforeTheRest(const RvAttribute* left, const RvAttribute* right)
{
    return isMedia(left) && !isMedia(right);
}

bool contains(const std::vector<std::uint64_t>& kept, std::uint64_t uuid)
{
    return std::find(kept.begin(), kept.end(), uuid) != kept.end();
}

} // namespace

RvReturnVlaue LiteralReconciliation::compare(RvAttribute* attribute,
                                             const std::vector<RvAttribute*>& list)
{
    if (attribute == nullptr)
        return ReturnInvalid;
    if (list.empty())
        return ReturnNotFound;
    for (RvAttribute* element : list) {
        if (element == nullptr) // not expected in a list: passed over
            continue;
        if (typeid(*element) != typeid(*attribute))
            continue;
        const RvReturnVlaue answer = attribute->compare(element);
        if (answer == ReturnSame || answer == ReturnChanged)
            return answer;
    }
    return ReturnNotFound;
}

RvKpGroup* LiteralReconciliation::getGroup(RvKpTimeLine* timeline, std::uint64_t id)
{
    if (timeline == nullptr)
        return nullptr;
    RvKpGroup* found = nullptr;
    const std::vector<RvKpGroup*> groups = timeline->getGroups();
    for (RvKpGroup* group : groups) {
        const std::vector<RvITrack*> tracks = group->getTracks();
        if (!tracks.empty() && tracks.front()->getTrackID() == id) {
            group->retain();
            found = group;
        }
        releaseAll(tracks);
        if (found != nullptr)
            break;
    }
    releaseAll(groups);
    return found;
}

RvITrack* LiteralReconciliation::getMainTrack(RvKpTimeLine* timeline, std::uint64_t id)
{
    if (timeline == nullptr)
        return nullptr;
    RvITrack* found = nullptr;
    const std::vector<RvKpGroup*> groups = timeline->getGroups();
    for (RvKpGroup* group : groups) {
        const std::vector<RvITrack*> tracks = group->getTracks();
        const bool matches = !tracks.empty() && tracks.front()->getTrackID() == id;
        if (matches)
            found = RvTrackFactory::createTrack(tracks.front()->getContext(),
                                                tracks.front()->getTrackType());
        releaseAll(tracks);
        if (matches)
            break;
    }
    releaseAll(groups);
    return found;
}

RvITrack* LiteralReconciliation::getMixTrack(RvKpTimeLine* timeline, std::uint64_t id)
{
    if (timeline == nullptr)
        return nullptr;
    RvITrack* found = nullptr;
    const std::vector<RvITrack*> tracks = timeline->getMixTracks();
    for (RvITrack* track : tracks) {
        if (track->getTrackID() == id) {
            found = RvTrackFactory::createTrack(track->getContext(), track->getTrackType());
            break;
        }
    }
    releaseAll(tracks);
    return found;
}

void LiteralReconciliation::updateTimeLine(RvKpTimeLine* timeline,
                                           const RvTimeLineAttribute* oldDescription,
                                           const RvTimeLineAttribute* newDescription)
{
    if (timeline == nullptr)
        return;

    std::vector<RvAttribute*> main = newDescription->mainAttribs;
    std::vector<RvAttribute*> mix = newDescription->mixAttribs;
    std::stable_sort(main.begin(), main.end(), mediaStandsBeforeTheRest);
    std::stable_sort(mix.begin(), mix.end(), mediaStandsBeforeTheRest);

    std::vector<std::uint64_t> kept;

    for (std::size_t i = 0; i < main.size(); ++i) {
        if (!isMedia(main[i]))
            break;
        const RvReturnVlaue result =
            updateMainMediaTrack(timeline, oldDescription, main[i], static_cast<int>(i));
        if (result == ReturnSame || result == ReturnChanged)
            kept.push_back(main[i]->uuid);
    }

    std::size_t j = 0;
    for (; j < mix.size(); ++j) {
        if (!isMedia(mix[j]))
            break;
        const RvReturnVlaue result = updateMixMediaTrack(timeline, oldDescription, mix[j]);
        if (result == ReturnSame || result == ReturnChanged)
            kept.push_back(mix[j]->uuid);
    }

    for (; j < mix.size(); ++j) {
        switch (compare(mix[j], oldDescription->mixAttribs)) {
        case ReturnChanged: {
            RvITrack* track = getMixTrack(timeline, mix[j]->uuid);
            if (track != nullptr) {
                RvAttributeUtility::updateTrack(timeline, track, mix[j]);
                track->release();
            }
            kept.push_back(mix[j]->uuid);
            break;
        }
        case ReturnNotFound: {
            RvITrack* track = RvAttributeUtility::createTrack(timeline, mix[j]);
            if (track != nullptr) {
                timeline->addMixTrack(track);
                track->release();
            }
            break;
        }
        case ReturnSame:
            kept.push_back(mix[j]->uuid);
            break;
        default:
            break;
        }
    }

    for (const RvAttribute* record : oldDescription->mainAttribs) {
        if (record == nullptr) // not expected in a list: passed over
            continue;
        if (contains(kept, record->uuid))
            continue;
        RvKpGroup* group = getGroup(timeline, record->uuid);
        timeline->removeGroup(group); // also without a group
        if (group != nullptr)
            group->release();
    }

    for (const RvAttribute* record : oldDescription->mixAttribs) {
        if (record == nullptr) // not expected in a list: passed over
            continue;
        if (contains(kept, record->uuid))
            continue;
        RvITrack* track = getMixTrack(timeline, record->uuid);
        if (track != nullptr) {
            timeline->removeMixTrack(track);
            track->release();
        }
    }

    timeline->invalidate();
}

RvReturnVlaue LiteralReconciliation::updateMainMediaTrack(RvKpTimeLine* timeline,
                                                          const RvTimeLineAttribute* old,
                                                          RvAttribute* record, int position)
{
    switch (compare(record, old->mainAttribs)) {
    case ReturnSame: {
        RvKpGroup* group = getGroup(timeline, record->uuid);
        if (group == nullptr)
            return ReturnSame;
        timeline->changeGroupPosition(group, position);
        group->release();
        return ReturnSame;
    }
    case ReturnChanged: {
        RvKpGroup* group = getGroup(timeline, record->uuid);
        if (group == nullptr)
            return ReturnChanged;
        group->setDuration(record->duration);
        timeline->changeGroupPosition(group, position);
        const std::vector<RvITrack*> tracks = group->getTracks();
        RvAttributeUtility::updateTrack(timeline, tracks.front(), record);
        releaseAll(tracks);
        group->release();
        return ReturnChanged;
    }
    case ReturnNotFound: {
        RvITrack* track = RvAttributeUtility::createTrack(timeline, record);
        if (track == nullptr)
            return ReturnNotFound;
        RvKpGroup* group = RvKpGroup::create(record->duration);
        group->addTrack(track);
        timeline->insertGroup(group, position);
        track->release();
        group->release();
        return ReturnNotFound;
    }
    default:
        return ReturnInvalid;
    }
}

RvReturnVlaue LiteralReconciliation::updateMixMediaTrack(RvKpTimeLine* timeline,
                                                         const RvTimeLineAttribute* old,
                                                         RvAttribute* record)
{
    switch (compare(record, old->mixAttribs)) {
    case ReturnSame:
        return ReturnSame;
    case ReturnChanged: {
        RvITrack* track = getMixTrack(timeline, record->uuid);
        if (track == nullptr)
            return ReturnChanged;
        RvAttributeUtility::updateTrack(timeline, track, record);
        track->release();
        return ReturnChanged;
    }
    case ReturnNotFound: {
        RvITrack* track = RvAttributeUtility::createTrack(timeline, record);
        if (track == nullptr)
            return ReturnNotFound;
        timeline->addMixTrack(track);
        track->release();
        return ReturnNotFound;
    }
    default:
        return ReturnInvalid;
    }
}
