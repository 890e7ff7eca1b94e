// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include "support/TestEnvironment.h"

#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <limits>
#include <typeinfo>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;

const QString maskWarning = QStringLiteral(
    "手动磨皮、祛斑祛痘需要在收到kAREventBeautyMaskImage回调后endBeautyMaskImage之前调用");

/// The record of a track that stands alone over the main line, as its kind.
template <class Record>
std::unique_ptr<Record> captured(RvITrack& track)
{
    const LiveTimeline timeline;
    timeline.addMix(&track);
    auto record = timeline.captureOnlyMix();
    timeline.get()->removeMixTrack(&track);
    if (!record || typeid(*record) != typeid(Record)) {
        ADD_FAILURE() << "the track is not described by a record of its kind";
        return std::make_unique<Record>();
    }
    return std::unique_ptr<Record>(static_cast<Record*>(record.release()));
}

template <class Track>
Owned<Track> newTrack(int recordType)
{
    return owned(dynamic_cast<Track*>(newLiveTrack(recordType)));
}

std::vector<std::uint64_t> idsOf(const std::vector<RvAttribute*>& records)
{
    std::vector<std::uint64_t> ids;
    for (const RvAttribute* record : records)
        ids.push_back(record->uuid);
    return ids;
}

using Ids = std::vector<std::uint64_t>;

// The whole timeline.

TEST(TimelineCaptureTest, NullTimelineGivesTheSizeAndNoRecords)
{
    const std::unique_ptr<RvTimeLineAttribute> description(
        RvAttributeUtility::createTimeLineAttribute(nullptr, 1280.0F, 720.0F));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->width, 1280.0F);
    EXPECT_EQ(description->height, 720.0F);
    EXPECT_TRUE(description->mainAttribs.empty());
    EXPECT_TRUE(description->mixAttribs.empty());
}

TEST(TimelineCaptureTest, EmptyTimelineGivesTheSizeAndNoRecords)
{
    const auto description = LiveTimeline().capture();
    EXPECT_EQ(description->width, 1280.0F);
    EXPECT_EQ(description->height, 720.0F);
    EXPECT_TRUE(description->mainAttribs.empty());
    EXPECT_TRUE(description->mixAttribs.empty());
}

TEST(TimelineCaptureTest, GroupsAndMixTracksAreDescribedInOrder)
{
    const LiveTimeline timeline;
    for (const std::uint64_t id : {3, 1, 2})
        timeline.addPicture(id);
    for (const std::uint64_t id : {6, 4, 5})
        timeline.addDetection(id);
    const auto description = timeline.capture();
    EXPECT_EQ(idsOf(description->mainAttribs), (Ids{3, 1, 2}));
    EXPECT_EQ(idsOf(description->mixAttribs), (Ids{6, 4, 5}));
}

TEST(TimelineCaptureTest, OnlyTheFirstTrackOfAGroupIsDescribed)
{
    const LiveTimeline timeline;
    const auto first = withId(newLiveTrack(3), 1);
    const auto second = withId(newLiveTrack(2), 2);
    timeline.addGroup({first.get(), second.get()});
    const auto description = timeline.capture();
    EXPECT_EQ(idsOf(description->mainAttribs), Ids{1});
    EXPECT_EQ(description->mainAttribs.front()->type, 3);
}

