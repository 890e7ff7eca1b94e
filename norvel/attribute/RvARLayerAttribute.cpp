// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARLayerAttribute.h>

namespace norvel {

RvARLayerAttribute::RvARLayerAttribute() = default;

RvARLayerAttribute::~RvARLayerAttribute() = default;

} // namespace norvel
