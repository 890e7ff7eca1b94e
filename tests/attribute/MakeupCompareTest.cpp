// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <cstdint>
#include <cstring>

using namespace norvel;
using qkpar::RvARFaceGroupData;
using qkpar::RvARMakeupARGroupData;

namespace {

using Groups = std::vector<RvARMakeupARGroupData>;
using Faces = std::vector<RvARFaceGroupData>;

RvReturnVlaue compareFaces(const Faces& a, const Faces& b)
{
    RvARMakeupAttribute first;
    RvARMakeupAttribute second(first);
    first.groupFaceDatas = a;
    second.groupFaceDatas = b;
    const RvReturnVlaue result = first.compare(&second);
    EXPECT_EQ(second.compare(&first), result);
    return result;
}

bool sameGroup(const RvARMakeupARGroupData& a, const RvARMakeupARGroupData& b)
{
    const bool same = RvARMakeupAttribute::compareMakeupGroupData(a, b);
    EXPECT_EQ(RvARMakeupAttribute::compareMakeupGroupData(b, a), same);
    return same;
}

float fromBits(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

const Groups lips = {makeupGroup(7, "lips")};
const Groups otherLips = {makeupGroup(8, "lips")};
const Groups lipsAndBrows = {makeupGroup(7, "lips"), makeupGroup(9, "brows")};
const Groups lipsAndOtherBrows = {makeupGroup(7, "lips"), makeupGroup(9, "brows", 0.25F)};

} // namespace

TEST(MakeupCompareTest, GroupsWithEqualValuesAreEqual)
{
    EXPECT_TRUE(sameGroup(makeupGroup(7, "lips"), makeupGroup(7, "lips")));
    EXPECT_TRUE(sameGroup(RvARMakeupARGroupData(), RvARMakeupARGroupData()));
}

TEST(MakeupCompareTest, EveryValueOfAGroupCounts)
{
    const RvARMakeupARGroupData group = makeupGroup(7, "lips", 0.5F);

    EXPECT_FALSE(sameGroup(group, makeupGroup(7, "lips", std::nextafter(0.5F, 1.0F))));
    EXPECT_FALSE(sameGroup(group, makeupGroup(7 + (1LL << 32), "lips", 0.5F)));
    EXPECT_FALSE(sameGroup(group, makeupGroup(7, "Lips", 0.5F)));

    RvARMakeupARGroupData other = group;
    other.entries[1].first = "mix";
    EXPECT_FALSE(sameGroup(group, other));
    other = group;
    other.entries[1].second = "screen";
    EXPECT_FALSE(sameGroup(group, other));
    other = group;
    other.entries.pop_back();
    EXPECT_FALSE(sameGroup(group, other));
    other = group;
    std::swap(other.entries[0], other.entries[1]);
    EXPECT_FALSE(sameGroup(group, other));
    other = group;
    std::swap(other.entries[0].first, other.entries[0].second);
    EXPECT_FALSE(sameGroup(group, other));
}

TEST(MakeupCompareTest, GroupsWithoutEntriesAreEqual)
{
    RvARMakeupARGroupData a = makeupGroup(7, "lips");
    RvARMakeupARGroupData b = a;
    a.entries.clear();
    EXPECT_FALSE(sameGroup(a, b));

    b.entries.clear();

    EXPECT_TRUE(sameGroup(a, b));
}

TEST(MakeupCompareTest, AlphaOfAGroupIsComparedAsANumber)
{
    EXPECT_TRUE(sameGroup(makeupGroup(7, "lips", 0.0F), makeupGroup(7, "lips", -0.0F)));
    EXPECT_FALSE(sameGroup(makeupGroup(7, "lips", quietNan), makeupGroup(7, "lips", quietNan)));
}

TEST(MakeupCompareTest, LaterGroupsCountToo)
{
    RvARMakeupAttribute record;
    RvARMakeupAttribute other(record);
    record.groupDatas = lipsAndBrows;
    other.groupDatas = lipsAndOtherBrows;

    EXPECT_EQ(record.compare(&other), ReturnChanged);
    other.groupDatas = record.groupDatas;
    EXPECT_EQ(record.compare(&other), ReturnSame);
}

TEST(MakeupCompareTest, MatchingFacesCompareTheirGroups)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5, lips)}), ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5, otherLips)}), ReturnChanged);
    EXPECT_EQ(compareFaces({makeupFace(5, lipsAndBrows)}, {makeupFace(5, lipsAndOtherBrows)}),
              ReturnChanged);
}

