// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ReconciliationFixture.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvSpriteTrack.h>

using norvel::adopt;

namespace {

class MixTracksTest : public ReconciliationTest
{
protected:
    static std::string quoted(const std::string& text) { return '"' + text + '"'; }

    static std::string createPicture(const std::string& result)
    {
        return "RvSpriteTrack::create(" + quoted(TimelineSamples::picture()) + ", 0, 1000) -> " +
               result;
    }

    /// A mix list with one record of every kind that can be compared as unchanged.
    static void addEveryKind(std::vector<norvel::RvAttribute*>& list)
    {
        for (int type = norvel::RecordTypeGeneric; type < norvel::RecordTypeARLiquify; ++type)
            add(list, type, static_cast<std::uint64_t>(type));
    }
};

} // namespace

TEST_F(MixTracksTest, TouchesNoUnchangedTrackOfAnyKind)
{
    norvel::RvTimeLineAttribute description;
    addEveryKind(description.mixAttribs);
    setLive(description);
    EXPECT_EQ(update(description, *TimelineSamples::copyOf(description)), Calls{invalidate()});
}

TEST_F(MixTracksTest, UpdatesAChangedPictureWhereItIs)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    add(from.mixAttribs, norvel::RecordTypeImage, 2);
    const auto to = TimelineSamples::copyOf(from);
    to->mixAttribs[0]->alpha = 0.5F;
    moveRecord(to->mixAttribs, 0, 1);
    setLive(from);
    EXPECT_EQ(update(from, *to),
              (Calls{"RvITrack::setStartPos(1, 0)", "RvITrack::setDuration(1, 1000)",
                     "RvITrack::setTrackID(1, 1)", "RvITrack::setZOrder(1, 0)",
                     "RvITrack::setAlpha(1, 0.5)", "RvITrack::setSpeed(1, 1)",
                     "RvITrack::setTag(1, \"\")", "RvIMediaTrack::setWidthAndHeight(1, 0, 0)",
                     "RvIMediaTrack::setPosition(1, 0, 0)", "RvIMediaTrack::setScale(1, 1)",
                     "RvIMediaTrack::setRotation(1, 0)", invalidate()}));
    EXPECT_EQ(mixIds(), (Ids{1, 2})) << "mix tracks are not put in order";
}

TEST_F(MixTracksTest, UpdatesAChangedSound)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeAudio, 1);
    const auto to = TimelineSamples::copyOf(from);
    dynamic_cast<norvel::RvAudioAttribute&>(*to->mixAttribs[0]).fileStartTime = 50.9F;
    setLive(from);
    const Calls calls = update(from, *to);
    ASSERT_EQ(calls.size(), 9U);
    EXPECT_EQ(calls[7], "RvAudioTrack::setFileStartTime(1, 50)");
    EXPECT_EQ(calls[8], invalidate());
}

TEST_F(MixTracksTest, LeavesChangedMattesFramesLabelsAndBaseRecordsAsTheyAre)
{
    norvel::RvTimeLineAttribute from;
    for (const int type : {norvel::RecordTypeGeneric, norvel::RecordTypeMatte,
                           norvel::RecordTypeARFrame, norvel::RecordTypeARLabel})
        add(from.mixAttribs, type, static_cast<std::uint64_t>(type));
    const auto to = TimelineSamples::copyOf(from);
    for (norvel::RvAttribute* record : to->mixAttribs)
        record->alpha = 0.5F;
    setLive(from);
    EXPECT_EQ(update(from, *to), Calls{invalidate()});
    EXPECT_EQ(mixIds().size(), 4U) << "they are kept";
}

TEST_F(MixTracksTest, CreatesAMissingPicture)
{
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeImage, 1);
    const Calls calls = update(empty, to);
    EXPECT_EQ(calls.size(), 14U) << "creation, 11 values, its place, the end";
    EXPECT_EQ(structural(calls),
              (Calls{createPicture("#0"), "RvKpTimeLine::addMixTrack(1)", invalidate()}));
    EXPECT_EQ(mixIds(), Ids{1});
}

