// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <typeinfo>

using namespace norvel;

TEST(LiquifyCompareTest, ExactCopyIsAChange)
{
    auto record = filledRecord<RvARLiquifyAttribute>();
    RvARLiquifyAttribute copy(record);

    EXPECT_EQ(record.compare(&copy), ReturnChanged);
    EXPECT_EQ(copy.compare(&record), ReturnChanged);
}

TEST(LiquifyCompareTest, RecordItselfIsAChange)
{
    auto record = filledRecord<RvARLiquifyAttribute>();

    EXPECT_EQ(record.compare(&record), ReturnChanged);
}

TEST(LiquifyCompareTest, DefaultsOfTheSameIdentityAreAChange)
{
    RvARLiquifyAttribute first;
    RvARLiquifyAttribute second;
    first.uuid = second.uuid = 42;

    EXPECT_EQ(first.compare(&second), ReturnChanged);
}

TEST(LiquifyCompareTest, AnyDifferenceIsAChange)
{
    const auto record = filledRecord<RvARLiquifyAttribute>();
    RvARLiquifyAttribute other(record);
    other.centerX = 1.0;
    EXPECT_EQ(record.compare(&other), ReturnChanged);
    other.radius = 9.0F;
    other.strength = quietNan;
    other.liquifyStyle = 9;
    other.movePoints[1] = QPointF();
    other.effectPath = QStringLiteral("/elsewhere");
    other.source = "another";

    EXPECT_EQ(record.compare(&other), ReturnChanged);
}

TEST(LiquifyCompareTest, AnotherIdentityIsAnotherRecord)
{
    const auto record = filledRecord<RvARLiquifyAttribute>();
    RvARLiquifyAttribute other(record);
    other.uuid = 1;

    EXPECT_EQ(record.compare(&other), ReturnOtherRecord);
}

TEST(LiquifyCompareTest, AnotherKindIsRefusedAndNoRecordIsInvalid)
{
    RvARLiquifyAttribute record;
    RvARBeautyAttribute beauty;
    RvARMakeupAttribute makeup;

    EXPECT_THROW(record.compare(&beauty), std::bad_cast);
    EXPECT_THROW(record.compare(&makeup), std::bad_cast);
    EXPECT_EQ(record.compare(nullptr), ReturnInvalid);
}

TEST(LiquifyCompareTest, BeautyComparesItsPartOfALiquify)
{
    auto beauty = filledRecord<RvARBeautyAttribute>();
    auto liquify = filledRecord<RvARLiquifyAttribute>();

    EXPECT_EQ(beauty.compare(&liquify), ReturnSame);
}
