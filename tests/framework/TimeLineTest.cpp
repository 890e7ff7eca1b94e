// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"

#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

using namespace qrvkp;

namespace {

constexpr long long longest = std::numeric_limits<long long>::max();
constexpr long long shortest = std::numeric_limits<long long>::min();
constexpr int largestInt = std::numeric_limits<int>::max();
constexpr int smallestInt = std::numeric_limits<int>::min();

Reference<RvKpGroup> newGroup(long long duration = 1000)
{
    return adopt(RvKpGroup::create(duration));
}

/// The ids of the tracks, which are released.
std::vector<std::uint64_t> idsOf(const std::vector<RvITrack*>& tracks)
{
    std::vector<std::uint64_t> ids;
    for (const auto& track : adopt(tracks))
        ids.push_back(track->getTrackID());
    return ids;
}

/// A timeline with the groups A to E in this order.
class TimeLineTest : public testing::Test
{
protected:
    TimeLineTest()
    {
        for (const auto& group : m_groups)
            EXPECT_TRUE(m_timeline->pushBackGroup(group.get()));
    }

    /// The groups in order, as letters; other groups are question marks.
    std::string order() const
    {
        std::string letters;
        for (const auto& group : adopt(m_timeline->getGroups())) {
            const auto place = std::find_if(m_groups.begin(), m_groups.end(),
                                            [&](const auto& own) { return own == group; });
            letters +=
                place == m_groups.end() ? '?' : static_cast<char>('A' + (place - m_groups.begin()));
        }
        return letters;
    }

    RvKpGroup* group(char letter) const
    {
        return m_groups.at(static_cast<std::size_t>(letter - 'A')).get();
    }

    const Reference<RvKpTimeLine> m_timeline = adopt(RvKpTimeLine::create());
    std::vector<Reference<RvKpGroup>> m_groups = fiveGroups();

private:
    static std::vector<Reference<RvKpGroup>> fiveGroups()
    {
        std::vector<Reference<RvKpGroup>> groups;
        for (int i = 0; i < 5; ++i)
            groups.push_back(newGroup());
        return groups;
    }
};

} // namespace

TEST(GroupTest, KeepsItsIdAndHandleAndTheDurationItIsGiven)
{
    const auto group = newGroup(1234);
    EXPECT_NE(group->getGroupID(), 0U);
    EXPECT_NE(group->getContext(), nullptr);
    EXPECT_EQ(group->getDuration(), 1234);
    group->setDuration(-longest);
    EXPECT_EQ(group->getDuration(), -longest);
    EXPECT_NE(newGroup()->getGroupID(), group->getGroupID());
}

TEST(GroupTest, KeepsItsTracksInTheOrderInWhichTheyWereAdded)
{
    const auto group = newGroup();
    std::vector<std::uint64_t> ids;
    EXPECT_TRUE(group->getTracks().empty());
    for (int i = 0; i < 3; ++i) {
        const auto track = newTrack();
        ids.push_back(track->getTrackID());
        EXPECT_TRUE(group->addTrack(track.get()));
    }
    EXPECT_EQ(idsOf(group->getTracks()), ids);
}

TEST(GroupTest, RemovesATrackByAnyOfItsWrappers)
{
    const auto group = newGroup();
    const auto first = newTrack();
    const auto second = newTrack();
    group->addTrack(first.get());
    group->addTrack(second.get());
    const auto wrapper = adopt(RvITrack::create(first->getContext()));
    EXPECT_TRUE(group->removeTrack(wrapper.get()));
    EXPECT_EQ(idsOf(group->getTracks()), std::vector<std::uint64_t>{second->getTrackID()});
    EXPECT_FALSE(group->removeTrack(first.get()));
}

TEST(GroupTest, RefusesNullAndTracksOfOthers)
{
    const auto group = newGroup();
    const auto stranger = newTrack();
    EXPECT_FALSE(group->addTrack(nullptr));
    EXPECT_FALSE(group->removeTrack(nullptr));
    EXPECT_FALSE(group->removeTrack(stranger.get()));
    EXPECT_TRUE(group->getTracks().empty());
}

