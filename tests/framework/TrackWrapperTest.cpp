// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "TrackKinds.h"

#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/private/NativeTrack.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

using namespace qrvkp;

namespace {

constexpr long long longest = std::numeric_limits<long long>::max();
constexpr long long shortest = std::numeric_limits<long long>::min();
constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();

/// A watch over the native track that does not keep it alive.
std::weak_ptr<NativeTrack> watch(const RvITrack& track)
{
    return NativeTrack::fromContext(track.getContext());
}

/// What holds for every class of tracks.
class TrackWrapperTest : public testing::TestWithParam<TrackKind>
{
protected:
    Reference<RvITrack> m_track = adopt(GetParam().make());

    Reference<RvITrack> wrapAgain() const { return adopt(GetParam().wrap(m_track->getContext())); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, TrackWrapperTest, testing::ValuesIn(trackKinds()), kindName);

TEST_P(TrackWrapperTest, NewTrackHasItsTypeItsPlaceAndPlainValues)
{
    ASSERT_TRUE(m_track);
    EXPECT_TRUE(GetParam().isOwn(m_track.get()));
    EXPECT_EQ(m_track->getTrackType(), GetParam().type);
    EXPECT_NE(m_track->getTrackID(), 0U);
    EXPECT_NE(m_track->getContext(), nullptr);
    EXPECT_EQ(m_track->getStartPos(), 100);
    EXPECT_EQ(m_track->getOriginDuration(), 2000);
    EXPECT_EQ(m_track->getDuration(), 2000);
    EXPECT_EQ(m_track->getTag(), "");
    EXPECT_EQ(m_track->getOriginZOrder(), 0);
    EXPECT_EQ(m_track->getAlpha(), 1.0F);
    EXPECT_EQ(m_track->getSpeed(), 1.0F);
}

TEST_P(TrackWrapperTest, ASecondWrapperIsOfTheSameClassAndTrack)
{
    const auto second = wrapAgain();
    ASSERT_TRUE(second);
    EXPECT_NE(second, m_track);
    EXPECT_TRUE(GetParam().isOwn(second.get()));
    EXPECT_EQ(second->getContext(), m_track->getContext());
    EXPECT_EQ(second->getTrackID(), m_track->getTrackID());
    EXPECT_EQ(second->getTrackSource(), m_track->getTrackSource());
    EXPECT_EQ(second->referenceCount(), 1);
    EXPECT_EQ(m_track->referenceCount(), 1);
}

TEST_P(TrackWrapperTest, TwoWrappersSeeEachOthersChanges)
{
    const auto second = wrapAgain();
    m_track->setTag("from the first");
    EXPECT_EQ(second->getTag(), "from the first");
    second->setTrackID(m_track->getTrackID() + 77);
    EXPECT_EQ(m_track->getTrackID(), second->getTrackID());
    second->setAlpha(0.25F);
    EXPECT_EQ(m_track->getAlpha(), 0.25F);
    m_track->setStartPos(-5);
    EXPECT_EQ(second->getStartPos(), -5);
}

TEST_P(TrackWrapperTest, AGenericWrapperTakesAnyTrackAndTellsItsType)
{
    const auto generic = adopt(RvITrack::create(m_track->getContext()));
    ASSERT_TRUE(generic);
    EXPECT_EQ(generic->getTrackType(), GetParam().type);
    EXPECT_EQ(generic->getContext(), m_track->getContext());
    generic->setZOrder(9);
    EXPECT_EQ(m_track->getOriginZOrder(), 9);
}

TEST_P(TrackWrapperTest, ANullHandleGivesNoWrapper)
{
    EXPECT_EQ(GetParam().wrap(nullptr), nullptr);
}

TEST_P(TrackWrapperTest, AHandleOfAnotherTypeGivesNoWrapper)
{
    for (const TrackKind& other : trackKinds()) {
        if (other.type == GetParam().type || other.type == RvTrackTypeGeneric)
            continue;
        EXPECT_EQ(other.wrap(m_track->getContext()), nullptr) << other.name;
    }
}

TEST_P(TrackWrapperTest, EverySetterIsReadBack)
{
    m_track->setTrackID(424242);
    m_track->setTag("标签 \"tag\"");
    m_track->setStartPos(longest);
    m_track->setDuration(shortest);
    m_track->setZOrder(std::numeric_limits<int>::min());
    m_track->setAlpha(-3.5F);
    m_track->setSpeed(0.0F);
    EXPECT_EQ(m_track->getTrackID(), 424242U);
    EXPECT_EQ(m_track->getTag(), "标签 \"tag\"");
    EXPECT_EQ(m_track->getStartPos(), longest);
    EXPECT_EQ(m_track->getOriginDuration(), shortest);
    EXPECT_EQ(m_track->getOriginZOrder(), std::numeric_limits<int>::min());
    EXPECT_EQ(m_track->getAlpha(), -3.5F);
    EXPECT_EQ(m_track->getSpeed(), 0.0F);

    m_track->setAlpha(quietNan);
    m_track->setSpeed(infinite);
    m_track->setTag(std::string("with\0zero", 9));
    EXPECT_TRUE(std::isnan(m_track->getAlpha()));
    EXPECT_EQ(m_track->getSpeed(), infinite);
    EXPECT_EQ(m_track->getTag(), std::string("with\0zero", 9));
}

TEST_P(TrackWrapperTest, TheNativeTrackLivesAsLongAsOneOfItsWrappers)
{
    const auto native = watch(*m_track);
    auto second = wrapAgain();
    m_track->setTag("kept");
    m_track.reset();
    ASSERT_FALSE(native.expired());
    EXPECT_EQ(second->getTag(), "kept");
    second.reset();
    EXPECT_TRUE(native.expired());
}

TEST_P(TrackWrapperTest, TheNativeTrackLivesAsLongAsItsGroup)
{
    const auto native = watch(*m_track);
    auto group = adopt(RvKpGroup::create(1000));
    ASSERT_TRUE(group->addTrack(m_track.get()));
    m_track->setTag("kept");
    m_track.reset();
    ASSERT_FALSE(native.expired());
    {
        const auto tracks = adopt(group->getTracks());
        ASSERT_EQ(tracks.size(), 1U);
        EXPECT_EQ(tracks[0]->getTag(), "kept");
        EXPECT_TRUE(GetParam().isOwn(tracks[0].get()));
        EXPECT_EQ(tracks[0]->referenceCount(), 2) << "the holder's and the list's";
    }
    group.reset();
    EXPECT_TRUE(native.expired());
}

TEST_P(TrackWrapperTest, TheNativeTrackLivesAsLongAsItsTimeline)
{
    const auto native = watch(*m_track);
    auto timeline = adopt(RvKpTimeLine::create());
    ASSERT_TRUE(timeline->addMixTrack(m_track.get()));
    m_track->setTag("kept");
    m_track.reset();
    ASSERT_FALSE(native.expired());
    {
        const auto tracks = adopt(timeline->getMixTracks());
        ASSERT_EQ(tracks.size(), 1U);
        EXPECT_EQ(tracks[0]->getTag(), "kept");
        EXPECT_TRUE(GetParam().isOwn(tracks[0].get()));
        EXPECT_EQ(tracks[0]->referenceCount(), 2) << "the holder's and the list's";
    }
    timeline.reset();
    EXPECT_TRUE(native.expired());
}

TEST(TrackSourceTest, IsWhatTheTrackWasMadeFrom)
{
    EXPECT_EQ(newTrack()->getTrackSource(), "");
    EXPECT_EQ(adopt(trackKind("RvDetectionTrack").make())->getTrackSource(), "");
    EXPECT_EQ(adopt(trackKind("RvTrkMatteEffectTrack").make())->getTrackSource(), "");
    EXPECT_EQ(adopt(trackKind("RvKpTrack").make())->getTrackSource(), SampleMedia::video());
    EXPECT_EQ(adopt(trackKind("RvSpriteTrack").make())->getTrackSource(), SampleMedia::picture());
    EXPECT_EQ(adopt(trackKind("RvAudioTrack").make())->getTrackSource(), SampleMedia::sound());
    for (const TrackKind& kind : trackKinds()) {
        if (kind.type > 20000) {
            EXPECT_EQ(adopt(kind.make())->getTrackSource(), "effect") << kind.name;
        }
    }
}

namespace {

struct SpeedCase
{
    const char* name;
    long long duration;
    float speed;
    long long expected;
};

void PrintTo(const SpeedCase& speedCase, std::ostream* stream)
{
    *stream << speedCase.duration << " ms at " << speedCase.speed;
}

class TrackDurationTest : public testing::TestWithParam<SpeedCase>
{
};

constexpr float tiny = std::numeric_limits<float>::denorm_min();

const SpeedCase speedCases[] = {
    {"One", 1000, 1.0F, 1000},
    {"Twice", 1000, 2.0F, 500},
    {"Half", 1000, 0.5F, 2000},
    {"Third", 1000, 3.0F, 333},
    {"RoundsToTheNearest", 1001, 2.0F, 501},
    {"RoundsNegativeOnesAwayFromZeroToo", -1001, 2.0F, -501},
    {"Fast", 1000, 1e30F, 0},
    {"Zero", 1000, 0.0F, 1000},
    {"MinusZero", 1000, -0.0F, 1000},
    {"Negative", 1000, -2.0F, 1000},
    {"NotANumber", 1000, quietNan, 1000},
    {"Infinite", 1000, infinite, 1000},
    {"MinusInfinite", 1000, -infinite, 1000},
    {"Tiny", 1, tiny, longest},
    {"TinyOfANegativeDuration", -1, tiny, shortest},
    {"TinyOfNothing", 0, tiny, 0},
    {"LongestAtSpeedOne", longest, 1.0F, longest},
    {"LongestAtHalf", longest, 0.5F, longest},
    {"ShortestAtHalf", shortest, 0.5F, shortest},
    {"LongestJustBelowOne", longest, 0.99999994F, longest},
    {"LongestUndivided", longest, quietNan, longest},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Speeds, TrackDurationTest, testing::ValuesIn(speedCases),
                         [](const auto& speed) { return std::string(speed.param.name); });

TEST_P(TrackDurationTest, IsTheOriginOneDividedByTheSpeed)
{
    const auto track = newTrack(0, 5);
    track->setSpeed(GetParam().speed);
    track->setDuration(GetParam().duration);
    EXPECT_EQ(track->getDuration(), GetParam().expected);
    EXPECT_EQ(track->getOriginDuration(), GetParam().duration);
}

namespace {

/// Makes many tracks and groups and gives their ids.
std::vector<std::uint64_t> newIds(int count)
{
    std::vector<std::uint64_t> ids;
    for (int i = 0; i < count; ++i) {
        ids.push_back(newTrack()->getTrackID());
        ids.push_back(adopt(RvKpGroup::create(0))->getGroupID());
    }
    return ids;
}

/// Sets the ids one after the other, then expects that new objects get none of them.
void expectNeverGivenAgain(const std::vector<std::uint64_t>& hostIds)
{
    const auto track = newTrack();
    for (const std::uint64_t id : hostIds)
        track->setTrackID(id);
    std::set<std::uint64_t> taken(hostIds.begin(), hostIds.end());
    for (const std::uint64_t id : newIds(50))
        EXPECT_TRUE(taken.insert(id).second) << id << " was given again";
}

constexpr std::uint64_t power(unsigned exponent)
{
    return std::uint64_t{1} << exponent;
}

} // namespace

TEST(ObjectIdTest, NewObjectsOfEveryKindHaveIdsOfTheirOwn)
{
    std::set<std::uint64_t> ids;
    for (int round = 0; round < 20; ++round) {
        for (const TrackKind& kind : trackKinds())
            EXPECT_TRUE(ids.insert(adopt(kind.make())->getTrackID()).second) << kind.name;
        EXPECT_TRUE(ids.insert(adopt(RvKpGroup::create(0))->getGroupID()).second);
    }
}

TEST(ObjectIdTest, AnIdThatAHostSetAheadIsNotGivenAgain)
{
    const std::uint64_t next = newTrack()->getTrackID() + 1;
    expectNeverGivenAgain({next + 3, next + 1, next + 40, next + 7});
}

TEST(ObjectIdTest, AnIdThatAHostSetBehindChangesNothing)
{
    const std::uint64_t before = newTrack()->getTrackID();
    expectNeverGivenAgain({0, 1, 999, before});
    EXPECT_GT(newTrack()->getTrackID(), before);
}

TEST(ObjectIdTest, TheLargestIdsLeaveNewOnesFree)
{
    const std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    expectNeverGivenAgain({largest, largest - 1, power(63), power(63) - 1, power(63) + 1});
    EXPECT_LT(newTrack()->getTrackID(), power(63));
}

TEST(ObjectIdTest, IdsThatAHostSetAroundTheLastJumpAreNotGivenAgain)
{
    // In both orders: what lies ahead may be set before what makes the counter come near it.
    expectNeverGivenAgain({power(62) + 5, power(62) + 1, power(62), power(62) - 1, power(62) - 2});
    expectNeverGivenAgain(
        {power(62) + 100, power(62) + 200, power(62) + 201, power(62) + 202, power(62) + 300});
}
