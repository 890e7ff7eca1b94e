// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvDetectionTrack.h>

#include <gtest/gtest.h>

#include <QImage>

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <tuple>
#include <vector>

using namespace qrvkp;
using namespace qkpar;

namespace {

constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr std::int64_t largestFace = std::numeric_limits<std::int64_t>::max();

using FloatParams = std::map<KpARKernelParamFlag, float>;
using FaceFloatParams = std::map<std::int64_t, FloatParams>;

KpARKernelParamFlag flag(int number)
{
    return static_cast<KpARKernelParamFlag>(number);
}

/// The classes that derive from `Base`, the abstract ones left out.
template <class Base>
std::vector<TrackKind> kindsOf()
{
    std::vector<TrackKind> kinds;
    for (const TrackKind& kind : trackKinds()) {
        // Media are no effects, and making one takes a file.
        if (kind.type > 100 && dynamic_cast<Base*>(adopt(kind.make()).get()))
            kinds.push_back(kind);
    }
    return kinds;
}

template <class Base>
class KindsOf : public testing::TestWithParam<TrackKind>
{
protected:
    /// Of the class of the parameter.
    const Reference<Base> m_track = adopt(dynamic_cast<Base*>(GetParam().make()));
    /// Another wrapper of the same native track: what a setter did is seen through it.
    const Reference<Base> m_seen =
        adopt(dynamic_cast<Base*>(GetParam().wrap(m_track->getContext())));
};

using ARTrackTest = KindsOf<RvARITrack>;
using ARFilterTrackTest = KindsOf<RvARFilterTrack>;
using ARBeautyTrackTest = KindsOf<RvARBeautyTrack>;

QImage mask(QRgb colour)
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(colour);
    image.setPixel(2, 0, ~colour); // no side of it is like the other
    return image;
}

RvARMakeupARGroupData group(std::int64_t id, const std::string& name)
{
    return {id, name, 0.5F, {{"lips", "唇.png"}, {"lips", "twice"}, {"", ""}}};
}

void expectSameGroup(const RvARMakeupARGroupData& found, const RvARMakeupARGroupData& expected)
{
    EXPECT_EQ(found.groupDataId, expected.groupDataId);
    EXPECT_EQ(found.groupName, expected.groupName);
    EXPECT_EQ(found.groupAlpha, expected.groupAlpha);
    EXPECT_EQ(found.entries, expected.entries);
}

void expectSameGroups(const std::vector<RvARMakeupARGroupData>& found,
                      const std::vector<RvARMakeupARGroupData>& expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        expectSameGroup(found[i], expected[i]);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, ARTrackTest, testing::ValuesIn(kindsOf<RvARITrack>()), kindName);
INSTANTIATE_TEST_SUITE_P(Kinds, ARFilterTrackTest, testing::ValuesIn(kindsOf<RvARFilterTrack>()),
                         kindName);
INSTANTIATE_TEST_SUITE_P(Kinds, ARBeautyTrackTest, testing::ValuesIn(kindsOf<RvARBeautyTrack>()),
                         kindName);

TEST(ARTrackKindsTest, AreWhatTheirClassesDeriveFrom)
{
    EXPECT_EQ(kindsOf<RvARITrack>().size(), 8U);
    EXPECT_EQ(kindsOf<RvARFilterTrack>().size(), 4U);
    EXPECT_EQ(kindsOf<RvARBeautyTrack>().size(), 3U);
}

namespace {

template <class Track>
void expectTakesSource(const std::string& source)
{
    const auto track = adopt(Track::create(source, 3, 4));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackSource(), source);
    EXPECT_EQ(track->getStartPos(), 3);
    EXPECT_EQ(track->getOriginDuration(), 4);
}

} // namespace

TEST(ARTrackCreationTest, EveryClassTakesAnEmptyOrMissingSource)
{
    for (const char* source : {"", "no/such/资源.plist"}) {
        expectTakesSource<RvARAttribsTrack>(source);
        expectTakesSource<RvARBeautyTrack>(source);
        expectTakesSource<RvARBorderTrack>(source);
        expectTakesSource<RvARFilterTrack>(source);
        expectTakesSource<RvARFrameTrack>(source);
        expectTakesSource<RvARLabelTrack>(source);
        expectTakesSource<RvARLiquifyTrack>(source);
        expectTakesSource<RvARMakeupTrack>(source);
    }
}

