// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"
#include "timeline/ScopedPathEncoding.h"

#include "support/TestEnvironment.h"
#include "support/TimelineSamples.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpTrack.h>

#include <gtest/gtest.h>

#include <QDir>

#include <limits>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;

constexpr std::uint64_t liveId = 500;

/// A timeline with the main track and the detection that the samples name, and live tracks.
class TrackApplicationTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_timeline.addPicture(sampleMainId);
        m_timeline.addDetection(sampleDetectionId);
    }

    void update(RvITrack& track, RvAttribute& record) const
    {
        RvAttributeUtility::updateTrack(m_timeline.get(), &track, &record);
    }

    /// The calls that bring the track, called `it`, up to the record.
    Calls updateCalls(RvITrack& track, RvAttribute& record) const
    {
        const std::uint64_t id = track.getTrackID();
        return callsAbout(id, callsOf([&] { update(track, record); }));
    }

    /// The same for a new live track of the kind.
    Calls updateCalls(const KindSample& kind, RvAttribute& record) const
    {
        return updateCalls(*withId(kind.liveTrack(), liveId), record);
    }

    const LiveTimeline m_timeline;
};

/// The entries of a list that contain a text.
Calls callsWith(const std::string& text, const Calls& calls)
{
    Calls found;
    for (const std::string& call : calls) {
        if (call.find(text) != std::string::npos)
            found.push_back(call);
    }
    return found;
}

class KindApplicationTest : public TrackApplicationTest,
                            public testing::WithParamInterface<std::string>
{
protected:
    const KindSample& m_sample = kindSample(GetParam());
    const std::unique_ptr<RvAttribute> m_record = m_sample.record();
    const Owned<RvITrack> m_track = withId(m_sample.liveTrack(), liveId);
};

INSTANTIATE_TEST_SUITE_P(EveryKind, KindApplicationTest, testing::ValuesIn(kindNames()),
                         [](const auto& kind) { return kind.param; });

TEST_P(KindApplicationTest, MakesTheseCallsInThisOrder)
{
    EXPECT_EQ(lines(updateCalls(*m_track, *m_record)), lines(m_sample.update));
}

TEST_P(KindApplicationTest, ActsOnTheLiveTrackAtOnce)
{
    const auto other = owned(RvITrack::create(m_track->getContext()));
    update(*m_track, *m_record);
    EXPECT_EQ(other->getTrackID(), m_sample.update.empty() ? liveId : sampleId);
}

TEST_P(KindApplicationTest, KeepsTheSourceOfTheTrack)
{
    const std::string source = m_track->getTrackSource();
    m_record->source = "/other/source";
    update(*m_track, *m_record);
    EXPECT_EQ(m_track->getTrackSource(), source);
}

TEST_P(KindApplicationTest, NullArgumentsDoNothing)
{
    EXPECT_EQ(callsOf([&] {
                  RvAttributeUtility::updateTrack(nullptr, m_track.get(), m_record.get());
                  RvAttributeUtility::updateTrack(m_timeline.get(), nullptr, m_record.get());
                  RvAttributeUtility::updateTrack(m_timeline.get(), m_track.get(), nullptr);
                  RvAttributeUtility::updateTrack(nullptr, nullptr, nullptr);
              }),
              Calls{});
}

TEST_P(KindApplicationTest, NoOtherTypeCodeDoesAnything)
{
    for (const int type : {1, 0, 14, -1, 400, 20001, std::numeric_limits<int>::max(),
                           std::numeric_limits<int>::min()}) {
        m_record->type = type;
        EXPECT_EQ(updateCalls(*m_track, *m_record), Calls{}) << type;
    }
}

TEST_P(KindApplicationTest, LeavesNoReferenceBehind)
{
    m_timeline.addMix(m_track.get());
    update(*m_track, *m_record);
    update(*m_track, *m_record);
    EXPECT_EQ(m_track->referenceCount(), 1);
    for (const auto& group : owned(m_timeline.get()->getGroups()))
        EXPECT_EQ(group->referenceCount(), 2); // the timeline's and that of this list
}

