// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARAttribute.h>

#include <kparextension/KpARTypes.h>

namespace norvel {

/// An AR filter (`type` 7).
struct NORVEL_EXPORT RvARFilterAttribute : RvARAttribute
{
    RvARFilterAttribute();
    RvARFilterAttribute(const RvARFilterAttribute& other) = default;
    RvARFilterAttribute& operator=(const RvARFilterAttribute& other) = default;
    ~RvARFilterAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvARFilterAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    float filterAlpha = 1.0F;                                ///< strength of the filter, 0 to 1
    std::map<qkpar::KpARKernelParamFlag, float> floatParams; ///< parameters for all faces
    /// Parameters by face id.
    std::map<std::int64_t, std::map<qkpar::KpARKernelParamFlag, float>> faceFloatParams;
    /// Path of the AR configuration file of a face, by face id, UTF-8. Copied with the record, but
    /// neither compared nor serialised: another file alone leaves a track unchanged.
    std::map<std::int64_t, std::string> arFacePlists;
};

} // namespace norvel
