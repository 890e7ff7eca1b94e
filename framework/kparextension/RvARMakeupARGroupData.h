// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qkpar {

/// One group of a makeup (lips, brows, ...) with the AR resources it is made of.
struct RvARMakeupARGroupData
{
    std::int64_t groupDataId = 0;
    std::string groupName;   ///< UTF-8
    float groupAlpha = 1.0F; ///< 0 transparent to 1 opaque
    /// The group's resources, each a key and a value in UTF-8.
    std::vector<std::pair<std::string, std::string>> entries;
};

} // namespace qkpar
