// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ReconciliationFixture.h"

#include "support/DescriptionComparison.h"

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvSpriteTrack.h>

using norvel::adopt;
using norvel::RvAttributeUtility;
using norvel::RvMediaAttribute;

namespace {

class MainLineTest : public ReconciliationTest
{
protected:
    /// Sets every value of a record to one that no new record has.
    static void change(RvMediaAttribute& record)
    {
        record.startTime = 40;
        record.duration = 2500;
        record.zOrder = 3;
        record.alpha = 0.5F;
        record.speed = 2.0F;
        record.auxText = "tag";
        record.width = 8.0F;
        record.height = 6.0F;
        record.positionX = 10.5F;
        record.positionY = 20.25F;
        record.scale = 1.5F;
        record.rotation = 90.0F;
        record.fileStartTime = 100.75F;
    }

    /// The calls that give a track under `name` the values of `change`.
    static Calls settersOf(const std::string& name, std::uint64_t id)
    {
        const std::string uuid = std::to_string(id);
        return {"RvITrack::setStartPos(" + name + ", 40)",
                "RvITrack::setDuration(" + name + ", 2500)",
                "RvITrack::setTrackID(" + name + ", " + uuid + ")",
                "RvITrack::setZOrder(" + uuid + ", 3)",
                "RvITrack::setAlpha(" + uuid + ", 0.5)",
                "RvITrack::setSpeed(" + uuid + ", 2)",
                "RvITrack::setTag(" + uuid + ", \"tag\")",
                "RvIMediaTrack::setWidthAndHeight(" + uuid + ", 8, 6)",
                "RvIMediaTrack::setPosition(" + uuid + ", 10.5, 20.25)",
                "RvIMediaTrack::setScale(" + uuid + ", 1.5)",
                "RvIMediaTrack::setRotation(" + uuid + ", 90)"};
    }

    static Calls joined(std::initializer_list<Calls> parts)
    {
        Calls all;
        for (const Calls& part : parts)
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }

    static RvMediaAttribute& media(norvel::RvTimeLineAttribute& description, std::size_t index)
    {
        return dynamic_cast<RvMediaAttribute&>(*description.mainAttribs[index]);
    }

    static std::string quoted(const std::string& text) { return '"' + text + '"'; }
};

} // namespace

TEST_F(MainLineTest, DoesNothingWithoutATimeline)
{
    timeline.reset();
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::pictures({3});
    add(to->mixAttribs, norvel::RecordTypeImage, 4);
    qrvkp::RvCallLog::start();
    RvAttributeUtility::updateTimeLine(nullptr, from.get(), to.get());
    RvAttributeUtility::updateTimeLine(nullptr, nullptr, nullptr);
    EXPECT_EQ(qrvkp::RvCallLog::entries(), Calls());
}

TEST_F(MainLineTest, InvalidatesATimelineThatIsAndStaysEmpty)
{
    EXPECT_EQ(update(empty, empty), Calls{invalidate()});
}

TEST_F(MainLineTest, PutsEveryGroupInItsOwnPlaceWhenNothingDiffers)
{
    const auto description = TimelineSamples::pictures({1, 2, 3});
    add(description->mainAttribs, norvel::RecordTypeVideo, 4);
    setLive(*description);
    EXPECT_EQ(update(*description, *TimelineSamples::copyOf(*description)),
              (Calls{move(0, 0), move(1, 1), move(2, 2), move(3, 3), invalidate()}));
    EXPECT_EQ(mainIds(), (Ids{1, 2, 3, 4}));
}

TEST_F(MainLineTest, TakesOneDescriptionForBothSides)
{
    const auto description = TimelineSamples::pictures({1, 2});
    setLive(*description);
    EXPECT_EQ(update(*description, *description), (Calls{move(0, 0), move(1, 1), invalidate()}));
}

TEST_F(MainLineTest, MovesAnUnchangedGroupWithoutApplyingItsValues)
{
    const auto from = TimelineSamples::pictures({1, 2, 3, 4, 5, 6});
    const auto to = TimelineSamples::copyOf(*from);
    moveRecord(to->mainAttribs, 4, 1);
    setLive(*from);
    EXPECT_EQ(update(*from, *to), (Calls{move(0, 0), move(4, 1), move(1, 2), move(2, 3), move(3, 4),
                                         move(5, 5), invalidate()}));
    EXPECT_EQ(mainIds(), (Ids{1, 5, 2, 3, 4, 6}));
}