TEST_P(ARTrackTest, StartsWithoutScriptParametersAndConfiguration)
{
    EXPECT_TRUE(m_track->getScriptParams().empty());
    EXPECT_EQ(m_track->getGlobalParamConfiguration(), "");
}

TEST_P(ARTrackTest, AScriptParameterReplacesItsFormerValueAndLeavesTheOthers)
{
    m_track->setScriptParam("size", "1");
    m_track->setScriptParam("颜色", "red");
    m_track->setScriptParam("size", "2");
    m_track->setScriptParam("", "");
    EXPECT_EQ(m_seen->getScriptParams(),
              (std::map<std::string, std::string>{{"", ""}, {"size", "2"}, {"颜色", "red"}}));
}

TEST_P(ARTrackTest, TheConfigurationIsReadBack)
{
    m_track->setGlobalParamConfiguration("{\"a\": 1}");
    EXPECT_EQ(m_seen->getGlobalParamConfiguration(), "{\"a\": 1}");
    m_track->setGlobalParamConfiguration("");
    EXPECT_EQ(m_seen->getGlobalParamConfiguration(), "");
}

TEST_P(ARFilterTrackTest, StartsAtFullStrengthWithoutParameters)
{
    EXPECT_EQ(m_track->getFilterAlpha(), 1.0F);
    EXPECT_TRUE(m_track->getFloatParams().empty());
    EXPECT_TRUE(m_track->getFloatParamsWithFaceID().empty());
    EXPECT_TRUE(m_track->getAllArFacePlists().empty());
}

TEST_P(ARFilterTrackTest, TheStrengthIsReadBack)
{
    m_track->setFilterAlpha(0.3F);
    EXPECT_EQ(m_seen->getFilterAlpha(), 0.3F);
    m_track->setFilterAlpha(quietNan);
    EXPECT_TRUE(std::isnan(m_seen->getFilterAlpha()));
}

TEST_P(ARFilterTrackTest, AParameterReplacesItsFormerValueAndLeavesTheOthers)
{
    m_track->setFloatParam(flag(3), 0.1F);
    m_track->setFloatParam(flag(-70000), infinite);
    m_track->setFloatParam(flag(3), 0.2F);
    EXPECT_EQ(m_seen->getFloatParams(), (FloatParams{{flag(-70000), infinite}, {flag(3), 0.2F}}));
}

TEST_P(ARFilterTrackTest, AParameterOfAFaceLeavesTheOthersOfThatAndOtherFaces)
{
    m_track->setFloatParamByFaceId(flag(1), 0.1F, 7);
    m_track->setFloatParamByFaceId(flag(2), 0.2F, 7);
    m_track->setFloatParamByFaceId(flag(1), 0.3F, largestFace);
    m_track->setFloatParamByFaceId(flag(1), 0.4F, 7);
    EXPECT_EQ(m_seen->getFloatParamsWithFaceID(),
              (FaceFloatParams{{7, {{flag(1), 0.4F}, {flag(2), 0.2F}}},
                               {largestFace, {{flag(1), 0.3F}}}}));
    EXPECT_TRUE(m_seen->getFloatParams().empty());
}

TEST_P(ARFilterTrackTest, APlistReplacesTheFormerOneOfItsFace)
{
    EXPECT_TRUE(m_track->addARFacePlist("missing.plist", -1));
    EXPECT_TRUE(m_track->addARFacePlist("脸.plist", 2));
    EXPECT_TRUE(m_track->addARFacePlist("", -1));
    EXPECT_EQ(m_seen->getAllArFacePlists(),
              (std::map<std::int64_t, std::string>{{-1, ""}, {2, "脸.plist"}}));
}