TEST(GroupTest, ATrackStandsInOnePlaceOnly)
{
    const auto group = newGroup();
    const auto other = newGroup();
    const auto timeline = adopt(RvKpTimeLine::create());
    const auto track = newTrack();
    const auto wrapper = adopt(RvITrack::create(track->getContext()));
    ASSERT_TRUE(group->addTrack(track.get()));
    EXPECT_FALSE(group->addTrack(track.get()));
    EXPECT_FALSE(group->addTrack(wrapper.get()));
    EXPECT_FALSE(other->addTrack(wrapper.get()));
    EXPECT_FALSE(timeline->addMixTrack(track.get()));
    EXPECT_EQ(idsOf(group->getTracks()), std::vector<std::uint64_t>{track->getTrackID()});
    EXPECT_TRUE(other->getTracks().empty());
    EXPECT_TRUE(timeline->getMixTracks().empty());

    ASSERT_TRUE(group->removeTrack(track.get()));
    EXPECT_TRUE(timeline->addMixTrack(track.get()));
    EXPECT_FALSE(group->addTrack(track.get()));
    ASSERT_TRUE(timeline->removeMixTrack(wrapper.get()));
    EXPECT_TRUE(other->addTrack(track.get()));
}

TEST(GroupTest, AddingAndListingTakeNoReferenceOfTheCaller)
{
    const auto group = newGroup();
    const auto track = newTrack();
    group->addTrack(track.get());
    EXPECT_EQ(track->referenceCount(), 1);
    auto tracks = adopt(group->getTracks());
    EXPECT_EQ(tracks[0]->referenceCount(), 2) << "the group's and the list's";
    EXPECT_EQ(adopt(group->getTracks())[0], tracks[0]);
    tracks.clear();
    EXPECT_EQ(adopt(group->getTracks())[0]->referenceCount(), 2) << "the former list's is gone";
}

TEST(GroupTest, RemovesATrackThatNobodyElseHolds)
{
    const auto group = newGroup();
    const long long before = RvRef::liveCount();
    group->addTrack(newTrack().get());
    RvITrack* listed = adopt(group->getTracks())[0].get();
    EXPECT_TRUE(group->removeTrack(listed));
    EXPECT_EQ(RvRef::liveCount(), before);
}

TEST(GroupTest, AListedTrackOutlivesItsRemovalAndCanComeBack)
{
    const auto group = newGroup();
    group->addTrack(newTrack().get());
    const auto tracks = adopt(group->getTracks());
    EXPECT_TRUE(group->removeTrack(tracks[0].get()));
    EXPECT_EQ(tracks[0]->referenceCount(), 1);
    EXPECT_EQ(tracks[0]->getOriginDuration(), 1000);
    EXPECT_TRUE(group->addTrack(tracks[0].get()));
    EXPECT_EQ(idsOf(group->getTracks()), std::vector<std::uint64_t>{tracks[0]->getTrackID()});
}

TEST(GroupTest, ADestroyedGroupSetsItsTracksFree)
{
    const auto track = newTrack();
    track->setTag("kept");
    newGroup()->addTrack(track.get());
    EXPECT_EQ(track->getTag(), "kept");
    EXPECT_TRUE(newGroup()->addTrack(track.get()));
}

TEST_F(TimeLineTest, PushesBackInOrder)
{
    EXPECT_EQ(order(), "ABCDE");
}

TEST_F(TimeLineTest, StartsEmpty)
{
    const auto timeline = adopt(RvKpTimeLine::create());
    EXPECT_TRUE(timeline->getGroups().empty());
    EXPECT_TRUE(timeline->getMixTracks().empty());
    EXPECT_EQ(timeline->getDuration(), 0);
}

TEST_F(TimeLineTest, InsertsAtAPositionClampedToTheTimeline)
{
    for (const auto& [position, expected] :
         std::vector<std::pair<int, std::string>>{{0, "CABDE"},
                                                  {1, "ACBDE"},
                                                  {3, "ABDCE"},
                                                  {4, "ABDEC"},
                                                  {5, "ABDEC"},
                                                  {99, "ABDEC"},
                                                  {largestInt, "ABDEC"},
                                                  {-1, "CABDE"},
                                                  {smallestInt, "CABDE"}}) {
        ASSERT_TRUE(m_timeline->removeGroup(group('C')));
        ASSERT_EQ(order(), "ABDE");
        EXPECT_TRUE(m_timeline->insertGroup(group('C'), position));
        EXPECT_EQ(order(), expected) << position;
        ASSERT_TRUE(m_timeline->removeGroup(group('C')));
        ASSERT_TRUE(m_timeline->insertGroup(group('C'), 2));
    }
}