TEST(TimelineCaptureTest, AGroupThatStartsWithNoPictureOrVideoIsLeftOut)
{
    const LiveTimeline timeline;
    timeline.addGroup({});
    const auto picture = withId(newLiveTrack(2), 50);
    for (const int type : {1, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) {
        const auto first = withId(newLiveTrack(type), 100 + static_cast<std::uint64_t>(type));
        const auto second = owned(newLiveTrack(2));
        timeline.addGroup({first.get(), second.get()});
    }
    timeline.addGroup({picture.get()});
    EXPECT_EQ(idsOf(timeline.capture()->mainAttribs), Ids{50});
}

TEST(TimelineCaptureTest, EveryMixKindHasARecordOfItsClassButGenericMatteFrameAndBorder)
{
    const ScopedCache cache;
    const LiveTimeline timeline;
    for (int type = 1; type <= 13; ++type)
        timeline.addMix(withId(newLiveTrack(type), static_cast<std::uint64_t>(type)).get());
    timeline.addMix(
        owned(static_cast<RvITrack*>(RvARBorderTrack::create(std::string(), 0, 1000))).get());

    const auto description = timeline.capture();

    EXPECT_EQ(idsOf(description->mixAttribs), (Ids{2, 3, 4, 5, 7, 8, 9, 10, 12, 13}));
    const std::vector<const std::type_info*> classes{
        &typeid(RvMediaAttribute),    &typeid(RvMediaAttribute),    &typeid(RvAudioAttribute),
        &typeid(RvDetectAttribute),   &typeid(RvARFilterAttribute), &typeid(RvARBeautyAttribute),
        &typeid(RvARMakeupAttribute), &typeid(RvARLayerAttribute),  &typeid(RvARLabelAttribute),
        &typeid(RvARLiquifyAttribute)};
    ASSERT_EQ(description->mixAttribs.size(), classes.size());
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const RvAttribute& record = *description->mixAttribs[i];
        EXPECT_TRUE(typeid(record) == *classes[i]) << record.uuid;
        // The ids were chosen to be the type codes: image and video cross on the way.
        EXPECT_EQ(static_cast<std::uint64_t>(record.type), record.uuid);
    }
}

TEST(TimelineCaptureTest, CapturingLeavesNoReferenceBehind)
{
    const ScopedCache cache;
    const LiveTimeline timeline;
    const auto picture = owned(newLiveTrack(2));
    const auto group = timeline.addGroup({picture.get()});
    const int references = group->referenceCount();
    for (int type = 1; type <= 13; ++type)
        timeline.addMix(owned(newLiveTrack(type)).get());
    const long long objects = RvRef::liveCount();
    timeline.capture();
    EXPECT_EQ(group->referenceCount(), references);
    EXPECT_EQ(picture->referenceCount(), 1);
    EXPECT_EQ(RvRef::liveCount(), objects);
}

TEST(TimelineCaptureTest, ATrackThatCannotBeWrappedIsLeftOut)
{
    const LiveTimeline timeline;
    timeline.addPicture(1);
    timeline.addPicture(2);
    timeline.addDetection(3);
    timeline.addDetection(4);
    RvFault::failNext("RvSpriteTrack::create");
    RvFault::failNext("RvDetectionTrack::create", 2);
    const auto description = timeline.capture();
    EXPECT_EQ(idsOf(description->mainAttribs), Ids{2});
    EXPECT_EQ(idsOf(description->mixAttribs), Ids{3});
}

class KindCaptureTest : public testing::TestWithParam<std::string>
{
protected:
    const ScopedCache m_cache;
    const KindSample& m_sample = kindSample(GetParam());
    const Owned<RvITrack> m_track = owned(m_sample.liveTrack());
    const LiveTimeline m_timeline;
};

INSTANTIATE_TEST_SUITE_P(EveryKind, KindCaptureTest, testing::ValuesIn(kindNames()),
                         [](const auto& kind) { return kind.param; });

TEST_P(KindCaptureTest, CommonValuesAreThoseOfTheTrack)
{
    m_track->setTrackID(31);
    m_track->setStartPos(-2500);
    m_track->setDuration(4000);
    m_track->setZOrder(-7);
    m_track->setAlpha(0.25F);
    m_track->setSpeed(2.0F);
    m_track->setTag("标签");
    m_timeline.addMix(m_track.get());

    const auto record = m_timeline.captureOnlyMix();

    ASSERT_EQ(record != nullptr, m_sample.captured);
    if (!record)
        return;
    EXPECT_EQ(record->uuid, 31U);
    EXPECT_EQ(record->type, m_sample.record()->type);
    EXPECT_EQ(record->startTime, -2500);
    ASSERT_EQ(m_track->getDuration(), 2000);
    EXPECT_EQ(record->duration, 4000); // at speed 1
    EXPECT_EQ(record->zOrder, -7);
    EXPECT_EQ(record->alpha, 0.25F);
    EXPECT_EQ(record->speed, 2.0F);
    EXPECT_EQ(record->source, m_track->getTrackSource());
    EXPECT_EQ(record->auxText, "标签");
}

