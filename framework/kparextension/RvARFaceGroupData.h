// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARMakeupARGroupData.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qkpar {

/// The makeup of one detected face.
struct RvARFaceGroupData
{
    std::int64_t faceId = 0;
    float suitAlpha = 1.0F; ///< opacity of the whole makeup on this face, 0 to 1
    std::vector<RvARMakeupARGroupData> groupDatas;
    std::vector<std::string> groupOrders; ///< group names, the bottom one first
};

} // namespace qkpar
