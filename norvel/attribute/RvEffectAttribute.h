// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

#include <vector>

namespace norvel {

/// What the effects have in common: the tracks they apply to and the detection they use.
struct NORVEL_EXPORT RvEffectAttribute : RvAttribute
{
    RvEffectAttribute();
    RvEffectAttribute(const RvEffectAttribute& other) = default;
    RvEffectAttribute& operator=(const RvEffectAttribute& other) = default;
    ~RvEffectAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvEffectAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    std::int32_t range = 0;    ///< 0 bound to no track, 1 to the track `target[0]`, 2 dynamically
    std::int32_t bindType = 0; ///< how the framework binds, for `range` 1
    std::vector<std::uint64_t> target; ///< uuids of the tracks that the effect applies to
    std::uint64_t detect = 0;          ///< uuid of the detection that the effect uses, 0 for none
};

} // namespace norvel