TEST_P(KindCaptureTest, ChangesNothingButALiquify)
{
    m_timeline.addMix(m_track.get());
    const Calls calls = callsOf([this] { m_timeline.capture(); });
    EXPECT_EQ(calls.empty(), GetParam() != "Liquify");
}

TEST_P(KindCaptureTest, OfAGenericWrapperGoesByTheNativeTrack)
{
    const auto wrapper = owned(RvITrack::create(m_track->getContext()));
    m_timeline.addMix(wrapper.get());
    EXPECT_EQ(m_timeline.captureOnlyMix() != nullptr, m_sample.captured);
}

TEST_P(KindCaptureTest, OnTheMainLineIsForPicturesAndVideos)
{
    m_timeline.addGroup({m_track.get()});
    const auto description = m_timeline.capture();
    const bool isMedia = GetParam() == "Image" || GetParam() == "Video";
    EXPECT_EQ(description->mainAttribs.size(), isMedia ? 1U : 0U);
    EXPECT_TRUE(description->mixAttribs.empty());
}

// Kind by kind.

TEST(MediaCaptureTest, GeometryIsThatOfTheTrack)
{
    for (const int type : {2, 3}) {
        const auto track = newTrack<RvIMediaTrack>(type);
        track->setWidthAndHeight(640.0F, 360.0F);
        track->setPosition(12.5F, -3.0F);
        track->setScale(1.5F);
        track->setRotation(90.0F);
        const auto record = captured<RvMediaAttribute>(*track);
        EXPECT_EQ(record->width, 640.0F);
        EXPECT_EQ(record->height, 360.0F);
        EXPECT_EQ(record->positionX, 12.5F);
        EXPECT_EQ(record->positionY, -3.0F);
        EXPECT_EQ(record->scale, 1.5F);
        EXPECT_EQ(record->rotation, 90.0F);
    }
}

TEST(MediaCaptureTest, VideoHasTheFileStartAsAFloat)
{
    const auto track = newTrack<RvKpTrack>(3);
    track->setFileStartTime(1500);
    EXPECT_EQ(captured<RvMediaAttribute>(*track)->fileStartTime, 1500.0F);
    track->setFileStartTime(16777217); // between two floats
    EXPECT_EQ(captured<RvMediaAttribute>(*track)->fileStartTime, 16777216.0F);
}

TEST(MediaCaptureTest, ImageHasNoFileStart)
{
    const auto track = owned(RvSpriteTrack::create(mediaFiles().picture, 1500, 1000));
    EXPECT_EQ(captured<RvMediaAttribute>(*track)->fileStartTime, 0.0F);
}

TEST(AudioCaptureTest, HasTheFileStartAsAFloat)
{
    const auto track = newTrack<RvAudioTrack>(4);
    track->setFileStartTime(1500);
    EXPECT_EQ(captured<RvAudioAttribute>(*track)->fileStartTime, 1500.0F);
}

TEST(DetectCaptureTest, HasModeModelAndBinding)
{
    const LiveTimeline timeline;
    timeline.addPicture(900);
    const auto track = newTrack<RvDetectionTrack>(5);
    track->setDetectionMode(4);
    track->setModelPath("/models/脸");
    timeline.addMix(track.get());
    const auto capture = [&] {
        auto record = timeline.captureOnlyMix();
        return std::unique_ptr<RvDetectAttribute>(
            dynamic_cast<RvDetectAttribute*>(record.release()));
    };

    auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->mode, 4);
    EXPECT_EQ(record->modePath, "/models/脸");
    EXPECT_EQ(record->range, 0);
    EXPECT_EQ(record->bindType, 0);
    EXPECT_EQ(record->target, Ids{});

    track->bind(RvAttributeUtility::getMainTrack(timeline.get(), 900), 3);
    record = capture();
    EXPECT_EQ(record->range, 1);
    EXPECT_EQ(record->bindType, 3);
    EXPECT_EQ(record->target, Ids{900});

    track->bindDynamic();
    record = capture();
    EXPECT_EQ(record->range, 2);
    EXPECT_EQ(record->bindType, 0);
    EXPECT_EQ(record->target, Ids{});
}

