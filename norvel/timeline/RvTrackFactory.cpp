// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvTrackFactory.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrackType.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

namespace norvel {

qrvkp::RvITrack* RvTrackFactory::createTrack(void* context, int trackType)
{
    if (!context)
        return nullptr;
    switch (trackType) {
    case qrvkp::RvTrackTypeVideo:
        return qrvkp::RvKpTrack::create(context);
    case qrvkp::RvTrackTypeSprite:
        return qrvkp::RvSpriteTrack::create(context);
    case qrvkp::RvTrackTypeAudio:
        return qrvkp::RvAudioTrack::create(context);
    case qrvkp::RvTrackTypeGeneric:
        return qrvkp::RvITrack::create(context);
    case qrvkp::RvTrackTypeMatte:
        return qrvkp::RvTrkMatteEffectTrack::create(context);
    case qrvkp::RvTrackTypeDetection:
        return qrvkp::RvDetectionTrack::create(context);
    case qrvkp::RvTrackTypeARFilter:
        return qkpar::RvARFilterTrack::create(context);
    case qrvkp::RvTrackTypeARFrame:
        return qkpar::RvARFrameTrack::create(context);
    case qrvkp::RvTrackTypeARLabel:
        return qkpar::RvARLabelTrack::create(context);
    case qrvkp::RvTrackTypeARBeauty:
        return qkpar::RvARBeautyTrack::create(context);
    case qrvkp::RvTrackTypeARBorder:
        return qkpar::RvARBorderTrack::create(context);
    case qrvkp::RvTrackTypeARLayer:
        return qkpar::RvARAttribsTrack::create(context);
    case qrvkp::RvTrackTypeARMakeup:
        return qkpar::RvARMakeupTrack::create(context);
    case qrvkp::RvTrackTypeARLiquify:
        return qkpar::RvARLiquifyTrack::create(context);
    default:
        return nullptr;
    }
}

} // namespace norvel