TEST_P(KindApplicationTest, ReconciliationMakesTheSameCalls)
{
    m_timeline.addMix(m_track.get());
    // Reconciliation finds the track by the record's id.
    m_record->uuid = liveId;
    RvTimeLineAttribute before;
    RvTimeLineAttribute after;
    before.mixAttribs = {m_sample.record().release()};
    before.mixAttribs.front()->uuid = liveId;
    before.mixAttribs.front()->alpha = 0.125F;
    after.mixAttribs = {m_sample.record().release()};
    after.mixAttribs.front()->uuid = liveId;
    Calls expected = updateCalls(*m_track, *m_record);
    expected.emplace_back("RvKpTimeLine::invalidate()");

    const Calls calls = callsAbout(
        liveId,
        callsOf([&] { RvAttributeUtility::updateTimeLine(m_timeline.get(), &before, &after); }));
    EXPECT_EQ(lines(calls), lines(expected));
}

TEST_F(TrackApplicationTest, AnImageNeverGetsAFileStart)
{
    const auto record = kindSample("Image").record();
    EXPECT_EQ(callsWith("setFileStartTime", updateCalls(kindSample("Image"), *record)), Calls{});
    // Not even a video that is given the values of an image.
    EXPECT_EQ(callsWith("setFileStartTime", updateCalls(kindSample("Video"), *record)), Calls{});
}

TEST_F(TrackApplicationTest, AnImageGivenTheValuesOfAVideoGetsThemButTheFileStart)
{
    const auto record = kindSample("Video").record();
    EXPECT_EQ(updateCalls(kindSample("Image"), *record), kindSample("Image").update);
}

TEST_F(TrackApplicationTest, FileStartIsCutToWholeMilliseconds)
{
    const std::vector<std::pair<float, long long>> cases{
        {1500.75F, 1500}, {0.999F, 0}, {-0.999F, 0}, {-1.5F, -1}, {16777216.0F, 16777216}};
    const auto video = owned(dynamic_cast<RvKpTrack*>(newLiveTrack(3)));
    const auto sound = owned(dynamic_cast<RvAudioTrack*>(newLiveTrack(4)));
    for (const auto& [fileStart, cut] : cases) {
        const auto record = kindSample("Video").record();
        dynamic_cast<RvMediaAttribute&>(*record).fileStartTime = fileStart;
        update(*video, *record);
        EXPECT_EQ(video->getFileStartTime(), cut) << fileStart;
        const auto soundRecord = kindSample("Audio").record();
        dynamic_cast<RvAudioAttribute&>(*soundRecord).fileStartTime = fileStart;
        update(*sound, *soundRecord);
        EXPECT_EQ(sound->getFileStartTime(), cut) << fileStart;
    }
}

TEST_F(TrackApplicationTest, ADetectionKeepsItsModeAndModel)
{
    const auto track = owned(dynamic_cast<RvDetectionTrack*>(newLiveTrack(5)));
    const auto record = kindSample("Detection").record();
    update(*track, *record);
    EXPECT_EQ(track->getDetectionMode(), 1);
    EXPECT_EQ(track->getModelPath(), "/live/model");
}

// Binding. Every case starts from a track bound to another main track with type 8.

struct Binding
{
    int range;
    std::vector<std::uint64_t> target;
    Calls calls; ///< without the class name
    int rangeAfter;
    std::uint64_t trackAfter; ///< 0 for none
};

constexpr std::uint64_t otherMainId = 910;

std::vector<Binding> bindingCases()
{
    const std::uint64_t main = sampleMainId;
    return {
        {0, {main}, {"::unbind(it)"}, RvActionRangeGlobal, 0},
        {1, {main}, {"::unbind(it)", "::bind(it, 900, 3)"}, RvActionRangeTrack, main},
        {1, {main, otherMainId}, {"::unbind(it)", "::bind(it, 900, 3)"}, RvActionRangeTrack, main},
        {1, {}, {"::unbind(it)"}, RvActionRangeGlobal, 0},
        {1, {5}, {"::unbind(it)"}, RvActionRangeGlobal, 0},
        {1, {5, main}, {"::unbind(it)"}, RvActionRangeGlobal, 0},
        {1, {sampleDetectionId}, {"::unbind(it)"}, RvActionRangeGlobal, 0},
        {2, {main}, {"::unbind(it)", "::bindDynamic(it)"}, RvActionRangeDynamic, 0},
        {3, {main}, {}, RvActionRangeTrack, otherMainId},
        {-1, {main}, {}, RvActionRangeTrack, otherMainId},
    };
}

