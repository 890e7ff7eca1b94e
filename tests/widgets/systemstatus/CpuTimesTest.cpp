// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/CpuTimes.h>

#include <gtest/gtest.h>

using norvel::CpuTimes;

TEST(CpuTimesTest, TheLoadIsTheBusyPartOfTheTimeBetween)
{
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {150, 1200}), 25.0);
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {300, 1200}), 100.0);
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {100, 1200}), 0.0);
    EXPECT_EQ(CpuTimes::loadBetween({0, 0}, {1, 3}), 33.0) << "whole percent";
    EXPECT_EQ(CpuTimes::loadBetween({0, 0}, {2, 3}), 67.0);
}

TEST(CpuTimesTest, TheLoadStaysWithinItsBoundsWhenTimesGoBack)
{
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {100, 1000}), 0.0);
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {50, 500}), 0.0);
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {90, 1100}), 0.0);
    EXPECT_EQ(CpuTimes::loadBetween({100, 1000}, {400, 1100}), 100.0);
}

TEST(CpuTimesTest, TheLoadIsThatSinceTheLastTime)
{
    CpuTimes times{100, 1000};
    EXPECT_EQ(times.advanceTo({150, 1100}), 50.0);
    EXPECT_EQ(times.advanceTo({160, 1200}), 10.0);
    EXPECT_EQ(times.advanceTo({160, 1200}), 0.0);
}

TEST(CpuTimesTest, WindowsCountsTheIdleTimeAsTheKernels)
{
    const CpuTimes times = CpuTimes::fromWindows(700, 800, 200);
    EXPECT_EQ(times.busy, 300);
    EXPECT_EQ(times.total, 1000);
}
