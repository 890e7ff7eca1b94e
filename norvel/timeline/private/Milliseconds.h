// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace norvel {

/// A record's float time as whole ms, truncated toward zero. A NaN is 0, and what lies beyond the
/// range of 64 bits is its nearest end: a plain conversion of either would be undefined.
inline long long truncatedMilliseconds(float milliseconds)
{
    constexpr float limit = 9223372036854775808.0F; // 2^63, the first float beyond the range
    if (milliseconds != milliseconds)
        return 0;
    if (milliseconds >= limit)
        return 9223372036854775807LL;
    if (milliseconds < -limit)
        return -9223372036854775807LL - 1;
    return static_cast<long long>(milliseconds);
}

} // namespace norvel