TEST_P(ARBeautyTrackTest, StartsPlain)
{
    EXPECT_FALSE(m_track->getEnableBeautyGenderDistinction());
    EXPECT_FALSE(m_track->getApplyGenderToAR());
    EXPECT_EQ(m_track->getCoeffientParameterConfig(), "");
    EXPECT_TRUE(m_track->getKpARGenderParamCoeffients(KpARGenderUnknown).empty());
    EXPECT_TRUE(m_track->getKpARGenderParamCoeffients(KpARGenderMale).empty());
    EXPECT_TRUE(m_track->getKpARGenderParamCoeffients(KpARGenderFemale).empty());
    EXPECT_TRUE(m_track->getAllFaceBeautyParam().empty());
    EXPECT_TRUE(m_track->getAllBeautyAnattaForFaceControls().empty());
    EXPECT_FALSE(m_track->getManualLongLegEnable());
    EXPECT_EQ(m_track->getManualLongLegRange(), std::make_pair(0.0F, 0.0F));
    EXPECT_EQ(m_track->getManualSlimHeadParam(), std::make_tuple(0.0F, 0.0F, 0.0F));
    EXPECT_TRUE(m_track->getMapPointsData().empty());
    EXPECT_EQ(m_track->getBeautyMaskFaceId(), 0);
    EXPECT_EQ(m_track->getBeautyMaskBrushType(), "");
    EXPECT_TRUE(m_track->getBeautyActiveMaskImage().isNull());
}

TEST(ARBeautyTypeTest, StartsAsTheClassIsUsed)
{
    EXPECT_EQ(adopt(RvARBeautyTrack::create("", 0, 0))->getBeautyType(), RvBeautyTypeBeauty);
    EXPECT_EQ(adopt(RvARLiquifyTrack::create("", 0, 0))->getBeautyType(), RvBeautyTypeLiquify);
    EXPECT_EQ(adopt(RvARMakeupTrack::create("", 0, 0))->getBeautyType(), RvBeautyTypeMakeup);
}

TEST_P(ARBeautyTrackTest, EverySingleValueIsReadBack)
{
    m_track->setBeautyType(RvBeautyTypeBody);
    m_track->setEnableBeautyGenderDistinction(true);
    m_track->setManualLongLegRange({0.25F, 0.75F});
    m_track->setManualSlimHeadParam({0.1F, 0.2F, infinite});
    m_track->setBeautyMaskFaceId(largestFace);
    m_track->setBeautyMaskBrushType("画笔");
    EXPECT_EQ(m_seen->getBeautyType(), RvBeautyTypeBody);
    EXPECT_TRUE(m_seen->getEnableBeautyGenderDistinction());
    EXPECT_EQ(m_seen->getManualLongLegRange(), std::make_pair(0.25F, 0.75F));
    EXPECT_EQ(m_seen->getManualSlimHeadParam(), std::make_tuple(0.1F, 0.2F, infinite));
    EXPECT_EQ(m_seen->getBeautyMaskFaceId(), largestFace);
    EXPECT_EQ(m_seen->getBeautyMaskBrushType(), "画笔");

    m_track->setBeautyType(static_cast<RvBeautyType>(99));
    EXPECT_EQ(m_seen->getBeautyType(), static_cast<RvBeautyType>(99));
}

TEST_P(ARBeautyTrackTest, EverySwitchActsOnItsOwn)
{
    m_track->setApplyGenderToAR(true);
    EXPECT_TRUE(m_seen->getApplyGenderToAR());
    EXPECT_FALSE(m_seen->getEnableBeautyGenderDistinction());
    EXPECT_FALSE(m_seen->getManualLongLegEnable());
    m_track->setManualLongLegEnable(true);
    m_track->setApplyGenderToAR(false);
    EXPECT_TRUE(m_seen->getManualLongLegEnable());
    EXPECT_FALSE(m_seen->getApplyGenderToAR());
}

TEST_P(ARBeautyTrackTest, LoadedCoefficientConfigurationReplacesTheFormerOne)
{
    EXPECT_TRUE(m_track->loadCoeffientParameterConfig("first"));
    EXPECT_TRUE(m_track->loadCoeffientParameterConfig("{\"second\": 系数}"));
    EXPECT_EQ(m_seen->getCoeffientParameterConfig(), "{\"second\": 系数}");
    EXPECT_TRUE(m_track->loadCoeffientParameterConfig(""));
    EXPECT_EQ(m_seen->getCoeffientParameterConfig(), "");
}

TEST_P(ARBeautyTrackTest, CoefficientsOfAGenderMergeIntoItsFormerOnes)
{
    m_track->setKpARGenderParamCoeffients(KpARGenderFemale, {{flag(1), 0.1F}, {flag(2), 0.2F}});
    m_track->setKpARGenderParamCoeffients(KpARGenderFemale, {{flag(2), 0.5F}, {flag(3), 0.3F}});
    m_track->setKpARGenderParamCoeffients(KpARGenderFemale, {});
    EXPECT_EQ(m_seen->getKpARGenderParamCoeffients(KpARGenderFemale),
              (FloatParams{{flag(1), 0.1F}, {flag(2), 0.5F}, {flag(3), 0.3F}}));
}