template <class Track>
std::uint64_t boundId(const Track& track)
{
    const auto bound = owned(track.getBindTrack());
    return bound ? bound->getTrackID() : 0;
}

TEST_F(TrackApplicationTest, DetectionsAreBoundByTheirRange)
{
    m_timeline.addPicture(otherMainId);
    for (const Binding& binding : bindingCases()) {
        const auto track = withId(dynamic_cast<RvDetectionTrack*>(newLiveTrack(5)), sampleId);
        track->bind(RvAttributeUtility::getMainTrack(m_timeline.get(), otherMainId), 8);
        RvDetectAttribute record;
        record.type = 5;
        record.uuid = sampleId;
        record.bindType = 3;
        record.range = binding.range;
        record.target = binding.target;
        Calls expected;
        for (const std::string& call : binding.calls)
            expected.push_back("RvDetectionTrack" + call);

        EXPECT_EQ(callsWith("bind", updateCalls(*track, record)), expected) << binding.range;
        EXPECT_EQ(track->getActionRange(), binding.rangeAfter) << binding.range;
        EXPECT_EQ(boundId(*track), binding.trackAfter) << binding.range;
    }
}

TEST_F(TrackApplicationTest, EffectsAreBoundByTheirRange)
{
    m_timeline.addPicture(otherMainId);
    for (const char* kind : {"Filter", "Beauty", "Makeup", "Layer", "Liquify"}) {
        for (const Binding& binding : bindingCases()) {
            const auto track =
                withId(dynamic_cast<RvIEffectTrack*>(kindSample(kind).liveTrack()), sampleId);
            track->bind(RvAttributeUtility::getMainTrack(m_timeline.get(), otherMainId), 8);
            const auto record = kindSample(kind).record();
            auto& effect = dynamic_cast<RvEffectAttribute&>(*record);
            effect.detect = 0;
            effect.range = binding.range;
            effect.target = binding.target;
            Calls expected;
            for (const std::string& call : binding.calls)
                expected.push_back("RvIEffectTrack" + call);

            EXPECT_EQ(callsWith("bind", updateCalls(*track, effect)), expected)
                << kind << " " << binding.range;
            EXPECT_EQ(track->getActionRange(), binding.rangeAfter) << kind << " " << binding.range;
            EXPECT_EQ(boundId(*track), binding.trackAfter) << kind << " " << binding.range;
        }
    }
}

/// An effect's record that is not bound to a track, with this detection.
RvARFilterAttribute filterWithDetection(std::uint64_t detection, int range)
{
    RvARFilterAttribute record;
    record.type = 7;
    record.uuid = sampleId;
    record.range = range;
    record.detect = detection;
    return record;
}

TEST_F(TrackApplicationTest, ADetectionIsBoundWhateverTheRange)
{
    for (const int range : {0, 1, 2, 3}) {
        const auto track = withId(dynamic_cast<RvIEffectTrack*>(newLiveTrack(7)), liveId);
        auto record = filterWithDetection(sampleDetectionId, range);
        const Calls calls = updateCalls(*track, record);
        EXPECT_EQ(calls.back(), "RvIEffectTrack::bindDetect(77, 901)") << range;
        const auto bound = owned(track->getBindDetect());
        ASSERT_TRUE(bound);
        EXPECT_EQ(bound->getTrackID(), sampleDetectionId);
        EXPECT_EQ(bound->referenceCount(), 1);
    }
}

TEST_F(TrackApplicationTest, DetectionZeroBindsNoneNotEvenOneWithThatId)
{
    m_timeline.addDetection(0);
    auto record = filterWithDetection(0, 0);
    EXPECT_EQ(callsWith("bindDetect", updateCalls(kindSample("Filter"), record)), Calls{});
}

