// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvReturnVlaue.h>
#include <norvel/global.h>

#include <QtGlobal>

#include <cstdint>
#include <string>

QT_FORWARD_DECLARE_CLASS(QJsonObject)

namespace norvel {

/// A plain, copyable description of one track of the editing timeline, and the root of all kinds.
///
/// A record owns all it holds by value. Records are handed around as `RvAttribute*` and deleted by
/// the holder of the list they stand in. The kind of a record is told by its dynamic class, and
/// again by `type`, which whoever makes the record sets.
///
/// Every kind keeps its fields, its JSON keys (`fillJson`) and its comparison (`hasSameValues`)
/// side by side: a new field belongs in all three, or says in its comment where it is left out.
///
/// A field that has no natural start is 0 until somebody sets it.
struct NORVEL_EXPORT RvAttribute
{
    /// A record with an identity of its own, see newRecordIdentity().
    RvAttribute();
    RvAttribute(const RvAttribute& other) = default;
    RvAttribute& operator=(const RvAttribute& other) = default;
    virtual ~RvAttribute();

    /// Compares this record with \p other by identity and content.
    ///
    /// ReturnInvalid for a null \p other, ReturnOtherRecord for another uuid; then ReturnSame if
    /// all compared fields are equal and ReturnChanged if not. Floats compare exactly: a NaN
    /// differs from itself, and -0 equals 0. Neither record is changed.
    ///
    /// A class of a host's own may answer by other rules. `RvAttributeUtility::updateTimeLine` asks
    /// it about every old record of exactly that class, in their order, and goes by the first
    /// answer that is ReturnSame or ReturnChanged.
    ///
    /// \throws std::bad_cast if \p other is not of the kind whose `compare` this is (or derived).
    virtual RvReturnVlaue compare(RvAttribute* other) const;

    /// The record as the text of one JSON object: UTF-8, indented by four spaces a level, keys in
    /// ascending order. For diagnostics: no record is read back from it.
    ///
    /// Numbers that are not finite are written as null, bytes that are no UTF-8 as U+FFFD.
    virtual std::string serialization() const;

    /// Building block for `compare` of derived kinds: whether all compared fields of this kind and
    /// of its parents are equal. Stops at the first difference; the uuid comes first.
    bool hasSameValues(const RvAttribute& other) const;

    /// Building block for `serialization` of derived kinds: sets the keys of this kind's parents,
    /// then its own. A key that is there already gets the new value.
    void fillJson(QJsonObject& json) const;

    /// Identity of the track, the framework's track id: equal uuids mean the same track. A main
    /// group goes by the uuid of its first track.
    std::uint64_t uuid;
    std::string source; ///< file path or resource of the track, UTF-8
    /// ms, on the timeline for a mix track, within its group for a main track.
    std::int64_t startTime = 0;
    std::int64_t duration = 0; ///< ms at speed 1
    /// The track to make of the record: 1 generic (none is made), 2 still image, 3 video, 4 audio,
    /// 5 detection, 6 matte, 7 AR filter, 8 AR beauty, 9 AR makeup, 10 AR layer, 11 AR frame,
    /// 12 AR label, 13 AR liquify. Constructors leave 1 in every kind.
    std::int32_t type = 1;
    std::int32_t zOrder = 0; ///< stacking order, the greater above
    float alpha = 1.0F;      ///< opacity, 0 to 1
    float speed = 1.0F;      ///< playback speed, 1 is that of the file
    /// The track's tag, UTF-8. Copied with the record, but neither compared nor serialised: a new
    /// tag alone leaves a track unchanged.
    std::string auxText;
};

} // namespace norvel
