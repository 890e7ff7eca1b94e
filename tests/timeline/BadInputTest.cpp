// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include "support/TestEnvironment.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>

#include <gtest/gtest.h>

#include <QJsonDocument>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;
using Limits64 = std::numeric_limits<long long>;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr std::uint64_t greatestId = std::numeric_limits<std::uint64_t>::max();

Owned<RvITrack> create(const LiveTimeline& timeline, RvAttribute& record)
{
    return owned(RvAttributeUtility::createTrack(timeline.get(), &record));
}

/// The record of a kind after a track was made of it and captured; null when it is not captured.
template <class Record>
std::unique_ptr<Record> afterARoundTrip(Record& record)
{
    const LiveTimeline timeline;
    const auto track = create(timeline, record);
    if (!track)
        return nullptr;
    timeline.addMix(track.get());
    auto captured = timeline.captureOnlyMix();
    auto* ofKind = dynamic_cast<Record*>(captured.get());
    if (ofKind)
        captured.release();
    return std::unique_ptr<Record>(ofKind);
}

template <class Record>
std::unique_ptr<Record> sample(const std::string& kind)
{
    return std::unique_ptr<Record>(dynamic_cast<Record*>(kindSample(kind).record().release()));
}

/// Bitwise, so that a NaN is the NaN that was given.
bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool isJsonObject(const RvAttribute& record)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(record.serialization())).isObject();
}

// Floats that are no numbers.

constexpr float oddFloats[] = {notANumber,
                               infinite,
                               -infinite,
                               -0.0F,
                               std::numeric_limits<float>::max(),
                               std::numeric_limits<float>::lowest(),
                               std::numeric_limits<float>::denorm_min()};

TEST(OddFloatTest, EveryValueOfAClipIsKeptAsItIs)
{
    for (const char* kind : {"Image", "Video"}) {
        for (const float odd : oddFloats) {
            const auto record = sample<RvMediaAttribute>(kind);
            for (float RvMediaAttribute::*field :
                 {&RvMediaAttribute::width, &RvMediaAttribute::height, &RvMediaAttribute::positionX,
                  &RvMediaAttribute::positionY, &RvMediaAttribute::scale,
                  &RvMediaAttribute::rotation})
                (*record).*field = odd;
            record->alpha = odd;
            record->speed = odd;
            const auto back = afterARoundTrip(*record);
            ASSERT_TRUE(back);
            for (const float value : {back->width, back->height, back->positionX, back->positionY,
                                      back->scale, back->rotation, back->alpha, back->speed})
                EXPECT_TRUE(sameBits(value, odd)) << kind << " " << odd;
            EXPECT_TRUE(isJsonObject(*back));
        }
    }
}

TEST(OddFloatTest, EveryValueOfAnEffectIsKeptAsItIs)
{
    for (const float odd : oddFloats) {
        const auto record = sample<RvARMakeupAttribute>("Makeup");
        record->alpha = odd;
        record->speed = odd;
        record->floatParams = {{KpARParamSharpen, odd}};
        record->faceFloatParams = {{5, {{KpARParamSharpen, odd}}}};
        record->allFaceBeautyParam = {{5, {{KpARParamSharpen, odd}}}};
        record->manualLongLegRange = {odd, odd};
        record->manualSlimHeadParam = {odd, odd, odd};
        record->suitAlpha = odd;
        record->groupDatas.front().groupAlpha = odd;
        record->groupFaceDatas.front().suitAlpha = odd;
        const auto back = afterARoundTrip(*record);
        ASSERT_TRUE(back);
        const auto [headX, headY, headStrength] = back->manualSlimHeadParam;
        for (const float value :
             {back->alpha, back->speed, back->floatParams.at(KpARParamSharpen),
              back->faceFloatParams.at(5).at(KpARParamSharpen),
              back->allFaceBeautyParam.at(5).at(KpARParamSharpen), back->manualLongLegRange.first,
              back->manualLongLegRange.second, headX, headY, headStrength, back->suitAlpha,
              back->groupDatas.front().groupAlpha, back->groupFaceDatas.front().suitAlpha})
            EXPECT_TRUE(sameBits(value, odd)) << odd;
        EXPECT_TRUE(isJsonObject(*back));
    }
}