TEST_F(MixTracksTest, CreatesTheMediaFirstAndTheOthersInTheGivenOrder)
{
    norvel::RvTimeLineAttribute to;
    Ids media;
    Ids others;
    for (std::uint64_t id = 1; id <= 80; ++id) {
        const bool isMedia = id % 4 == 0;
        const int mediaType = id % 8 == 0 ? norvel::RecordTypeImage : norvel::RecordTypeVideo;
        add(to.mixAttribs, isMedia ? mediaType : norvel::RecordTypeARFilter, id);
        (isMedia ? media : others).push_back(id);
    }
    update(empty, to);
    media.insert(media.end(), others.begin(), others.end());
    EXPECT_EQ(mixIds(), media);
}

TEST_F(MixTracksTest, CreatesEveryKindButBaseFrameAndLabel)
{
    norvel::RvTimeLineAttribute to;
    addEveryKind(to.mixAttribs);
    add(to.mixAttribs, norvel::RecordTypeARLiquify, norvel::RecordTypeARLiquify);
    const Calls calls = structural(update(empty, to));
    EXPECT_EQ(calls.size(), 21U) << "ten creations and their places, the end";
    Ids ids = mixIds();
    // A new layer has an id of its own.
    const auto layer = std::find_if(ids.begin(), ids.end(), [](auto id) { return id > 20; });
    ASSERT_NE(layer, ids.end());
    EXPECT_TRUE(mixTrack<qkpar::RvARAttribsTrack>(*layer));
    ids.erase(layer);
    EXPECT_EQ(ids, (Ids{2, 3, 4, 5, 6, 7, 8, 9, 13}));
}

TEST_F(MixTracksTest, CreatesALayerAgainEveryTimeItIsNew)
{
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeARLayer, 1);
    update(empty, to);
    EXPECT_EQ(update(to, empty), Calls{invalidate()}) << "nothing is found under the record's id";
    update(empty, to);
    EXPECT_EQ(mixIds().size(), 2U);
}

TEST_F(MixTracksTest, LeavesOutWhatCannotBeCreated)
{
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeImage, 1).source = "/missing/file.png";
    add(to.mixAttribs, norvel::RecordTypeAudio, 2).source = "/missing/file.wav";
    add(to.mixAttribs, norvel::RecordTypeImage, 3);
    add(to.mixAttribs, norvel::RecordTypeARFilter, 4);
    qrvkp::RvFault::failNext("RvARFilterTrack::create");
    EXPECT_EQ(
        structural(update(empty, to)),
        (Calls{"RvSpriteTrack::create(\"/missing/file.png\", 0, 1000) -> null", createPicture("#0"),
               "RvKpTimeLine::addMixTrack(3)",
               "RvAudioTrack::create(\"/missing/file.wav\", 0, 1000, 0) -> null",
               "RvARFilterTrack::create(\"/resources/effect\", 0, 1000) -> null", invalidate()}));
    EXPECT_EQ(mixIds(), Ids{3});
}

TEST_F(MixTracksTest, PassesOverNullEntriesAndGoesOnBehindThem)
{
    norvel::RvTimeLineAttribute from;
    from.mixAttribs.push_back(nullptr);
    add(from.mixAttribs, norvel::RecordTypeAudio, 1);
    norvel::RvTimeLineAttribute to;
    to.mixAttribs.push_back(nullptr);
    add(to.mixAttribs, norvel::RecordTypeAudio, 1);
    to.mixAttribs.push_back(nullptr);
    add(to.mixAttribs, norvel::RecordTypeImage, 2);
    setLive(from);
    EXPECT_EQ(structural(update(from, to)),
              (Calls{createPicture("#0"), "RvKpTimeLine::addMixTrack(2)", invalidate()}));
}

