// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ReconciliationFixture.h"

using norvel::adopt;

namespace {

/// A class of a host's own that knows its track by the tag, whatever the uuid.
struct TaggedPicture : norvel::RvMediaAttribute
{
    norvel::RvReturnVlaue compare(norvel::RvAttribute* other) const override
    {
        return other->auxText == auxText ? norvel::ReturnSame : norvel::ReturnOtherRecord;
    }
};

/// What goes: the tracks whose identity was not kept.
class StaleTracksTest : public ReconciliationTest
{
protected:
    static std::string removeGroup(std::size_t group)
    {
        return "RvKpTimeLine::removeGroup(#" + std::to_string(group) + ")";
    }
    static void addTagged(std::vector<norvel::RvAttribute*>& list, std::uint64_t id)
    {
        list.push_back(new TaggedPicture);
        list.back()->uuid = id;
        list.back()->type = norvel::RecordTypeImage;
        list.back()->auxText = "title";
    }
    static std::string removeNoGroup() { return "RvKpTimeLine::removeGroup(null)"; }
    static std::string removeMix(std::uint64_t id)
    {
        return "RvKpTimeLine::removeMixTrack(" + std::to_string(id) + ")";
    }
};

} // namespace

TEST_F(StaleTracksTest, RemovesAfterAllUpdatesAndCreations)
{
    const auto from = TimelineSamples::pictures({1, 2, 3});
    for (const std::uint64_t id : {11, 12, 13})
        add(from->mixAttribs, norvel::RecordTypeARFilter, id);
    const auto to = TimelineSamples::copyOf(*from);
    erase(to->mainAttribs, 0);
    to->mainAttribs[0]->alpha = 0.5F;
    add(to->mainAttribs, norvel::RecordTypeImage, 4);
    erase(to->mixAttribs, 0);
    to->mixAttribs[0]->alpha = 0.5F;
    add(to->mixAttribs, norvel::RecordTypeARFilter, 14);
    setLive(*from);
    const Calls calls = update(*from, *to);
    EXPECT_EQ(
        structural(calls),
        (Calls{"RvKpGroup::setDuration(#1, 1000)", move(1, 0), move(2, 1),
               "RvSpriteTrack::create(\"" + TimelineSamples::picture() + "\", 0, 1000) -> #3",
               "RvKpGroup::create(1000) -> #4", "RvKpGroup::addTrack(#4, 4)",
               "RvKpTimeLine::insertGroup(#4, 2)",
               "RvARFilterTrack::create(\"/resources/effect\", 0, 1000) -> #5",
               "RvKpTimeLine::addMixTrack(14)", removeGroup(0), removeMix(11), invalidate()}));
    EXPECT_EQ(Calls(calls.end() - 3, calls.end()),
              (Calls{removeGroup(0), removeMix(11), invalidate()}))
        << "nothing comes in between";
    EXPECT_EQ(mainIds(), (Ids{2, 3, 4}));
    EXPECT_EQ(mixIds(), (Ids{12, 13, 14}));
}

TEST_F(StaleTracksTest, RemovesInTheOrderOfTheOldLists)
{
    const auto from = TimelineSamples::pictures({3, 1, 2});
    for (const std::uint64_t id : {13, 11, 12})
        add(from->mixAttribs, norvel::RecordTypeImage, id);
    norvel::RvTimeLineAttribute live;
    for (const std::uint64_t id : {1, 2, 3})
        add(live.mainAttribs, norvel::RecordTypeImage, id);
    for (const std::uint64_t id : {11, 12, 13})
        add(live.mixAttribs, norvel::RecordTypeImage, id);
    setLive(live);
    EXPECT_EQ(update(*from, empty),
              (Calls{removeGroup(2), removeGroup(0), removeGroup(1), removeMix(13), removeMix(11),
                     removeMix(12), invalidate()}));
}

TEST_F(StaleTracksTest, HandsTheFrameworkNoGroupWhereOneIsMissing)
{
    const auto from = TimelineSamples::pictures({1, 2, 3});
    setLive(*TimelineSamples::pictures({2}));
    EXPECT_EQ(update(*from, empty),
              (Calls{removeNoGroup(), removeGroup(0), removeNoGroup(), invalidate()}));
}

TEST_F(StaleTracksTest, SkipsAMixTrackThatIsMissing)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    add(from.mixAttribs, norvel::RecordTypeAudio, 2);
    EXPECT_EQ(update(from, empty), Calls{invalidate()});
}

