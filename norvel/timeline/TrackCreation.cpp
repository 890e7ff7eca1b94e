// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/private/Milliseconds.h>
#include <norvel/timeline/private/TimelineIndex.h>
#include <norvel/timeline/private/TrackTypes.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <type_traits>

namespace norvel {

qrvkp::RvITrack* RvAttributeUtility::createTrack(qrvkp::RvKpTimeLine* timeline, RvAttribute* record)
{
    TimelineIndex index(timeline);
    return createTrack(index, record);
}

qrvkp::RvITrack* RvAttributeUtility::createTrack(TimelineIndex& timeline, RvAttribute* record)
{
    if (!timeline.timeline() || !record)
        return nullptr;
    // A creation by the record's class, and then the bindings for what acts on other tracks.
    const auto created = [&](auto* track, const auto* recordOfKind) -> qrvkp::RvITrack* {
        if constexpr (std::is_base_of_v<qrvkp::RvDetectionTrack, std::decay_t<decltype(*track)>>)
            updateDetectionRange(timeline, track, recordOfKind);
        else
            updateActionRange(timeline, track, recordOfKind);
        return track;
    };
    switch (record->type) {
    case RecordTypeImage:
    case RecordTypeVideo:
        return createMediaTrack(dynamic_cast<RvMediaAttribute*>(record));
    case RecordTypeAudio:
        return createAudioTrack(dynamic_cast<RvAudioAttribute*>(record));
    case RecordTypeMatte:
        return createMatteTrack(dynamic_cast<RvMatteAttribute*>(record));
    case RecordTypeDetection: {
        const auto* detection = dynamic_cast<RvDetectAttribute*>(record);
        return created(createDetectionTrack(detection), detection);
    }
    case RecordTypeARFilter: {
        const auto* filter = dynamic_cast<RvARFilterAttribute*>(record);
        return created(createARFilterTrack(filter), filter);
    }
    case RecordTypeARBeauty: {
        const auto* beauty = dynamic_cast<RvARBeautyAttribute*>(record);
        return created(createARBeautyTrack(beauty), beauty);
    }
    case RecordTypeARMakeup: {
        const auto* makeup = dynamic_cast<RvARMakeupAttribute*>(record);
        return created(createARMakeupTrack(makeup), makeup);
    }
    case RecordTypeARLayer: {
        const auto* layer = dynamic_cast<RvARLayerAttribute*>(record);
        return created(createARLayerTrack(layer), layer);
    }
    case RecordTypeARLiquify: {
        const auto* liquify = dynamic_cast<RvARLiquifyAttribute*>(record);
        return created(createARLiquifyTrack(liquify), liquify);
    }
    default:
        return nullptr; // frames and labels among them: they are never brought back
    }
}

qrvkp::RvIMediaTrack* RvAttributeUtility::createMediaTrack(const RvMediaAttribute* record)
{
    if (!record)
        return nullptr;
    const long long fileStart = truncatedMilliseconds(record->fileStartTime);
    qrvkp::RvIMediaTrack* track = nullptr;
    if (record->type == RecordTypeImage)
        track = qrvkp::RvSpriteTrack::create(record->source, fileStart, record->duration);
    else if (record->type == RecordTypeVideo)
        track = qrvkp::RvKpTrack::create(record->source, fileStart, record->duration, fileStart);
    updateMediaTrack(track, record);
    return track;
}

qrvkp::RvAudioTrack* RvAttributeUtility::createAudioTrack(const RvAudioAttribute* record)
{
    if (!record)
        return nullptr;
    const long long fileStart = truncatedMilliseconds(record->fileStartTime);
    auto* track =
        qrvkp::RvAudioTrack::create(record->source, fileStart, record->duration, fileStart);
    updateAudioTrack(track, record);
    return track;
}

qrvkp::RvDetectionTrack* RvAttributeUtility::createDetectionTrack(const RvDetectAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track = qrvkp::RvDetectionTrack::create(record->mode, record->modePath);
    updateDetectionTrack(track, record);
    return track;
}

qrvkp::RvTrkMatteEffectTrack* RvAttributeUtility::createMatteTrack(const RvMatteAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(record->startTime, record->duration);
    updateAttributeValue(track, record);
    return track;
}

qkpar::RvARFilterTrack* RvAttributeUtility::createARFilterTrack(const RvARFilterAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qkpar::RvARFilterTrack::create(record->source, record->startTime, record->duration);
    updateARFilterTrack(track, record);
    return track;
}

qkpar::RvARBeautyTrack* RvAttributeUtility::createARBeautyTrack(const RvARBeautyAttribute* record)
{
    if (!record)
        return nullptr;
    // Faces with configuration files of their own take the place of a common resource.
    const std::string path = record->arFacePlists.empty() ? record->source : std::string();
    auto* track = qkpar::RvARBeautyTrack::create(path, record->startTime, record->duration);
    updateARBeautyTrack(track, record);
    return track;
}

qkpar::RvARMakeupTrack* RvAttributeUtility::createARMakeupTrack(const RvARMakeupAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qkpar::RvARMakeupTrack::create(record->source, record->startTime, record->duration);
    updateARMakeupTrack(track, record);
    return track;
}

qkpar::RvARAttribsTrack* RvAttributeUtility::createARLayerTrack(const RvARLayerAttribute* record)
{
    // No values beyond the creation's: a new layer track keeps the id that the framework gave it.
    return record ? qkpar::RvARAttribsTrack::create(record->source, record->startTime,
                                                    record->duration)
                  : nullptr;
}

qkpar::RvARLiquifyTrack*
RvAttributeUtility::createARLiquifyTrack(const RvARLiquifyAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qkpar::RvARLiquifyTrack::create(record->source, record->startTime, record->duration);
    updateARLiquifyTrack(track, record);
    return track;
}

qkpar::RvARFrameTrack* RvAttributeUtility::createARFrameTrack(const RvARFrameAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qkpar::RvARFrameTrack::create(record->source, record->startTime, record->duration);
    updateARAttributeValue(track, record);
    return track;
}

qkpar::RvARLabelTrack* RvAttributeUtility::createARLabelTrack(const RvARLabelAttribute* record)
{
    if (!record)
        return nullptr;
    auto* track =
        qkpar::RvARLabelTrack::create(record->source, record->startTime, record->duration);
    updateARAttributeValue(track, record);
    return track;
}

} // namespace norvel