TEST(OddFloatTest, CoefficientsAndPointsReachTheTrackAsTheyAre)
{
    for (const float odd : oddFloats) {
        const auto record = sample<RvARBeautyAttribute>("Beauty");
        record->genderParamCoeffientsA = {{KpARParamSharpen, odd}};
        record->genderParamCoeffientsB = {{KpARParamSharpen, odd}};
        record->mapPointsData = {QPointF(static_cast<double>(odd), 1.0)};
        const auto track = create(LiveTimeline(), *record);
        const auto& beauty = dynamic_cast<RvARBeautyTrack&>(*track);
        for (const KpARGender gender : {KpARGenderFemale, KpARGenderMale})
            EXPECT_TRUE(
                sameBits(beauty.getKpARGenderParamCoeffients(gender).at(KpARParamSharpen), odd));
        EXPECT_TRUE(sameBits(static_cast<float>(beauty.getMapPointsData().front().x()), odd));
    }
}

TEST(OddFloatTest, EveryValueOfAStrokeIsKeptAsItIs)
{
    const ScopedCache cache;
    for (const float odd : oddFloats) {
        const auto record = sample<RvARLiquifyAttribute>("Liquify");
        record->centerX = static_cast<double>(odd);
        record->centerY = static_cast<double>(odd);
        record->radius = odd;
        record->strength = odd;
        record->movePoints = {QPointF(static_cast<double>(odd), 0.0),
                              QPointF(0.0, static_cast<double>(odd))};
        const auto back = afterARoundTrip(*record);
        ASSERT_TRUE(back);
        for (const double value :
             {back->centerX, back->centerY, back->movePoints[0].x(), back->movePoints[1].y()})
            EXPECT_TRUE(sameBits(static_cast<float>(value), odd)) << odd;
        EXPECT_TRUE(sameBits(back->radius, odd));
        EXPECT_TRUE(sameBits(back->strength, odd));
        EXPECT_TRUE(isJsonObject(*back));
        // Strokes that are no numbers come back from the cache, too.
        const auto track = create(LiveTimeline(), *back);
        EXPECT_TRUE(
            sameBits(dynamic_cast<RvARLiquifyTrack&>(*track).getAppendOperation().radius, odd));
    }
}

TEST(OddFloatTest, AFileStartIsCutToTheNearestThatThereIs)
{
    const std::vector<std::pair<float, long long>> cases{
        {notANumber, 0},
        {-notANumber, 0},
        {infinite, Limits64::max()},
        {-infinite, Limits64::min()},
        {std::numeric_limits<float>::max(), Limits64::max()},
        {std::numeric_limits<float>::lowest(), Limits64::min()},
        {9223372036854775808.0F, Limits64::max()},     // the first beyond
        {9223371487098961920.0F, 9223371487098961920}, // the last within
        {-9223372036854775808.0F, Limits64::min()},
        {-9223373136366403584.0F, Limits64::min()},
        {std::numeric_limits<float>::denorm_min(), 0},
        {-0.0F, 0}};
    const LiveTimeline timeline;
    for (const auto& [fileStart, cut] : cases) {
        const std::string number = std::to_string(cut);
        const auto picture = sample<RvMediaAttribute>("Image");
        picture->fileStartTime = fileStart;
        const Calls pictureCalls = callsOf([&] { create(timeline, *picture); });
        EXPECT_NE(pictureCalls.front().find("\", " + number + ", 4000) ->"), std::string::npos)
            << pictureCalls.front();

        const auto video = sample<RvMediaAttribute>("Video");
        video->fileStartTime = fileStart;
        const auto videoTrack = create(timeline, *video);
        EXPECT_EQ(dynamic_cast<RvKpTrack&>(*videoTrack).getFileStartTime(), cut) << fileStart;
        EXPECT_EQ(videoTrack->getStartPos(), 250);

        const auto sound = sample<RvAudioAttribute>("Audio");
        sound->fileStartTime = fileStart;
        const auto soundTrack = create(timeline, *sound);
        EXPECT_EQ(dynamic_cast<RvAudioTrack&>(*soundTrack).getFileStartTime(), cut) << fileStart;

        // The same when a live track is brought up to the record.
        const auto liveVideo = owned(newLiveTrack(3));
        RvAttributeUtility::updateTrack(timeline.get(), liveVideo.get(), video.get());
        EXPECT_EQ(dynamic_cast<RvKpTrack&>(*liveVideo).getFileStartTime(), cut) << fileStart;
        const auto liveSound = owned(newLiveTrack(4));
        RvAttributeUtility::updateTrack(timeline.get(), liveSound.get(), sound.get());
        EXPECT_EQ(dynamic_cast<RvAudioTrack&>(*liveSound).getFileStartTime(), cut) << fileStart;
        EXPECT_TRUE(isJsonObject(*video));
    }
}

