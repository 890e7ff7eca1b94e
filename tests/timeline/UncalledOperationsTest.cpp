// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include "support/TimelineSamples.h"

#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <rvkpcore/RvFault.h>

#include <gtest/gtest.h>

#include <algorithm>

// The private operations of RvAttributeUtility that no public one calls.
//
// An explicit instantiation of a template may name private members in its arguments: each one here
// defines the function that gives an operation to the tests.

namespace {

template <class Name, auto Operation>
struct Opened
{
    friend constexpr auto operation(Name) { return Operation; }
};

// clang-format off
struct MainTracks { friend constexpr auto operation(MainTracks); };
struct Comparison { friend constexpr auto operation(Comparison); };
struct FrameCapture { friend constexpr auto operation(FrameCapture); };
struct FrameCreation { friend constexpr auto operation(FrameCreation); };
struct LabelCreation { friend constexpr auto operation(LabelCreation); };
struct FrameUpdate { friend constexpr auto operation(FrameUpdate); };
// clang-format on

template struct Opened<MainTracks, &norvel::RvAttributeUtility::getMainTracks>;
template struct Opened<Comparison, &norvel::RvAttributeUtility::compare>;
template struct Opened<FrameCapture, &norvel::RvAttributeUtility::createFrameAttribute>;
template struct Opened<FrameCreation, &norvel::RvAttributeUtility::createARFrameTrack>;
template struct Opened<LabelCreation, &norvel::RvAttributeUtility::createARLabelTrack>;
template struct Opened<FrameUpdate, &norvel::RvAttributeUtility::updateARFrameTrack>;

constexpr auto getMainTracks = operation(MainTracks());
constexpr auto compare = operation(Comparison());
constexpr auto createFrameAttribute = operation(FrameCapture());
constexpr auto createARFrameTrack = operation(FrameCreation());
constexpr auto createARLabelTrack = operation(LabelCreation());
constexpr auto updateARFrameTrack = operation(FrameUpdate());

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;
using Record = TimelineSamples::Record;

Record record(int type, std::uint64_t id)
{
    return Record(TimelineSamples::record(type, id));
}

Record copyOf(const Record& record)
{
    return Record(TimelineSamples::copyOf(*record));
}

/// The calls that create a track of a sample with the values of every scripted effect, as a layer
/// has them, and no bindings.
Calls scriptedCreation(const std::string& creation)
{
    Calls calls = kindSample("Layer").update;
    calls.erase(std::remove_if(
                    calls.begin(), calls.end(),
                    [](const std::string& call) { return call.rfind("RvIEffectTrack::", 0) == 0; }),
                calls.end());
    calls.insert(calls.begin(), creation + "(\"/effects/source\", 250, 4000) -> it");
    return calls;
}

/// The sample record of a kind as a record of its class.
template <class Kind>
std::unique_ptr<Kind> sample(const char* name)
{
    return std::unique_ptr<Kind>(&dynamic_cast<Kind&>(*kindSample(name).record().release()));
}

} // namespace

TEST(MainTracksTest, AreTheFirstTracksOfTheGroupsInOrder)
{
    const LiveTimeline timeline;
    timeline.addGroup({});
    const auto picture = withId(newLiveTrack(2), 3);
    const auto behind = withId(newLiveTrack(2), 4);
    timeline.addGroup({picture.get(), behind.get()});
    timeline.addGroup({});
    const auto filter = withId(newLiveTrack(7), 1);
    timeline.addGroup({filter.get()});
    const auto over = withId(newLiveTrack(4), 5);
    timeline.addMix(over.get());

    const auto tracks = owned(getMainTracks(timeline.get()));

    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(tracks[0]->getContext(), picture->getContext());
    EXPECT_EQ(tracks[1]->getContext(), filter->getContext());
}

