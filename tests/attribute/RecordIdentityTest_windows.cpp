// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RecordIdentity.h>

#include <gtest/gtest.h>

#include <qt_windows.h>

using norvel::newRecordIdentity;
using norvel::recordIdentity;

namespace {

/// The identity of a record that is made now.
std::uint64_t performanceCounter()
{
    LARGE_INTEGER counter;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return recordIdentity(counter.QuadPart, frequency.QuadPart);
}

} // namespace

TEST(RecordIdentityTest, IsThePerformanceCounterOfWindows)
{
    const std::uint64_t before = performanceCounter();
    const std::uint64_t identity = newRecordIdentity();
    const std::uint64_t after = performanceCounter();

    EXPECT_LE(static_cast<std::uint32_t>(identity - before),
              static_cast<std::uint32_t>(after - before));
}
