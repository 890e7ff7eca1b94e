// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include "support/TestMedia.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvIEffectTrack.h>
#include <rvkpcore/RvKpTrack.h>

#include <kparextension/RvARAttribsTrack.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <typeinfo>

namespace {

using namespace norvel;
using namespace qrvkp;

using Calls = std::vector<std::string>;

/// A timeline with the main track and the detection that the samples name.
LiveTimeline sampleTimeline()
{
    LiveTimeline timeline;
    timeline.addPicture(sampleMainId);
    timeline.addDetection(sampleDetectionId);
    return timeline;
}

Owned<RvITrack> create(const LiveTimeline& timeline, RvAttribute& record)
{
    return owned(RvAttributeUtility::createTrack(timeline.get(), &record));
}

/// The calls that create a track of the record, which is called `it`.
Calls creationCalls(const LiveTimeline& timeline, RvAttribute& record)
{
    return callsAboutCreated(callsOf([&] { create(timeline, record); }));
}

class KindCreationTest : public testing::TestWithParam<std::string>
{
protected:
    const KindSample& m_sample = kindSample(GetParam());
    const std::unique_ptr<RvAttribute> m_record = m_sample.record();
    const bool m_isCreated = !m_sample.creation.empty();
};

INSTANTIATE_TEST_SUITE_P(EveryKind, KindCreationTest, testing::ValuesIn(kindNames()),
                         [](const auto& kind) { return kind.param; });

/// The kinds of which a track is made.
class CreatedKindTest : public KindCreationTest
{
};

std::vector<std::string> createdKindNames()
{
    std::vector<std::string> names = kindNames();
    names.erase(
        std::remove_if(names.begin(), names.end(),
                       [](const std::string& name) { return kindSample(name).creation.empty(); }),
        names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, CreatedKindTest, testing::ValuesIn(createdKindNames()),
                         [](const auto& kind) { return kind.param; });

TEST_P(KindCreationTest, MakesTheseCallsInThisOrder)
{
    const LiveTimeline timeline = sampleTimeline();
    EXPECT_EQ(lines(creationCalls(timeline, *m_record)), lines(m_sample.creation));
}

TEST_P(CreatedKindTest, GivesANewTrackOfTheKindThatTheCallerReleases)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto track = create(timeline, *m_record);
    ASSERT_TRUE(track);
    const auto live = owned(m_sample.liveTrack());
    const RvITrack& created = *track;
    const RvITrack& ofTheKind = *live;
    EXPECT_TRUE(typeid(created) == typeid(ofTheKind));
    EXPECT_EQ(track->getTrackType(), live->getTrackType());
    EXPECT_EQ(track->referenceCount(), 1);
}

TEST_P(KindCreationTest, LeavesTheTrackOffTheTimeline)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto track = create(timeline, *m_record);
    EXPECT_EQ(owned(timeline.get()->getGroups()).size(), 1U);
    EXPECT_EQ(owned(timeline.get()->getMixTracks()).size(), 1U);
    // A track that was made can still be put anywhere.
    EXPECT_EQ(timeline.get()->addMixTrack(track.get()), m_isCreated);
}

TEST_P(CreatedKindTest, EveryCreationGivesATrackOfItsOwn)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto first = create(timeline, *m_record);
    const auto second = create(timeline, *m_record);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->getContext(), second->getContext());
}

TEST_P(KindCreationTest, NullTimelineGivesNull)
{
    const Calls calls = callsOf(
        [&] { EXPECT_EQ(RvAttributeUtility::createTrack(nullptr, m_record.get()), nullptr); });
    EXPECT_EQ(calls, Calls{});
}

TEST_P(KindCreationTest, NoOtherTypeCodeMakesATrack)
{
    const LiveTimeline timeline = sampleTimeline();
    for (const int type : {1, 0, 14, -1, 400, 20001, std::numeric_limits<int>::max(),
                           std::numeric_limits<int>::min()}) {
        m_record->type = type;
        EXPECT_EQ(creationCalls(timeline, *m_record), Calls{}) << type;
    }
}

TEST_P(CreatedKindTest, GivesNullWhenTheFrameworkMakesNoTrack)
{
    const LiveTimeline timeline = sampleTimeline();
    const std::string call = m_sample.creation.front();
    RvFault::failNext(call.substr(0, call.find('(')));

    Owned<RvITrack> track;
    const Calls calls = callsOf([&] { track = create(timeline, *m_record); });

    EXPECT_FALSE(track);
    // The attempt is all there is: nothing is set or bound.
    EXPECT_EQ(calls, Calls{call.substr(0, call.rfind("it")) + "null"});
}