TEST_P(ARBeautyTrackTest, CoefficientsOfOneGenderLeaveTheOtherOnes)
{
    m_track->setKpARGenderParamCoeffients(KpARGenderMale, {{flag(1), 0.1F}});
    m_track->setKpARGenderParamCoeffients(KpARGenderFemale, {{flag(1), 0.9F}});
    EXPECT_EQ(m_seen->getKpARGenderParamCoeffients(KpARGenderMale), (FloatParams{{flag(1), 0.1F}}));
    EXPECT_EQ(m_seen->getKpARGenderParamCoeffients(KpARGenderFemale),
              (FloatParams{{flag(1), 0.9F}}));
    EXPECT_TRUE(m_seen->getKpARGenderParamCoeffients(KpARGenderUnknown).empty());
}

TEST_P(ARBeautyTrackTest, BeautyParametersOfFacesReplaceAllFormerOnes)
{
    m_track->setAllFaceBeautyParam({{1, {{flag(1), 0.1F}}}, {2, {{flag(2), 0.2F}}}});
    const FaceFloatParams params{{2, {{flag(3), 0.3F}}}, {-4, {}}};
    m_track->setAllFaceBeautyParam(params);
    EXPECT_EQ(m_seen->getAllFaceBeautyParam(), params);
    m_track->setAllFaceBeautyParam({});
    EXPECT_TRUE(m_seen->getAllFaceBeautyParam().empty());
}

TEST_P(ARBeautyTrackTest, FaceControlsReplaceAllFormerOnes)
{
    using Controls = std::map<KpARKernelParamFlag, bool>;
    m_track->setAllBeautyAnattaForFaceControls({{flag(1), true}, {flag(2), true}});
    m_track->setAllBeautyAnattaForFaceControls({{flag(2), false}, {flag(3), true}});
    EXPECT_EQ(m_seen->getAllBeautyAnattaForFaceControls(),
              (Controls{{flag(2), false}, {flag(3), true}}));
    m_track->setAllBeautyAnattaForFaceControls({});
    EXPECT_TRUE(m_seen->getAllBeautyAnattaForFaceControls().empty());
}

TEST_P(ARBeautyTrackTest, MapPointsReplaceAllFormerOnes)
{
    m_track->setMapPointsData({{1.0, 2.0}, {3.0, 4.0}});
    m_track->setMapPointsData({{-1.5, 1e300}});
    ASSERT_EQ(m_seen->getMapPointsData().size(), 1U);
    EXPECT_EQ(m_seen->getMapPointsData()[0].x(), -1.5);
    EXPECT_EQ(m_seen->getMapPointsData()[0].y(), 1e300);
}

TEST_P(ARBeautyTrackTest, TheMaskIsReadBackPixelByPixel)
{
    m_track->setBeautyActiveMaskImage(mask(qRgba(1, 2, 3, 4)));
    EXPECT_EQ(m_seen->getBeautyActiveMaskImage(), mask(qRgba(1, 2, 3, 4)));
    m_track->setBeautyActiveMaskImage(QImage());
    EXPECT_TRUE(m_seen->getBeautyActiveMaskImage().isNull());
}

TEST_P(ARBeautyTrackTest, PaintingOnAnImageLeavesTheMaskThatWasMadeOfIt)
{
    QImage canvas = mask(qRgba(1, 2, 3, 4));
    m_track->setBeautyActiveMaskImage(canvas);
    canvas.fill(Qt::red);
    m_track->getBeautyActiveMaskImage().fill(Qt::green);
    EXPECT_EQ(m_seen->getBeautyActiveMaskImage(), mask(qRgba(1, 2, 3, 4)));
}

TEST_P(ARBeautyTrackTest, LoadingAMaskSetsItsFaceItsBrushAndItsImage)
{
    EXPECT_TRUE(m_track->loadBeautyMaskDatas(5, nullptr, "soft", mask(0xff00ff00)));
    EXPECT_EQ(m_seen->getBeautyMaskFaceId(), 5);
    EXPECT_EQ(m_seen->getBeautyMaskBrushType(), "soft");
    EXPECT_EQ(m_seen->getBeautyActiveMaskImage(), mask(0xff00ff00));
}