TEST(OddFloatTest, TheSizeOfADescriptionIsTheOneGiven)
{
    for (const float odd : oddFloats) {
        const std::unique_ptr<RvTimeLineAttribute> description(
            RvAttributeUtility::createTimeLineAttribute(nullptr, odd, -odd));
        EXPECT_TRUE(sameBits(description->width, odd));
        EXPECT_TRUE(sameBits(description->height, -odd));
    }
}

// Integers at their limits.

TEST(OddIntegerTest, TimesAndOrdersAreKeptAsTheyAre)
{
    for (const long long time : {Limits64::min(), Limits64::max(), -1LL, 0LL}) {
        for (const int order :
             {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 0}) {
            for (const char* kind : {"Image", "Video", "Audio", "Detection", "Filter"}) {
                const auto record = kindSample(kind).record();
                record->startTime = time;
                record->duration = time;
                record->zOrder = order;
                const auto back = afterARoundTrip(*record);
                ASSERT_TRUE(back) << kind;
                EXPECT_EQ(back->startTime, time);
                EXPECT_EQ(back->duration, time);
                EXPECT_EQ(back->zOrder, order);
            }
        }
    }
}

TEST(OddIntegerTest, FacesFlagsModesAndBindTypesAreKeptAsTheyAre)
{
    constexpr std::int64_t lastFace = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t firstFace = std::numeric_limits<std::int64_t>::min();
    const auto lastFlag = static_cast<KpARKernelParamFlag>(std::numeric_limits<int>::max());
    const auto firstFlag = static_cast<KpARKernelParamFlag>(std::numeric_limits<int>::min());
    const auto record = sample<RvARBeautyAttribute>("Beauty");
    record->floatParams = {{lastFlag, 1.0F}, {firstFlag, 2.0F}};
    record->faceFloatParams = {{lastFace, record->floatParams}, {firstFace, record->floatParams}};
    record->arFacePlists = {{lastFace, "last"}, {firstFace, "first"}};
    record->beautyType = static_cast<RvBeautyType>(-5);
    const auto back = afterARoundTrip(*record);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->floatParams, record->floatParams);
    EXPECT_EQ(back->faceFloatParams, record->faceFloatParams);
    EXPECT_EQ(back->arFacePlists, record->arFacePlists);
    EXPECT_EQ(static_cast<int>(back->beautyType), -5);
    EXPECT_TRUE(isJsonObject(*back));

    const LiveTimeline timeline;
    timeline.addPicture(sampleMainId);
    const auto detection = sample<RvDetectAttribute>("Detection");
    detection->mode = std::numeric_limits<int>::min();
    detection->bindType = std::numeric_limits<int>::max();
    const auto track = create(timeline, *detection);
    const auto& live = dynamic_cast<RvDetectionTrack&>(*track);
    EXPECT_EQ(live.getDetectionMode(), std::numeric_limits<int>::min());
    EXPECT_EQ(live.getMediaBindType(), std::numeric_limits<int>::max());
}

// Texts.