TEST_F(TimeLineTest, AMovedGroupThenStandsAtThePosition)
{
    for (const char letter : std::string("ABCDE")) {
        for (const int position : {smallestInt, -1, 0, 1, 2, 3, 4, 5, 99, largestInt}) {
            std::string expected = order();
            expected.erase(expected.find(letter), 1);
            expected.insert(expected.begin() + std::clamp(position, 0, 4), letter);
            EXPECT_TRUE(m_timeline->changeGroupPosition(group(letter), position));
            EXPECT_EQ(order(), expected) << letter << " to " << position;
        }
    }
}

TEST_F(TimeLineTest, MovingChangesNoReferences)
{
    EXPECT_EQ(group('A')->referenceCount(), 2);
    m_timeline->changeGroupPosition(group('A'), 3);
    m_timeline->changeGroupPosition(group('A'), 3);
    EXPECT_EQ(group('A')->referenceCount(), 2);
}

TEST_F(TimeLineTest, RemovesAGroupAndDropsItsReference)
{
    EXPECT_TRUE(m_timeline->removeGroup(group('B')));
    EXPECT_EQ(order(), "ACDE");
    EXPECT_EQ(group('B')->referenceCount(), 1);
    EXPECT_FALSE(m_timeline->removeGroup(group('B')));
    EXPECT_EQ(group('B')->referenceCount(), 1);
}

TEST_F(TimeLineTest, NullIsHarmlessEverywhere)
{
    EXPECT_FALSE(m_timeline->insertGroup(nullptr, 0));
    EXPECT_FALSE(m_timeline->pushBackGroup(nullptr));
    EXPECT_FALSE(m_timeline->changeGroupPosition(nullptr, 0));
    EXPECT_FALSE(m_timeline->removeGroup(nullptr));
    EXPECT_FALSE(m_timeline->addMixTrack(nullptr));
    EXPECT_FALSE(m_timeline->removeMixTrack(nullptr));
    EXPECT_EQ(order(), "ABCDE");
    EXPECT_TRUE(m_timeline->getMixTracks().empty());
}

TEST_F(TimeLineTest, WhatIsNotOnTheTimelineIsNeitherMovedNorRemoved)
{
    const auto strange = newGroup();
    const auto other = adopt(RvKpTimeLine::create());
    other->pushBackGroup(strange.get());
    EXPECT_FALSE(m_timeline->changeGroupPosition(strange.get(), 0));
    EXPECT_FALSE(m_timeline->removeGroup(strange.get()));
    EXPECT_EQ(order(), "ABCDE");
    EXPECT_EQ(adopt(other->getGroups()).size(), 1U);

    const auto track = newTrack();
    other->addMixTrack(track.get());
    EXPECT_FALSE(m_timeline->removeMixTrack(track.get()));
    EXPECT_EQ(adopt(other->getMixTracks()).size(), 1U);
}

TEST_F(TimeLineTest, AGroupStandsInOnePlaceOnly)
{
    const auto other = adopt(RvKpTimeLine::create());
    EXPECT_FALSE(m_timeline->insertGroup(group('A'), 3));
    EXPECT_FALSE(m_timeline->pushBackGroup(group('A')));
    EXPECT_FALSE(other->insertGroup(group('A'), 0));
    EXPECT_FALSE(other->pushBackGroup(group('A')));
    EXPECT_EQ(order(), "ABCDE");
    EXPECT_TRUE(other->getGroups().empty());
    EXPECT_EQ(group('A')->referenceCount(), 2);

    ASSERT_TRUE(m_timeline->removeGroup(group('A')));
    EXPECT_TRUE(other->pushBackGroup(group('A')));
    EXPECT_FALSE(m_timeline->pushBackGroup(group('A')));
}

TEST_F(TimeLineTest, ARemovedGroupKeepsItsTracks)
{
    const auto track = newTrack();
    group('A')->addTrack(track.get());
    m_timeline->removeGroup(group('A'));
    EXPECT_EQ(idsOf(group('A')->getTracks()), std::vector<std::uint64_t>{track->getTrackID()});
    EXPECT_FALSE(m_timeline->addMixTrack(track.get()));
}

TEST_F(TimeLineTest, HoldsItsGroupsItself)
{
    const std::uint64_t id = group('A')->getGroupID();
    m_groups.clear();
    const auto groups = adopt(m_timeline->getGroups());
    ASSERT_EQ(groups.size(), 5U);
    EXPECT_EQ(groups[0]->getGroupID(), id);
    EXPECT_EQ(groups[0]->referenceCount(), 2);
}

TEST_F(TimeLineTest, ListedGroupsCarryOneReferenceEach)
{
    auto groups = adopt(m_timeline->getGroups());
    for (const auto& listed : groups)
        EXPECT_EQ(listed->referenceCount(), 3);
    groups.clear();
    EXPECT_EQ(group('A')->referenceCount(), 2);
}

