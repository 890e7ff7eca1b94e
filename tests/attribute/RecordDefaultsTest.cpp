// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include <cstring>
#include <type_traits>

using namespace norvel;

namespace {

template <class Kind>
class RecordDefaultsOfKindTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(RecordDefaultsOfKindTest, EveryKind);

void expectEffectDefaults(const RvEffectAttribute& record)
{
    EXPECT_EQ(record.range, 0);
    EXPECT_EQ(record.bindType, 0);
    EXPECT_TRUE(record.target.empty());
    EXPECT_EQ(record.detect, 0U);
}

void expectARDefaults(const RvARAttribute& record)
{
    expectEffectDefaults(record);
    EXPECT_EQ(record.globalParamConfiguration, "");
    EXPECT_TRUE(record.scriptParams.empty());
}

void expectFilterDefaults(const RvARFilterAttribute& record)
{
    expectARDefaults(record);
    EXPECT_EQ(record.filterAlpha, 1.0F);
    EXPECT_TRUE(record.floatParams.empty());
    EXPECT_TRUE(record.faceFloatParams.empty());
    EXPECT_TRUE(record.arFacePlists.empty());
}

void expectBeautyDefaults(const RvARBeautyAttribute& record, qkpar::RvBeautyType beautyType)
{
    expectFilterDefaults(record);
    EXPECT_EQ(record.beautyType, beautyType);
    EXPECT_FALSE(record.enableBeautyGenderDistinction);
    EXPECT_EQ(record.coeffientParameterConfig, "");
    EXPECT_TRUE(record.genderParamCoeffientsA.empty());
    EXPECT_TRUE(record.genderParamCoeffientsB.empty());
    EXPECT_FALSE(record.applyGenderToAR);
    EXPECT_TRUE(record.allFaceBeautyParam.empty());
    EXPECT_TRUE(record.allBeautyAnattaForFaceControls.empty());
    EXPECT_EQ(record.manualLongLegRange, std::make_pair(0.0F, 0.0F));
    EXPECT_EQ(record.manualSlimHeadParam, std::make_tuple(0.0F, 0.0F, 0.0F));
    EXPECT_FALSE(record.manualLongLegEnable);
    EXPECT_TRUE(record.mapPointsData.empty());
    EXPECT_EQ(record.beautyActiveMaskImageRef, nullptr);
    EXPECT_EQ(record.beautyMaskFaceId, 0);
    EXPECT_EQ(record.beautyMaskBrushType, "");
    EXPECT_TRUE(record.beautyActiveMaskImage.isNull());
}

} // namespace

TYPED_TEST(RecordDefaultsOfKindTest, CommonFields)
{
    const TypeParam record;

    EXPECT_EQ(record.source, "");
    EXPECT_EQ(record.startTime, 0);
    EXPECT_EQ(record.duration, 0);
    EXPECT_EQ(record.type, 1);
    EXPECT_EQ(record.zOrder, 0);
    EXPECT_EQ(record.alpha, 1.0F);
    EXPECT_EQ(record.speed, 1.0F);
    EXPECT_EQ(record.auxText, "");
}

TEST(RecordDefaultsTest, MediaHasScaleOneAndNoOtherGeometry)
{
    const RvMediaAttribute record;

    EXPECT_EQ(record.fileStartTime, 0.0F);
    EXPECT_EQ(record.width, 0.0F);
    EXPECT_EQ(record.height, 0.0F);
    EXPECT_EQ(record.positionX, 0.0F);
    EXPECT_EQ(record.positionY, 0.0F);
    EXPECT_EQ(record.scale, 1.0F);
    EXPECT_EQ(record.rotation, 0.0F);
}

TEST(RecordDefaultsTest, AudioBeginsAtTheStartOfTheFile)
{
    EXPECT_EQ(RvAudioAttribute().fileStartTime, 0.0F);
}

TEST(RecordDefaultsTest, DetectHasModeOne)
{
    const RvDetectAttribute record;

    EXPECT_EQ(record.mode, 1);
    EXPECT_EQ(record.modePath, "");
    EXPECT_EQ(record.range, 0);
    EXPECT_EQ(record.bindType, 0);
    EXPECT_TRUE(record.target.empty());
}

TEST(RecordDefaultsTest, EffectAndMatteAreBoundToNothing)
{
    expectEffectDefaults(RvEffectAttribute());
    expectEffectDefaults(RvMatteAttribute());
}

TEST(RecordDefaultsTest, ARAndLayerHaveNoParameters)
{
    expectARDefaults(RvARAttribute());
    expectARDefaults(RvARLayerAttribute());
}

TEST(RecordDefaultsTest, FilterIsAtFullStrength)
{
    expectFilterDefaults(RvARFilterAttribute());
}

TEST(RecordDefaultsTest, BeautyTypeIsZeroButForLiquifyAndMakeup)
{
    expectBeautyDefaults(RvARBeautyAttribute(), static_cast<qkpar::RvBeautyType>(0));
    expectBeautyDefaults(RvARFrameAttribute(), static_cast<qkpar::RvBeautyType>(0));
    expectBeautyDefaults(RvARLabelAttribute(), static_cast<qkpar::RvBeautyType>(0));
    expectBeautyDefaults(RvARLiquifyAttribute(), static_cast<qkpar::RvBeautyType>(1));
    expectBeautyDefaults(RvARMakeupAttribute(), static_cast<qkpar::RvBeautyType>(3));
}