TEST(MakeupCompareTest, NumberOfFacesCounts)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {}), ReturnChanged);
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5, lips), makeupFace(6, {})}),
              ReturnChanged);
}

TEST(MakeupCompareTest, FacesOfDifferentIdArePassedOver)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(6, lips)}), ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(6, otherLips)}), ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5 + (1LL << 32), otherLips)}),
              ReturnSame);
}

TEST(MakeupCompareTest, FacesOfDifferentAlphaArePassedOver)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips, 0.5F)}, {makeupFace(5, lips, 0.25F)}), ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips, 0.5F)}, {makeupFace(5, otherLips, 0.25F)}),
              ReturnSame);
}

TEST(MakeupCompareTest, FacesWithDifferentNumbersOfGroupsArePassedOver)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5, lipsAndBrows)}), ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips)}, {makeupFace(5, {})}), ReturnSame);
}

TEST(MakeupCompareTest, FacesWithoutGroupsAreTheSame)
{
    EXPECT_EQ(compareFaces({makeupFace(5, {})}, {makeupFace(5, {})}), ReturnSame);
}

TEST(MakeupCompareTest, FacesAreMatchedByIndex)
{
    // The same two faces in another order have no pair of the same id, so nothing is compared.
    EXPECT_EQ(compareFaces({makeupFace(5, lips), makeupFace(6, lipsAndBrows)},
                           {makeupFace(6, lipsAndBrows), makeupFace(5, otherLips)}),
              ReturnSame);
}

TEST(MakeupCompareTest, AFacePassedOverDoesNotHideALaterOne)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips), makeupFace(6, lips), makeupFace(7, lips)},
                           {makeupFace(1, lips), makeupFace(6, {}), makeupFace(7, otherLips)}),
              ReturnChanged);
}

TEST(MakeupCompareTest, AMatchingFaceDoesNotHideALaterOne)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips), makeupFace(6, lips)},
                           {makeupFace(5, lips), makeupFace(6, otherLips)}),
              ReturnChanged);
}

TEST(MakeupCompareTest, AlphaOfAFaceIsMatchedBitForBit)
{
    const float nanA = fromBits(0x7fc00000U);
    const float nanB = fromBits(0x7fc00001U);

    // The groups differ, so a match shows as a change.
    EXPECT_EQ(compareFaces({makeupFace(5, lips, nanA)}, {makeupFace(5, otherLips, nanA)}),
              ReturnChanged);
    EXPECT_EQ(compareFaces({makeupFace(5, lips, nanA)}, {makeupFace(5, otherLips, nanB)}),
              ReturnSame);
    EXPECT_EQ(compareFaces({makeupFace(5, lips, -0.0F)}, {makeupFace(5, otherLips, -0.0F)}),
              ReturnChanged);
    EXPECT_EQ(compareFaces({makeupFace(5, lips, 0.0F)}, {makeupFace(5, otherLips, -0.0F)}),
              ReturnSame);
}

TEST(MakeupCompareTest, NanAlphaOfAFaceAloneIsNoChange)
{
    EXPECT_EQ(compareFaces({makeupFace(5, lips, quietNan)}, {makeupFace(5, lips, quietNan)}),
              ReturnSame);
}

TEST(MakeupCompareTest, ChangedFaceOfAnotherIdentityIsAnotherRecord)
{
    RvARMakeupAttribute record;
    record.groupFaceDatas = {makeupFace(5, lips)};
    RvARMakeupAttribute other(record);
    other.groupFaceDatas = {makeupFace(5, otherLips)};
    other.uuid = record.uuid + 1;

    EXPECT_EQ(record.compare(&other), ReturnOtherRecord);
}

TEST(MakeupCompareTest, OrdersAreNotCompared)
{
    auto record = filledRecord<RvARMakeupAttribute>();
    RvARMakeupAttribute other(record);
    other.groupOrders.clear();
    other.groupFaceDatas[0].groupOrders = {"none"};

    EXPECT_EQ(record.compare(&other), ReturnSame);
}
