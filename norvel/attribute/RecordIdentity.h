// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace norvel {

/// The identity that a record gets which is made when a clock shows \p counter.
///
/// It is the clock in microseconds, cut to its low 32 bits and sign-extended: it comes round again
/// after some 71 minutes, half of all identities have their upper 32 bits set, and two records of
/// one microsecond share theirs.
///
/// \param counter ticks of the clock, 0 or more
/// \param frequency ticks a second, from 1 to 10^12
std::uint64_t recordIdentity(std::int64_t counter, std::int64_t frequency);

/// The identity of a record made now, by the machine's high-resolution monotonic clock.
std::uint64_t newRecordIdentity();

} // namespace norvel
