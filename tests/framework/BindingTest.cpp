// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>
#include <rvkpcore/private/NativeTrack.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace qrvkp;

namespace {

constexpr int bindType = 7;

template <class Binder>
struct Bind;

template <>
struct Bind<RvDetectionTrack>
{
    static RvDetectionTrack* make() { return RvDetectionTrack::create(1, ""); }
    static constexpr const char* name = "RvDetectionTrack::bind";
};

template <>
struct Bind<RvTrkMatteEffectTrack>
{
    static RvTrkMatteEffectTrack* make()
    {
        return RvTrkMatteEffectTrack::createPathMatteTrack(0, 1000);
    }
    static constexpr const char* name = "RvIEffectTrack::bind";
};

template <>
struct Bind<qkpar::RvARFilterTrack>
{
    static qkpar::RvARFilterTrack* make() { return qkpar::RvARFilterTrack::create("", 0, 1000); }
    static constexpr const char* name = "RvIEffectTrack::bind";
};

/// Binds `track` and keeps the caller's reference.
template <class Binder>
bool bindKept(Binder& binder, RvITrack& track, int type = bindType)
{
    track.retain();
    return binder.bind(&track, type);
}

/// What holds for detections and effects alike, with a track that they can be bound to.
template <class Binder>
class BindingTest : public testing::Test
{
protected:
    void expectBoundTo(const RvITrack& track, int type = bindType) const
    {
        EXPECT_EQ(m_binder->getActionRange(), RvActionRangeTrack);
        EXPECT_EQ(m_binder->getMediaBindType(), type);
        const auto bound = adopt(m_binder->getBindTrack());
        ASSERT_TRUE(bound);
        EXPECT_EQ(bound->getContext(), track.getContext());
    }

    void expectUnbound(int range = RvActionRangeGlobal) const
    {
        EXPECT_EQ(m_binder->getActionRange(), range);
        EXPECT_EQ(m_binder->getMediaBindType(), 0);
        EXPECT_EQ(m_binder->getBindTrack(), nullptr);
    }

    /// Bound to a track that is not there.
    void expectAway(int type = bindType) const
    {
        EXPECT_EQ(m_binder->getActionRange(), RvActionRangeAway);
        EXPECT_EQ(m_binder->getMediaBindType(), type);
        EXPECT_EQ(m_binder->getBindTrack(), nullptr);
    }

    /// Puts the effect or detection on the timeline.
    void placeBinder() { ASSERT_TRUE(m_timeline->addMixTrack(m_binder.get())); }

    Reference<Binder> m_binder = adopt(Bind<Binder>::make());
    Reference<RvITrack> m_track = newTrack();
    Reference<RvKpTimeLine> m_timeline = adopt(RvKpTimeLine::create());
};

using Binders = testing::Types<RvDetectionTrack, RvTrkMatteEffectTrack, qkpar::RvARFilterTrack>;

} // namespace

TYPED_TEST_SUITE(BindingTest, Binders);

TYPED_TEST(BindingTest, StartsUnbound)
{
    this->expectUnbound();
}

TYPED_TEST(BindingTest, BindsToATrack)
{
    EXPECT_TRUE(bindKept(*this->m_binder, *this->m_track));
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, TakesOverOneReference)
{
    this->m_track->retain();
    ASSERT_EQ(this->m_track->referenceCount(), 2);
    EXPECT_TRUE(this->m_binder->bind(this->m_track.get(), bindType));
    EXPECT_EQ(this->m_track->referenceCount(), 1);
}

TYPED_TEST(BindingTest, TakesOverOneReferenceWhenItFailsToo)
{
    this->m_track->retain();
    RvFault::failNext(Bind<TypeParam>::name);
    EXPECT_FALSE(this->m_binder->bind(this->m_track.get(), bindType));
    EXPECT_EQ(this->m_track->referenceCount(), 1);
    this->expectUnbound();
}

TYPED_TEST(BindingTest, MayTakeOverTheLastReferenceOfAWrapper)
{
    const long long before = RvRef::liveCount();
    EXPECT_TRUE(this->m_binder->bind(RvITrack::create(this->m_track->getContext()), bindType));
    EXPECT_EQ(RvRef::liveCount(), before);
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ANullTrackIsRefusedAndChangesNothing)
{
    EXPECT_FALSE(this->m_binder->bind(nullptr, 9));
    this->expectUnbound();
    bindKept(*this->m_binder, *this->m_track);
    EXPECT_FALSE(this->m_binder->bind(nullptr, 9));
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, AFailingBindKeepsTheFormerBinding)
{
    bindKept(*this->m_binder, *this->m_track);
    const auto other = newTrack();
    RvFault::failNext(Bind<TypeParam>::name);
    EXPECT_FALSE(bindKept(*this->m_binder, *other, 9));
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ALaterBindReplacesTheFormerOne)
{
    const auto other = newTrack();
    bindKept(*this->m_binder, *this->m_track);
    EXPECT_TRUE(bindKept(*this->m_binder, *other, -1));
    this->expectBoundTo(*other, -1);
}

