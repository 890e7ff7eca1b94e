// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RvARLabelAttribute.h>

namespace norvel {

RvARLabelAttribute::RvARLabelAttribute() = default;

RvARLabelAttribute::~RvARLabelAttribute() = default;

} // namespace norvel
