// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RecordIdentity.h>

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <chrono>
#endif

namespace norvel {

std::uint64_t recordIdentity(std::int64_t counter, std::int64_t frequency)
{
    constexpr std::int64_t microsecondsPerSecond = 1'000'000;
    // The seconds are split off first: counter * 10^6 would overflow on a machine that is up long.
    const std::int64_t seconds = counter / frequency;
    const std::int64_t remainder = counter % frequency * microsecondsPerSecond / frequency;
    // Unsigned, because the sum is meant to wrap.
    const std::uint32_t wrapped =
        static_cast<std::uint32_t>(seconds) * static_cast<std::uint32_t>(microsecondsPerSecond) +
        static_cast<std::uint32_t>(remainder);
    return static_cast<std::uint64_t>(
        static_cast<std::int64_t>(static_cast<std::int32_t>(wrapped)));
}

std::uint64_t newRecordIdentity()
{
#ifdef Q_OS_WIN
    LARGE_INTEGER counter;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return recordIdentity(counter.QuadPart, frequency.QuadPart);
#else
    using Clock = std::chrono::steady_clock;
    static_assert(Clock::period::num == 1, "the clock ticks a whole number of times a second");
    return recordIdentity(Clock::now().time_since_epoch().count(), Clock::period::den);
#endif
}

} // namespace norvel
