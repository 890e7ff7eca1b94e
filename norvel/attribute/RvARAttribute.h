// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvEffectAttribute.h>

#include <map>

namespace norvel {

/// What the AR effects have in common.
struct NORVEL_EXPORT RvARAttribute : RvEffectAttribute
{
    RvARAttribute();
    RvARAttribute(const RvARAttribute& other) = default;
    RvARAttribute& operator=(const RvARAttribute& other) = default;
    ~RvARAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvARAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    std::string globalParamConfiguration;            ///< the framework's configuration text, UTF-8
    std::map<std::string, std::string> scriptParams; ///< values of the script's parameters, UTF-8
};

} // namespace norvel