TEST_F(MainLineTest, TrustsTheDescriptionsForWhatIsUnchanged)
{
    const auto description = TimelineSamples::pictures({1});
    setLive(*description);
    const auto track = adopt(RvAttributeUtility::getMainTrack(timeline.get(), 1));
    track->setAlpha(0.25F);
    EXPECT_EQ(update(*description, *description), (Calls{move(0, 0), invalidate()}));
    EXPECT_EQ(track->getAlpha(), 0.25F);
}

TEST_F(MainLineTest, LeavesATrackAloneWhoseTagAloneDiffers)
{
    const auto from = TimelineSamples::pictures({1});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs[0]->auxText = "new tag";
    setLive(*from);
    EXPECT_EQ(update(*from, *to), (Calls{move(0, 0), invalidate()}));
}

TEST_F(MainLineTest, UpdatesAChangedGroupInPlace)
{
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::copyOf(*from);
    change(media(*to, 1));
    moveRecord(to->mainAttribs, 1, 0);
    setLive(*from);
    EXPECT_EQ(update(*from, *to), joined({{"RvKpGroup::setDuration(#1, 2500)", move(1, 0)},
                                          settersOf("2", 2),
                                          {move(0, 1), invalidate()}}));
    EXPECT_EQ(mainIds(), (Ids{2, 1}));
    const auto captured = TimelineSamples::capture(*timeline);
    // A picture has no place in a file.
    EXPECT_EQ(differences(*to->mainAttribs[0], *captured->mainAttribs[0]),
              std::vector<std::string>{"fileStartTime"});
}

TEST_F(MainLineTest, SetsTheFileStartOfAChangedVideo)
{
    norvel::RvTimeLineAttribute from;
    add(from.mainAttribs, norvel::RecordTypeVideo, 1);
    const auto to = TimelineSamples::copyOf(from);
    change(media(*to, 0));
    setLive(from);
    EXPECT_EQ(update(from, *to), joined({{"RvKpGroup::setDuration(#0, 2500)", move(0, 0)},
                                         settersOf("1", 1),
                                         {"RvKpTrack::setFileStartTime(1, 100)", invalidate()}}));
}

TEST_F(MainLineTest, UpdatesTheFirstTrackOfAGroupOnly)
{
    const auto from = TimelineSamples::pictures({1});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs[0]->alpha = 0.5F;
    std::vector<TimelineSamples::Track> tracks;
    tracks.push_back(TimelineSamples::track(norvel::RecordTypeImage, 1));
    tracks.push_back(TimelineSamples::track(norvel::RecordTypeImage, 2));
    TimelineSamples::appendGroup(*timeline, tracks);
    update(*from, *to);
    EXPECT_EQ(tracks[0]->getAlpha(), 0.5F);
    EXPECT_EQ(tracks[1]->getAlpha(), 1.0F);
}

TEST_F(MainLineTest, CreatesAMissingTrackInAGroupOfItsOwnAtItsPlace)
{
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::copyOf(*from);
    change(add<RvMediaAttribute>(to->mainAttribs, norvel::RecordTypeImage, 9));
    moveRecord(to->mainAttribs, 2, 1);
    setLive(*from);
    EXPECT_EQ(update(*from, *to),
              joined({{move(0, 0), "RvSpriteTrack::create(" + quoted(TimelineSamples::picture()) +
                                       ", 100, 2500) -> #2"},
                      settersOf("#2", 9),
                      {"RvKpGroup::create(2500) -> #3", "RvKpGroup::addTrack(#3, 9)",
                       "RvKpTimeLine::insertGroup(#3, 1)", move(1, 2), invalidate()}}));
    EXPECT_EQ(mainIds(), (Ids{1, 9, 2}));
}

TEST_F(MainLineTest, CreatesAMissingVideoFromItsPlaceInTheFile)
{
    norvel::RvTimeLineAttribute to;
    change(add<RvMediaAttribute>(to.mainAttribs, norvel::RecordTypeVideo, 9));
    const Calls calls = update(empty, to);
    EXPECT_EQ(
        structural(calls),
        (Calls{"RvKpTrack::create(" + quoted(TimelineSamples::video()) + ", 100, 2500, 100) -> #0",
               "RvKpGroup::create(2500) -> #1", "RvKpGroup::addTrack(#1, 9)",
               "RvKpTimeLine::insertGroup(#1, 0)", invalidate()}));
    EXPECT_EQ(calls[calls.size() - 5], "RvKpTrack::setFileStartTime(9, 100)");
}