TEST_F(TrackApplicationTest, AMissingDetectionBindsNone)
{
    auto record = filterWithDetection(5, 0);
    EXPECT_EQ(callsWith("bindDetect", updateCalls(kindSample("Filter"), record)), Calls{});
}

TEST_F(TrackApplicationTest, DetectionsAreLookedUpAmongTheMixTracksAlone)
{
    const auto main = withId(newLiveTrack(5), 31);
    m_timeline.addGroup({main.get()});
    auto record = filterWithDetection(31, 0);
    EXPECT_EQ(callsWith("bindDetect", updateCalls(kindSample("Filter"), record)), Calls{});
}

TEST_F(TrackApplicationTest, AMixTrackThatIsNoDetectionIsNotBoundAndLeftUnreleased)
{
    DeliberateLeak::allow(1); // the wrapper of the track that the record names
    const UnreportedLeaks unreported;
    m_timeline.addMix(withId(newLiveTrack(4), 31).get());
    auto record = filterWithDetection(31, 0);
    EXPECT_EQ(callsWith("bindDetect", updateCalls(kindSample("Filter"), record)), Calls{});
}

TEST_F(TrackApplicationTest, ADetectionThatCannotBeWrappedBindsNone)
{
    auto record = filterWithDetection(sampleDetectionId, 0);
    RvFault::failNext("RvDetectionTrack::create", 2); // the first one wraps the track looked up
    EXPECT_EQ(callsWith("bindDetect", updateCalls(kindSample("Filter"), record)), Calls{});
    EXPECT_FALSE(RvFault::isPending("RvDetectionTrack::create"));
}

TEST_F(TrackApplicationTest, UnbindingEndsTheUseOfADetectionThatTheRecordDoesNotName)
{
    const auto track = withId(dynamic_cast<RvIEffectTrack*>(newLiveTrack(7)), liveId);
    auto with = filterWithDetection(sampleDetectionId, 0);
    auto without = filterWithDetection(0, 0);
    update(*track, with);
    update(*track, without);
    EXPECT_EQ(track->getBindDetect(), nullptr);
}

// AR values.

TEST_F(TrackApplicationTest, ValuesAreAddedToThoseThatTheTrackHas)
{
    const auto track = withId(dynamic_cast<RvARFilterTrack*>(newLiveTrack(7)), liveId);
    track->setScriptParam("own", "kept");
    track->setFloatParam(KpARParamLongLeg, 0.5F);
    track->setFloatParamByFaceId(KpARParamLongLeg, 0.5F, 9);
    track->addARFacePlist("/own", 9);
    const auto record = kindSample("Filter").record();
    update(*track, *record);
    EXPECT_EQ(track->getScriptParams().at("own"), "kept");
    EXPECT_EQ(track->getScriptParams().size(), 3U);
    EXPECT_EQ(track->getFloatParams().at(KpARParamLongLeg), 0.5F);
    EXPECT_EQ(track->getFloatParams().size(), 3U);
    EXPECT_EQ(track->getFloatParamsWithFaceID().at(9).at(KpARParamLongLeg), 0.5F);
    EXPECT_EQ(track->getFloatParamsWithFaceID().size(), 3U);
    EXPECT_EQ(track->getAllArFacePlists().at(9), "/own");
    EXPECT_EQ(track->getAllArFacePlists().size(), 3U);
}

TEST_F(TrackApplicationTest, FilterAlphaIsNeverApplied)
{
    for (const char* kind : {"Filter", "Beauty", "Makeup", "Liquify"}) {
        const auto record = kindSample(kind).record();
        EXPECT_EQ(callsWith("setFilterAlpha", updateCalls(kindSample(kind), *record)), Calls{});
    }
}

TEST_F(TrackApplicationTest, AFaceWithoutValuesIsLeftAlone)
{
    RvARFilterAttribute record;
    record.type = 7;
    record.faceFloatParams = {{5, {}}};
    EXPECT_EQ(callsWith("Face", updateCalls(kindSample("Filter"), record)), Calls{});
}

