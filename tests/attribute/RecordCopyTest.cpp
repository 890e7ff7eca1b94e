// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <memory>
#include <type_traits>

using namespace norvel;

namespace {

void expectEqualFields(const RvAttribute& a, const RvAttribute& b)
{
    EXPECT_EQ(a.uuid, b.uuid);
    EXPECT_EQ(a.source, b.source);
    EXPECT_EQ(a.startTime, b.startTime);
    EXPECT_EQ(a.duration, b.duration);
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.zOrder, b.zOrder);
    EXPECT_EQ(a.alpha, b.alpha);
    EXPECT_EQ(a.speed, b.speed);
    EXPECT_EQ(a.auxText, b.auxText);
}

void expectEqualFields(const RvMediaAttribute& a, const RvMediaAttribute& b)
{
    expectEqualFields(static_cast<const RvAttribute&>(a), static_cast<const RvAttribute&>(b));
    EXPECT_EQ(a.fileStartTime, b.fileStartTime);
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    EXPECT_EQ(a.positionX, b.positionX);
    EXPECT_EQ(a.positionY, b.positionY);
    EXPECT_EQ(a.scale, b.scale);
    EXPECT_EQ(a.rotation, b.rotation);
}

void expectEqualFields(const RvAudioAttribute& a, const RvAudioAttribute& b)
{
    expectEqualFields(static_cast<const RvAttribute&>(a), static_cast<const RvAttribute&>(b));
    EXPECT_EQ(a.fileStartTime, b.fileStartTime);
}

void expectEqualFields(const RvDetectAttribute& a, const RvDetectAttribute& b)
{
    expectEqualFields(static_cast<const RvAttribute&>(a), static_cast<const RvAttribute&>(b));
    EXPECT_EQ(a.mode, b.mode);
    EXPECT_EQ(a.modePath, b.modePath);
    EXPECT_EQ(a.range, b.range);
    EXPECT_EQ(a.bindType, b.bindType);
    EXPECT_EQ(a.target, b.target);
}

void expectEqualFields(const RvEffectAttribute& a, const RvEffectAttribute& b)
{
    expectEqualFields(static_cast<const RvAttribute&>(a), static_cast<const RvAttribute&>(b));
    EXPECT_EQ(a.range, b.range);
    EXPECT_EQ(a.bindType, b.bindType);
    EXPECT_EQ(a.target, b.target);
    EXPECT_EQ(a.detect, b.detect);
}

void expectEqualFields(const RvARAttribute& a, const RvARAttribute& b)
{
    expectEqualFields(static_cast<const RvEffectAttribute&>(a),
                      static_cast<const RvEffectAttribute&>(b));
    EXPECT_EQ(a.globalParamConfiguration, b.globalParamConfiguration);
    EXPECT_EQ(a.scriptParams, b.scriptParams);
}

void expectEqualFields(const RvARFilterAttribute& a, const RvARFilterAttribute& b)
{
    expectEqualFields(static_cast<const RvARAttribute&>(a), static_cast<const RvARAttribute&>(b));
    EXPECT_EQ(a.filterAlpha, b.filterAlpha);
    EXPECT_EQ(a.floatParams, b.floatParams);
    EXPECT_EQ(a.faceFloatParams, b.faceFloatParams);
    EXPECT_EQ(a.arFacePlists, b.arFacePlists);
}