TEST_F(StaleTracksTest, LeavesWhatNoDescriptionNames)
{
    const auto live = TimelineSamples::pictures({1, 2});
    add(live->mixAttribs, norvel::RecordTypeAudio, 3);
    setLive(*live);
    EXPECT_EQ(update(empty, empty), Calls{invalidate()});
    EXPECT_EQ(mainIds(), (Ids{1, 2}));
    EXPECT_EQ(mixIds(), Ids{3});
}

TEST_F(StaleTracksTest, RemovesOneGroupForEveryOldRecordOfAnId)
{
    const auto from = TimelineSamples::pictures({1, 1, 1});
    setLive(*TimelineSamples::pictures({1, 1}));
    EXPECT_EQ(update(*from, empty),
              (Calls{removeGroup(0), removeGroup(1), removeNoGroup(), invalidate()}));
    setLive(*TimelineSamples::pictures({1, 1}));
    EXPECT_EQ(update(*TimelineSamples::pictures({1}), empty),
              (Calls{removeGroup(0), invalidate()}));
    EXPECT_EQ(mainIds(), Ids{1}) << "the other one was not described";
}

TEST_F(StaleTracksTest, FindsNothingASecondTimeUnderAnIdItRemoved)
{
    const auto from = TimelineSamples::pictures({1, 1});
    add(from->mixAttribs, norvel::RecordTypeImage, 2);
    add(from->mixAttribs, norvel::RecordTypeAudio, 2);
    const auto live = TimelineSamples::pictures({1, 3});
    add(live->mixAttribs, norvel::RecordTypeImage, 2);
    setLive(*live);
    EXPECT_EQ(update(*from, empty),
              (Calls{removeGroup(0), removeNoGroup(), removeMix(2), invalidate()}));
    EXPECT_EQ(mainIds(), Ids{3});
}

TEST_F(StaleTracksTest, RemovesOneMixTrackForEveryOldRecordOfAnId)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    add(from.mixAttribs, norvel::RecordTypeAudio, 1);
    const auto live = TimelineSamples::copyOf(from);
    add(live->mixAttribs, norvel::RecordTypeImage, 1);
    setLive(*live);
    EXPECT_EQ(update(from, empty), (Calls{removeMix(1), removeMix(1), invalidate()}));
    EXPECT_EQ(mixIds(), Ids{1}) << "the third one was not described";
}

TEST_F(StaleTracksTest, RemovesKindsThatNoReconciliationCreates)
{
    norvel::RvTimeLineAttribute from;
    for (const int type : {norvel::RecordTypeUnknown, norvel::RecordTypeGeneric,
                           norvel::RecordTypeARFrame, norvel::RecordTypeARLabel})
        add(from.mixAttribs, type, static_cast<std::uint64_t>(type) + 1);
    setLive(from);
    EXPECT_EQ(update(from, empty),
              (Calls{removeMix(1), removeMix(2), removeMix(12), removeMix(13), invalidate()}));
}

TEST_F(StaleTracksTest, KeepsTheMainGroupOfAnUnchangedMixRecord)
{
    const auto from = TimelineSamples::pictures({1});
    add(from->mixAttribs, norvel::RecordTypeAudio, 1);
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeAudio, 1);
    setLive(*from);
    EXPECT_EQ(update(*from, to), Calls{invalidate()});
    EXPECT_EQ(mainIds(), Ids{1});
}

TEST_F(StaleTracksTest, KeepsTheMainGroupOfAChangedMixRecordWithoutATrack)
{
    for (const int type : {norvel::RecordTypeAudio, norvel::RecordTypeImage}) {
        const auto from = TimelineSamples::pictures({1});
        add(from->mixAttribs, type, 1);
        norvel::RvTimeLineAttribute to;
        add(to.mixAttribs, type, 1).alpha = 0.5F;
        setLive(*TimelineSamples::pictures({1}));
        EXPECT_EQ(update(*from, to), Calls{invalidate()});
        EXPECT_EQ(mainIds(), Ids{1});
    }
}

