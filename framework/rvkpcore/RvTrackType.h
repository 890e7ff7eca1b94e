// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace qrvkp {

/// The kinds of native tracks, as `RvITrack::getTrackType` reports them.
enum RvTrackType : int {
    RvTrackTypeVideo = 2,         ///< RvKpTrack
    RvTrackTypeSprite = 3,        ///< RvSpriteTrack, a still picture
    RvTrackTypeAudio = 4,         ///< RvAudioTrack
    RvTrackTypeGeneric = 6,       ///< RvITrack
    RvTrackTypeMatte = 105,       ///< RvTrkMatteEffectTrack
    RvTrackTypeDetection = 400,   ///< RvDetectionTrack
    RvTrackTypeARFilter = 20001,  ///< qkpar::RvARFilterTrack
    RvTrackTypeARFrame = 20002,   ///< qkpar::RvARFrameTrack
    RvTrackTypeARLabel = 20003,   ///< qkpar::RvARLabelTrack
    RvTrackTypeARBeauty = 20005,  ///< qkpar::RvARBeautyTrack
    RvTrackTypeARBorder = 20007,  ///< qkpar::RvARBorderTrack
    RvTrackTypeARLayer = 20008,   ///< qkpar::RvARAttribsTrack
    RvTrackTypeARMakeup = 20009,  ///< qkpar::RvARMakeupTrack
    RvTrackTypeARLiquify = 20017, ///< qkpar::RvARLiquifyTrack
};

/// What a detection or an effect acts on, as `getActionRange` reports it.
enum RvActionRange : int {
    RvActionRangeGlobal = 0,  ///< bound to nothing: acts on the whole canvas
    RvActionRangeTrack = 1,   ///< bound to one track
    RvActionRangeDynamic = 2, ///< follows whatever lies below it
    RvActionRangeAway = 3,    ///< bound to a track that is not there now: acts on nothing
};

} // namespace qrvkp
