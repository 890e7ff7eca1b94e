// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARBeautyAttribute.h>
#include <norvel/attribute/RvARFilterAttribute.h>
#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>
#include <norvel/attribute/RvReturnVlaue.h>
#include <norvel/global.h>
#include <norvel/timeline/RvTimeLineAttribute.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qrvkp {
class RvAudioTrack;
class RvDetectionTrack;
class RvIEffectTrack;
class RvIMediaTrack;
class RvITrack;
class RvKpGroup;
class RvKpTimeLine;
class RvTrkMatteEffectTrack;
} // namespace qrvkp

namespace qkpar {
class RvARAttribsTrack;
class RvARBeautyTrack;
class RvARFilterTrack;
class RvARFrameTrack;
class RvARITrack;
class RvARLabelTrack;
class RvARLiquifyTrack;
class RvARMakeupTrack;
} // namespace qkpar

namespace norvel {

class AttributeIndex;
class TimelineIndex;

/// The bridge between attribute records and a live timeline of the framework.
///
/// A record's `uuid` is the id of its track; a main group is known by the id of its FIRST track,
/// and only that track is ever described. Framework objects handed out carry one reference that the
/// caller releases. Nothing here is thread-safe: whoever changes a timeline that is shown brackets
/// the change with `RvKpPlayer::lockPlayer`. Failures are silent: a null result, or a track left
/// out.
class NORVEL_EXPORT RvAttributeUtility
{
public:
    RvAttributeUtility() = delete;

    /// Root folder of the undo caches, UTF-8. Empty until `RvEditorTrace::setCacheDir` sets it, or
    /// the first capture of a liquify track sets Qt's writable cache location.
    static std::string _sCacheDir;
    /// The folder that the most recent capture of a liquify track wrote, UTF-8.
    static std::string _sCurrentCacheLiquefyDir;

    // Lookups (TrackLookup.cpp). Null for a null timeline and for an id that is not there; of equal
    // ids the first one in timeline order is found.

    /// The group whose first track has the id.
    static qrvkp::RvKpGroup* getGroup(qrvkp::RvKpTimeLine* timeline, std::size_t id);
    /// A new wrapper of the first track of the group whose first track has the id.
    static qrvkp::RvITrack* getMainTrack(qrvkp::RvKpTimeLine* timeline, std::size_t id);
    /// A new wrapper of the mix track with the id.
    static qrvkp::RvITrack* getMixTrack(qrvkp::RvKpTimeLine* timeline, std::size_t id);

    // Creation (TrackCreation.cpp).

    /// A new track with the values of the record, bound as the record says. Null for a null
    /// argument, for a record that is not of the class its `type` stands for, for base, frame and
    /// label records, and when the framework cannot make the track. A new layer track has only the
    /// source, the times and the bindings of its record: it has an id of its own.
    static qrvkp::RvITrack* createTrack(qrvkp::RvKpTimeLine* timeline, RvAttribute* record);

    // Application (TrackApplication.cpp).

    /// Writes the values of the record into a live track of its kind. Does nothing for a null
    /// argument, for a record or a track that is not of the class its type stands for, and for
    /// base, matte, frame and label records.
    static void updateTrack(qrvkp::RvKpTimeLine* timeline, qrvkp::RvITrack* track,
                            RvAttribute* record);

    // Capture (AttributeCapture.cpp).

    /// Describes a live timeline; the caller deletes the description. The size is the one given,
    /// the lists are empty for a null timeline. Groups whose first track is no picture or video,
    /// mattes and AR frames are not described.
    ///
    /// Capturing a liquify track confirms its pending stroke and saves its strokes to a new folder
    /// below the cache root.
    static RvTimeLineAttribute* createTimeLineAttribute(qrvkp::RvKpTimeLine* timeline, float width,
                                                        float height);

    // Reconciliation (TimelineReconciliation.cpp).

    /// Brings a live timeline from the state that `oldDescription` describes to the one that
    /// `newDescription` describes, and touches only what differs: groups are moved, changed tracks
    /// updated, missing ones created, those that are no longer described removed, in this order;
    /// last the timeline is invalidated. Does nothing for a null timeline; the descriptions must be
    /// valid.
    static void updateTimeLine(qrvkp::RvKpTimeLine* timeline,
                               const RvTimeLineAttribute* oldDescription,
                               const RvTimeLineAttribute* newDescription);

private:
    // Lookups (TrackLookup.cpp).
    static std::vector<qrvkp::RvITrack*> getMainTracks(qrvkp::RvKpTimeLine* timeline);

    // Creation (TrackCreation.cpp): null for a null record.
    static qrvkp::RvITrack* createTrack(TimelineIndex& timeline, RvAttribute* record);
    static qrvkp::RvIMediaTrack* createMediaTrack(const RvMediaAttribute* record);
    static qrvkp::RvAudioTrack* createAudioTrack(const RvAudioAttribute* record);
    static qrvkp::RvDetectionTrack* createDetectionTrack(const RvDetectAttribute* record);
    static qrvkp::RvTrkMatteEffectTrack* createMatteTrack(const RvMatteAttribute* record);
    static qkpar::RvARFilterTrack* createARFilterTrack(const RvARFilterAttribute* record);
    static qkpar::RvARBeautyTrack* createARBeautyTrack(const RvARBeautyAttribute* record);
    static qkpar::RvARMakeupTrack* createARMakeupTrack(const RvARMakeupAttribute* record);
    static qkpar::RvARAttribsTrack* createARLayerTrack(const RvARLayerAttribute* record);
    static qkpar::RvARLiquifyTrack* createARLiquifyTrack(const RvARLiquifyAttribute* record);
    static qkpar::RvARFrameTrack* createARFrameTrack(const RvARFrameAttribute* record);
    static qkpar::RvARLabelTrack* createARLabelTrack(const RvARLabelAttribute* record);

