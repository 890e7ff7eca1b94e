// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/private/LiquifyCapture.h>
#include <norvel/timeline/private/Reference.h>
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
#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrackType.h>

#include <QDateTime>
#include <QLoggingCategory>

namespace norvel {

namespace {

/// Describes a track of `trackType` by a new record that `fill` fills from a wrapper of the track's
/// own class; null for a track of another type.
template <class Record, class Track>
Record* describe(qrvkp::RvITrack* track, int trackType, void (*fill)(Record*, Track*))
{
    if (!track || track->getTrackType() != trackType)
        return nullptr;
    const auto wrapper = adopt(Track::create(track->getContext()));
    if (!wrapper)
        return nullptr;
    auto record = std::make_unique<Record>();
    fill(record.get(), wrapper.get());
    return record.release();
}

/// What a track bound to a single other track acts on: that one's id, if there is one.
template <class Record, class Track>
void fillTarget(Record* record, Track* track)
{
    if (record->range != qrvkp::RvActionRangeTrack)
        return;
    if (const auto target = adopt(track->getBindTrack()))
        record->target.push_back(target->getTrackID());
}

} // namespace

RvTimeLineAttribute* RvAttributeUtility::createTimeLineAttribute(qrvkp::RvKpTimeLine* timeline,
                                                                 float width, float height)
{
    auto description = std::make_unique<RvTimeLineAttribute>();
    description->width = width;
    description->height = height;
    if (!timeline)
        return description.release();
    for (qrvkp::RvKpGroup* group : adopt(timeline->getGroups())) {
        if (RvAttribute* record = createMainMediaAttribute(group))
            description->mainAttribs.push_back(record);
    }
    for (qrvkp::RvITrack* track : adopt(timeline->getMixTracks())) {
        if (RvAttribute* record = createMixAttribute(track))
            description->mixAttribs.push_back(record);
    }
    return description.release();
}

RvAttribute* RvAttributeUtility::createMainMediaAttribute(qrvkp::RvKpGroup* group)
{
    if (!group)
        return nullptr;
    const auto tracks = adopt(group->getTracks());
    return tracks.empty() ? nullptr : createMediaAttribute(tracks.front());
}

RvAttribute* RvAttributeUtility::createMixAttribute(qrvkp::RvITrack* track)
{
    if (!track)
        return nullptr;
    switch (recordTypeOf(track->getTrackType())) {
    case RecordTypeImage:
    case RecordTypeVideo:
    case RecordTypeMatte:
        return createMediaAttribute(track); // null for a matte
    case RecordTypeAudio:
        return createAudioAttribute(track);
    case RecordTypeDetection:
        return createDetectAttribute(track);
    case RecordTypeARFilter:
        return createARFilterAttribute(track);
    case RecordTypeARBeauty:
        return createBeautyAttribute(track);
    case RecordTypeARMakeup:
        return createMakeupAttribute(track);
    case RecordTypeARLayer:
        return createLayerAttribute(track);
    case RecordTypeARLabel:
        return createLabelAttribute(track);
    case RecordTypeARLiquify:
        return createLiquifyAttribute(track);
    default:
        return nullptr; // an AR frame among them
    }
}

RvMediaAttribute* RvAttributeUtility::createMediaAttribute(qrvkp::RvITrack* track)
{
    if (RvMediaAttribute* video = describe<RvMediaAttribute, qrvkp::RvKpTrack>(
            track, qrvkp::RvTrackTypeVideo,
            [](RvMediaAttribute* record, qrvkp::RvKpTrack* wrapper) {
                fillMediaAttributeValue(record, wrapper);
            }))
        return video;
    return describe<RvMediaAttribute, qrvkp::RvSpriteTrack>(
        track, qrvkp::RvTrackTypeSprite,
        [](RvMediaAttribute* record, qrvkp::RvSpriteTrack* wrapper) {
            fillMediaAttributeValue(record, wrapper);
        });
}

RvAudioAttribute* RvAttributeUtility::createAudioAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeAudio, &fillAudioAttributeValue);
}

RvDetectAttribute* RvAttributeUtility::createDetectAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeDetection, &fillDetectAttributeValue);
}

RvARFilterAttribute* RvAttributeUtility::createARFilterAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeARFilter, &fillARFilterAttributeValue);
}

RvARBeautyAttribute* RvAttributeUtility::createBeautyAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeARBeauty, &fillARBeautyAttributeValue);
}

RvARMakeupAttribute* RvAttributeUtility::createMakeupAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeARMakeup, &fillARMakeupAttributeValue);
}

RvARLayerAttribute* RvAttributeUtility::createLayerAttribute(qrvkp::RvITrack* track)
{
    return describe<RvARLayerAttribute, qkpar::RvARAttribsTrack>(
        track, qrvkp::RvTrackTypeARLayer,
        [](RvARLayerAttribute* record, qkpar::RvARAttribsTrack* wrapper) {
            fillARAttributeValue(record, wrapper);
        });
}

RvARLabelAttribute* RvAttributeUtility::createLabelAttribute(qrvkp::RvITrack* track)
{
    return describe<RvARLabelAttribute, qkpar::RvARLabelTrack>(
        track, qrvkp::RvTrackTypeARLabel,
        [](RvARLabelAttribute* record, qkpar::RvARLabelTrack* wrapper) {
            fillARAttributeValue(record, wrapper);
        });
}

RvARFrameAttribute* RvAttributeUtility::createFrameAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeARFrame, &fillARFrameAttributeValue);
}

