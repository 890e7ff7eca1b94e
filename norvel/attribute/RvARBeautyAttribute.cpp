// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARBeautyAttribute.h>

#include <norvel/attribute/RecordComparison.h>
#include <norvel/attribute/RecordJson.h>

namespace norvel {

RvARBeautyAttribute::RvARBeautyAttribute() = default;

RvARBeautyAttribute::~RvARBeautyAttribute() = default;

RvReturnVlaue RvARBeautyAttribute::compare(RvAttribute* other) const
{
    return compareRecords(*this, other);
}

std::string RvARBeautyAttribute::serialization() const
{
    QJsonObject json;
    fillJson(json);
    return jsonDocument(json);
}

bool RvARBeautyAttribute::hasSameValues(const RvARBeautyAttribute& other) const
{
    return RvARFilterAttribute::hasSameValues(other) && beautyType == other.beautyType &&
           enableBeautyGenderDistinction == other.enableBeautyGenderDistinction &&
           coeffientParameterConfig == other.coeffientParameterConfig &&
           genderParamCoeffientsA == other.genderParamCoeffientsA &&
           genderParamCoeffientsB == other.genderParamCoeffientsB &&
           applyGenderToAR == other.applyGenderToAR &&
           allFaceBeautyParam == other.allFaceBeautyParam &&
           allBeautyAnattaForFaceControls == other.allBeautyAnattaForFaceControls &&
           manualLongLegEnable == other.manualLongLegEnable &&
           manualLongLegRange == other.manualLongLegRange &&
           manualSlimHeadParam == other.manualSlimHeadParam &&
           mapPointsData == other.mapPointsData && beautyMaskFaceId == other.beautyMaskFaceId &&
           beautyMaskBrushType == other.beautyMaskBrushType &&
           beautyActiveMaskImageRef == other.beautyActiveMaskImageRef;
}

void RvARBeautyAttribute::fillJson(QJsonObject& json) const
{
    RvARFilterAttribute::fillJson(json);
    json.insert(QStringLiteral("beautyType"), static_cast<int>(beautyType));
}

} // namespace norvel
