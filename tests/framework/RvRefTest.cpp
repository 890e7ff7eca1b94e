// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Threads.h"
#include "TrackKinds.h"

#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

using namespace qrvkp;

TEST(RvRefTest, StartsWithOneReference)
{
    EXPECT_EQ(newTrack()->referenceCount(), 1);
    EXPECT_EQ(adopt(RvKpGroup::create(0))->referenceCount(), 1);
    EXPECT_EQ(adopt(RvKpTimeLine::create())->referenceCount(), 1);
}

TEST(RvRefTest, RetainAddsAReferenceAndReleaseDropsOne)
{
    const auto track = newTrack();
    track->retain();
    track->retain();
    EXPECT_EQ(track->referenceCount(), 3);
    track->release();
    EXPECT_EQ(track->referenceCount(), 2);
    track->release();
    EXPECT_EQ(track->referenceCount(), 1);
}

TEST(RvRefTest, LiveCountCountsTracksGroupsAndTimelinesUntilTheirLastRelease)
{
    const long long before = RvRef::liveCount();
    RvITrack* track = RvITrack::create(0, 0);
    EXPECT_EQ(RvRef::liveCount(), before + 1);
    RvKpGroup* group = RvKpGroup::create(0);
    EXPECT_EQ(RvRef::liveCount(), before + 2);
    RvKpTimeLine* timeline = RvKpTimeLine::create();
    EXPECT_EQ(RvRef::liveCount(), before + 3);

    group->retain();
    group->release();
    EXPECT_EQ(RvRef::liveCount(), before + 3);
    group->release();
    EXPECT_EQ(RvRef::liveCount(), before + 2);
    track->release();
    timeline->release();
    EXPECT_EQ(RvRef::liveCount(), before);
}

TEST(RvRefTest, EveryWrapperOfANativeTrackCountsAsAnObject)
{
    const auto track = newTrack();
    const long long before = RvRef::liveCount();
    const auto second = adopt(RvITrack::create(track->getContext()));
    EXPECT_EQ(RvRef::liveCount(), before + 1);
    EXPECT_EQ(track->referenceCount(), 1);
    EXPECT_EQ(second->referenceCount(), 1);
}

TEST(RvRefTest, CountsRightWhenSeveralThreadsRetainAndRelease)
{
    const auto track = newTrack();
    inThreads([&](int) {
        for (int i = 0; i < 500000; ++i) {
            track->retain();
            track->release();
        }
    });
    EXPECT_EQ(track->referenceCount(), 1);
}

TEST(RvRefTest, IsDestroyedOnceWhenSeveralThreadsDropTheLastReferences)
{
    const long long before = RvRef::liveCount();
    for (int round = 0; round < 500; ++round) {
        RvITrack* track = RvITrack::create(0, 0);
        for (int i = 1; i < threadCount; ++i)
            track->retain();
        inThreads([track](int) { track->release(); });
        ASSERT_EQ(RvRef::liveCount(), before);
    }
}

TEST(RvRefTest, LiveCountIsRightWhenSeveralThreadsMakeObjects)
{
    const long long before = RvRef::liveCount();
    inThreads([](int) {
        for (int i = 0; i < 10000; ++i)
            adopt(RvKpGroup::create(i));
    });
    EXPECT_EQ(RvRef::liveCount(), before);
}
