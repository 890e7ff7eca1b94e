// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARFrameAttribute.h>

namespace norvel {

RvARFrameAttribute::RvARFrameAttribute() = default;

RvARFrameAttribute::~RvARFrameAttribute() = default;

} // namespace norvel