TEST_P(KindCreationTest, ReconciliationMakesTheSameCalls)
{
    const LiveTimeline timeline = sampleTimeline();
    const RvTimeLineAttribute before;
    RvTimeLineAttribute after;
    after.mixAttribs = {m_sample.record().release()};
    Calls expected = m_sample.creation;
    if (m_isCreated)
        expected.emplace_back(GetParam() == "Layer" ? "RvKpTimeLine::addMixTrack(it)"
                                                    : "RvKpTimeLine::addMixTrack(77)");
    expected.emplace_back("RvKpTimeLine::invalidate()");

    const Calls calls = callsAboutCreated(
        callsOf([&] { RvAttributeUtility::updateTimeLine(timeline.get(), &before, &after); }));
    EXPECT_EQ(lines(calls), lines(expected));
}

TEST(TrackCreationTest, NullRecordGivesNull)
{
    const LiveTimeline timeline;
    const Calls calls = callsOf(
        [&] { EXPECT_EQ(RvAttributeUtility::createTrack(timeline.get(), nullptr), nullptr); });
    EXPECT_EQ(calls, Calls{});
    EXPECT_EQ(RvAttributeUtility::createTrack(nullptr, nullptr), nullptr);
}

TEST(TrackCreationTest, BaseRecordGivesNull)
{
    const LiveTimeline timeline;
    RvAttribute record;
    ASSERT_EQ(record.type, 1);
    EXPECT_EQ(creationCalls(timeline, record), Calls{});
}

// The bindings of detections and effects, by `range`.

struct Binding
{
    int range;
    std::vector<std::uint64_t> target;
    Calls calls; ///< without the class name
};

std::vector<Binding> bindingCases()
{
    const std::uint64_t main = sampleMainId;
    const std::uint64_t mix = sampleDetectionId;
    return {
        {0, {main}, {"::unbind(77)"}},
        {1, {main}, {"::unbind(77)", "::bind(77, 900, 3)"}},
        {1, {main, 5}, {"::unbind(77)", "::bind(77, 900, 3)"}},
        {1, {}, {"::unbind(77)"}},
        {1, {5}, {"::unbind(77)"}},
        {1, {5, main}, {"::unbind(77)"}}, // the first target alone counts
        {1, {mix}, {"::unbind(77)"}},     // main tracks alone are targets
        {2, {main}, {"::unbind(77)", "::bindDynamic(77)"}},
        {3, {main}, {}},
        {-1, {main}, {}},
        {std::numeric_limits<int>::max(), {main}, {}},
    };
}

/// The entries of a list that speak of bindings.
Calls bindingCalls(const Calls& calls)
{
    Calls found;
    for (const std::string& call : calls) {
        if (call.find("bind") != std::string::npos)
            found.push_back(call);
    }
    return found;
}

TEST(TrackCreationTest, DetectionsAreBoundByTheirRange)
{
    for (const Binding& binding : bindingCases()) {
        const LiveTimeline timeline = sampleTimeline();
        RvDetectAttribute record;
        record.type = 5;
        record.uuid = sampleId;
        record.bindType = 3;
        record.range = binding.range;
        record.target = binding.target;
        Calls expected;
        for (const std::string& call : binding.calls)
            expected.push_back("RvDetectionTrack" + call);
        EXPECT_EQ(bindingCalls(creationCalls(timeline, record)), expected) << binding.range;
    }
}

TEST(TrackCreationTest, EffectsAreBoundByTheirRange)
{
    for (const char* kind : {"Filter", "Beauty", "Makeup", "Liquify"}) {
        for (const Binding& binding : bindingCases()) {
            const LiveTimeline timeline = sampleTimeline();
            const auto record = kindSample(kind).record();
            auto& effect = dynamic_cast<RvEffectAttribute&>(*record);
            effect.detect = 0;
            effect.range = binding.range;
            effect.target = binding.target;
            Calls expected;
            for (const std::string& call : binding.calls)
                expected.push_back("RvIEffectTrack" + call);
            EXPECT_EQ(bindingCalls(creationCalls(timeline, effect)), expected)
                << kind << " " << binding.range;
        }
    }
}

