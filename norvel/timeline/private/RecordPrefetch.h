// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

#include <cstddef>
#include <vector>

namespace norvel {

/// Asks for the first `lines` cache lines of the record some steps behind `index`, so that they are
/// in the processor's cache when a walk of the list is there: long lists are not, and a walk that
/// waits for every record by itself takes several times as long.
inline void prefetchRecord([[maybe_unused]] const std::vector<RvAttribute*>& list,
                           [[maybe_unused]] std::size_t index, [[maybe_unused]] int lines)
{
#if defined(__GNUC__)
    constexpr std::size_t distance = 6;
    constexpr int bytesPerLine = 64;
    if (index + distance >= list.size())
        return;
    const auto* record = reinterpret_cast<const char*>(list[index + distance]);
    for (int line = 0; line < lines; ++line)
        __builtin_prefetch(record + line * bytesPerLine);
#endif
}

/// As many as a comparison of most kinds reads.
constexpr int comparedLines = 6;

} // namespace norvel