std::vector<std::string> oddTexts()
{
    return {std::string(),
            std::string(1, '\0'),
            std::string("before\0after", 12),
            "\xff\xfe not UTF-8 \xc3",
            "\xed\xa0\x80",
            "\"quotes\", \\ and\nlines\r\n",
            "中文标签 \xf0\x9f\x8e\xac",
            "%s %n {}",
            std::string(1000000, 'x')};
}

TEST(OddTextTest, EveryTextOfAnEffectIsKeptAsItIs)
{
    for (const std::string& odd : oddTexts()) {
        const auto record = sample<RvARMakeupAttribute>("Makeup");
        record->arFacePlists = {{5, odd}};
        record->source = odd;
        record->auxText = odd;
        record->scriptParams = {{odd, odd}};
        record->globalParamConfiguration = odd;
        record->coeffientParameterConfig = odd;
        record->beautyMaskBrushType = odd;
        record->groupOrders = {odd};
        record->groupDatas.front().groupName = odd;
        record->groupDatas.front().entries = {{odd, odd}};
        record->groupFaceDatas.front().groupOrders = {odd};
        const auto back = afterARoundTrip(*record);
        ASSERT_TRUE(back);
        EXPECT_TRUE(back->source == odd);
        EXPECT_TRUE(back->auxText == odd);
        EXPECT_TRUE(back->scriptParams == record->scriptParams);
        EXPECT_TRUE(back->globalParamConfiguration == odd);
        EXPECT_TRUE(back->coeffientParameterConfig == odd);
        EXPECT_TRUE(back->beautyMaskBrushType == odd);
        EXPECT_TRUE(back->arFacePlists == record->arFacePlists);
        EXPECT_TRUE(back->groupOrders == record->groupOrders);
        EXPECT_TRUE(RvARMakeupAttribute::compareMakeupGroupData(back->groupDatas.front(),
                                                                record->groupDatas.front()));
        EXPECT_TRUE(back->groupFaceDatas.front().groupOrders == record->groupOrders);
        EXPECT_TRUE(isJsonObject(*back));
    }
}

TEST(OddTextTest, ModelAndTagOfADetectionAreKeptAsTheyAre)
{
    for (const std::string& odd : oddTexts()) {
        const auto record = sample<RvDetectAttribute>("Detection");
        record->modePath = odd;
        record->auxText = odd;
        const auto back = afterARoundTrip(*record);
        ASSERT_TRUE(back);
        EXPECT_TRUE(back->modePath == odd);
        EXPECT_TRUE(back->auxText == odd);
        EXPECT_EQ(back->source, ""); // a detection is made of its model alone
    }
}

TEST(OddTextTest, AFileOfAnOddNameIsNotFound)
{
    for (const std::string& odd : oddTexts()) {
        for (const char* kind : {"Image", "Video", "Audio"}) {
            const auto record = kindSample(kind).record();
            record->source = odd;
            EXPECT_FALSE(create(LiveTimeline(), *record)) << kind;
        }
    }
}

TEST(OddTextTest, TheNameOfAFileEndsNowhereButAtItsEnd)
{
    for (const char* kind : {"Image", "Video", "Audio"}) {
        const auto record = kindSample(kind).record();
        record->source += std::string("\0.txt", 5);
        EXPECT_FALSE(create(LiveTimeline(), *record)) << kind;
    }
}

TEST(OddTextTest, AFolderOfStrokesOfAnOddNameIsNotFound)
{
    const ScopedCache cache;
    for (const std::string& odd : oddTexts()) {
        const auto record = sample<RvARLiquifyAttribute>("Liquify");
        record->effectPath = QString::fromStdString(odd);
        const auto back = afterARoundTrip(*record);
        ASSERT_TRUE(back);
        EXPECT_EQ(back->radius, record->radius);
    }
}

// Identities.

TEST(OddIdentityTest, SmallestAndGreatestAreIdentitiesLikeAnyOther)
{
    for (const std::uint64_t id : {std::uint64_t{0}, greatestId}) {
        for (const char* kind : {"Image", "Video", "Audio", "Detection", "Filter", "Makeup"}) {
            const auto record = kindSample(kind).record();
            record->uuid = id;
            const auto back = afterARoundTrip(*record);
            ASSERT_TRUE(back) << kind;
            EXPECT_EQ(back->uuid, id) << kind;
        }
    }
}