RvARLiquifyAttribute* RvAttributeUtility::createLiquifyAttribute(qrvkp::RvITrack* track)
{
    return describe(track, qrvkp::RvTrackTypeARLiquify, &fillARLiquifyAttributeValue);
}

void RvAttributeUtility::fillAttributeValue(RvAttribute* record, qrvkp::RvITrack* track)
{
    record->uuid = track->getTrackID();
    record->type = recordTypeOf(track->getTrackType());
    record->startTime = track->getStartPos();
    record->duration = track->getOriginDuration();
    record->zOrder = track->getOriginZOrder();
    record->alpha = track->getAlpha();
    record->speed = track->getSpeed();
    record->source = track->getTrackSource();
    record->auxText = track->getTag();
}

void RvAttributeUtility::fillMediaAttributeValue(RvMediaAttribute* record,
                                                 qrvkp::RvIMediaTrack* track)
{
    fillAttributeValue(record, track);
    record->width = track->getWidth();
    record->height = track->getHeight();
    record->positionX = track->getPositionX();
    record->positionY = track->getPositionY();
    record->scale = track->getScale();
    record->rotation = track->getRotation();
    if (const auto* video = dynamic_cast<qrvkp::RvKpTrack*>(track))
        record->fileStartTime = static_cast<float>(video->getFileStartTime());
}

void RvAttributeUtility::fillAudioAttributeValue(RvAudioAttribute* record,
                                                 qrvkp::RvAudioTrack* track)
{
    fillAttributeValue(record, track);
    record->fileStartTime = static_cast<float>(track->getFileStartTime());
}

void RvAttributeUtility::fillDetectAttributeValue(RvDetectAttribute* record,
                                                  qrvkp::RvDetectionTrack* track)
{
    fillAttributeValue(record, track);
    record->mode = track->getDetectionMode();
    record->modePath = track->getModelPath();
    record->range = track->getActionRange();
    record->bindType = track->getMediaBindType();
    fillTarget(record, track);
}

void RvAttributeUtility::fillEffectAttributeValue(RvEffectAttribute* record,
                                                  qrvkp::RvIEffectTrack* track)
{
    fillAttributeValue(record, track);
    record->range = track->getActionRange();
    record->bindType = track->getMediaBindType();
    fillTarget(record, track);
    if (const auto detection = adopt(track->getBindDetect()))
        record->detect = detection->getTrackID();
}

void RvAttributeUtility::fillARAttributeValue(RvARAttribute* record, qkpar::RvARITrack* track)
{
    fillEffectAttributeValue(record, track);
    record->scriptParams = track->getScriptParams();
    record->globalParamConfiguration = track->getGlobalParamConfiguration();
}

void RvAttributeUtility::fillARFilterAttributeValue(RvARFilterAttribute* record,
                                                    qkpar::RvARFilterTrack* track)
{
    fillARAttributeValue(record, track);
    record->filterAlpha = track->getFilterAlpha();
    record->floatParams = track->getFloatParams();
    record->faceFloatParams = track->getFloatParamsWithFaceID();
    record->arFacePlists = track->getAllArFacePlists();
}

void RvAttributeUtility::fillARBeautyAttributeValue(RvARBeautyAttribute* record,
                                                    qkpar::RvARBeautyTrack* track)
{
    fillARFilterAttributeValue(record, track);
    record->beautyType = track->getBeautyType();
    record->enableBeautyGenderDistinction = track->getEnableBeautyGenderDistinction();
    record->applyGenderToAR = track->getApplyGenderToAR();
    record->coeffientParameterConfig = track->getCoeffientParameterConfig();
    record->allFaceBeautyParam = track->getAllFaceBeautyParam();
    record->allBeautyAnattaForFaceControls = track->getAllBeautyAnattaForFaceControls();
    record->manualLongLegEnable = track->getManualLongLegEnable();
    record->manualLongLegRange = track->getManualLongLegRange();
    record->manualSlimHeadParam = track->getManualSlimHeadParam();
    record->mapPointsData = track->getMapPointsData();

    if (track->getBeautyMaskFaceId() < 1)
        return;
    const QImage mask = track->getBeautyActiveMaskImage();
    if (mask.isNull()) {
        qWarning(
            "手动磨皮、祛斑祛痘需要在收到kAREventBeautyMaskImage回调后endBeautyMaskImage之前调用");
        return;
    }
    record->beautyActiveMaskImage = mask;
    record->beautyMaskFaceId = track->getBeautyMaskFaceId();
    record->beautyMaskBrushType = track->getBeautyMaskBrushType();
    record->beautyActiveMaskImageRef = &record->beautyActiveMaskImage;
}

void RvAttributeUtility::fillARMakeupAttributeValue(RvARMakeupAttribute* record,
                                                    qkpar::RvARMakeupTrack* track)
{
    fillARBeautyAttributeValue(record, track);
    record->suitAlpha = track->getSuitAlpha();
    record->groupOrders = track->getAllARGroupOrder();
    record->groupDatas = track->getARGroupDatas();
    record->groupFaceDatas = track->getARFaceGroupDatas();
}

void RvAttributeUtility::fillARLiquifyAttributeValue(RvARLiquifyAttribute* record,
                                                     qkpar::RvARLiquifyTrack* track)
{
    fillARBeautyAttributeValue(record, track);
    captureStrokes(*record, *track, QDateTime::currentMSecsSinceEpoch());
}

void RvAttributeUtility::fillARFrameAttributeValue(RvARFrameAttribute* record,
                                                   qkpar::RvARFrameTrack* track)
{
    fillARAttributeValue(record, track);
}

} // namespace norvel
