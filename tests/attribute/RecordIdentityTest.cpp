// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <norvel/attribute/RecordIdentity.h>

#include <chrono>
#include <limits>
#include <thread>

using norvel::newRecordIdentity;
using norvel::recordIdentity;

TEST(RecordIdentityTest, IsTheClockInMicroseconds)
{
    EXPECT_EQ(recordIdentity(0, 10'000'000), 0U);
    EXPECT_EQ(recordIdentity(10, 10'000'000), 1U);
    EXPECT_EQ(recordIdentity(1'234'567'890, 1'000'000'000), 1'234'567U);
    EXPECT_EQ(recordIdentity(25'000'000, 10'000'000), 2'500'000U);
}

TEST(RecordIdentityTest, CutsFractionsOfAMicrosecondOff)
{
    EXPECT_EQ(recordIdentity(19, 10'000'000), 1U);
    EXPECT_EQ(recordIdentity(1999, 1'000'000'000), 1U);
    // 2 ticks of a third of a second are 666666.67 microseconds.
    EXPECT_EQ(recordIdentity(2, 3), 666'666U);
    EXPECT_EQ(recordIdentity(5, 3), 1'666'666U);
}

TEST(RecordIdentityTest, ClockSlowerThanAMicrosecondIsScaledUp)
{
    EXPECT_EQ(recordIdentity(7, 1), 7'000'000U);
    EXPECT_EQ(recordIdentity(1500, 1000), 1'500'000U);
}

TEST(RecordIdentityTest, SignExtendsTheLow32Bits)
{
    // 2^31 - 1 is the last positive identity, the next one is -2^31.
    EXPECT_EQ(recordIdentity(2'147'483'647, 1'000'000), 0x000000007fffffffU);
    EXPECT_EQ(recordIdentity(2'147'483'648, 1'000'000), 0xffffffff80000000U);
    EXPECT_EQ(recordIdentity(4'294'967'295, 1'000'000), 0xffffffffffffffffU);
}

TEST(RecordIdentityTest, ComesRoundAfter32Bits)
{
    EXPECT_EQ(recordIdentity(4'294'967'296, 1'000'000), 0U);
    EXPECT_EQ(recordIdentity(4'294'967'296 + 42, 1'000'000), 42U);
    EXPECT_EQ(recordIdentity(5000, 1), recordIdentity(5'000'000'000 - 4'294'967'296, 1'000'000));
}

TEST(RecordIdentityTest, IsExactForTheGreatestCounter)
{
    // 9223372036854775807 ticks of 100 ns are 922337203685477580.7 microseconds, whose low 32 bits
    // are 3435973836, that is -858993460.
    EXPECT_EQ(recordIdentity(std::numeric_limits<std::int64_t>::max(), 10'000'000),
              static_cast<std::uint64_t>(-858'993'460LL));
}

TEST(RecordIdentityTest, IsSharedWithinAMicrosecond)
{
    EXPECT_EQ(recordIdentity(1'000'010, 10'000'000), recordIdentity(1'000'019, 10'000'000));
    EXPECT_NE(recordIdentity(1'000'019, 10'000'000), recordIdentity(1'000'020, 10'000'000));
}

TEST(RecordIdentityTest, NewIdentityIsASignExtended32BitNumber)
{
    const std::uint64_t identity = newRecordIdentity();

    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(identity));
    EXPECT_EQ(identity, static_cast<std::uint64_t>(static_cast<std::int64_t>(low)));
}

TEST(RecordIdentityTest, NewIdentityAdvancesByMicroseconds)
{
    const std::uint64_t first = newRecordIdentity();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const std::uint64_t second = newRecordIdentity();

    const auto passed = static_cast<std::uint32_t>(second - first);
    EXPECT_GE(passed, 20'000U);
    EXPECT_LT(passed, 60'000'000U);
}

template <class Kind>
class RecordIdentityOfKindTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(RecordIdentityOfKindTest, EveryKind);

TYPED_TEST(RecordIdentityOfKindTest, IsTheInstantOfTheConstruction)
{
    const std::uint64_t before = newRecordIdentity();
    const TypeParam record;
    const std::uint64_t after = newRecordIdentity();

    EXPECT_LE(static_cast<std::uint32_t>(record.uuid - before),
              static_cast<std::uint32_t>(after - before));
}

TYPED_TEST(RecordIdentityOfKindTest, RecordsOfDifferentMicrosecondsAreOtherRecords)
{
    const TypeParam first;
    TypeParam second;
    while (newRecordIdentity() == first.uuid) {
    }
    second = TypeParam();

    EXPECT_EQ(first.compare(&second), norvel::ReturnOtherRecord);
}