TEST(OddIdentityTest, TargetsMayHaveThem)
{
    for (const std::uint64_t id : {std::uint64_t{0}, greatestId}) {
        const LiveTimeline timeline;
        timeline.addPicture(id);
        const auto record = sample<RvARFilterAttribute>("Filter");
        record->target = {id};
        record->detect = 0;
        const auto track = create(timeline, *record);
        const auto bound = owned(dynamic_cast<RvIEffectTrack&>(*track).getBindTrack());
        ASSERT_TRUE(bound);
        EXPECT_EQ(bound->getTrackID(), id);
    }
}

TEST(OddIdentityTest, ADetectionMayHaveTheGreatestButNotZero)
{
    const LiveTimeline timeline;
    timeline.addDetection(0);
    timeline.addDetection(greatestId);
    const auto record = sample<RvARFilterAttribute>("Filter");
    record->detect = greatestId;
    const auto with = create(timeline, *record);
    const auto bound = owned(dynamic_cast<RvIEffectTrack&>(*with).getBindDetect());
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getTrackID(), greatestId);
    record->detect = 0;
    const auto without = create(timeline, *record);
    EXPECT_EQ(dynamic_cast<RvIEffectTrack&>(*without).getBindDetect(), nullptr);
}

TEST(OddIdentityTest, ManyTargetsAreOne)
{
    const LiveTimeline timeline;
    timeline.addPicture(sampleMainId);
    const auto record = sample<RvARFilterAttribute>("Filter");
    record->target.assign(100000, greatestId);
    record->target.front() = sampleMainId;
    record->detect = 0;
    const auto track = create(timeline, *record);
    const auto bound = owned(dynamic_cast<RvIEffectTrack&>(*track).getBindTrack());
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getTrackID(), sampleMainId);
}

TEST(OddIdentityTest, AnEffectCanBeBoundToAnEffectThatStartsAGroup)
{
    const LiveTimeline timeline;
    const auto first = withId(newLiveTrack(8), sampleMainId);
    timeline.addGroup({first.get()});
    const auto record = sample<RvARFilterAttribute>("Filter");
    record->detect = 0;
    const auto track = create(timeline, *record);
    const auto bound = owned(dynamic_cast<RvIEffectTrack&>(*track).getBindTrack());
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getContext(), first->getContext());
}

TEST(OddIdentityTest, ATargetInAGroupWithoutTracksIsNotFound)
{
    const LiveTimeline timeline;
    timeline.addGroup({});
    const auto record = sample<RvARFilterAttribute>("Filter");
    record->target = {0};
    record->detect = 0;
    const auto track = create(timeline, *record);
    EXPECT_EQ(dynamic_cast<RvIEffectTrack&>(*track).getBindTrack(), nullptr);
}

// A record whose type and class disagree, and tracks that are not of the record's kind.

/// One record of every class there is, unbound.
std::vector<std::unique_ptr<RvAttribute>> recordOfEveryClass()
{
    std::vector<std::unique_ptr<RvAttribute>> records;
    records.push_back(std::make_unique<RvAttribute>());
    records.push_back(std::make_unique<RvEffectAttribute>());
    records.push_back(std::make_unique<RvARAttribute>());
    for (const std::string& kind : kindNames()) {
        if (kind != "Video") // of the class of an image
            records.push_back(kindSample(kind).record());
    }
    for (const auto& record : records) {
        record->source = mediaFiles().video;
        if (auto* effect = dynamic_cast<RvEffectAttribute*>(record.get()))
            effect->detect = 0;
    }
    return records;
}