void expectEqualFields(const RvARBeautyAttribute& a, const RvARBeautyAttribute& b)
{
    expectEqualFields(static_cast<const RvARFilterAttribute&>(a),
                      static_cast<const RvARFilterAttribute&>(b));
    EXPECT_EQ(a.beautyType, b.beautyType);
    EXPECT_EQ(a.enableBeautyGenderDistinction, b.enableBeautyGenderDistinction);
    EXPECT_EQ(a.coeffientParameterConfig, b.coeffientParameterConfig);
    EXPECT_EQ(a.genderParamCoeffientsA, b.genderParamCoeffientsA);
    EXPECT_EQ(a.genderParamCoeffientsB, b.genderParamCoeffientsB);
    EXPECT_EQ(a.applyGenderToAR, b.applyGenderToAR);
    EXPECT_EQ(a.allFaceBeautyParam, b.allFaceBeautyParam);
    EXPECT_EQ(a.allBeautyAnattaForFaceControls, b.allBeautyAnattaForFaceControls);
    EXPECT_EQ(a.manualLongLegRange, b.manualLongLegRange);
    EXPECT_EQ(a.manualSlimHeadParam, b.manualSlimHeadParam);
    EXPECT_EQ(a.manualLongLegEnable, b.manualLongLegEnable);
    EXPECT_EQ(a.mapPointsData, b.mapPointsData);
    EXPECT_EQ(a.beautyActiveMaskImageRef, b.beautyActiveMaskImageRef);
    EXPECT_EQ(a.beautyMaskFaceId, b.beautyMaskFaceId);
    EXPECT_EQ(a.beautyMaskBrushType, b.beautyMaskBrushType);
    EXPECT_EQ(a.beautyActiveMaskImage, b.beautyActiveMaskImage);
}

void expectEqualFields(const RvARLiquifyAttribute& a, const RvARLiquifyAttribute& b)
{
    expectEqualFields(static_cast<const RvARBeautyAttribute&>(a),
                      static_cast<const RvARBeautyAttribute&>(b));
    EXPECT_EQ(a.centerX, b.centerX);
    EXPECT_EQ(a.centerY, b.centerY);
    EXPECT_EQ(a.radius, b.radius);
    EXPECT_EQ(a.strength, b.strength);
    EXPECT_EQ(a.movePoints, b.movePoints);
    EXPECT_EQ(a.liquifyStyle, b.liquifyStyle);
    EXPECT_EQ(a.effectPath, b.effectPath);
}

void expectEqualGroups(const std::vector<qkpar::RvARMakeupARGroupData>& a,
                       const std::vector<qkpar::RvARMakeupARGroupData>& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].groupDataId, b[i].groupDataId);
        EXPECT_EQ(a[i].groupName, b[i].groupName);
        EXPECT_EQ(a[i].groupAlpha, b[i].groupAlpha);
        EXPECT_EQ(a[i].entries, b[i].entries);
    }
}

void expectEqualFields(const RvARMakeupAttribute& a, const RvARMakeupAttribute& b)
{
    expectEqualFields(static_cast<const RvARBeautyAttribute&>(a),
                      static_cast<const RvARBeautyAttribute&>(b));
    EXPECT_EQ(a.suitAlpha, b.suitAlpha);
    expectEqualGroups(a.groupDatas, b.groupDatas);
    ASSERT_EQ(a.groupFaceDatas.size(), b.groupFaceDatas.size());
    for (std::size_t i = 0; i < a.groupFaceDatas.size(); ++i) {
        EXPECT_EQ(a.groupFaceDatas[i].faceId, b.groupFaceDatas[i].faceId);
        EXPECT_EQ(a.groupFaceDatas[i].suitAlpha, b.groupFaceDatas[i].suitAlpha);
        expectEqualGroups(a.groupFaceDatas[i].groupDatas, b.groupFaceDatas[i].groupDatas);
        EXPECT_EQ(a.groupFaceDatas[i].groupOrders, b.groupFaceDatas[i].groupOrders);
    }
    EXPECT_EQ(a.groupOrders, b.groupOrders);
}

template <class Kind>
class RecordCopyOfKindTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(RecordCopyOfKindTest, EveryKind);

} // namespace

TYPED_TEST(RecordCopyOfKindTest, CopyHasEveryField)
{
    const auto record = filledRecord<TypeParam>();
    const TypeParam copy(record); // NOLINT(performance-unnecessary-copy-initialization)

    expectEqualFields(copy, record);
}

TYPED_TEST(RecordCopyOfKindTest, AssignmentTakesEveryField)
{
    const auto record = filledRecord<TypeParam>();
    TypeParam assigned;
    assigned = record;

    expectEqualFields(assigned, record);
}