class EffectCaptureTest : public testing::TestWithParam<std::string>
{
protected:
    void SetUp() override
    {
        m_timeline.addPicture(900);
        m_detection = withId(RvDetectionTrack::create(1, {}), 901);
        m_timeline.addMix(m_detection.get());
        m_timeline.addMix(m_track.get());
    }

    /// The record of the effect; null when it is not described.
    std::unique_ptr<RvEffectAttribute> capture() const
    {
        const auto description = m_timeline.capture();
        for (RvAttribute*& record : description->mixAttribs) {
            if (auto* effect = dynamic_cast<RvEffectAttribute*>(record)) {
                record = nullptr; // no longer the description's
                return std::unique_ptr<RvEffectAttribute>(effect);
            }
        }
        return nullptr;
    }

    const ScopedCache m_cache;
    const LiveTimeline m_timeline;
    Owned<RvDetectionTrack> m_detection;
    const Owned<RvIEffectTrack> m_track =
        owned(dynamic_cast<RvIEffectTrack*>(kindSample(GetParam()).liveTrack()));
};

INSTANTIATE_TEST_SUITE_P(EveryEffect, EffectCaptureTest,
                         testing::Values("Filter", "Beauty", "Makeup", "Layer", "Label", "Liquify"),
                         [](const auto& kind) { return kind.param; });

TEST_P(EffectCaptureTest, HasNoTargetAndNoDetectionWhenItIsBoundToNothing)
{
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->range, 0);
    EXPECT_EQ(record->bindType, 0);
    EXPECT_EQ(record->target, Ids{});
    EXPECT_EQ(record->detect, 0U);
}

TEST_P(EffectCaptureTest, HasTheTrackAndTheDetectionThatItIsBoundTo)
{
    m_track->bind(RvAttributeUtility::getMainTrack(m_timeline.get(), 900), 3);
    m_track->bindDetect(m_detection.get());
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->range, 1);
    EXPECT_EQ(record->bindType, 3);
    EXPECT_EQ(record->target, Ids{900});
    EXPECT_EQ(record->detect, 901U);
}

TEST_P(EffectCaptureTest, HasNoTargetWhenItIsBoundDynamically)
{
    m_track->bindDynamic();
    m_track->bindDetect(m_detection.get());
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->range, 2);
    EXPECT_EQ(record->bindType, 0);
    EXPECT_EQ(record->target, Ids{});
    EXPECT_EQ(record->detect, 901U);
}

TEST_P(EffectCaptureTest, IsBoundToNoneThatWasTakenOffTheTimelineButWaitsForIt)
{
    m_track->bind(RvAttributeUtility::getMainTrack(m_timeline.get(), 900), 3);
    m_track->bindDetect(m_detection.get());
    m_timeline.get()->removeGroup(owned(RvAttributeUtility::getGroup(m_timeline.get(), 900)).get());
    m_timeline.get()->removeMixTrack(m_detection.get());
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->range, RvActionRangeAway);
    EXPECT_EQ(record->bindType, 3);
    EXPECT_EQ(record->target, Ids{});
    EXPECT_EQ(record->detect, 0U);
}

TEST_P(EffectCaptureTest, HasTheScriptsValues)
{
    auto& track = dynamic_cast<RvARITrack&>(*m_track);
    track.setScriptParam("text", "你好");
    track.setScriptParam("colour", "red");
    track.setGlobalParamConfiguration("global");
    const auto record = capture();
    const auto* ar = dynamic_cast<const RvARAttribute*>(record.get());
    ASSERT_TRUE(ar);
    EXPECT_EQ(ar->scriptParams,
              (std::map<std::string, std::string>{{"colour", "red"}, {"text", "你好"}}));
    EXPECT_EQ(ar->globalParamConfiguration, "global");
}

