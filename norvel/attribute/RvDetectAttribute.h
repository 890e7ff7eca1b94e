// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

#include <vector>

namespace norvel {

/// A detection, e.g. of faces, in the tracks it is bound to (`type` 5).
struct NORVEL_EXPORT RvDetectAttribute : RvAttribute
{
    RvDetectAttribute();
    RvDetectAttribute(const RvDetectAttribute& other) = default;
    RvDetectAttribute& operator=(const RvDetectAttribute& other) = default;
    ~RvDetectAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvDetectAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    std::int32_t mode = 1;     ///< what the framework is to detect
    std::string modePath;      ///< path of the detection model, UTF-8
    std::int32_t range = 0;    ///< 0 bound to no track, 1 to the track `target[0]`, 2 dynamically
    std::int32_t bindType = 0; ///< how the framework binds, for `range` 1
    std::vector<std::uint64_t> target; ///< uuids of the tracks that it works on
};

} // namespace norvel
