// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARFilterAttribute.h>

#include <QImage>
#include <QPointF>

#include <tuple>
#include <utility>

namespace norvel {

/// An AR beauty track (`type` 8) and what the makeup, liquify, frame and label kinds share with it.
///
/// Every field mirrors the property of that name of the framework's beauty track. Of the fields
/// added here only `beautyType` is serialised; all but `beautyActiveMaskImage` are compared.
struct NORVEL_EXPORT RvARBeautyAttribute : RvARFilterAttribute
{
    RvARBeautyAttribute();
    RvARBeautyAttribute(const RvARBeautyAttribute& other) = default;
    RvARBeautyAttribute& operator=(const RvARBeautyAttribute& other) = default;
    ~RvARBeautyAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvARBeautyAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    qkpar::RvBeautyType beautyType = qkpar::RvBeautyTypeBeauty;
    bool enableBeautyGenderDistinction = false; ///< whether coefficients go by gender
    std::string coeffientParameterConfig;       ///< the framework's configuration text, UTF-8
    /// Coefficients of qkpar::KpARGenderFemale.
    std::map<qkpar::KpARKernelParamFlag, float> genderParamCoeffientsA;
    /// Coefficients of qkpar::KpARGenderMale.
    std::map<qkpar::KpARKernelParamFlag, float> genderParamCoeffientsB;
    bool applyGenderToAR = false; ///< whether the AR resources go by gender too
    /// Beauty parameters by face id.
    std::map<std::int64_t, std::map<qkpar::KpARKernelParamFlag, float>> allFaceBeautyParam;
    /// Which parameters are controlled for each face apart.
    std::map<qkpar::KpARKernelParamFlag, bool> allBeautyAnattaForFaceControls;
    std::pair<float, float> manualLongLegRange;          ///< the band to lengthen by hand: from, to
    std::tuple<float, float, float> manualSlimHeadParam; ///< the head to slim by hand
    bool manualLongLegEnable = false;                    ///< whether `manualLongLegRange` is in use
    /// Compared point by point with the tolerance of QPointF's `==`.
    std::vector<QPointF> mapPointsData;
    /// The mask in use, null for none; not owned. Whoever captures a mask lets it point at this
    /// record's own `beautyActiveMaskImage`.
    ///
    /// Copies take over the pointer as it is, so that a copy looks at the image of the record it
    /// was made from, and must not outlive it while the mask is in use. Comparing compares the
    /// pointers, never the pictures: a copy has the same mask, two captures of one track have not.
    QImage* beautyActiveMaskImageRef = nullptr;
    /// The face that the mask belongs to, from 1; 0 until a mask is captured.
    std::int64_t beautyMaskFaceId = 0;
    std::string beautyMaskBrushType; ///< the brush that the mask was painted with, UTF-8
    QImage beautyActiveMaskImage;    ///< the record's own picture of the mask
};

} // namespace norvel
