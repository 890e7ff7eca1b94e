// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARBeautyAttribute.h>

#include <kparextension/RvARFaceGroupData.h>
#include <kparextension/RvARMakeupARGroupData.h>

namespace norvel {

/// An AR makeup track (`type` 9).
struct NORVEL_EXPORT RvARMakeupAttribute : RvARBeautyAttribute
{
    /// `beautyType` is qkpar::RvBeautyTypeMakeup from the start.
    RvARMakeupAttribute();
    RvARMakeupAttribute(const RvARMakeupAttribute& other) = default;
    RvARMakeupAttribute& operator=(const RvARMakeupAttribute& other) = default;
    ~RvARMakeupAttribute() override;

    /// As for every kind, but lenient about faces: their number counts, and then the groups of
    /// those faces alone that have the same id, alpha and number of groups at the same index in
    /// both records. Where any of these differs, the face is passed over.
    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvARMakeupAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    /// Whether two groups are equal: alpha (exactly), id, name and all entries in order.
    static bool compareMakeupGroupData(qkpar::RvARMakeupARGroupData a,
                                       qkpar::RvARMakeupARGroupData b);

    float suitAlpha = 0.0F; ///< opacity of the whole makeup, 0 to 1; 0 until set
    std::vector<qkpar::RvARMakeupARGroupData> groupDatas; ///< groups for all faces
    /// Makeup by face. Only id and alpha of a face are serialised, not its groups.
    std::vector<qkpar::RvARFaceGroupData> groupFaceDatas;
    /// Group names, the bottom one first, UTF-8. Serialised, but not compared: another order alone
    /// leaves a track unchanged.
    std::vector<std::string> groupOrders;
};

} // namespace norvel
