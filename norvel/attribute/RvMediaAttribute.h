// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

namespace norvel {

/// A still image or a video clip (`type` 2 or 3).
struct NORVEL_EXPORT RvMediaAttribute : RvAttribute
{
    RvMediaAttribute();
    RvMediaAttribute(const RvMediaAttribute& other) = default;
    RvMediaAttribute& operator=(const RvMediaAttribute& other) = default;
    ~RvMediaAttribute() override;

    RvReturnVlaue compare(RvAttribute* other) const override;
    std::string serialization() const override;

    bool hasSameValues(const RvMediaAttribute& other) const;
    void fillJson(QJsonObject& json) const;

    float fileStartTime = 0.0F; ///< ms into the file at which the clip begins; unused by images
    float width = 0.0F;         ///< canvas px
    float height = 0.0F;        ///< canvas px
    float positionX = 0.0F;     ///< centre of the clip, canvas px from the left
    float positionY = 0.0F;     ///< centre of the clip, canvas px from the bottom
    float scale = 1.0F;         ///< factor on width and height
    float rotation = 0.0F;      ///< degrees, clockwise as seen
};

} // namespace norvel