/// Whether the record is of the class that its type stands for.
bool isOfItsType(const RvAttribute& record)
{
    switch (record.type) {
    case 2:
    case 3:
        return dynamic_cast<const RvMediaAttribute*>(&record) != nullptr;
    case 4:
        return dynamic_cast<const RvAudioAttribute*>(&record) != nullptr;
    case 5:
        return dynamic_cast<const RvDetectAttribute*>(&record) != nullptr;
    case 6:
        return dynamic_cast<const RvMatteAttribute*>(&record) != nullptr;
    case 7:
        return dynamic_cast<const RvARFilterAttribute*>(&record) != nullptr;
    case 8:
        return dynamic_cast<const RvARBeautyAttribute*>(&record) != nullptr;
    case 9:
        return dynamic_cast<const RvARMakeupAttribute*>(&record) != nullptr;
    case 10:
        return dynamic_cast<const RvARLayerAttribute*>(&record) != nullptr;
    case 13:
        return dynamic_cast<const RvARLiquifyAttribute*>(&record) != nullptr;
    default:
        return false;
    }
}

/// Whether the track has the values of the type.
bool hasValuesOf(RvITrack& track, int type)
{
    switch (type) {
    case 2:
    case 3:
        return dynamic_cast<RvIMediaTrack*>(&track) != nullptr;
    case 4:
        return dynamic_cast<RvAudioTrack*>(&track) != nullptr;
    case 5:
        return dynamic_cast<RvDetectionTrack*>(&track) != nullptr;
    case 7:
        return dynamic_cast<RvARFilterTrack*>(&track) != nullptr;
    case 8:
        return dynamic_cast<RvARBeautyTrack*>(&track) != nullptr;
    case 9:
        return dynamic_cast<RvARMakeupTrack*>(&track) != nullptr;
    case 10:
        return dynamic_cast<RvARAttribsTrack*>(&track) != nullptr;
    case 13:
        return dynamic_cast<RvARLiquifyTrack*>(&track) != nullptr;
    default:
        return false; // a matte has values, but keeps those that it was made with
    }
}

TEST(DisagreementTest, ARecordThatIsNotOfItsTypesClassMakesNoTrack)
{
    const LiveTimeline timeline;
    for (const auto& record : recordOfEveryClass()) {
        for (int type = -1; type <= 15; ++type) {
            record->type = type;
            const Calls calls = callsOf([&] { create(timeline, *record); });
            EXPECT_EQ(calls.empty(), !isOfItsType(*record))
                << typeid(*record).name() << " of type " << type;
        }
    }
}

TEST(DisagreementTest, ATrackIsLeftAloneUnlessItAndTheRecordAreOfTheType)
{
    const LiveTimeline timeline;
    for (const auto& record : recordOfEveryClass()) {
        for (int type = -1; type <= 15; ++type) {
            record->type = type;
            for (int trackType = 1; trackType <= 13; ++trackType) {
                const auto track = owned(newLiveTrack(trackType));
                const Calls calls = callsOf([&] {
                    RvAttributeUtility::updateTrack(timeline.get(), track.get(), record.get());
                });
                EXPECT_EQ(!calls.empty(), isOfItsType(*record) && hasValuesOf(*track, type))
                    << typeid(*record).name() << " of type " << type << " and a track of type "
                    << trackType;
            }
        }
    }
}

TEST(DisagreementTest, ARecordOfADerivedClassGivesTheValuesOfItsType)
{
    const LiveTimeline timeline;
    const auto record = kindSample("Makeup").record();
    record->type = 7;
    const auto track = create(timeline, *record);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackType(), RvTrackTypeARFilter);
    EXPECT_EQ(dynamic_cast<RvARFilterTrack&>(*track).getFloatParams().size(), 2U);
}

TEST(DisagreementTest, ATrackOfADerivedClassTakesTheValuesOfTheRecord)
{
    const LiveTimeline timeline;
    const auto track = owned(newLiveTrack(9));
    const auto record = kindSample("Filter").record();
    dynamic_cast<RvEffectAttribute&>(*record).detect = 0;
    RvAttributeUtility::updateTrack(timeline.get(), track.get(), record.get());
    EXPECT_EQ(track->getTrackID(), sampleId);
    EXPECT_EQ(dynamic_cast<RvARMakeupTrack&>(*track).getFloatParams().size(), 2U);
    EXPECT_EQ(dynamic_cast<RvARMakeupTrack&>(*track).getBeautyType(), RvBeautyTypeMakeup);
}

} // namespace