TEST_F(MixTracksTest, RefreshesALiquifyThatIsUnchanged)
{
    norvel::RvTimeLineAttribute description;
    add<norvel::RvARLiquifyAttribute>(description.mixAttribs, norvel::RecordTypeARLiquify, 1)
        .radius = 12.0F;
    setLive(description);
    const Calls calls = update(description, *TimelineSamples::copyOf(description));
    EXPECT_EQ(std::count(calls.begin(), calls.end(),
                         "RvARLiquifyTrack::appendToLiquifyOperation(1, {0, 0, 12, 0, (0, 0), (0, "
                         "0), 0})"),
              1);
}

TEST_F(MixTracksTest, SkipsTheMissingTracksOfChangedRecords)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    add(from.mixAttribs, norvel::RecordTypeAudio, 2);
    const auto to = TimelineSamples::copyOf(from);
    to->mixAttribs[0]->alpha = 0.5F;
    to->mixAttribs[1]->alpha = 0.5F;
    EXPECT_EQ(update(from, *to), Calls{invalidate()});
}

TEST_F(MixTracksTest, ComparesWithTheMixListAlone)
{
    // The same record stood on the main line: for the mix list it is new.
    const auto from = TimelineSamples::pictures({1});
    norvel::RvTimeLineAttribute to;
    to.mixAttribs.push_back(TimelineSamples::copyOf(*from->mainAttribs[0]));
    setLive(*from);
    EXPECT_EQ(structural(update(*from, to)),
              (Calls{createPicture("#1"), "RvKpTimeLine::addMixTrack(1)",
                     "RvKpTimeLine::removeGroup(#0)", invalidate()}));
    EXPECT_EQ(mainIds(), Ids());
    EXPECT_EQ(mixIds(), Ids{1});
}

TEST_F(MixTracksTest, TakesARecordOfAnotherClassUnderTheSameIdForANewTrack)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, norvel::RecordTypeAudio, 1);
    setLive(from);
    EXPECT_EQ(
        structural(update(from, to)),
        (Calls{"RvAudioTrack::create(" + quoted(TimelineSamples::sound()) + ", 0, 1000, 0) -> #0",
               "RvKpTimeLine::addMixTrack(1)", "RvKpTimeLine::removeMixTrack(1)", invalidate()}));
    EXPECT_TRUE(mixTrack<qrvkp::RvAudioTrack>(1)) << "the picture stood first and went";
}

TEST_F(MixTracksTest, UpdatesTheFirstTrackOfAnIdWhateverItsKind)
{
    // Picture and sound under one id: the sound's record finds the picture, which is none of its.
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeImage, 1);
    add(from.mixAttribs, norvel::RecordTypeAudio, 1);
    const auto to = TimelineSamples::copyOf(from);
    to->mixAttribs[1]->alpha = 0.5F;
    setLive(from);
    EXPECT_EQ(update(from, *to), Calls{invalidate()});

    const auto both = TimelineSamples::copyOf(*to);
    both->mixAttribs[0]->alpha = 0.25F;
    update(*to, *both);
    EXPECT_EQ(mixTrack<qrvkp::RvSpriteTrack>(1)->getAlpha(), 0.25F);
    EXPECT_EQ(mixIds(), (Ids{1, 1}));
}

TEST_F(MixTracksTest, UpdatesAMediaRecordWhoseTypeIsNotThatOfItsClass)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeAudio, 1).type = norvel::RecordTypeVideo;
    norvel::RvTimeLineAttribute live;
    add(live.mixAttribs, norvel::RecordTypeImage, 1);
    setLive(live);
    EXPECT_EQ(update(from, *TimelineSamples::copyOf(from)), Calls{invalidate()});
    EXPECT_EQ(mixIds(), Ids{1}) << "it is kept";
    EXPECT_EQ(update(empty, from), Calls{invalidate()}) << "it cannot be created";
}

TEST_F(MixTracksTest, UpdatesALayerUnderItsId)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, norvel::RecordTypeARLayer, 1);
    const auto to = TimelineSamples::copyOf(from);
    dynamic_cast<norvel::RvARLayerAttribute&>(*to->mixAttribs[0]).globalParamConfiguration = "new";
    setLive(from);
    update(from, *to);
    EXPECT_EQ(mixTrack<qkpar::RvARAttribsTrack>(1)->getGlobalParamConfiguration(), "new");
}