TEST(RecordDefaultsTest, LiquifyHasAnEmptyStroke)
{
    const RvARLiquifyAttribute record;

    EXPECT_EQ(record.centerX, 0.0);
    EXPECT_EQ(record.centerY, 0.0);
    EXPECT_EQ(record.radius, 0.0F);
    EXPECT_EQ(record.strength, 0.0F);
    EXPECT_EQ(record.movePoints[0], QPointF(0.0, 0.0));
    EXPECT_EQ(record.movePoints[1], QPointF(0.0, 0.0));
    EXPECT_EQ(record.liquifyStyle, 0);
    EXPECT_TRUE(record.effectPath.isEmpty());
}

TEST(RecordDefaultsTest, MakeupHasNoGroups)
{
    const RvARMakeupAttribute record;

    EXPECT_EQ(record.suitAlpha, 0.0F);
    EXPECT_TRUE(record.groupDatas.empty());
    EXPECT_TRUE(record.groupFaceDatas.empty());
    EXPECT_TRUE(record.groupOrders.empty());
}

TEST(RecordDefaultsTest, ComparisonResultsHaveTheirNumbers)
{
    static_assert(std::is_same_v<std::underlying_type_t<RvReturnVlaue>, int>);
    EXPECT_EQ(ReturnInvalid, 1);
    EXPECT_EQ(ReturnSame, 2);
    EXPECT_EQ(ReturnChanged, 3);
    EXPECT_EQ(ReturnOtherRecord, 4);
    EXPECT_EQ(ReturnNotFound, 5);
}

// Field types: a narrower one would lose values of the framework.
static_assert(std::is_same_v<decltype(RvAttribute::uuid), std::uint64_t>);
static_assert(std::is_same_v<decltype(RvAttribute::startTime), std::int64_t>);
static_assert(std::is_same_v<decltype(RvAttribute::duration), std::int64_t>);
static_assert(std::is_same_v<decltype(RvAttribute::type), std::int32_t>);
static_assert(std::is_same_v<decltype(RvAttribute::zOrder), std::int32_t>);
static_assert(std::is_same_v<decltype(RvMediaAttribute::fileStartTime), float>);
static_assert(std::is_same_v<decltype(RvDetectAttribute::target), std::vector<std::uint64_t>>);
static_assert(std::is_same_v<decltype(RvEffectAttribute::detect), std::uint64_t>);
static_assert(std::is_same_v<decltype(RvARBeautyAttribute::beautyMaskFaceId), std::int64_t>);
static_assert(std::is_same_v<decltype(RvARLiquifyAttribute::centerX), double>);
static_assert(std::is_same_v<decltype(RvARLiquifyAttribute::radius), float>);

#if defined(__x86_64__) && defined(__GNUC__)
namespace {

/// The slot of a virtual function in the table of its class.
template <class Function>
std::size_t slotOf(Function function)
{
    std::size_t words[2] = {};
    static_assert(sizeof function == sizeof words);
    std::memcpy(words, &function, sizeof words);
    return (words[0] - 1) / sizeof(void*);
}

} // namespace

TEST(RecordLayoutTest, VirtualOperationsKeepTheirSlots)
{
    // The destructor takes slots 0 and 1.
    EXPECT_EQ(slotOf(&RvAttribute::compare), 2U);
    EXPECT_EQ(slotOf(&RvAttribute::serialization), 3U);
}
#endif

TEST(RecordLayoutTest, KindsFormATree)
{
    static_assert(std::is_base_of_v<RvAttribute, RvMediaAttribute>);
    static_assert(std::is_base_of_v<RvAttribute, RvAudioAttribute>);
    static_assert(std::is_base_of_v<RvAttribute, RvDetectAttribute>);
    static_assert(std::is_base_of_v<RvAttribute, RvEffectAttribute>);
    static_assert(std::is_base_of_v<RvEffectAttribute, RvMatteAttribute>);
    static_assert(std::is_base_of_v<RvEffectAttribute, RvARAttribute>);
    static_assert(std::is_base_of_v<RvARAttribute, RvARLayerAttribute>);
    static_assert(std::is_base_of_v<RvARAttribute, RvARFilterAttribute>);
    static_assert(std::is_base_of_v<RvARFilterAttribute, RvARBeautyAttribute>);
    static_assert(std::is_base_of_v<RvARBeautyAttribute, RvARFrameAttribute>);
    static_assert(std::is_base_of_v<RvARBeautyAttribute, RvARLabelAttribute>);
    static_assert(std::is_base_of_v<RvARBeautyAttribute, RvARLiquifyAttribute>);
    static_assert(std::is_base_of_v<RvARBeautyAttribute, RvARMakeupAttribute>);

    static_assert(!std::is_base_of_v<RvARAttribute, RvMatteAttribute>);
    static_assert(!std::is_base_of_v<RvARFilterAttribute, RvARLayerAttribute>);
    static_assert(!std::is_base_of_v<RvEffectAttribute, RvDetectAttribute>);

    // Kinds without fields of their own are as large as their parent.
    EXPECT_EQ(sizeof(RvMatteAttribute), sizeof(RvEffectAttribute));
    EXPECT_EQ(sizeof(RvARLayerAttribute), sizeof(RvARAttribute));
    EXPECT_EQ(sizeof(RvARFrameAttribute), sizeof(RvARBeautyAttribute));
    EXPECT_EQ(sizeof(RvARLabelAttribute), sizeof(RvARBeautyAttribute));
}
