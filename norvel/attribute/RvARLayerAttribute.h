// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvARAttribute.h>

namespace norvel {

/// An AR layer (`type` 10): a kind of its own with the values, comparison and JSON of any AR
/// effect.
struct NORVEL_EXPORT RvARLayerAttribute : RvARAttribute
{
    RvARLayerAttribute();
    RvARLayerAttribute(const RvARLayerAttribute& other) = default;
    RvARLayerAttribute& operator=(const RvARLayerAttribute& other) = default;
    ~RvARLayerAttribute() override;
};

} // namespace norvel