TEST(MainTracksTest, AreTheTracksOfTheGroupsWithOneMoreReferenceEach)
{
    const LiveTimeline timeline;
    const auto picture = withId(newLiveTrack(2), 1);
    const auto group = timeline.addGroup({picture.get()});
    const auto listed = owned(group->getTracks());
    ASSERT_EQ(listed.size(), 1U);
    const int references = listed.front()->referenceCount();

    auto tracks = owned(getMainTracks(timeline.get()));
    ASSERT_EQ(tracks.size(), 1U);
    EXPECT_EQ(tracks.front().get(), listed.front().get());
    EXPECT_EQ(listed.front()->referenceCount(), references + 1);

    tracks.clear();
    EXPECT_EQ(listed.front()->referenceCount(), references);
}

TEST(MainTracksTest, AreNoneWithoutGroups)
{
    EXPECT_TRUE(getMainTracks(nullptr).empty());
    EXPECT_TRUE(getMainTracks(LiveTimeline().get()).empty());
}

TEST(ListComparisonTest, AnswersInvalidForNoRecordAndNotFoundForAnEmptyList)
{
    const auto audio = record(RecordTypeAudio, 1);
    EXPECT_EQ(compare(nullptr, {}), ReturnInvalid);
    EXPECT_EQ(compare(nullptr, {audio.get()}), ReturnInvalid);
    EXPECT_EQ(compare(audio.get(), {}), ReturnNotFound);
}

TEST(ListComparisonTest, AnswersByTheFirstRecordOfTheSameClassAndIdentity)
{
    const auto audio = record(RecordTypeAudio, 1);
    const auto picture = record(RecordTypeImage, 1);
    const auto other = record(RecordTypeAudio, 2);
    const auto same = copyOf(audio);
    const auto changed = copyOf(audio);
    changed->alpha = 0.5F;

    EXPECT_EQ(compare(audio.get(), {picture.get()}), ReturnNotFound);
    EXPECT_EQ(compare(audio.get(), {other.get()}), ReturnNotFound);
    EXPECT_EQ(compare(audio.get(), {picture.get(), other.get(), same.get(), changed.get()}),
              ReturnSame);
    EXPECT_EQ(compare(audio.get(), {picture.get(), other.get(), changed.get(), same.get()}),
              ReturnChanged);
}

TEST(ListComparisonTest, NeverFindsALiquifyUnchanged)
{
    const auto liquify = record(RecordTypeARLiquify, 1);
    const auto copy = copyOf(liquify);
    EXPECT_EQ(compare(liquify.get(), {copy.get()}), ReturnChanged);
}

TEST(FrameCaptureTest, HasTheValuesOfTheTrack)
{
    const auto track = owned(RvARFrameTrack::create(std::string("/effects/frame"), 250, 4000));
    track->setTrackID(77);
    track->setZOrder(6);
    track->setAlpha(0.5F);
    track->setSpeed(2.0F);
    track->setTag("tag");
    track->setScriptParam("text", "hello");
    track->setGlobalParamConfiguration("global");
    track->bindDynamic();

    const std::unique_ptr<RvARFrameAttribute> frame(createFrameAttribute(track.get()));

    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->uuid, 77U);
    EXPECT_EQ(frame->type, 11);
    EXPECT_EQ(frame->source, "/effects/frame");
    EXPECT_EQ(frame->startTime, 250);
    EXPECT_EQ(frame->duration, 4000);
    EXPECT_EQ(frame->zOrder, 6);
    EXPECT_EQ(frame->alpha, 0.5F);
    EXPECT_EQ(frame->speed, 2.0F);
    EXPECT_EQ(frame->auxText, "tag");
    EXPECT_EQ(frame->range, 2);
    EXPECT_EQ(frame->scriptParams, (std::map<std::string, std::string>{{"text", "hello"}}));
    EXPECT_EQ(frame->globalParamConfiguration, "global");
}

TEST(FrameCaptureTest, LeavesTheValuesOfABeautyAsTheyAreInANewRecord)
{
    const auto track = owned(newLiveTrack(11));
    const std::unique_ptr<RvARFrameAttribute> frame(createFrameAttribute(track.get()));
    ASSERT_TRUE(frame);
    const RvARFrameAttribute defaults;
    EXPECT_EQ(frame->filterAlpha, defaults.filterAlpha);
    EXPECT_TRUE(frame->floatParams.empty());
    EXPECT_EQ(frame->beautyType, defaults.beautyType);
    EXPECT_EQ(frame->beautyActiveMaskImageRef, nullptr);
}