/// Gives a track every value of a filter.
void setFilterValues(RvARFilterTrack& track)
{
    track.setFilterAlpha(0.75F);
    track.setFloatParam(KpARParamSharpen, 0.5F);
    track.setFloatParamByFaceId(KpARParamBrightEye, 0.25F, 5);
    track.addARFacePlist("/faces/5.plist", 5);
}

void expectFilterValues(const RvARFilterAttribute& record)
{
    EXPECT_EQ(record.filterAlpha, 0.75F);
    EXPECT_EQ(record.floatParams, (std::map<KpARKernelParamFlag, float>{{KpARParamSharpen, 0.5F}}));
    EXPECT_EQ(record.faceFloatParams, (std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>{
                                          {5, {{KpARParamBrightEye, 0.25F}}}}));
    EXPECT_EQ(record.arFacePlists, (std::map<std::int64_t, std::string>{{5, "/faces/5.plist"}}));
}

TEST(FilterCaptureTest, HasTheFiltersValues)
{
    const auto track = newTrack<RvARFilterTrack>(7);
    setFilterValues(*track);
    expectFilterValues(*captured<RvARFilterAttribute>(*track));
}

/// Gives a track every value of a beauty but the mask.
void setBeautyValues(RvARBeautyTrack& track)
{
    setFilterValues(track);
    track.setBeautyType(RvBeautyTypeBody);
    track.setEnableBeautyGenderDistinction(true);
    track.setApplyGenderToAR(true);
    track.loadCoeffientParameterConfig("coefficients");
    track.setKpARGenderParamCoeffients(KpARGenderMale, {{KpARParamSlimFace, 0.5F}});
    track.setKpARGenderParamCoeffients(KpARGenderFemale, {{KpARParamSlimFace, 0.5F}});
    track.setAllFaceBeautyParam({{5, {{KpARParamSlimNose, 0.5F}}}});
    track.setAllBeautyAnattaForFaceControls({{KpARParamLipShape, true}});
    track.setManualLongLegEnable(true);
    track.setManualLongLegRange({0.25F, 0.75F});
    track.setManualSlimHeadParam({0.25F, 0.5F, 0.75F});
    track.setMapPointsData({QPointF(1.0, 2.0), QPointF(3.0, 4.0)});
}

void expectBeautyValues(const RvARBeautyAttribute& record)
{
    expectFilterValues(record);
    EXPECT_EQ(record.beautyType, RvBeautyTypeBody);
    EXPECT_TRUE(record.enableBeautyGenderDistinction);
    EXPECT_TRUE(record.applyGenderToAR);
    EXPECT_EQ(record.coeffientParameterConfig, "coefficients");
    EXPECT_EQ(record.allFaceBeautyParam,
              (std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>{
                  {5, {{KpARParamSlimNose, 0.5F}}}}));
    EXPECT_EQ(record.allBeautyAnattaForFaceControls,
              (std::map<KpARKernelParamFlag, bool>{{KpARParamLipShape, true}}));
    EXPECT_TRUE(record.manualLongLegEnable);
    EXPECT_EQ(record.manualLongLegRange, (std::pair<float, float>{0.25F, 0.75F}));
    EXPECT_EQ(record.manualSlimHeadParam, (std::tuple<float, float, float>{0.25F, 0.5F, 0.75F}));
    EXPECT_EQ(record.mapPointsData, (std::vector<QPointF>{QPointF(1.0, 2.0), QPointF(3.0, 4.0)}));
    // The framework tells the coefficients of a gender, but they are never asked for.
    EXPECT_TRUE(record.genderParamCoeffientsA.empty());
    EXPECT_TRUE(record.genderParamCoeffientsB.empty());
}

