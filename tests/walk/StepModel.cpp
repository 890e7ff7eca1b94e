// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/StepModel.h"

#include "walk/RecordOracle.h"

#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <algorithm>

namespace {

using norvel::RvAttribute;

bool isMedia(const RvAttribute* record)
{
    return record->type == 2 || record->type == 3;
}

std::vector<RvAttribute*> mediaFirst(std::vector<RvAttribute*> records)
{
    std::stable_partition(records.begin(), records.end(), isMedia);
    return records;
}

void updateCommon(RvAttribute& live, const RvAttribute& record)
{
    live.startTime = record.startTime;
    live.duration = record.duration;
    live.uuid = record.uuid;
    live.zOrder = record.zOrder;
    live.alpha = record.alpha;
    live.speed = record.speed;
    live.auxText = record.auxText;
}

void updateMedia(norvel::RvMediaAttribute& live, const norvel::RvMediaAttribute& record)
{
    live.width = record.width;
    live.height = record.height;
    live.positionX = record.positionX;
    live.positionY = record.positionY;
    live.scale = record.scale;
    live.rotation = record.rotation;
    if (record.type == 3)
        live.fileStartTime = record.fileStartTime;
}

/// Parameters are set one by one: those that the record does not name stay.
template <class Map>
void addTo(Map& live, const Map& record)
{
    for (const auto& [key, value] : record)
        live[key] = value;
}

void updateAR(norvel::RvARAttribute& live, const norvel::RvARAttribute& record)
{
    addTo(live.scriptParams, record.scriptParams);
    live.globalParamConfiguration = record.globalParamConfiguration;
}

void updateFilter(norvel::RvARFilterAttribute& live, const norvel::RvARFilterAttribute& record)
{
    addTo(live.floatParams, record.floatParams);
    for (const auto& [face, params] : record.faceFloatParams)
        addTo(live.faceFloatParams[face], params);
    addTo(live.arFacePlists, record.arFacePlists);
}

void updateBeauty(norvel::RvARBeautyAttribute& live, const norvel::RvARBeautyAttribute& record)
{
    live.beautyType = record.beautyType;
    live.enableBeautyGenderDistinction = record.enableBeautyGenderDistinction;
    live.applyGenderToAR = record.applyGenderToAR;
    live.coeffientParameterConfig = record.coeffientParameterConfig;
    live.allFaceBeautyParam = record.allFaceBeautyParam;
    live.allBeautyAnattaForFaceControls = record.allBeautyAnattaForFaceControls;
    live.manualLongLegEnable = record.manualLongLegEnable;
    live.manualLongLegRange = record.manualLongLegRange;
    live.manualSlimHeadParam = record.manualSlimHeadParam;
    live.mapPointsData = record.mapPointsData;
    if (record.beautyMaskFaceId < 1)
        return; // a mask can be put on, never be taken off
    live.beautyMaskFaceId = record.beautyMaskFaceId;
    live.beautyMaskBrushType = record.beautyMaskBrushType;
    live.beautyActiveMaskImage = record.beautyActiveMaskImage;
}

void updateMakeup(norvel::RvARMakeupAttribute& live, const norvel::RvARMakeupAttribute& record)
{
    live.suitAlpha = record.suitAlpha;
    live.groupOrders = record.groupOrders;
    live.groupDatas = record.groupDatas;
    live.groupFaceDatas = record.groupFaceDatas;
}

void updateLiquify(norvel::RvARLiquifyAttribute& live, const norvel::RvARLiquifyAttribute& record)
{
    live.centerX = record.centerX;
    live.centerY = record.centerY;
    live.radius = record.radius;
    live.strength = record.strength;
    live.movePoints = record.movePoints;
    live.liquifyStyle = record.liquifyStyle;
    live.effectPath = record.effectPath;
}

/// Calls `update` when both records are of the kind.
template <class Kind>
void updateAs(RvAttribute& live, const RvAttribute& record, void (*update)(Kind&, const Kind&))
{
    auto* liveOfKind = dynamic_cast<Kind*>(&live);
    const auto* recordOfKind = dynamic_cast<const Kind*>(&record);
    if (liveOfKind && recordOfKind)
        update(*liveOfKind, *recordOfKind);
}

/// A new track of the kind with the values that the framework gives it.
Record freshTrack(const RvAttribute& record)
{
    Record track = cloneRecord(record);
    if (auto* filter = dynamic_cast<norvel::RvARFilterAttribute*>(track.get()))
        filter->filterAlpha = 1.0F; // never written by the bridge
    if (typeid(record) == typeid(norvel::RvARBeautyAttribute) &&
        !static_cast<norvel::RvARFilterAttribute&>(*track).arFacePlists.empty())
        track->source.clear();
    return track;
}

Record freshLayer(const RvAttribute& record)
{
    auto track = std::make_unique<norvel::RvARLayerAttribute>();
    track->uuid = 0; // the framework's choice
    track->type = record.type;
    track->source = record.source;
    track->startTime = record.startTime;
    track->duration = record.duration;
    return track;
}

int trackTypeOf(int recordType)
{
    constexpr int types[] = {0,     6,     3,     2,     4,     400,   105,
                             20001, 20005, 20009, 20008, 20002, 20003, 20017};
    return types[recordType];
}

} // namespace

