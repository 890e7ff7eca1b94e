// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <limits>

using namespace norvel;

namespace {

constexpr double doubleNan = std::numeric_limits<double>::quiet_NaN();
constexpr double doubleInf = std::numeric_limits<double>::infinity();

/// Whether beauty records with these two map points are the same, in both directions.
bool same(const QPointF& a, const QPointF& b)
{
    RvARBeautyAttribute first;
    RvARBeautyAttribute second(first);
    first.mapPointsData = {a};
    second.mapPointsData = {b};
    const RvReturnVlaue result = first.compare(&second);
    EXPECT_EQ(second.compare(&first), result);
    return result == ReturnSame;
}

/// The same for either coordinate alone.
bool same(double a, double b)
{
    const bool x = same(QPointF(a, 1.0), QPointF(b, 1.0));
    EXPECT_EQ(same(QPointF(1.0, a), QPointF(1.0, b)), x) << a << " and " << b;
    return x;
}

} // namespace

TEST(BeautyPointCompareTest, EqualPointsAreTheSame)
{
    EXPECT_TRUE(same(0.0, 0.0));
    EXPECT_TRUE(same(0.0, -0.0));
    EXPECT_TRUE(same(1920.5, 1920.5));
    EXPECT_TRUE(same(-1e300, -1e300));
}

TEST(BeautyPointCompareTest, DistanceFromZeroIsAbsolute)
{
    EXPECT_TRUE(same(0.0, 1e-12));
    EXPECT_TRUE(same(0.0, -1e-12));
    EXPECT_FALSE(same(0.0, 1.0001e-12));
    EXPECT_FALSE(same(0.0, -1.0001e-12));
    EXPECT_TRUE(same(0.0, 1e-300));
}

TEST(BeautyPointCompareTest, DistanceOfOtherValuesIsRelativeToTheSmaller)
{
    EXPECT_TRUE(same(1.0, 1.0 + 9e-13));
    EXPECT_FALSE(same(1.0, 1.0 + 1.1e-12));
    EXPECT_TRUE(same(-1.0, -1.0 - 9e-13));
    EXPECT_FALSE(same(-1.0, -1.0 - 1.1e-12));
    EXPECT_TRUE(same(1e6, 1e6 + 9e-7));
    EXPECT_FALSE(same(1e6, 1e6 + 1.1e-6));
}

TEST(BeautyPointCompareTest, TinyValuesOfDifferentSizeDiffer)
{
    // Far closer than 1e-12, but neither is 0.
    EXPECT_FALSE(same(1e-20, 2e-20));
    EXPECT_FALSE(same(1e-20, -1e-20));
    EXPECT_TRUE(same(1e-20, 1e-20));
}

TEST(BeautyPointCompareTest, CoordinatesAreTakenSeparately)
{
    EXPECT_TRUE(same(QPointF(0.0, 1e6), QPointF(1e-13, 1e6 + 9e-7)));
    EXPECT_FALSE(same(QPointF(1e-13, 1e6), QPointF(2e-13, 1e6)));
    EXPECT_FALSE(same(QPointF(1.0, 2.0), QPointF(2.0, 1.0)));
}

TEST(BeautyPointCompareTest, NanMatchesNothing)
{
    EXPECT_FALSE(same(doubleNan, doubleNan));
    EXPECT_FALSE(same(doubleNan, 0.0));
    EXPECT_FALSE(same(doubleNan, 1.0));
}

TEST(BeautyPointCompareTest, InfinityMatchesByTheSameArithmetic)
{
    // The difference of an infinity and itself is a NaN.
    EXPECT_FALSE(same(doubleInf, doubleInf));
    // An infinite difference is not more than an infinite value.
    EXPECT_TRUE(same(doubleInf, -doubleInf));
    EXPECT_FALSE(same(doubleInf, 0.0));
    EXPECT_FALSE(same(doubleInf, 1.0));
}

TEST(BeautyPointCompareTest, EveryPointCountsInItsPlace)
{
    RvARBeautyAttribute record;
    record.mapPointsData = {QPointF(1.0, 2.0), QPointF(3.0, 4.0), QPointF(5.0, 6.0)};
    RvARBeautyAttribute other(record);
    EXPECT_EQ(record.compare(&other), ReturnSame);

    other.mapPointsData[2].setY(7.0);
    EXPECT_EQ(record.compare(&other), ReturnChanged);

    other.mapPointsData = {QPointF(3.0, 4.0), QPointF(1.0, 2.0), QPointF(5.0, 6.0)};
    EXPECT_EQ(record.compare(&other), ReturnChanged);
}