TEST_F(MainLineTest, CountsAPlaceForATrackThatCannotBeCreated)
{
    const auto from = TimelineSamples::pictures({1});
    const auto to = TimelineSamples::pictures({8, 9, 1});
    to->mainAttribs[0]->source = "/missing/file.png";
    setLive(*from);
    EXPECT_EQ(
        structural(update(*from, *to)),
        (Calls{"RvSpriteTrack::create(\"/missing/file.png\", 0, 1000) -> null",
               "RvSpriteTrack::create(" + quoted(TimelineSamples::picture()) + ", 0, 1000) -> #1",
               "RvKpGroup::create(1000) -> #2", "RvKpGroup::addTrack(#2, 9)",
               "RvKpTimeLine::insertGroup(#2, 1)", move(0, 2), invalidate()}));
    EXPECT_EQ(mainIds(), (Ids{9, 1}));
}

TEST_F(MainLineTest, LeavesATrackOutWhoseGroupCannotBeCreated)
{
    qrvkp::RvFault::failNext("RvKpGroup::create");
    EXPECT_EQ(
        structural(update(empty, *TimelineSamples::pictures({1, 2}))),
        (Calls{"RvSpriteTrack::create(" + quoted(TimelineSamples::picture()) + ", 0, 1000) -> #0",
               "RvKpGroup::create(1000) -> null",
               "RvSpriteTrack::create(" + quoted(TimelineSamples::picture()) + ", 0, 1000) -> #1",
               "RvKpGroup::create(1000) -> #2", "RvKpGroup::addTrack(#2, 2)",
               "RvKpTimeLine::insertGroup(#2, 1)", invalidate()}));
    EXPECT_EQ(mainIds(), Ids{2});
}

TEST_F(MainLineTest, AppliesNothingOfAListOfEffectsAndRemovesTheOldGroups)
{
    const auto from = TimelineSamples::pictures({1, 2});
    norvel::RvTimeLineAttribute to;
    add(to.mainAttribs, norvel::RecordTypeARFilter, 1);
    add(to.mainAttribs, norvel::RecordTypeAudio, 7);
    setLive(*from);
    EXPECT_EQ(update(*from, to), (Calls{"RvKpTimeLine::removeGroup(#0)",
                                        "RvKpTimeLine::removeGroup(#1)", invalidate()}));
    EXPECT_EQ(mainIds(), Ids());
}

TEST_F(MainLineTest, AppliesThePicturesOfAListThatStartsWithAnEffect)
{
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::copyOf(*from);
    add(to->mainAttribs, norvel::RecordTypeARFilter, 3);
    moveRecord(to->mainAttribs, 2, 0);
    setLive(*from);
    EXPECT_EQ(update(*from, *to), (Calls{move(0, 0), move(1, 1), invalidate()}));
}

TEST_F(MainLineTest, NeverAppliesWhatIsNoMediaAndRemovesItsOldGroup)
{
    // The filter is described on both sides, and unchanged: it is not reached all the same.
    const auto from = TimelineSamples::pictures({1, 2});
    add(from->mainAttribs, norvel::RecordTypeARFilter, 3);
    moveRecord(from->mainAttribs, 2, 1);
    const auto to = TimelineSamples::copyOf(*from);
    setLive(*from);
    EXPECT_EQ(update(*from, *to),
              (Calls{move(0, 0), move(2, 1), "RvKpTimeLine::removeGroup(#1)", invalidate()}));
    EXPECT_EQ(mainIds(), (Ids{1, 2}));
}

TEST_F(MainLineTest, KeepsTheOrderOfTheMediaOfALongList)
{
    norvel::RvTimeLineAttribute to;
    Ids expected;
    for (std::uint64_t id = 1; id <= 120; ++id) {
        const bool isMedia = id % 3 != 0;
        add(to.mainAttribs, isMedia ? norvel::RecordTypeImage : norvel::RecordTypeARFilter, id);
        if (isMedia)
            expected.push_back(id);
    }
    update(empty, to);
    EXPECT_EQ(mainIds(), expected);
    const auto same = TimelineSamples::copyOf(to);
    Calls moves;
    for (std::size_t i = 0; i < expected.size(); ++i)
        moves.push_back(move(i, i));
    const Calls calls = update(to, *same);
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(moves.size())),
              moves);
}