TimelineState StepModel::step(const norvel::RvTimeLineAttribute& from,
                              const norvel::RvTimeLineAttribute& to) &&
{
    m_state.width = to.width;
    m_state.height = to.height;
    stepMain(from.mainAttribs, to.mainAttribs);
    stepMix(from.mixAttribs, to.mixAttribs);
    removeStaleGroups(from.mainAttribs);
    removeStaleMixTracks(from.mixAttribs);
    m_state.showBindings();
    return std::move(m_state);
}

void StepModel::stepMain(const Records& from, const Records& to)
{
    std::ptrdiff_t position = -1;
    for (const RvAttribute* record : mediaFirst(to)) {
        if (!isMedia(record))
            break;
        ++position;
        const RecordFate fate = fateOf(*record, from);
        auto& groups = m_state.groups;
        const auto last = static_cast<std::ptrdiff_t>(groups.size());
        if (fate == RecordFate::Created) {
            GroupState created;
            created.contexts.push_back(nullptr);
            created.ids.push_back(record->uuid);
            created.record = create(*record);
            groups.insert(groups.begin() + std::min(position, last), std::move(created));
            continue;
        }
        m_kept.push_back(record->uuid);
        const auto found = findGroup(record->uuid);
        if (found == groups.end())
            continue;
        GroupState group = std::move(*found);
        groups.erase(found);
        if (fate == RecordFate::Updated)
            update(*group.record, *record);
        groups.insert(groups.begin() + std::min(position, last - 1), std::move(group));
    }
}

void StepModel::stepMix(const Records& from, const Records& to)
{
    for (const RvAttribute* record : mediaFirst(to))
        stepMixRecord(from, *record);
}

void StepModel::stepMixRecord(const Records& from, const RvAttribute& record)
{
    const RecordFate fate = fateOf(record, from);
    if (fate == RecordFate::Created) {
        if (Record created = create(record)) {
            MixState mix;
            mix.id = created->uuid;
            mix.trackType = trackTypeOf(record.type);
            mix.record = std::move(created);
            bind(mix.asked, record);
            m_state.mixTracks.push_back(std::move(mix));
        }
        return;
    }
    m_kept.push_back(record.uuid);
    const auto found = findMix(record.uuid);
    if (fate == RecordFate::Updated && found != m_state.mixTracks.end()) {
        update(*found->record, record);
        bind(found->asked, record);
    }
}

void StepModel::removeStaleGroups(const Records& from)
{
    for (const RvAttribute* record : from) {
        if (std::count(m_kept.begin(), m_kept.end(), record->uuid) != 0)
            continue;
        const auto found = findGroup(record->uuid);
        if (found == m_state.groups.end())
            continue;
        m_state.groups.erase(found);
    }
}

void StepModel::removeStaleMixTracks(const Records& from)
{
    for (const RvAttribute* record : from) {
        if (std::count(m_kept.begin(), m_kept.end(), record->uuid) != 0)
            continue;
        const auto found = findMix(record->uuid);
        if (found == m_state.mixTracks.end())
            continue;
        m_state.mixTracks.erase(found);
    }
}

std::vector<GroupState>::iterator StepModel::findGroup(std::uint64_t id)
{
    return std::find_if(
        m_state.groups.begin(), m_state.groups.end(),
        [id](const GroupState& group) { return !group.ids.empty() && group.ids.front() == id; });
}

std::vector<MixState>::iterator StepModel::findMix(std::uint64_t id)
{
    return std::find_if(m_state.mixTracks.begin(), m_state.mixTracks.end(),
                        [id](const MixState& mix) { return mix.id == id; });
}

bool StepModel::isDetection(std::uint64_t id)
{
    const auto found = findMix(id);
    return found != m_state.mixTracks.end() && found->trackType == 400;
}

void StepModel::update(RvAttribute& live, const RvAttribute& record)
{
    if (record.type == 12)
        return; // a label stays as it is
    updateCommon(live, record);
    updateAs(live, record, updateMedia);
    if (auto* audio = dynamic_cast<norvel::RvAudioAttribute*>(&live))
        audio->fileStartTime = static_cast<const norvel::RvAudioAttribute&>(record).fileStartTime;
    updateAs(live, record, updateAR);
    updateAs(live, record, updateFilter);
    updateAs(live, record, updateBeauty);
    updateAs(live, record, updateMakeup);
    updateAs(live, record, updateLiquify);
}

Record StepModel::create(const RvAttribute& record)
{
    if (record.type == 12)
        return nullptr; // a label is never created
    return record.type == 10 ? freshLayer(record) : freshTrack(record);
}

void StepModel::bind(BindingState& asked, const RvAttribute& record)
{
    if (record.type == 12)
        return; // a label stays as it is
    if (const auto* detection = dynamic_cast<const norvel::RvDetectAttribute*>(&record))
        bindTrack(asked, *detection);
    if (const auto* effect = dynamic_cast<const norvel::RvEffectAttribute*>(&record)) {
        bindTrack(asked, *effect);
        if (effect->detect != 0 && isDetection(effect->detect))
            asked.detection = effect->detect;
    }
}

template <class Kind>
void StepModel::bindTrack(BindingState& asked, const Kind& record)
{
    if (record.range < 0 || record.range > 2)
        return; // as it was: bound to a track that was away, for one
    asked = {};
    if (record.range == 2)
        asked.range = 2;
    else if (record.range == 1 && !record.target.empty() && isMainId(record.target[0]))
        asked = {1, record.bindType, record.target[0], 0};
}