TEST_F(TrackApplicationTest, ADefaultBeautyRecordHandsOverEmptyValuesAndNoMask)
{
    RvARBeautyAttribute record;
    record.type = 8;
    record.uuid = sampleId;
    EXPECT_EQ(updateCalls(kindSample("Beauty"), record),
              (Calls{
                  "RvITrack::setStartPos(it, 0)",
                  "RvITrack::setDuration(it, 0)",
                  "RvITrack::setTrackID(it, 77)",
                  "RvITrack::setZOrder(77, 0)",
                  "RvITrack::setAlpha(77, 1)",
                  "RvITrack::setSpeed(77, 1)",
                  "RvITrack::setTag(77, \"\")",
                  "RvARITrack::setGlobalParamConfiguration(77, \"\")",
                  "RvARBeautyTrack::setBeautyType(77, 0)",
                  "RvARBeautyTrack::setKpARGenderParamCoeffients(77, 2, {})",
                  "RvARBeautyTrack::setKpARGenderParamCoeffients(77, 1, {})",
                  "RvARBeautyTrack::loadCoeffientParameterConfig(77, \"\")",
                  "RvARBeautyTrack::setEnableBeautyGenderDistinction(77, false)",
                  "RvARBeautyTrack::setApplyGenderToAR(77, false)",
                  "RvARBeautyTrack::setAllFaceBeautyParam(77, {})",
                  "RvARBeautyTrack::setAllBeautyAnattaForFaceControls(77, {})",
                  "RvARBeautyTrack::setManualLongLegEnable(77, false)",
                  "RvARBeautyTrack::setMapPointsData(77, {})",
                  "RvARBeautyTrack::setManualLongLegRange(77, 0, 0)",
                  "RvARBeautyTrack::setManualSlimHeadParam(77, 0, 0, 0)",
                  "RvIEffectTrack::unbind(77)",
              }));
}

// The mask: handed over when the record has a face, a pointer and a picture.

class MaskApplicationTest : public TrackApplicationTest
{
protected:
    Calls maskCalls()
    {
        m_record.type = 8;
        m_record.uuid = sampleId;
        return callsWith("loadBeautyMaskDatas", updateCalls(kindSample("Beauty"), m_record));
    }

    static QImage mask(int width)
    {
        QImage image(width, 2, QImage::Format_ARGB32);
        image.fill(0xff102030U);
        return image;
    }

    RvARBeautyAttribute m_record;
};

TEST_F(MaskApplicationTest, IsHandedOverFromFaceOneOn)
{
    m_record.beautyActiveMaskImage = mask(3);
    m_record.beautyActiveMaskImageRef = &m_record.beautyActiveMaskImage;
    m_record.beautyMaskBrushType = "round";
    for (const std::int64_t face : {std::int64_t{1}, std::numeric_limits<std::int64_t>::max()}) {
        m_record.beautyMaskFaceId = face;
        EXPECT_EQ(maskCalls(), Calls{"RvARBeautyTrack::loadBeautyMaskDatas(77, " +
                                     std::to_string(face) + ", \"round\", image 3x2)"});
    }
}