TEST_P(ARBeautyTrackTest, TheDataOfALoadedMaskIsNeverRead)
{
    // Wherever a read of it went, it would crash or be reported.
    const auto* dangling = reinterpret_cast<const QImage*>(std::uintptr_t{8});
    EXPECT_TRUE(m_track->loadBeautyMaskDatas(-1, dangling, "", QImage()));
    EXPECT_EQ(m_seen->getBeautyMaskFaceId(), -1);
    EXPECT_TRUE(m_seen->getBeautyActiveMaskImage().isNull());
}

namespace {

class ARMakeupTrackTest : public testing::Test
{
protected:
    const Reference<RvARMakeupTrack> m_track = adopt(RvARMakeupTrack::create("", 0, 1000));
    const Reference<RvARMakeupTrack> m_seen = adopt(RvARMakeupTrack::create(m_track->getContext()));
};

} // namespace

TEST_F(ARMakeupTrackTest, StartsOpaqueWithoutGroups)
{
    EXPECT_EQ(m_track->getSuitAlpha(), 1.0F);
    EXPECT_TRUE(m_track->getAllARGroupOrder().empty());
    EXPECT_TRUE(m_track->getARGroupDatas().empty());
    EXPECT_TRUE(m_track->getARFaceGroupDatas().empty());
}

TEST_F(ARMakeupTrackTest, TheOpacityIsReadBack)
{
    m_track->setSuitAlpha(0.75F);
    EXPECT_EQ(m_seen->getSuitAlpha(), 0.75F);
}

TEST_F(ARMakeupTrackTest, TheOrderReplacesTheFormerOne)
{
    m_track->setAllARGroupOrder({"lips", "brows", "lips"});
    EXPECT_EQ(m_seen->getAllARGroupOrder(), (std::vector<std::string>{"lips", "brows", "lips"}));
    m_track->setAllARGroupOrder({"眉"});
    EXPECT_EQ(m_seen->getAllARGroupOrder(), std::vector<std::string>{"眉"});
}

TEST_F(ARMakeupTrackTest, GroupsReplaceAllFormerOnes)
{
    m_track->setARGroupDatas({group(1, "lips"), group(2, "brows")});
    expectSameGroups(m_seen->getARGroupDatas(), {group(1, "lips"), group(2, "brows")});
    m_track->setARGroupDatas({group(-3, "")});
    expectSameGroups(m_seen->getARGroupDatas(), {group(-3, "")});
    m_track->setARGroupDatas({});
    EXPECT_TRUE(m_seen->getARGroupDatas().empty());
}

TEST_F(ARMakeupTrackTest, FaceGroupsReplaceAllFormerOnes)
{
    m_track->setARFaceGroupDatas({{1, 0.5F, {}, {}}, {2, 0.5F, {}, {}}});
    m_track->setARFaceGroupDatas({{9, 0.25F, {group(1, "a"), group(2, "b")}, {"b", "a"}}});
    const auto faces = m_seen->getARFaceGroupDatas();
    ASSERT_EQ(faces.size(), 1U);
    EXPECT_EQ(faces[0].faceId, 9);
    EXPECT_EQ(faces[0].suitAlpha, 0.25F);
    expectSameGroups(faces[0].groupDatas, {group(1, "a"), group(2, "b")});
    EXPECT_EQ(faces[0].groupOrders, (std::vector<std::string>{"b", "a"}));
}

TEST(DetectionTrackTest, KeepsItsModeAndModel)
{
    const auto track = adopt(RvDetectionTrack::create(-2, "模型/face.model"));
    EXPECT_EQ(track->getDetectionMode(), -2);
    EXPECT_EQ(track->getModelPath(), "模型/face.model");
    EXPECT_EQ(track->getStartPos(), 0);
    EXPECT_EQ(track->getOriginDuration(), 0);

    const auto seen = adopt(RvDetectionTrack::create(track->getContext()));
    track->setDetectionMode(12);
    track->setModelPath("");
    EXPECT_EQ(seen->getDetectionMode(), 12);
    EXPECT_EQ(seen->getModelPath(), "");
}