TEST(TrackCreationTest, DetectionOfRangeOneWithoutATargetIsUnbound)
{
    const LiveTimeline timeline = sampleTimeline();
    RvDetectAttribute record;
    record.type = 5;
    record.range = 1;
    const auto track = create(timeline, record);
    const auto& detection = dynamic_cast<RvDetectionTrack&>(*track);
    EXPECT_EQ(detection.getActionRange(), RvActionRangeGlobal);
    EXPECT_EQ(detection.getBindTrack(), nullptr);
}

TEST(TrackCreationTest, DetectionIsBoundToTheMainTrackItself)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto record = kindSample("Detection").record();
    const auto track = create(timeline, *record);
    const auto bound = owned(dynamic_cast<RvDetectionTrack&>(*track).getBindTrack());
    const auto main = owned(RvAttributeUtility::getMainTrack(timeline.get(), sampleMainId));
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getContext(), main->getContext());
    EXPECT_EQ(dynamic_cast<RvDetectionTrack&>(*track).getMediaBindType(), 3);
}

TEST(TrackCreationTest, OfEqualIdsTheFirstMainTrackIsBound)
{
    const LiveTimeline timeline = sampleTimeline();
    timeline.addPicture(sampleMainId);
    const auto record = kindSample("Filter").record();
    const auto track = create(timeline, *record);
    const auto bound = owned(dynamic_cast<RvIEffectTrack&>(*track).getBindTrack());
    const auto groups = owned(timeline.get()->getGroups());
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getContext(), owned(groups.front()->getTracks()).front()->getContext());
}

TEST(TrackCreationTest, MattesAreNeverBound)
{
    const LiveTimeline timeline = sampleTimeline();
    for (const int range : {0, 1, 2}) {
        const auto record = kindSample("Matte").record();
        dynamic_cast<RvEffectAttribute&>(*record).range = range;
        EXPECT_EQ(bindingCalls(creationCalls(timeline, *record)), Calls{}) << range;
    }
}

TEST(TrackCreationTest, LayersKeepTheIdAndTheValuesOfANewTrack)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto record = kindSample("Layer").record();
    const auto track = create(timeline, *record);
    const auto& layer = dynamic_cast<qkpar::RvARAttribsTrack&>(*track);
    EXPECT_NE(layer.getTrackID(), record->uuid);
    EXPECT_EQ(layer.getTrackSource(), "/effects/source");
    EXPECT_EQ(layer.getStartPos(), 250);
    EXPECT_EQ(layer.getOriginDuration(), 4000);
    EXPECT_EQ(layer.getOriginZOrder(), 0);
    EXPECT_EQ(layer.getAlpha(), 1.0F);
    EXPECT_EQ(layer.getSpeed(), 1.0F);
    EXPECT_EQ(layer.getTag(), "");
    EXPECT_TRUE(layer.getScriptParams().empty());
    EXPECT_EQ(layer.getGlobalParamConfiguration(), "");
    EXPECT_EQ(layer.getActionRange(), RvActionRangeTrack);
}

TEST(TrackCreationTest, BeautyWithoutFaceFilesIsMadeOfItsSource)
{
    const LiveTimeline timeline = sampleTimeline();
    const auto record = kindSample("Beauty").record();
    dynamic_cast<RvARFilterAttribute&>(*record).arFacePlists.clear();
    EXPECT_EQ(creationCalls(timeline, *record).front(),
              "RvARBeautyTrack::create(\"/effects/source\", 250, 4000) -> it");
}

TEST(TrackCreationTest, FileStartIsCutToWholeMilliseconds)
{
    const LiveTimeline timeline;
    const std::vector<std::pair<float, std::string>> cases{
        {1500.75F, "1500"}, {0.999F, "0"}, {-0.999F, "0"},
        {-1.5F, "-1"},      {-0.0F, "0"},  {16777216.0F, "16777216"}};
    for (const auto& [fileStart, cut] : cases) {
        const auto picture = kindSample("Image").record();
        dynamic_cast<RvMediaAttribute&>(*picture).fileStartTime = fileStart;
        EXPECT_EQ(creationCalls(timeline, *picture).front(), "RvSpriteTrack::create(\"" +
                                                                 mediaFiles().picture + "\", " +
                                                                 cut + ", 4000) -> it");
        const auto video = kindSample("Video").record();
        dynamic_cast<RvMediaAttribute&>(*video).fileStartTime = fileStart;
        const Calls videoCalls = creationCalls(timeline, *video);
        EXPECT_EQ(videoCalls.front(), "RvKpTrack::create(\"" + mediaFiles().video + "\", " + cut +
                                          ", 4000, " + cut + ") -> it");
        EXPECT_EQ(videoCalls.back(), "RvKpTrack::setFileStartTime(77, " + cut + ")");
        const auto sound = kindSample("Audio").record();
        dynamic_cast<RvAudioAttribute&>(*sound).fileStartTime = fileStart;
        const Calls soundCalls = creationCalls(timeline, *sound);
        EXPECT_EQ(soundCalls.front(), "RvAudioTrack::create(\"" + mediaFiles().sound + "\", " +
                                          cut + ", 4000, " + cut + ") -> it");
        EXPECT_EQ(soundCalls.back(), "RvAudioTrack::setFileStartTime(77, " + cut + ")");
    }
}