TEST(FrameCaptureTest, ChangesNothingAndHoldsNothing)
{
    const auto track = owned(newLiveTrack(11));
    const long long alive = RvRef::liveCount();
    EXPECT_EQ(callsOf([&] {
                  const std::unique_ptr<RvAttribute> frame(createFrameAttribute(track.get()));
              }),
              Calls{});
    EXPECT_EQ(RvRef::liveCount(), alive);
}

TEST(FrameCaptureTest, GivesNullForWhatIsNoFrame)
{
    EXPECT_EQ(createFrameAttribute(nullptr), nullptr);
    for (int type = RecordTypeGeneric; type <= RecordTypeARLiquify; ++type) {
        const auto track = owned(newLiveTrack(type));
        const std::unique_ptr<RvAttribute> frame(createFrameAttribute(track.get()));
        EXPECT_EQ(frame != nullptr, type == RecordTypeARFrame) << type;
    }
}

TEST(FrameCaptureTest, GivesNullWhenTheFrameworkCannotWrap)
{
    const auto track = owned(newLiveTrack(11));
    RvFault::failNext("RvARFrameTrack::create");
    EXPECT_EQ(createFrameAttribute(track.get()), nullptr);
}

TEST(FrameCreationTest, MakesATrackWithTheScriptsValuesAndNoBindings)
{
    const auto frame = sample<RvARFrameAttribute>("Frame");
    Owned<RvARFrameTrack> track;
    const Calls calls =
        callsAboutCreated(callsOf([&] { track = owned(createARFrameTrack(frame.get())); }));

    EXPECT_EQ(lines(calls), lines(scriptedCreation("RvARFrameTrack::create")));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackType(), 20002);
    EXPECT_EQ(track->referenceCount(), 1);
}

TEST(FrameCreationTest, GivesNullWithoutARecordOrATrack)
{
    EXPECT_EQ(callsOf([] { EXPECT_EQ(createARFrameTrack(nullptr), nullptr); }), Calls{});
    const auto frame = sample<RvARFrameAttribute>("Frame");
    RvFault::failNext("RvARFrameTrack::create");
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(createARFrameTrack(frame.get()), nullptr); }),
              Calls{"RvARFrameTrack::create(\"/effects/source\", 250, 4000) -> null"});
}

TEST(LabelCreationTest, MakesATrackWithTheScriptsValuesAndNoBindings)
{
    const auto label = sample<RvARLabelAttribute>("Label");
    Owned<RvARLabelTrack> track;
    const Calls calls =
        callsAboutCreated(callsOf([&] { track = owned(createARLabelTrack(label.get())); }));

    EXPECT_EQ(lines(calls), lines(scriptedCreation("RvARLabelTrack::create")));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackType(), 20003);
    EXPECT_EQ(track->referenceCount(), 1);
}

TEST(LabelCreationTest, GivesNullWithoutARecordOrATrack)
{
    EXPECT_EQ(callsOf([] { EXPECT_EQ(createARLabelTrack(nullptr), nullptr); }), Calls{});
    const auto label = sample<RvARLabelAttribute>("Label");
    RvFault::failNext("RvARLabelTrack::create");
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(createARLabelTrack(label.get()), nullptr); }),
              Calls{"RvARLabelTrack::create(\"/effects/source\", 250, 4000) -> null"});
}

TEST(FrameUpdateTest, LeavesTheTrackAsItIs)
{
    const auto track = owned(dynamic_cast<RvARFrameTrack*>(newLiveTrack(11)));
    ASSERT_TRUE(track);
    const auto frame = sample<RvARFrameAttribute>("Frame");
    EXPECT_EQ(callsOf([&] {
                  updateARFrameTrack(track.get(), frame.get());
                  updateARFrameTrack(nullptr, frame.get());
                  updateARFrameTrack(track.get(), nullptr);
              }),
              Calls{});
}