TEST_F(StaleTracksTest, KeepsTheMixTrackOfAMainRecord)
{
    for (const float alpha : {1.0F, 0.5F}) {
        const auto from = TimelineSamples::pictures({1});
        add(from->mixAttribs, norvel::RecordTypeAudio, 1);
        const auto to = TimelineSamples::pictures({1});
        to->mainAttribs[0]->alpha = alpha;
        norvel::RvTimeLineAttribute live;
        add(live.mixAttribs, norvel::RecordTypeAudio, 1);
        setLive(live);
        EXPECT_EQ(update(*from, *to), Calls{invalidate()}) << "without a group too";
        EXPECT_EQ(mixIds(), Ids{1});
    }
}

TEST_F(StaleTracksTest, DoesNotKeepWhatIsCreated)
{
    // The old sound is not live: what is found under its id is the picture just created.
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeAudio, 1);
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeImage, 1);
    const Calls calls = structural(update(from, to));
    EXPECT_EQ(Calls(calls.begin() + 1, calls.end()),
              (Calls{"RvKpTimeLine::addMixTrack(1)", removeMix(1), invalidate()}));
    EXPECT_EQ(mixIds(), Ids());
}

TEST_F(StaleTracksTest, DoesNotKeepTheMainGroupOfACreatedMixTrack)
{
    const auto from = TimelineSamples::pictures({1});
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeAudio, 1);
    setLive(*from);
    const Calls calls = structural(update(*from, to));
    EXPECT_EQ(Calls(calls.begin() + 1, calls.end()),
              (Calls{"RvKpTimeLine::addMixTrack(1)", removeGroup(0), invalidate()}));
}

TEST_F(StaleTracksTest, RemovesTheGroupOfARecordThatIsReachedButCannotBeCreatedAgain)
{
    // Of another class than the old one, and without a file: new, and not created.
    norvel::RvTimeLineAttribute from;
    add(from.mainAttribs, norvel::RecordTypeAudio, 1).type = norvel::RecordTypeImage;
    const auto to = TimelineSamples::pictures({1});
    to->mainAttribs[0]->source = "/missing/file.png";
    setLive(*TimelineSamples::pictures({1}));
    const Calls calls = structural(update(from, *to));
    EXPECT_EQ(Calls(calls.begin() + 1, calls.end()), (Calls{removeGroup(0), invalidate()}));
}

TEST_F(StaleTracksTest, TakesTheTracksOfAGroupAwayWithIt)
{
    const auto from = TimelineSamples::pictures({1});
    setLive(*from);
    const auto track = adopt(norvel::RvAttributeUtility::getMainTrack(timeline.get(), 1));
    update(*from, empty);
    EXPECT_EQ(track->referenceCount(), 1);
    EXPECT_TRUE(timeline->addMixTrack(track.get())) << "it stands nowhere any more";
}

TEST_F(StaleTracksTest, KeepsTheIdOfTheNewRecordThatAHostClassTakesForTheSame)
{
    norvel::RvTimeLineAttribute from;
    addTagged(from.mixAttribs, 1);
    add(from.mixAttribs, norvel::RecordTypeImage, 2);
    norvel::RvTimeLineAttribute to;
    addTagged(to.mixAttribs, 2);
    timeline->addMixTrack(TimelineSamples::track(norvel::RecordTypeImage, 1).get());
    timeline->addMixTrack(TimelineSamples::track(norvel::RecordTypeImage, 2).get());
    EXPECT_EQ(update(from, to), (Calls{removeMix(1), invalidate()}));
}

TEST_F(StaleTracksTest, KeepsTheIdOfAHostRecordInTheOtherListToo)
{
    norvel::RvTimeLineAttribute from;
    addTagged(from.mainAttribs, 1);
    addTagged(from.mixAttribs, 2);
    add(from.mainAttribs, norvel::RecordTypeImage, 3);
    add(from.mixAttribs, norvel::RecordTypeImage, 4);
    norvel::RvTimeLineAttribute to;
    addTagged(to.mainAttribs, 4); // the same as the old main record 1
    addTagged(to.mixAttribs, 3);  // the same as the old mix record 2
    norvel::RvTimeLineAttribute live;
    for (const std::uint64_t id : {1, 3})
        add(live.mainAttribs, norvel::RecordTypeImage, id);
    for (const std::uint64_t id : {2, 4})
        add(live.mixAttribs, norvel::RecordTypeImage, id);
    setLive(live);
    EXPECT_EQ(update(from, to), (Calls{removeGroup(0), removeMix(2), invalidate()}));
    EXPECT_EQ(mainIds(), Ids{3});
    EXPECT_EQ(mixIds(), Ids{4});
}