TEST(TrackCreationTest, TheTracksStartIsTheRecordsStartNotThatInTheFile)
{
    const LiveTimeline timeline;
    for (const char* kind : {"Image", "Video", "Audio"}) {
        const auto record = kindSample(kind).record();
        EXPECT_EQ(create(timeline, *record)->getStartPos(), 250) << kind;
    }
}

TEST(TrackCreationTest, DurationOfTheRecordStaysEvenWhereTheFrameworkFoundItsOwn)
{
    const LiveTimeline timeline;
    for (const char* kind : {"Video", "Audio"}) {
        const auto record = kindSample(kind).record();
        record->duration = -1; // all of the file, for the creation
        EXPECT_EQ(create(timeline, *record)->getOriginDuration(), -1) << kind;
    }
}

TEST(TrackCreationTest, MediaOfTheWrongKindOfFileGivesNull)
{
    const LiveTimeline timeline;
    const MediaFiles& files = mediaFiles();
    const std::vector<std::pair<std::string, std::string>> cases{{"Image", files.video},
                                                                 {"Image", files.sound},
                                                                 {"Image", "/nowhere/a.png"},
                                                                 {"Image", ""},
                                                                 {"Video", files.picture},
                                                                 {"Video", files.sound},
                                                                 {"Video", "/nowhere/a"},
                                                                 {"Video", ""},
                                                                 {"Audio", files.picture},
                                                                 {"Audio", "/nowhere/a"},
                                                                 {"Audio", ""}};
    for (const auto& [kind, file] : cases) {
        const auto record = kindSample(kind).record();
        record->source = file;
        const Calls calls = creationCalls(timeline, *record);
        ASSERT_EQ(calls.size(), 1U) << kind << " of " << file;
        EXPECT_EQ(calls.front().substr(calls.front().rfind(' ')), " null");
        EXPECT_FALSE(create(timeline, *record));
    }
}

TEST(TrackCreationTest, TheSoundOfAVideoMakesAnAudioTrack)
{
    const LiveTimeline timeline;
    const auto record = kindSample("Audio").record();
    record->source = mediaFiles().video;
    const auto track = create(timeline, *record);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackSource(), mediaFiles().video);
}

TEST(TrackCreationTest, PathsMayBeChinese)
{
    const LiveTimeline timeline;
    const QTemporaryDir folder;
    for (const auto& [kind, file, name] :
         {std::make_tuple("Image", mediaFiles().picture, "图片.png"),
          std::make_tuple("Video", mediaFiles().video, "视频.mp4"),
          std::make_tuple("Audio", mediaFiles().sound, "声音.wav")}) {
        const auto record = kindSample(kind).record();
        record->source = TestMedia::copy(file, folder.path(), name);
        const auto track = create(timeline, *record);
        ASSERT_TRUE(track) << name;
        EXPECT_EQ(track->getTrackSource(), record->source);
    }
}

TEST(TrackCreationTest, ARefusedFaceFileOrMaskDoesNotStopTheRest)
{
    for (const char* call :
         {"RvARFilterTrack::addARFacePlist", "RvARBeautyTrack::loadCoeffientParameterConfig",
          "RvARBeautyTrack::loadBeautyMaskDatas", "RvARLiquifyTrack::loadLiquifyConfig"}) {
        const LiveTimeline timeline = sampleTimeline();
        const auto record = kindSample("Liquify").record();
        RvFault::failNext(call);
        EXPECT_EQ(creationCalls(timeline, *record), kindSample("Liquify").creation) << call;
        EXPECT_FALSE(RvFault::isPending(call));
    }
}

} // namespace
