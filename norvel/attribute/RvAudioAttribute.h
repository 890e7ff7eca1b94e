// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

namespace norvel {

/// An audio clip (`type` 4).
struct NORVEL_EXPORT RvAudioAttribute : RvAttribute
{
    RvAudioAttribute();
    RvAudioAttribute(const RvAudioAttribute& other) = default;
    RvAudioAttribute& operator=(const RvAudioAttribute& other) = default;
    ~RvAudioAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvAudioAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    float fileStartTime = 0.0F; ///< ms into the file at which the clip begins
};

} // namespace norvel