TEST_F(MainLineTest, PassesOverNullEntries)
{
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs.insert(to->mainAttribs.begin(), nullptr);
    to->mainAttribs.insert(to->mainAttribs.begin() + 2, nullptr);
    setLive(*from);
    EXPECT_EQ(update(*from, *to), (Calls{move(0, 0), move(1, 1), invalidate()}));
    EXPECT_EQ(update(*to, *from), (Calls{move(0, 0), move(1, 1), invalidate()}));
}

TEST_F(MainLineTest, SkipsTheMissingGroupOfAnUnchangedRecord)
{
    const auto description = TimelineSamples::pictures({1, 2, 3});
    setLive(*TimelineSamples::pictures({1, 3}));
    EXPECT_EQ(update(*description, *description), (Calls{move(0, 0), move(1, 2), invalidate()}));
}

TEST_F(MainLineTest, SkipsTheMissingGroupOfAChangedRecord)
{
    const auto from = TimelineSamples::pictures({1, 2, 3});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs[1]->alpha = 0.5F;
    setLive(*TimelineSamples::pictures({1, 3}));
    EXPECT_EQ(update(*from, *to), (Calls{move(0, 0), move(1, 2), invalidate()}));
}

TEST_F(MainLineTest, IgnoresGroupsWithoutTracks)
{
    const auto description = TimelineSamples::pictures({1, 2});
    norvel::RvTimeLineAttribute live;
    live.mainAttribs = {nullptr, TimelineSamples::record(norvel::RecordTypeImage, 1), nullptr,
                        TimelineSamples::record(norvel::RecordTypeImage, 2)};
    setLive(live);
    EXPECT_EQ(update(*description, *description), (Calls{move(1, 0), move(3, 1), invalidate()}));
    EXPECT_EQ(mainIds(), (Ids{1, 2, 0, 0}));
}

TEST_F(MainLineTest, DoesNotFindTheSecondTrackOfAGroup)
{
    const auto description = TimelineSamples::pictures({2});
    std::vector<TimelineSamples::Track> tracks;
    tracks.push_back(TimelineSamples::track(norvel::RecordTypeImage, 1));
    tracks.push_back(TimelineSamples::track(norvel::RecordTypeImage, 2));
    TimelineSamples::appendGroup(*timeline, tracks);
    EXPECT_EQ(update(*description, *description), Calls{invalidate()});
    EXPECT_EQ(update(*description, empty),
              (Calls{"RvKpTimeLine::removeGroup(null)", invalidate()}));
}

TEST_F(MainLineTest, MovesAGroupThatStartsWithAnEffectAndLeavesTheEffectAlone)
{
    const auto from = TimelineSamples::pictures({1, 2});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs[1]->alpha = 0.5F;
    norvel::RvTimeLineAttribute live;
    add(live.mainAttribs, norvel::RecordTypeARFilter, 2);
    add(live.mainAttribs, norvel::RecordTypeImage, 1);
    setLive(live);
    EXPECT_EQ(update(*from, *to),
              (Calls{move(1, 0), "RvKpGroup::setDuration(#0, 1000)", move(0, 1), invalidate()}));
}

TEST_F(MainLineTest, MovesTheFirstOfTheGroupsThatShareAnId)
{
    const auto description = TimelineSamples::pictures({1, 1, 2});
    setLive(*description);
    // Each time the group that then comes first: #0 goes to 0, and to 1, past the other one.
    EXPECT_EQ(update(*description, *description),
              (Calls{move(0, 0), move(0, 1), move(2, 2), invalidate()}));
    EXPECT_EQ(update(*description, *description),
              (Calls{move(0, 0), move(0, 1), move(2, 2), invalidate()}));
}

