// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/RecordOracle.h"

#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <gtest/gtest.h>

namespace {

using namespace norvel;

/// The fate of a copy of a record to which something was done, in a list of that record.
template <class Kind, class Change>
RecordFate fateAfter(Change change)
{
    Kind record;
    record.uuid = 7;
    Kind copy(record);
    change(copy);
    return fateOf(copy, {&record});
}

template <class Kind>
void keep(Kind&)
{
}

TEST(RecordOracleTest, ACopyIsKept)
{
    EXPECT_EQ(fateAfter<RvMediaAttribute>(keep<RvMediaAttribute>), RecordFate::Kept);
    EXPECT_EQ(fateAfter<RvAudioAttribute>(keep<RvAudioAttribute>), RecordFate::Kept);
    EXPECT_EQ(fateAfter<RvDetectAttribute>(keep<RvDetectAttribute>), RecordFate::Kept);
    EXPECT_EQ(fateAfter<RvARMakeupAttribute>(keep<RvARMakeupAttribute>), RecordFate::Kept);
}

TEST(RecordOracleTest, ALiquifyIsAlwaysUpdated)
{
    EXPECT_EQ(fateAfter<RvARLiquifyAttribute>(keep<RvARLiquifyAttribute>), RecordFate::Updated);
}

TEST(RecordOracleTest, AnotherIdOrKindIsCreated)
{
    EXPECT_EQ(fateAfter<RvMediaAttribute>([](auto& record) { record.uuid = 8; }),
              RecordFate::Created);
    RvMediaAttribute clip;
    RvAudioAttribute sound;
    sound.uuid = clip.uuid;
    EXPECT_EQ(fateOf(clip, {&sound}), RecordFate::Created);
    EXPECT_EQ(fateOf(clip, {&sound, &clip}), RecordFate::Kept);
    EXPECT_EQ(fateOf(clip, {}), RecordFate::Created);
}

TEST(RecordOracleTest, AFieldThatCountsIsUpdated)
{
    EXPECT_EQ(fateAfter<RvMediaAttribute>([](auto& record) { record.speed = 2.0F; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvMediaAttribute>([](auto& record) { record.rotation = 2.0F; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvAudioAttribute>([](auto& record) { record.fileStartTime = 2.0F; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvDetectAttribute>([](auto& record) { record.target = {1}; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvARFilterAttribute>([](auto& record) { record.detect = 1; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvARFilterAttribute>([](auto& record) { record.filterAlpha = 0.5F; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvARBeautyAttribute>([](auto& record) { record.beautyMaskFaceId = 2; }),
              RecordFate::Updated);
    EXPECT_EQ(fateAfter<RvARMakeupAttribute>([](auto& record) { record.groupDatas = {{}}; }),
              RecordFate::Updated);
}

TEST(RecordOracleTest, AFieldThatDoesNotCountIsKept)
{
    EXPECT_EQ(fateAfter<RvMediaAttribute>([](auto& record) { record.auxText = "tag"; }),
              RecordFate::Kept);
    EXPECT_EQ(fateAfter<RvARFilterAttribute>([](auto& record) { record.arFacePlists[1] = "a"; }),
              RecordFate::Kept);
    EXPECT_EQ(fateAfter<RvARMakeupAttribute>([](auto& record) { record.groupOrders = {"a"}; }),
              RecordFate::Kept);
}

TEST(RecordOracleTest, FacesOfAMakeupCountOnlyWhereTheyAreTheSame)
{
    const auto fate = [](const qkpar::RvARFaceGroupData& a, const qkpar::RvARFaceGroupData& b) {
        RvARMakeupAttribute first;
        first.groupFaceDatas = {a};
        RvARMakeupAttribute second(first);
        second.groupFaceDatas = {b};
        return fateOf(second, {&first});
    };
    const qkpar::RvARFaceGroupData face{1, 0.5F, {{1, "lips", 0.5F, {}}}, {}};
    qkpar::RvARFaceGroupData other = face;
    other.groupDatas[0].groupAlpha = 0.25F;
    EXPECT_EQ(fate(face, other), RecordFate::Updated);
    other.faceId = 2;
    EXPECT_EQ(fate(face, other), RecordFate::Kept);
}

} // namespace
