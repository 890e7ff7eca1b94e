// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvEffectAttribute.h>

namespace norvel {

/// A matte (`type` 6). It has the fields of an effect and compares them all, but leaves `detect`
/// out of its JSON.
struct NORVEL_EXPORT RvMatteAttribute : RvEffectAttribute
{
    RvMatteAttribute();
    RvMatteAttribute(const RvMatteAttribute& other) = default;
    RvMatteAttribute& operator=(const RvMatteAttribute& other) = default;
    ~RvMatteAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvMatteAttribute& other) const;
    void fillJson(QJsonObject& json) const;
};

} // namespace norvel
