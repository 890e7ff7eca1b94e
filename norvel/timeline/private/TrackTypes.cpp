// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/TrackTypes.h>

#include <rvkpcore/RvTrackType.h>

namespace norvel {

RecordType recordTypeOf(int trackType)
{
    switch (trackType) {
    case qrvkp::RvTrackTypeGeneric:
        return RecordTypeGeneric;
    case qrvkp::RvTrackTypeSprite:
        return RecordTypeImage;
    case qrvkp::RvTrackTypeVideo:
        return RecordTypeVideo;
    case qrvkp::RvTrackTypeAudio:
        return RecordTypeAudio;
    case qrvkp::RvTrackTypeDetection:
        return RecordTypeDetection;
    case qrvkp::RvTrackTypeMatte:
        return RecordTypeMatte;
    case qrvkp::RvTrackTypeARFilter:
        return RecordTypeARFilter;
    case qrvkp::RvTrackTypeARBeauty:
        return RecordTypeARBeauty;
    case qrvkp::RvTrackTypeARMakeup:
        return RecordTypeARMakeup;
    case qrvkp::RvTrackTypeARLayer:
        return RecordTypeARLayer;
    case qrvkp::RvTrackTypeARFrame:
        return RecordTypeARFrame;
    case qrvkp::RvTrackTypeARLabel:
        return RecordTypeARLabel;
    case qrvkp::RvTrackTypeARLiquify:
        return RecordTypeARLiquify;
    default:
        return RecordTypeUnknown;
    }
}

} // namespace norvel