    // Application (TrackApplication.cpp): nothing happens when an argument is null.
    static void updateTrack(TimelineIndex& timeline, qrvkp::RvITrack* track,
                            const RvAttribute* record);
    static void updateAttributeValue(qrvkp::RvITrack* track, const RvAttribute* record);
    static void updateMediaTrack(qrvkp::RvIMediaTrack* track, const RvMediaAttribute* record);
    static void updateAudioTrack(qrvkp::RvAudioTrack* track, const RvAudioAttribute* record);
    static void updateDetectionTrack(qrvkp::RvDetectionTrack* track,
                                     const RvDetectAttribute* record);
    static void updateDetectionRange(TimelineIndex& timeline, qrvkp::RvDetectionTrack* track,
                                     const RvDetectAttribute* record);
    static void updateActionRange(TimelineIndex& timeline, qrvkp::RvIEffectTrack* track,
                                  const RvEffectAttribute* record);
    static void updateARAttributeValue(qkpar::RvARITrack* track, const RvARAttribute* record);
    static void updateARFilterTrack(qkpar::RvARFilterTrack* track,
                                    const RvARFilterAttribute* record);
    static void updateARBeautyTrack(qkpar::RvARBeautyTrack* track,
                                    const RvARBeautyAttribute* record);
    static void updateARMakeupTrack(qkpar::RvARMakeupTrack* track,
                                    const RvARMakeupAttribute* record);
    static void updateARLiquifyTrack(qkpar::RvARLiquifyTrack* track,
                                     const RvARLiquifyAttribute* record);
    static void updateARFrameTrack(qkpar::RvARFrameTrack* track, const RvARFrameAttribute* record);

    // Capture (AttributeCapture.cpp): new records, null for a track of another type.
    static RvAttribute* createMainMediaAttribute(qrvkp::RvKpGroup* group);
    static RvAttribute* createMixAttribute(qrvkp::RvITrack* track);
    static RvMediaAttribute* createMediaAttribute(qrvkp::RvITrack* track);
    static RvAudioAttribute* createAudioAttribute(qrvkp::RvITrack* track);
    static RvDetectAttribute* createDetectAttribute(qrvkp::RvITrack* track);
    static RvARFilterAttribute* createARFilterAttribute(qrvkp::RvITrack* track);
    static RvARBeautyAttribute* createBeautyAttribute(qrvkp::RvITrack* track);
    static RvARMakeupAttribute* createMakeupAttribute(qrvkp::RvITrack* track);
    static RvARLayerAttribute* createLayerAttribute(qrvkp::RvITrack* track);
    static RvARLabelAttribute* createLabelAttribute(qrvkp::RvITrack* track);
    static RvARFrameAttribute* createFrameAttribute(qrvkp::RvITrack* track);
    static RvARLiquifyAttribute* createLiquifyAttribute(qrvkp::RvITrack* track);
    static void fillAttributeValue(RvAttribute* record, qrvkp::RvITrack* track);
    static void fillMediaAttributeValue(RvMediaAttribute* record, qrvkp::RvIMediaTrack* track);
    static void fillAudioAttributeValue(RvAudioAttribute* record, qrvkp::RvAudioTrack* track);
    static void fillDetectAttributeValue(RvDetectAttribute* record, qrvkp::RvDetectionTrack* track);
    static void fillEffectAttributeValue(RvEffectAttribute* record, qrvkp::RvIEffectTrack* track);
    static void fillARAttributeValue(RvARAttribute* record, qkpar::RvARITrack* track);
    static void fillARFilterAttributeValue(RvARFilterAttribute* record,
                                           qkpar::RvARFilterTrack* track);
    static void fillARBeautyAttributeValue(RvARBeautyAttribute* record,
                                           qkpar::RvARBeautyTrack* track);
    static void fillARMakeupAttributeValue(RvARMakeupAttribute* record,
                                           qkpar::RvARMakeupTrack* track);
    static void fillARLiquifyAttributeValue(RvARLiquifyAttribute* record,
                                            qkpar::RvARLiquifyTrack* track);
    static void fillARFrameAttributeValue(RvARFrameAttribute* record, qkpar::RvARFrameTrack* track);

    // Reconciliation (TimelineReconciliation.cpp). The records of the old description are looked up
    // through an index, not by a walk of its list.
    static RvReturnVlaue compare(const RvAttribute* attribute,
                                 const std::vector<RvAttribute*>& list);
    static RvReturnVlaue updateMainMediaTrack(TimelineIndex& timeline, AttributeIndex& oldMain,
                                              RvAttribute* record, int position);
    static RvReturnVlaue updateMixMediaTrack(TimelineIndex& timeline, AttributeIndex& oldMix,
                                             RvAttribute* record);
    static void updateMixTrack(TimelineIndex& timeline, RvAttribute* record, RvReturnVlaue result);
};

} // namespace norvel