TYPED_TEST(RecordCopyOfKindTest, AssignmentToItselfKeepsEveryField)
{
    auto record = filledRecord<TypeParam>();
    const TypeParam& same = record;
    record = same;

    expectEqualFields(record, filledRecord<TypeParam>());
}

TYPED_TEST(RecordCopyOfKindTest, CopyOutlivesAndIgnoresItsSource)
{
    auto record = std::make_unique<TypeParam>(filledRecord<TypeParam>());
    const TypeParam copy(*record);
    *record = TypeParam();
    record.reset();

    expectEqualFields(copy, filledRecord<TypeParam>());
}

TYPED_TEST(RecordCopyOfKindTest, CopyIsWrittenAsItsSource)
{
    static_assert(std::has_virtual_destructor_v<TypeParam>);
    const auto record = filledRecord<TypeParam>();
    const TypeParam copy(record); // NOLINT(performance-unnecessary-copy-initialization)
    const RvAttribute& root = copy;

    EXPECT_EQ(root.serialization(), record.serialization());
    EXPECT_NE(root.serialization(), TypeParam().serialization());
}

TEST(RecordCopyTest, DestroyingThroughTheRootDestroysTheFieldsOfTheKind)
{
    uchar pixel[4] = {};
    int destroyed = 0;
    auto record = std::make_unique<RvARMakeupAttribute>();
    record->beautyActiveMaskImage = QImage(
        pixel, 1, 1, QImage::Format_ARGB32, [](void* count) { ++*static_cast<int*>(count); },
        &destroyed);
    std::unique_ptr<RvAttribute> root = std::move(record);
    ASSERT_EQ(destroyed, 0);

    root.reset();

    EXPECT_EQ(destroyed, 1);
}

TEST(RecordCopyTest, CopiedMaskPointsAtTheImageOfTheSource)
{
    RvARBeautyAttribute record;
    record.beautyActiveMaskImage = QImage(1, 1, QImage::Format_ARGB32);
    record.beautyActiveMaskImageRef = &record.beautyActiveMaskImage;

    const RvARBeautyAttribute copy(record);
    RvARBeautyAttribute assigned;
    assigned = record;

    EXPECT_EQ(copy.beautyActiveMaskImageRef, &record.beautyActiveMaskImage);
    EXPECT_NE(copy.beautyActiveMaskImageRef, &copy.beautyActiveMaskImage);
    EXPECT_EQ(assigned.beautyActiveMaskImageRef, &record.beautyActiveMaskImage);
}

TEST(RecordCopyTest, CopiedImageIsIndependent)
{
    auto record = filledRecord<RvARBeautyAttribute>();
    const RvARBeautyAttribute copy(record);

    record.beautyActiveMaskImage.setPixel(1, 1, 0xffffffffU);

    EXPECT_EQ(copy.beautyActiveMaskImage.pixel(1, 1), 0xff102030U);
}

TEST(RecordCopyTest, CopiedContainersAreIndependent)
{
    auto record = filledRecord<RvARMakeupAttribute>();
    const RvARMakeupAttribute copy(record);

    record.target[0] = 99;
    record.scriptParams["text"] = "changed";
    record.faceFloatParams[5][flag(3)] = 0.9F;
    record.arFacePlists[5] = "changed";
    record.mapPointsData[0] = QPointF(9.0, 9.0);
    record.groupDatas[0].entries[0].second = "changed";
    record.groupFaceDatas[0].groupDatas[0].groupName = "changed";
    record.groupOrders[0] = "changed";

    expectEqualFields(copy, filledRecord<RvARMakeupAttribute>());
}

TEST(RecordCopyTest, CopyKeepsTheIdentity)
{
    RvAttribute record;
    record.uuid = 42;
    const RvAttribute copy(record); // NOLINT(performance-unnecessary-copy-initialization)

    EXPECT_EQ(copy.uuid, 42U);
}