TEST(BeautyCaptureTest, HasTheBeautysValuesButTheCoefficientsOfAGender)
{
    const auto track = newTrack<RvARBeautyTrack>(8);
    setBeautyValues(*track);
    expectBeautyValues(*captured<RvARBeautyAttribute>(*track));
}

/// Gives a track every value of a makeup but the mask.
void setMakeupValues(RvARMakeupTrack& track)
{
    setBeautyValues(track);
    track.setSuitAlpha(0.25F);
    track.setAllARGroupOrder({"lips", "brows"});
    RvARMakeupARGroupData group;
    group.groupDataId = 7;
    group.groupName = "lips";
    group.groupAlpha = 0.5F;
    group.entries = {{"texture", "red.png"}};
    track.setARGroupDatas({group});
    RvARFaceGroupData face;
    face.faceId = 5;
    face.suitAlpha = 0.75F;
    face.groupDatas = {group};
    face.groupOrders = {"lips"};
    track.setARFaceGroupDatas({face});
}

void expectMakeupValues(const RvARMakeupAttribute& record)
{
    expectBeautyValues(record);
    EXPECT_EQ(record.suitAlpha, 0.25F);
    EXPECT_EQ(record.groupOrders, (std::vector<std::string>{"lips", "brows"}));
    ASSERT_EQ(record.groupDatas.size(), 1U);
    ASSERT_EQ(record.groupFaceDatas.size(), 1U);
    const RvARFaceGroupData& face = record.groupFaceDatas.front();
    EXPECT_EQ(face.faceId, 5);
    EXPECT_EQ(face.suitAlpha, 0.75F);
    EXPECT_EQ(face.groupOrders, std::vector<std::string>{"lips"});
    ASSERT_EQ(face.groupDatas.size(), 1U);
    for (const RvARMakeupARGroupData& group :
         {record.groupDatas.front(), face.groupDatas.front()}) {
        EXPECT_EQ(group.groupDataId, 7);
        EXPECT_EQ(group.groupName, "lips");
        EXPECT_EQ(group.groupAlpha, 0.5F);
        EXPECT_EQ(group.entries,
                  (std::vector<std::pair<std::string, std::string>>{{"texture", "red.png"}}));
    }
}

TEST(MakeupCaptureTest, HasTheMakeupsValues)
{
    const auto track = newTrack<RvARMakeupTrack>(9);
    setMakeupValues(*track);
    expectMakeupValues(*captured<RvARMakeupAttribute>(*track));
}

TEST(LiquifyCaptureTest, HasTheBeautysValuesAndTheStrokeAppendedLast)
{
    const ScopedCache cache;
    const auto track = newTrack<RvARLiquifyTrack>(13);
    setBeautyValues(*track);
    RvARLiquifyOperation stroke;
    stroke.centerX = 1.5;
    stroke.centerY = 2.5;
    stroke.radius = 30.0F;
    stroke.strength = 0.5F;
    stroke.movePoints = {QPointF(1.0, 2.0), QPointF(3.0, 4.0)};
    stroke.liquifyStyle = 2;
    track->appendToLiquifyOperation({9.0, 9.0, 9.0F, 9.0F, {}, 9});
    track->appendToLiquifyOperation(stroke);

    const auto record = captured<RvARLiquifyAttribute>(*track);

    expectBeautyValues(*record);
    EXPECT_EQ(record->centerX, 1.5);
    EXPECT_EQ(record->centerY, 2.5);
    EXPECT_EQ(record->radius, 30.0F);
    EXPECT_EQ(record->strength, 0.5F);
    EXPECT_EQ(record->movePoints[0], QPointF(1.0, 2.0));
    EXPECT_EQ(record->movePoints[1], QPointF(3.0, 4.0));
    EXPECT_EQ(record->liquifyStyle, 2);
}

TEST(LabelCaptureTest, HasTheValuesOfADefaultRecordBeyondThoseOfAnyAREffect)
{
    const auto track = newTrack<RvARLabelTrack>(12);
    const auto record = captured<RvARLabelAttribute>(*track);
    const RvARLabelAttribute defaults;
    EXPECT_EQ(record->filterAlpha, defaults.filterAlpha);
    EXPECT_TRUE(record->floatParams.empty());
    EXPECT_EQ(record->beautyType, defaults.beautyType);
    EXPECT_EQ(record->beautyActiveMaskImageRef, nullptr);
}