TEST_F(MainLineTest, ComparesWithTheFirstOfTheOldRecordsThatShareAnId)
{
    const auto from = TimelineSamples::pictures({1, 1});
    from->mainAttribs[1]->alpha = 0.5F;
    setLive(*TimelineSamples::pictures({1}));
    const auto likeTheSecond = TimelineSamples::pictures({1});
    likeTheSecond->mainAttribs[0]->alpha = 0.5F;
    const Calls calls = update(*from, *likeTheSecond);
    EXPECT_EQ(structural(calls),
              (Calls{"RvKpGroup::setDuration(#0, 1000)", move(0, 0), invalidate()}));
    EXPECT_EQ(update(*from, *TimelineSamples::pictures({1})), (Calls{move(0, 0), invalidate()}));
}

TEST_F(MainLineTest, UpdatesAPictureThatBecameAVideoAsThePictureItIs)
{
    // Both are media records, so the record counts as changed; the track stays a picture.
    const auto from = TimelineSamples::pictures({1});
    norvel::RvTimeLineAttribute to;
    add(to.mainAttribs, norvel::RecordTypeVideo, 1).alpha = 0.5F;
    setLive(*from);
    const Calls calls = update(*from, to);
    EXPECT_EQ(structural(calls),
              (Calls{"RvKpGroup::setDuration(#0, 1000)", move(0, 0), invalidate()}));
    const auto track = adopt(RvAttributeUtility::getMainTrack(timeline.get(), 1));
    EXPECT_EQ(track->getTrackType(), qrvkp::RvTrackTypeSprite);
    EXPECT_EQ(track->getAlpha(), 0.5F);
}

TEST_F(MainLineTest, KeepsTheGroupOfARecordWhoseTypeIsNotThatOfItsClass)
{
    // It goes by class and uuid whether it is the same record, by type whether it is media.
    norvel::RvTimeLineAttribute from;
    add(from.mainAttribs, norvel::RecordTypeAudio, 1).type = norvel::RecordTypeImage;
    setLive(*TimelineSamples::pictures({1}));
    EXPECT_EQ(update(from, *TimelineSamples::copyOf(from)), (Calls{move(0, 0), invalidate()}));

    const auto changed = TimelineSamples::copyOf(from);
    changed->mainAttribs[0]->alpha = 0.5F;
    EXPECT_EQ(update(from, *changed),
              (Calls{"RvKpGroup::setDuration(#0, 1000)", move(0, 0), invalidate()}));
    EXPECT_EQ(update(empty, from), Calls{invalidate()}) << "it cannot be created";
}

TEST_F(MainLineTest, LeavesTheDescriptionsAsTheyAre)
{
    const auto from = TimelineSamples::pictures({1, 2, 3});
    add(from->mainAttribs, norvel::RecordTypeARFilter, 4);
    moveRecord(from->mainAttribs, 3, 0);
    const auto to = TimelineSamples::copyOf(*from);
    moveRecord(to->mainAttribs, 3, 1);
    change(media(*to, 2));
    add(to->mainAttribs, norvel::RecordTypeVideo, 5);
    const auto fromBefore = TimelineSamples::copyOf(*from);
    const auto toBefore = TimelineSamples::copyOf(*to);
    const auto fromRecords = from->mainAttribs;
    const auto toRecords = to->mainAttribs;
    setLive(*from);
    update(*from, *to);
    EXPECT_EQ(from->mainAttribs, fromRecords);
    EXPECT_EQ(to->mainAttribs, toRecords);
    EXPECT_EQ(differences(*fromBefore, *from), std::vector<std::string>());
    EXPECT_EQ(differences(*toBefore, *to), std::vector<std::string>());
}

TEST_F(MainLineTest, GivesBackEveryReferenceItTook)
{
    const auto from = TimelineSamples::pictures({1, 2, 3});
    const auto to = TimelineSamples::copyOf(*from);
    to->mainAttribs[1]->alpha = 0.5F;
    erase(to->mainAttribs, 2);
    setLive(*from);
    const auto groups = adopt(timeline->getGroups());
    update(*from, *to);
    const auto references = [&](std::ptrdiff_t index) {
        return (*(groups.begin() + index))->referenceCount();
    };
    EXPECT_EQ(timeline->referenceCount(), 1);
    EXPECT_EQ(references(0), 2) << "the timeline's and that of the list";
    EXPECT_EQ(references(1), 2) << "the timeline's and that of the list";
    EXPECT_EQ(references(2), 1) << "that of the list alone";
}
