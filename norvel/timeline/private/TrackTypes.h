// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace norvel {

/// The codes of `RvAttribute::type`.
enum RecordType : int {
    RecordTypeUnknown = 0, ///< no record kind describes the track
    RecordTypeGeneric = 1,
    RecordTypeImage = 2,
    RecordTypeVideo = 3,
    RecordTypeAudio = 4,
    RecordTypeDetection = 5,
    RecordTypeMatte = 6,
    RecordTypeARFilter = 7,
    RecordTypeARBeauty = 8,
    RecordTypeARMakeup = 9,
    RecordTypeARLayer = 10,
    RecordTypeARFrame = 11,
    RecordTypeARLabel = 12,
    RecordTypeARLiquify = 13,
};

/// The record type of a framework track type. Image and video cross: record type 2 is framework
/// type 3 and the other way round.
RecordType recordTypeOf(int trackType);

inline bool isMediaType(int recordType)
{
    return recordType == RecordTypeImage || recordType == RecordTypeVideo;
}

} // namespace norvel