TEST_F(TimeLineTest, KeepsMixTracksInTheOrderInWhichTheyWereAdded)
{
    std::vector<Reference<RvITrack>> tracks;
    std::vector<std::uint64_t> ids;
    for (int i = 0; i < 4; ++i) {
        tracks.push_back(newTrack());
        tracks.back()->setZOrder(-i);
        ids.push_back(tracks.back()->getTrackID());
        EXPECT_TRUE(m_timeline->addMixTrack(tracks.back().get()));
        EXPECT_EQ(tracks.back()->referenceCount(), 1);
    }
    EXPECT_EQ(idsOf(m_timeline->getMixTracks()), ids);

    const auto wrapper = adopt(RvITrack::create(tracks[1]->getContext()));
    EXPECT_TRUE(m_timeline->removeMixTrack(wrapper.get()));
    EXPECT_FALSE(m_timeline->removeMixTrack(tracks[1].get()));
    ids.erase(ids.begin() + 1);
    EXPECT_EQ(idsOf(m_timeline->getMixTracks()), ids);

    EXPECT_TRUE(m_timeline->addMixTrack(tracks[1].get()));
    ids.push_back(tracks[1]->getTrackID());
    EXPECT_EQ(idsOf(m_timeline->getMixTracks()), ids);
}

TEST_F(TimeLineTest, AMixTrackStandsInOnePlaceOnly)
{
    const auto other = adopt(RvKpTimeLine::create());
    const auto track = newTrack();
    const auto wrapper = adopt(RvITrack::create(track->getContext()));
    ASSERT_TRUE(m_timeline->addMixTrack(track.get()));
    EXPECT_FALSE(m_timeline->addMixTrack(track.get()));
    EXPECT_FALSE(m_timeline->addMixTrack(wrapper.get()));
    EXPECT_FALSE(other->addMixTrack(wrapper.get()));
    EXPECT_FALSE(group('A')->addTrack(wrapper.get()));
    EXPECT_EQ(adopt(m_timeline->getMixTracks()).size(), 1U);
}

TEST_F(TimeLineTest, ListedMixTracksAreTheTimelinesOwnWithOneMoreReferenceEach)
{
    const auto track = newTrack();
    m_timeline->addMixTrack(track.get());
    auto tracks = adopt(m_timeline->getMixTracks());
    ASSERT_EQ(tracks.size(), 1U);
    EXPECT_NE(tracks[0], track);
    EXPECT_EQ(tracks[0]->referenceCount(), 2) << "the timeline's and the list's";
    EXPECT_EQ(tracks[0]->getContext(), track->getContext());
    EXPECT_EQ(adopt(m_timeline->getMixTracks())[0], tracks[0]);
    tracks.clear();
    EXPECT_EQ(adopt(m_timeline->getMixTracks())[0]->referenceCount(), 2)
        << "the former list's is gone";
}

TEST_F(TimeLineTest, RemovesAMixTrackThatNobodyElseHolds)
{
    const long long before = RvRef::liveCount();
    m_timeline->addMixTrack(newTrack().get());
    RvITrack* listed = adopt(m_timeline->getMixTracks())[0].get();
    EXPECT_TRUE(m_timeline->removeMixTrack(listed));
    EXPECT_EQ(RvRef::liveCount(), before);
}

TEST_F(TimeLineTest, AListedMixTrackOutlivesItsRemovalAndCanComeBack)
{
    m_timeline->addMixTrack(newTrack().get());
    const auto tracks = adopt(m_timeline->getMixTracks());
    EXPECT_TRUE(m_timeline->removeMixTrack(tracks[0].get()));
    EXPECT_EQ(tracks[0]->referenceCount(), 1);
    EXPECT_EQ(tracks[0]->getOriginDuration(), 1000);
    EXPECT_TRUE(m_timeline->addMixTrack(tracks[0].get()));
    EXPECT_EQ(idsOf(m_timeline->getMixTracks()),
              std::vector<std::uint64_t>{tracks[0]->getTrackID()});
}

TEST_F(TimeLineTest, ATrackOfAGroupIsNoMixTrackToRemove)
{
    const auto track = newTrack();
    group('A')->addTrack(track.get());
    EXPECT_FALSE(m_timeline->removeMixTrack(track.get()));
    EXPECT_EQ(idsOf(group('A')->getTracks()), std::vector<std::uint64_t>{track->getTrackID()});
    m_timeline->removeGroup(group('A'));
    const auto mix = newTrack();
    m_timeline->addMixTrack(mix.get());
    EXPECT_FALSE(group('A')->removeTrack(mix.get()));
    EXPECT_EQ(idsOf(m_timeline->getMixTracks()), std::vector<std::uint64_t>{mix->getTrackID()});
}

