// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvAttributeUtility.h>

#include <norvel/timeline/private/Milliseconds.h>
#include <norvel/timeline/private/TimelineIndex.h>
#include <norvel/timeline/private/TrackTypes.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvTrackType.h>

#include <QString>

namespace norvel {

namespace {

/// What a record's `range` asks for.
enum ActionRange : int { Global = 0, SingleTrack = 1, Dynamic = 2 };

/// Binds a detection or an effect by `range`, `target` and `bindType` of its record.
template <class Track, class Record>
void applyRange(TimelineIndex& timeline, Track* track, const Record* record)
{
    switch (record->range) {
    case Global:
        track->unbind();
        break;
    case SingleTrack:
        track->unbind();
        if (!record->target.empty()) {
            // `bind` takes over the reference of the track.
            if (auto target = timeline.mainTrack(record->target.front()))
                track->bind(target.release(), record->bindType);
        }
        break;
    case Dynamic:
        track->unbind();
        track->bindDynamic();
        break;
    default:
        break;
    }
}

} // namespace

void RvAttributeUtility::updateTrack(qrvkp::RvKpTimeLine* timeline, qrvkp::RvITrack* track,
                                     RvAttribute* record)
{
    TimelineIndex index(timeline);
    updateTrack(index, track, record);
}

void RvAttributeUtility::updateTrack(TimelineIndex& timeline, qrvkp::RvITrack* track,
                                     const RvAttribute* record)
{
    if (!timeline.timeline() || !track || !record)
        return;
    // The update of a track and a record that are of the class their types stand for.
    const auto updateAR = [&](auto update, auto* trackOfKind, const auto* recordOfKind) {
        update(trackOfKind, recordOfKind);
        updateActionRange(timeline, trackOfKind, recordOfKind);
    };
    switch (record->type) {
    case RecordTypeImage:
    case RecordTypeVideo:
        updateMediaTrack(dynamic_cast<qrvkp::RvIMediaTrack*>(track),
                         dynamic_cast<const RvMediaAttribute*>(record));
        break;
    case RecordTypeAudio:
        updateAudioTrack(dynamic_cast<qrvkp::RvAudioTrack*>(track),
                         dynamic_cast<const RvAudioAttribute*>(record));
        break;
    case RecordTypeDetection: {
        auto* detection = dynamic_cast<qrvkp::RvDetectionTrack*>(track);
        const auto* values = dynamic_cast<const RvDetectAttribute*>(record);
        updateDetectionTrack(detection, values);
        updateDetectionRange(timeline, detection, values);
        break;
    }
    case RecordTypeARFilter:
        updateAR(updateARFilterTrack, dynamic_cast<qkpar::RvARFilterTrack*>(track),
                 dynamic_cast<const RvARFilterAttribute*>(record));
        break;
    case RecordTypeARBeauty:
        updateAR(updateARBeautyTrack, dynamic_cast<qkpar::RvARBeautyTrack*>(track),
                 dynamic_cast<const RvARBeautyAttribute*>(record));
        break;
    case RecordTypeARMakeup:
        updateAR(updateARMakeupTrack, dynamic_cast<qkpar::RvARMakeupTrack*>(track),
                 dynamic_cast<const RvARMakeupAttribute*>(record));
        break;
    case RecordTypeARLayer:
        updateAR(updateARAttributeValue, dynamic_cast<qkpar::RvARAttribsTrack*>(track),
                 dynamic_cast<const RvARLayerAttribute*>(record));
        break;
    case RecordTypeARLiquify:
        updateAR(updateARLiquifyTrack, dynamic_cast<qkpar::RvARLiquifyTrack*>(track),
                 dynamic_cast<const RvARLiquifyAttribute*>(record));
        break;
    default:
        break; // mattes, frames and labels among them: they stay as they are
    }
}

void RvAttributeUtility::updateAttributeValue(qrvkp::RvITrack* track, const RvAttribute* record)
{
    if (!track || !record)
        return;
    track->setStartPos(record->startTime);
    track->setDuration(record->duration);
    track->setTrackID(record->uuid);
    track->setZOrder(record->zOrder);
    track->setAlpha(record->alpha);
    track->setSpeed(record->speed);
    track->setTag(record->auxText);
}

void RvAttributeUtility::updateMediaTrack(qrvkp::RvIMediaTrack* track,
                                          const RvMediaAttribute* record)
{
    if (!track || !record)
        return;
    updateAttributeValue(track, record);
    track->setWidthAndHeight(record->width, record->height);
    track->setPosition(record->positionX, record->positionY);
    track->setScale(record->scale);
    track->setRotation(record->rotation);
    if (record->type != RecordTypeVideo)
        return;
    if (auto* video = dynamic_cast<qrvkp::RvKpTrack*>(track))
        video->setFileStartTime(truncatedMilliseconds(record->fileStartTime));
}

void RvAttributeUtility::updateAudioTrack(qrvkp::RvAudioTrack* track,
                                          const RvAudioAttribute* record)
{
    if (!track || !record)
        return;
    updateAttributeValue(track, record);
    track->setFileStartTime(truncatedMilliseconds(record->fileStartTime));
}

void RvAttributeUtility::updateDetectionTrack(qrvkp::RvDetectionTrack* track,
                                              const RvDetectAttribute* record)
{
    updateAttributeValue(track, record);
}

void RvAttributeUtility::updateDetectionRange(TimelineIndex& timeline,
                                              qrvkp::RvDetectionTrack* track,
                                              const RvDetectAttribute* record)
{
    if (track && record)
        applyRange(timeline, track, record);
}

void RvAttributeUtility::updateActionRange(TimelineIndex& timeline, qrvkp::RvIEffectTrack* track,
                                           const RvEffectAttribute* record)
{
    if (!track || !record)
        return;
    applyRange(timeline, track, record);
    if (record->detect == 0)
        return;
    auto found = timeline.mixTrack(record->detect);
    if (!found)
        return;
    if (found->getTrackType() != qrvkp::RvTrackTypeDetection) {
        // Deliberately not released: hosts count on the track that a wrong id names to stay alive.
        found.release();
        return;
    }
    if (const auto detection = adopt(qrvkp::RvDetectionTrack::create(found->getContext())))
        track->bindDetect(detection.get());
}

void RvAttributeUtility::updateARAttributeValue(qkpar::RvARITrack* track,
                                                const RvARAttribute* record)
{
    if (!track || !record)
        return;
    updateAttributeValue(track, record);
    for (const auto& [key, value] : record->scriptParams)
        track->setScriptParam(key, value);
    track->setGlobalParamConfiguration(record->globalParamConfiguration);
}

void RvAttributeUtility::updateARFilterTrack(qkpar::RvARFilterTrack* track,
                                             const RvARFilterAttribute* record)
{
    if (!track || !record)
        return;
    updateARAttributeValue(track, record);
    for (const auto& [flag, value] : record->floatParams)
        track->setFloatParam(flag, value);
    for (const auto& [faceId, params] : record->faceFloatParams) {
        for (const auto& [flag, value] : params)
            track->setFloatParamByFaceId(flag, value, faceId);
    }
    for (const auto& [faceId, path] : record->arFacePlists)
        track->addARFacePlist(path, faceId);
}

void RvAttributeUtility::updateARBeautyTrack(qkpar::RvARBeautyTrack* track,
                                             const RvARBeautyAttribute* record)
{
    if (!track || !record)
        return;
    updateARFilterTrack(track, record);
    track->setBeautyType(record->beautyType);
    track->setKpARGenderParamCoeffients(qkpar::KpARGenderFemale, record->genderParamCoeffientsA);
    track->setKpARGenderParamCoeffients(qkpar::KpARGenderMale, record->genderParamCoeffientsB);
    track->loadCoeffientParameterConfig(record->coeffientParameterConfig);
    track->setEnableBeautyGenderDistinction(record->enableBeautyGenderDistinction);
    track->setApplyGenderToAR(record->applyGenderToAR);
    track->setAllFaceBeautyParam(record->allFaceBeautyParam);
    track->setAllBeautyAnattaForFaceControls(record->allBeautyAnattaForFaceControls);
    track->setManualLongLegEnable(record->manualLongLegEnable);
    track->setMapPointsData(record->mapPointsData);
    track->setManualLongLegRange(record->manualLongLegRange);
    track->setManualSlimHeadParam(record->manualSlimHeadParam);
    // The pointer of a copied record may be left over from a record that is gone: it is handed on,
    // never read.
    if (record->beautyMaskFaceId >= 1 && record->beautyActiveMaskImageRef &&
        !record->beautyActiveMaskImage.isNull()) {
        track->loadBeautyMaskDatas(record->beautyMaskFaceId, record->beautyActiveMaskImageRef,
                                   record->beautyMaskBrushType, record->beautyActiveMaskImage);
    }
}

void RvAttributeUtility::updateARMakeupTrack(qkpar::RvARMakeupTrack* track,
                                             const RvARMakeupAttribute* record)
{
    if (!track || !record)
        return;
    updateARBeautyTrack(track, record);
    track->setSuitAlpha(record->suitAlpha);
    track->setAllARGroupOrder(record->groupOrders);
    track->setARGroupDatas(record->groupDatas);
    track->setARFaceGroupDatas(record->groupFaceDatas);
}

void RvAttributeUtility::updateARLiquifyTrack(qkpar::RvARLiquifyTrack* track,
                                              const RvARLiquifyAttribute* record)
{
    if (!track || !record)
        return;
    updateARBeautyTrack(track, record);
    track->appendToLiquifyOperation({record->centerX, record->centerY, record->radius,
                                     record->strength, record->movePoints, record->liquifyStyle});
    track->loadLiquifyConfig(record->effectPath.toLocal8Bit().toStdString());
}

void RvAttributeUtility::updateARFrameTrack(qkpar::RvARFrameTrack* /*track*/,
                                            const RvARFrameAttribute* /*record*/)
{
    // A frame is what it was created as.
}

} // namespace norvel