TYPED_TEST(BindingTest, TheBoundTrackIsANewWrapperOfItsKindWithOneReference)
{
    for (const TrackKind& kind : trackKinds()) {
        const auto track = adopt(kind.make());
        bindKept(*this->m_binder, *track);
        const long long before = RvRef::liveCount();
        auto bound = adopt(this->m_binder->getBindTrack());
        ASSERT_TRUE(bound) << kind.name;
        EXPECT_EQ(RvRef::liveCount(), before + 1);
        EXPECT_TRUE(kind.isOwn(bound.get())) << kind.name;
        EXPECT_EQ(bound->referenceCount(), 1);
        EXPECT_EQ(bound->getTrackID(), track->getTrackID());
    }
}

TYPED_TEST(BindingTest, TwoWrappersShareTheBinding)
{
    const auto second = adopt(TypeParam::create(this->m_binder->getContext()));
    bindKept(*second, *this->m_track);
    this->expectBoundTo(*this->m_track);
    this->m_binder->unbind();
    EXPECT_EQ(second->getActionRange(), RvActionRangeGlobal);
}

TYPED_TEST(BindingTest, UnbindEndsIt)
{
    bindKept(*this->m_binder, *this->m_track);
    this->m_binder->unbind();
    this->expectUnbound();
    this->m_binder->unbind();
    this->expectUnbound();
}

TYPED_TEST(BindingTest, DynamicBindingHasNoTrackAndEndsTheFormerOne)
{
    bindKept(*this->m_binder, *this->m_track);
    this->m_binder->bindDynamic();
    this->expectUnbound(RvActionRangeDynamic);
}

TYPED_TEST(BindingTest, BindAndUnbindEndADynamicBinding)
{
    this->m_binder->bindDynamic();
    bindKept(*this->m_binder, *this->m_track);
    this->expectBoundTo(*this->m_track);
    this->m_binder->bindDynamic();
    this->m_binder->unbind();
    this->expectUnbound();
}

