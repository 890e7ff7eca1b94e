// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARBeautyAttribute.h>

namespace norvel {

/// An AR label (`type` 12): a kind of its own with the values, comparison and JSON of a beauty.
struct NORVEL_EXPORT RvARLabelAttribute : RvARBeautyAttribute
{
    RvARLabelAttribute();
    RvARLabelAttribute(const RvARLabelAttribute& other) = default;
    RvARLabelAttribute& operator=(const RvARLabelAttribute& other) = default;
    ~RvARLabelAttribute() override;
};

} // namespace norvel
