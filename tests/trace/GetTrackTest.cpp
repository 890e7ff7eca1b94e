// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvSpriteTrack.h>

using norvel::RecordTypeARFilter;
using norvel::RecordTypeAudio;
using norvel::RecordTypeImage;

namespace {

class GetTrackTest : public TraceTest
{
protected:
    TimelineSamples::Track get(std::uint64_t id)
    {
        return norvel::adopt(trace->getTrack(static_cast<std::size_t>(id)));
    }

    void appendGroup(std::initializer_list<std::pair<int, std::uint64_t>> typesAndIds)
    {
        std::vector<TimelineSamples::Track> tracks;
        for (const auto& [type, id] : typesAndIds)
            tracks.push_back(TimelineSamples::track(type, id));
        TimelineSamples::appendGroup(*timeline, tracks);
    }

    void addMix(int type, std::uint64_t id)
    {
        timeline->addMixTrack(TimelineSamples::track(type, id).get());
    }
};

} // namespace

TEST_F(GetTrackTest, NeedsNoHistory)
{
    EXPECT_TRUE(get(1));
}

TEST_F(GetTrackTest, FindsNothingWithoutATimeline)
{
    takeTimelineAway();
    EXPECT_FALSE(get(1));
}

TEST_F(GetTrackTest, FindsNothingUnderAnUnknownId)
{
    EXPECT_FALSE(get(0));
    EXPECT_FALSE(get(99));
}

TEST_F(GetTrackTest, FindsTheFirstTrackOfAGroup)
{
    const auto track = get(2);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackID(), 2U);
    EXPECT_TRUE(dynamic_cast<qrvkp::RvSpriteTrack*>(track.get()));
}

TEST_F(GetTrackTest, FindsAMixTrack)
{
    const auto track = get(11);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackID(), 11U);
    EXPECT_TRUE(dynamic_cast<qkpar::RvARFilterTrack*>(track.get()));
}

TEST_F(GetTrackTest, GivesANewWrapperOfTheLiveTrackEachTime)
{
    const auto first = get(1);
    const auto second = get(1);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->referenceCount(), 1);
    EXPECT_EQ(first->getContext(), second->getContext());
    first->setAlpha(0.5F);
    EXPECT_EQ(alpha(), 0.5F);
}

TEST_F(GetTrackTest, NeverFindsTheSecondTrackOfAGroup)
{
    appendGroup({{RecordTypeImage, 4}, {RecordTypeImage, 5}});
    EXPECT_TRUE(get(4));
    EXPECT_FALSE(get(5));
}

TEST_F(GetTrackTest, FindsTheMixTrackOfAnIdThatASecondTrackHasToo)
{
    appendGroup({{RecordTypeImage, 4}, {RecordTypeImage, 5}});
    addMix(RecordTypeAudio, 5);
    ASSERT_TRUE(get(5));
    EXPECT_EQ(get(5)->getTrackType(), qrvkp::RvTrackTypeAudio);
}

TEST_F(GetTrackTest, PutsAMixTrackInPlaceOfTheMainTrackOfItsId)
{
    addMix(RecordTypeAudio, 2);
    ASSERT_TRUE(get(2));
    EXPECT_EQ(get(2)->getTrackType(), qrvkp::RvTrackTypeAudio);
}

TEST_F(GetTrackTest, PutsAMixTrackWithoutAWrapperInPlaceOfTheMainTrackToo)
{
    addMix(RecordTypeAudio, 2);
    qrvkp::RvFault::failNext("RvAudioTrack::create");
    EXPECT_FALSE(get(2));
    EXPECT_TRUE(get(2));
}

TEST_F(GetTrackTest, FindsTheFirstTrackOfAnId)
{
    appendGroup({{RecordTypeARFilter, 2}});
    EXPECT_EQ(get(2)->getTrackType(), qrvkp::RvTrackTypeSprite);
    addMix(RecordTypeAudio, 20);
    addMix(RecordTypeImage, 20);
    EXPECT_EQ(get(20)->getTrackType(), qrvkp::RvTrackTypeAudio);
}

TEST_F(GetTrackTest, FindsAnEffectThatIsTheFirstTrackOfAGroup)
{
    appendGroup({{RecordTypeARFilter, 4}, {RecordTypeImage, 5}});
    ASSERT_TRUE(get(4));
    EXPECT_EQ(get(4)->getTrackType(), qrvkp::RvTrackTypeARFilter);
}

TEST_F(GetTrackTest, PassesOverGroupsWithoutTracks)
{
    TimelineSamples::appendGroup(*timeline, {});
    appendGroup({{RecordTypeImage, 4}});
    EXPECT_TRUE(get(4));
    EXPECT_FALSE(get(0));
}
