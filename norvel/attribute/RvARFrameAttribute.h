// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARBeautyAttribute.h>

namespace norvel {

/// An AR frame (`type` 11): a kind of its own with the values, comparison and JSON of a beauty.
struct NORVEL_EXPORT RvARFrameAttribute : RvARBeautyAttribute
{
    RvARFrameAttribute();
    RvARFrameAttribute(const RvARFrameAttribute& other) = default;
    RvARFrameAttribute& operator=(const RvARFrameAttribute& other) = default;
    ~RvARFrameAttribute() override;
};

} // namespace norvel