// The mask.

QImage mask(int width)
{
    QImage image(width, 2, QImage::Format_ARGB32);
    image.fill(0xff102030U);
    return image;
}

void expectNoMask(const RvARBeautyAttribute& record)
{
    EXPECT_EQ(record.beautyActiveMaskImageRef, nullptr);
    EXPECT_EQ(record.beautyMaskFaceId, 0);
    EXPECT_EQ(record.beautyMaskBrushType, "");
    EXPECT_TRUE(record.beautyActiveMaskImage.isNull());
}

TEST(MaskCaptureTest, IsCopiedAndPointedAtFromFaceOneOn)
{
    const auto track = newTrack<RvARBeautyTrack>(8);
    for (const std::int64_t face : {std::int64_t{1}, std::numeric_limits<std::int64_t>::max()}) {
        track->loadBeautyMaskDatas(face, nullptr, "圆", mask(3));
        const auto record = captured<RvARBeautyAttribute>(*track);
        EXPECT_EQ(record->beautyActiveMaskImage, mask(3));
        EXPECT_EQ(record->beautyMaskFaceId, face);
        EXPECT_EQ(record->beautyMaskBrushType, "圆");
        EXPECT_EQ(record->beautyActiveMaskImageRef, &record->beautyActiveMaskImage);
    }
}

TEST(MaskCaptureTest, IsLeftAloneWithoutAFace)
{
    const auto track = newTrack<RvARBeautyTrack>(8);
    for (const std::int64_t face :
         {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
        track->loadBeautyMaskDatas(face, nullptr, "round", mask(3));
        expectNoMask(*captured<RvARBeautyAttribute>(*track));
    }
}

TEST(MaskCaptureTest, WithoutAPictureIsWarnedOfAndLeftAlone)
{
    const auto track = newTrack<RvARBeautyTrack>(8);
    setBeautyValues(*track);
    track->setBeautyMaskFaceId(1);
    track->setBeautyMaskBrushType("round");
    const ExpectedWarning warning(maskWarning);
    const auto record = captured<RvARBeautyAttribute>(*track);
    expectNoMask(*record);
    expectBeautyValues(*record);
}

TEST(MaskCaptureTest, WithoutAPictureLeavesTheValuesOfAMakeupToBeCaptured)
{
    const auto track = newTrack<RvARMakeupTrack>(9);
    setMakeupValues(*track);
    track->setBeautyMaskFaceId(1);
    const ExpectedWarning warning(maskWarning);
    const auto record = captured<RvARMakeupAttribute>(*track);
    expectNoMask(*record);
    expectMakeupValues(*record);
}

TEST(MaskCaptureTest, WithoutAPictureLeavesTheStrokesOfALiquifyToBeSaved)
{
    const ScopedCache cache;
    const auto track = newTrack<RvARLiquifyTrack>(13);
    track->setBeautyMaskFaceId(1);
    const ExpectedWarning warning(maskWarning);
    const auto record = captured<RvARLiquifyAttribute>(*track);
    expectNoMask(*record);
    EXPECT_FALSE(record->effectPath.isEmpty());
}

TEST(MaskCaptureTest, OfEveryCaptureIsOneOfItsOwn)
{
    const auto track = newTrack<RvARBeautyTrack>(8);
    track->loadBeautyMaskDatas(1, nullptr, "round", mask(3));
    const auto first = captured<RvARBeautyAttribute>(*track);
    track->setBeautyActiveMaskImage(mask(4));
    const auto second = captured<RvARBeautyAttribute>(*track);
    EXPECT_EQ(first->beautyActiveMaskImage, mask(3));
    EXPECT_EQ(second->beautyActiveMaskImage, mask(4));
    EXPECT_NE(first->beautyActiveMaskImageRef, second->beautyActiveMaskImageRef);
}

} // namespace