TEST_F(MaskApplicationTest, IsNotHandedOverWithoutAFace)
{
    m_record.beautyActiveMaskImage = mask(3);
    m_record.beautyActiveMaskImageRef = &m_record.beautyActiveMaskImage;
    for (const std::int64_t face :
         {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
        m_record.beautyMaskFaceId = face;
        EXPECT_EQ(maskCalls(), Calls{}) << face;
    }
}

TEST_F(MaskApplicationTest, IsNotHandedOverWithoutThePointer)
{
    m_record.beautyActiveMaskImage = mask(3);
    m_record.beautyMaskFaceId = 1;
    EXPECT_EQ(maskCalls(), Calls{});
}

TEST_F(MaskApplicationTest, IsNotHandedOverWithoutAPicture)
{
    QImage elsewhere = mask(3);
    m_record.beautyActiveMaskImageRef = &elsewhere;
    m_record.beautyMaskFaceId = 1;
    EXPECT_EQ(maskCalls(), Calls{});
}

TEST_F(MaskApplicationTest, IsTheRecordsOwnPictureWhereverThePointerLooks)
{
    QImage elsewhere = mask(9);
    m_record.beautyActiveMaskImage = mask(3);
    m_record.beautyActiveMaskImageRef = &elsewhere;
    m_record.beautyMaskFaceId = 1;
    EXPECT_EQ(maskCalls(), Calls{"RvARBeautyTrack::loadBeautyMaskDatas(77, 1, \"\", image 3x2)"});
}

TEST_F(MaskApplicationTest, OfACopyOutlivesTheRecordThatItsPointerLooksInto)
{
    auto source = std::make_unique<RvARBeautyAttribute>();
    source->beautyActiveMaskImage = mask(3);
    source->beautyActiveMaskImageRef = &source->beautyActiveMaskImage;
    source->beautyMaskFaceId = 1;
    m_record = *source;
    source.reset();
    EXPECT_EQ(maskCalls(), Calls{"RvARBeautyTrack::loadBeautyMaskDatas(77, 1, \"\", image 3x2)"});
}

TEST_F(MaskApplicationTest, OfTheTrackStaysWhenTheRecordHasNone)
{
    const auto track = withId(dynamic_cast<RvARBeautyTrack*>(newLiveTrack(8)), liveId);
    track->loadBeautyMaskDatas(4, nullptr, "soft", mask(5));
    m_record.type = 8;
    update(*track, m_record);
    EXPECT_EQ(track->getBeautyMaskFaceId(), 4);
    EXPECT_EQ(track->getBeautyMaskBrushType(), "soft");
    EXPECT_EQ(track->getBeautyActiveMaskImage(), mask(5));
}

// Liquify.

TEST_F(TrackApplicationTest, SavedStrokesTakeThePlaceOfTheRecordsStroke)
{
    const QTemporaryDir folder;
    const auto saved = withId(dynamic_cast<RvARLiquifyTrack*>(newLiveTrack(13)), sampleId);
    RvARLiquifyOperation stroke;
    stroke.radius = 11.0F;
    saved->appendToLiquifyOperation(stroke);
    saved->confirmCurrentLiquify();
    ASSERT_TRUE(saved->saveLiquifyConfig(folder.path().toLocal8Bit().toStdString()));
    const auto track = owned(dynamic_cast<RvARLiquifyTrack*>(newLiveTrack(13)));
    const auto record = kindSample("Liquify").record();

    update(*track, *record); // nothing is saved there
    EXPECT_EQ(track->getAppendOperation().radius, 30.0F);
    EXPECT_TRUE(track->getConfirmedOperations().empty());

    dynamic_cast<RvARLiquifyAttribute&>(*record).effectPath = folder.path();
    update(*track, *record);
    EXPECT_EQ(track->getAppendOperation().radius, 11.0F);
    ASSERT_EQ(track->getConfirmedOperations().size(), 1U);
    EXPECT_EQ(track->getConfirmedOperations().front().radius, 11.0F);
}

TEST_F(TrackApplicationTest, TheFolderOfSavedStrokesIsNamedInTheLocalEncoding)
{
    const auto record = kindSample("Liquify").record();
    dynamic_cast<RvARLiquifyAttribute&>(*record).effectPath = QStringLiteral("/缓存/é");
    {
        const ScopedPathEncoding utf8("UTF-8");
        EXPECT_EQ(updateCalls(kindSample("Liquify"), *record).at(31),
                  "RvARLiquifyTrack::loadLiquifyConfig(77, \"/缓存/é\")");
    }
    const ScopedPathEncoding gbk("GB18030");
    EXPECT_EQ(updateCalls(kindSample("Liquify"), *record).at(31),
              "RvARLiquifyTrack::loadLiquifyConfig(77, \"/\xbb\xba\xb4\xe6/\xa8\xa6\")");
}

// Wrappers.

TEST_F(TrackApplicationTest, AWrapperThatKnowsNoValuesOfTheKindIsLeftAlone)
{
    const auto filter = owned(newLiveTrack(7));
    const auto wrapper = withId(RvITrack::create(filter->getContext()), liveId);
    const auto record = kindSample("Filter").record();
    EXPECT_EQ(updateCalls(*wrapper, *record), Calls{});
}

} // namespace
