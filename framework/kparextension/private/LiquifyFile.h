// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARLiquifyOperation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qkpar {

/// The strokes of a liquify track as they stand in its file.
struct LiquifyStrokes
{
    std::vector<RvARLiquifyOperation> confirmed;
    RvARLiquifyOperation last; ///< the stroke appended last, which may be confirmed too
};

/// Writes the strokes of the track `id` to its file in `folder` (a path in the local 8-bit
/// encoding), whole or not at all; false when that fails.
bool saveStrokes(const std::string& folder, std::uint64_t id, const LiquifyStrokes& strokes);
/// The strokes that were saved in `folder` for the track `id`, or nothing when there is no valid
/// file.
std::optional<LiquifyStrokes> loadStrokes(const std::string& folder, std::uint64_t id);

} // namespace qkpar