TYPED_TEST(BindingTest, LastsWhileTheTrackIsPutOnATimeline)
{
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline->addMixTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ActsOnNothingWhileTheMixTrackIsAwayAndOnItWhenItIsBack)
{
    this->placeBinder();
    this->m_timeline->addMixTrack(this->m_track.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline->removeMixTrack(this->m_track.get());
    this->expectAway();
    this->m_timeline->addMixTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ActsOnNothingWhileTheGroupOfTheTrackIsAwayAndOnItWhenItIsBack)
{
    this->placeBinder();
    const auto group = adopt(RvKpGroup::create(1000));
    group->addTrack(newTrack().get());
    group->addTrack(this->m_track.get());
    this->m_timeline->pushBackGroup(group.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline->removeGroup(group.get());
    this->expectAway();
    this->m_timeline->insertGroup(group.get(), 0);
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ActsOnNothingWhileTheTrackIsOutOfItsGroupAndOnItWhenItIsBack)
{
    this->placeBinder();
    const auto group = adopt(RvKpGroup::create(1000));
    group->addTrack(this->m_track.get());
    this->m_timeline->pushBackGroup(group.get());
    bindKept(*this->m_binder, *this->m_track);
    group->removeTrack(this->m_track.get());
    this->expectAway();
    group->addTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, ActsOnATrackOfTheIdThatComesInPlaceOfADestroyedOne)
{
    this->placeBinder();
    const std::uint64_t id = this->m_track->getTrackID();
    this->m_timeline->addMixTrack(this->m_track.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline->removeMixTrack(this->m_track.get());
    this->m_track.reset();
    this->expectAway();
    const auto mix = newTrack();
    mix->setTrackID(id);
    this->m_timeline->addMixTrack(mix.get());
    this->expectBoundTo(*mix);

    this->m_timeline->removeMixTrack(mix.get());
    this->expectAway();
    const auto clip = newTrack();
    const auto group = adopt(RvKpGroup::create(1000));
    this->m_timeline->pushBackGroup(group.get());
    this->expectAway();
    group->addTrack(newTrack().get());
    group->addTrack(clip.get());
    this->expectAway();
    clip->setTrackID(id);
    this->expectBoundTo(*clip);
    clip->setTrackID(id + 1);
    this->expectAway();
}

TYPED_TEST(BindingTest, FollowsTheBoundTrackToAnotherId)
{
    constexpr std::uint64_t newId = 7770001;
    this->placeBinder();
    bindKept(*this->m_binder, *this->m_track);
    this->m_track->setTrackID(newId);
    this->m_timeline->addMixTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
    this->m_timeline->removeMixTrack(this->m_track.get());
    this->m_track.reset();
    const auto next = newTrack();
    next->setTrackID(newId);
    this->m_timeline->addMixTrack(next.get());
    this->expectBoundTo(*next);
}

TYPED_TEST(BindingTest, ATrackOfTheIdOnAnotherTimelineIsNotTheBoundOne)
{
    this->placeBinder();
    const auto other = adopt(RvKpTimeLine::create());
    other->addMixTrack(this->m_track.get());
    bindKept(*this->m_binder, *this->m_track);
    this->expectAway();
    const auto own = newTrack();
    own->setTrackID(this->m_track->getTrackID());
    this->m_timeline->addMixTrack(own.get());
    this->expectBoundTo(*own);
    other->removeMixTrack(this->m_track.get());
    this->expectBoundTo(*own);
}

TYPED_TEST(BindingTest, OfSeveralTracksOfTheIdTheFirstComesInPlaceOfTheBoundOne)
{
    this->placeBinder();
    const std::uint64_t id = this->m_track->getTrackID();
    bindKept(*this->m_binder, *this->m_track);
    this->m_track.reset();
    const auto mix = newTrack();
    const auto clip = newTrack();
    for (const auto* track : {&mix, &clip})
        (*track)->setTrackID(id);
    this->m_timeline->addMixTrack(mix.get());
    const auto group = adopt(RvKpGroup::create(1000));
    group->addTrack(clip.get());
    this->m_timeline->pushBackGroup(group.get());
    this->expectBoundTo(*clip);
}

TYPED_TEST(BindingTest, WhatIsUnboundOrBoundAnewForgetsTheTrackThatIsAway)
{
    this->placeBinder();
    bindKept(*this->m_binder, *this->m_track);
    this->expectAway();
    this->m_binder->unbind();
    this->expectUnbound();
    this->m_timeline->addMixTrack(this->m_track.get());
    this->expectUnbound();

    this->m_timeline->removeMixTrack(this->m_track.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_binder->bindDynamic();
    this->m_timeline->addMixTrack(this->m_track.get());
    this->expectUnbound(RvActionRangeDynamic);
}

TYPED_TEST(BindingTest, OffTheTimelineItTellsTheTrackThatWasBoundWhileThatLives)
{
    this->placeBinder();
    const auto group = adopt(RvKpGroup::create(1000));
    group->addTrack(this->m_track.get());
    this->m_timeline->pushBackGroup(group.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline.reset();
    this->expectBoundTo(*this->m_track);
    group->removeTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
    this->m_track.reset();
    this->expectAway();
}

TYPED_TEST(BindingTest, LastsWhileItsGroupIsMovedAndOthersAreRemoved)
{
    this->placeBinder();
    const auto group = adopt(RvKpGroup::create(1000));
    const auto other = adopt(RvKpGroup::create(1000));
    const auto mix = newTrack();
    group->addTrack(this->m_track.get());
    this->m_timeline->pushBackGroup(group.get());
    this->m_timeline->pushBackGroup(other.get());
    this->m_timeline->addMixTrack(mix.get());
    bindKept(*this->m_binder, *this->m_track);
    this->m_timeline->changeGroupPosition(group.get(), 1);
    this->m_timeline->removeGroup(other.get());
    this->m_timeline->removeMixTrack(mix.get());
    this->m_timeline->removeMixTrack(this->m_track.get());
    this->expectBoundTo(*this->m_track);
}

TYPED_TEST(BindingTest, DoesNotKeepTheTrackAlive)
{
    const std::weak_ptr<NativeTrack> native = NativeTrack::fromContext(this->m_track->getContext());
    bindKept(*this->m_binder, *this->m_track);
    this->m_track.reset();
    EXPECT_TRUE(native.expired());
    this->expectAway();
}

TYPED_TEST(BindingTest, BindingToItselfLeaksNothing)
{
    const std::weak_ptr<NativeTrack> native =
        NativeTrack::fromContext(this->m_binder->getContext());
    EXPECT_TRUE(bindKept(*this->m_binder, *this->m_binder));
    this->expectBoundTo(*this->m_binder);
    this->m_binder.reset();
    EXPECT_TRUE(native.expired());
}

TYPED_TEST(BindingTest, HandingOverTheLastReferenceOfItselfLeaksNothing)
{
    const std::weak_ptr<NativeTrack> native =
        NativeTrack::fromContext(this->m_binder->getContext());
    TypeParam* binder = this->m_binder.release();
    EXPECT_TRUE(binder->bind(binder, bindType));
    EXPECT_TRUE(native.expired());
}

TYPED_TEST(BindingTest, BindingToEachOtherLeaksNothing)
{
    auto other = adopt(Bind<TypeParam>::make());
    const std::weak_ptr<NativeTrack> first = NativeTrack::fromContext(this->m_binder->getContext());
    const std::weak_ptr<NativeTrack> second = NativeTrack::fromContext(other->getContext());
    bindKept(*this->m_binder, *other);
    bindKept(*other, *this->m_binder);
    this->m_binder.reset();
    other.reset();
    EXPECT_TRUE(first.expired());
    EXPECT_TRUE(second.expired());
}

namespace {

/// The detection of an effect.
class DetectBindingTest : public testing::Test
{
protected:
    bool isBound() const
    {
        const auto bound = adopt(m_effect->getBindDetect());
        return bound && bound->getContext() == m_detection->getContext();
    }

    const Reference<RvIEffectTrack> m_effect =
        adopt<RvIEffectTrack>(RvTrkMatteEffectTrack::createPathMatteTrack(0, 1000));
    Reference<RvDetectionTrack> m_detection = adopt(RvDetectionTrack::create(1, ""));
    Reference<RvKpTimeLine> m_timeline = adopt(RvKpTimeLine::create());
};

} // namespace

TEST_F(DetectBindingTest, StartsWithoutADetection)
{
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
}

TEST_F(DetectBindingTest, LeavesTheCallersReferenceAndGivesANewOne)
{
    EXPECT_TRUE(m_effect->bindDetect(m_detection.get()));
    EXPECT_EQ(m_detection->referenceCount(), 1);
    const long long before = RvRef::liveCount();
    const auto bound = adopt(m_effect->getBindDetect());
    ASSERT_TRUE(bound);
    EXPECT_EQ(RvRef::liveCount(), before + 1);
    EXPECT_EQ(bound->referenceCount(), 1);
    EXPECT_EQ(bound->getContext(), m_detection->getContext());
    bound->setDetectionMode(31);
    EXPECT_EQ(m_detection->getDetectionMode(), 31);
}

TEST_F(DetectBindingTest, NullAndFailureChangeNothing)
{
    EXPECT_FALSE(m_effect->bindDetect(nullptr));
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
    m_effect->bindDetect(m_detection.get());
    EXPECT_FALSE(m_effect->bindDetect(nullptr));
    EXPECT_TRUE(isBound());
    const auto other = adopt(RvDetectionTrack::create(2, ""));
    RvFault::failNext("RvIEffectTrack::bindDetect");
    EXPECT_FALSE(m_effect->bindDetect(other.get()));
    EXPECT_EQ(other->referenceCount(), 1);
    EXPECT_TRUE(isBound());
    EXPECT_TRUE(m_effect->bindDetect(other.get()));
    EXPECT_FALSE(isBound());
}

TEST_F(DetectBindingTest, StandsBesideTheBindingToATrack)
{
    const auto track = newTrack();
    m_effect->bindDetect(m_detection.get());
    EXPECT_EQ(m_effect->getActionRange(), RvActionRangeGlobal);
    EXPECT_EQ(m_effect->getBindTrack(), nullptr);
    bindKept(*m_effect, *track);
    EXPECT_TRUE(isBound());
    m_effect->bindDynamic();
    EXPECT_TRUE(isBound());
    EXPECT_EQ(m_effect->getActionRange(), RvActionRangeDynamic);
}

TEST_F(DetectBindingTest, UnbindEndsTheDetectionToo)
{
    m_effect->bindDetect(m_detection.get());
    m_effect->unbind();
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
}

TEST_F(DetectBindingTest, IsWithoutTheDetectionWhileThatIsAway)
{
    m_timeline->addMixTrack(m_effect.get());
    m_timeline->addMixTrack(m_detection.get());
    m_effect->bindDetect(m_detection.get());
    m_timeline->removeMixTrack(m_detection.get());
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
    m_timeline->addMixTrack(m_detection.get());
    EXPECT_TRUE(isBound());
}

TEST_F(DetectBindingTest, UsesADetectionOfTheIdThatComesButNoOtherTrack)
{
    const std::uint64_t id = m_detection->getTrackID();
    m_timeline->addMixTrack(m_effect.get());
    m_effect->bindDetect(m_detection.get());
    m_detection.reset();
    const auto track = newTrack();
    track->setTrackID(id);
    m_timeline->addMixTrack(track.get());
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
    m_timeline->removeMixTrack(track.get());
    m_detection = adopt(RvDetectionTrack::create(2, ""));
    m_detection->setTrackID(id);
    m_timeline->addMixTrack(m_detection.get());
    EXPECT_TRUE(isBound());
}

TEST_F(DetectBindingTest, DoesNotKeepTheDetectionAlive)
{
    const std::weak_ptr<NativeTrack> native = NativeTrack::fromContext(m_detection->getContext());
    m_effect->bindDetect(m_detection.get());
    m_detection.reset();
    EXPECT_TRUE(native.expired());
    EXPECT_EQ(m_effect->getBindDetect(), nullptr);
}