TEST_F(TimeLineTest, ADestroyedTimelineSetsItsGroupsAndTracksFree)
{
    const auto group = newGroup(700);
    const auto mix = newTrack();
    {
        const auto passing = adopt(RvKpTimeLine::create());
        ASSERT_TRUE(passing->pushBackGroup(group.get()));
        ASSERT_TRUE(passing->addMixTrack(mix.get()));
    }
    EXPECT_EQ(group->referenceCount(), 1);
    EXPECT_EQ(group->getDuration(), 700);
    EXPECT_EQ(mix->getOriginDuration(), 1000);
    EXPECT_TRUE(m_timeline->pushBackGroup(group.get()));
    EXPECT_TRUE(m_timeline->addMixTrack(mix.get()));
}

TEST_F(TimeLineTest, ListedObjectsOutliveTheTimeline)
{
    std::vector<Reference<RvKpGroup>> groups;
    std::vector<Reference<RvITrack>> tracks;
    {
        const auto passing = adopt(RvKpTimeLine::create());
        ASSERT_TRUE(passing->pushBackGroup(newGroup(700).get()));
        ASSERT_TRUE(passing->addMixTrack(newTrack(5, 10).get()));
        groups = adopt(passing->getGroups());
        tracks = adopt(passing->getMixTracks());
    }
    ASSERT_EQ(groups.size(), 1U);
    ASSERT_EQ(tracks.size(), 1U);
    EXPECT_EQ(groups[0]->getDuration(), 700);
    EXPECT_EQ(groups[0]->referenceCount(), 1);
    EXPECT_EQ(tracks[0]->getStartPos(), 5);
}

TEST_F(TimeLineTest, LastsAsLongAsItsGroupsTogether)
{
    EXPECT_EQ(m_timeline->getDuration(), 5000);
    group('B')->setDuration(3);
    EXPECT_EQ(m_timeline->getDuration(), 4003);
    m_timeline->removeGroup(group('A'));
    EXPECT_EQ(m_timeline->getDuration(), 3003);
}

TEST_F(TimeLineTest, LastsUntilTheLastMixTrackEnds)
{
    const auto track = newTrack(4500, 1000);
    m_timeline->addMixTrack(track.get());
    EXPECT_EQ(m_timeline->getDuration(), 5500);
    track->setSpeed(0.25F);
    EXPECT_EQ(m_timeline->getDuration(), 8500);
    track->setStartPos(0);
    EXPECT_EQ(m_timeline->getDuration(), 5000);
    track->setStartPos(-10000);
    EXPECT_EQ(m_timeline->getDuration(), 5000);
}

TEST_F(TimeLineTest, NegativeDurationsTakeNoTime)
{
    group('A')->setDuration(shortest);
    EXPECT_EQ(m_timeline->getDuration(), 4000);
    const auto track = newTrack(6000, -5000);
    m_timeline->addMixTrack(track.get());
    EXPECT_EQ(m_timeline->getDuration(), 6000);
}

TEST_F(TimeLineTest, SumsOfDurationsSaturate)
{
    group('A')->setDuration(longest);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    group('B')->setDuration(longest);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    group('A')->setDuration(0);
    group('B')->setDuration(longest - 2999);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    group('B')->setDuration(longest - 3000);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    group('B')->setDuration(longest - 3001);
    EXPECT_EQ(m_timeline->getDuration(), longest - 1);
}

TEST_F(TimeLineTest, EndsOfMixTracksSaturate)
{
    const auto track = newTrack(longest, longest);
    m_timeline->addMixTrack(track.get());
    EXPECT_EQ(m_timeline->getDuration(), longest);
    track->setStartPos(shortest);
    EXPECT_EQ(m_timeline->getDuration(), 5000);
    track->setStartPos(1);
    track->setDuration(longest);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    track->setDuration(longest - 1);
    EXPECT_EQ(m_timeline->getDuration(), longest);
    track->setDuration(longest - 2);
    EXPECT_EQ(m_timeline->getDuration(), longest - 1);
}

TEST_F(TimeLineTest, InvalidatingChangesNothing)
{
    m_timeline->invalidate();
    EXPECT_EQ(order(), "ABCDE");
    EXPECT_EQ(m_timeline->getDuration(), 5000);
}
