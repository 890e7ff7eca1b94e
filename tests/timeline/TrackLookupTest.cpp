// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include <norvel/timeline/RvTrackFactory.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <gtest/gtest.h>

#include <limits>
#include <typeinfo>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

constexpr std::uint64_t greatestId = std::numeric_limits<std::uint64_t>::max();

/// A framework track type, a native track of it, and the class that wraps it.
struct WrappedType
{
    const char* name;
    int trackType;
    RvITrack* (*native)();
    const std::type_info& wrapper;
};

const WrappedType wrappedTypes[] = {
    {"Video", 2, [] { return newLiveTrack(3); }, typeid(RvKpTrack)},
    {"Sprite", 3, [] { return newLiveTrack(2); }, typeid(RvSpriteTrack)},
    {"Audio", 4, [] { return newLiveTrack(4); }, typeid(RvAudioTrack)},
    {"Generic", 6, [] { return newLiveTrack(1); }, typeid(RvITrack)},
    {"Matte", 105, [] { return newLiveTrack(6); }, typeid(RvTrkMatteEffectTrack)},
    {"Detection", 400, [] { return newLiveTrack(5); }, typeid(RvDetectionTrack)},
    {"Filter", 20001, [] { return newLiveTrack(7); }, typeid(RvARFilterTrack)},
    {"Frame", 20002, [] { return newLiveTrack(11); }, typeid(RvARFrameTrack)},
    {"Label", 20003, [] { return newLiveTrack(12); }, typeid(RvARLabelTrack)},
    {"Beauty", 20005, [] { return newLiveTrack(8); }, typeid(RvARBeautyTrack)},
    {"Border", 20007,
     []() -> RvITrack* { return RvARBorderTrack::create(std::string("/live/source"), 0, 1000); },
     typeid(RvARBorderTrack)},
    {"Layer", 20008, [] { return newLiveTrack(10); }, typeid(RvARAttribsTrack)},
    {"Makeup", 20009, [] { return newLiveTrack(9); }, typeid(RvARMakeupTrack)},
    {"Liquify", 20017, [] { return newLiveTrack(13); }, typeid(RvARLiquifyTrack)},
};

class WrappedTypeTest : public testing::TestWithParam<WrappedType>
{
};

INSTANTIATE_TEST_SUITE_P(EveryType, WrappedTypeTest, testing::ValuesIn(wrappedTypes),
                         [](const auto& type) { return std::string(type.param.name); });

TEST_P(WrappedTypeTest, FactoryWrapsTheNativeTrackInTheClassOfItsType)
{
    const auto native = withId(GetParam().native(), 31);
    ASSERT_EQ(native->getTrackType(), GetParam().trackType);

    const auto wrapper =
        owned(RvTrackFactory::createTrack(native->getContext(), GetParam().trackType));

    ASSERT_TRUE(wrapper);
    EXPECT_NE(wrapper.get(), native.get());
    const RvITrack& track = *wrapper;
    EXPECT_TRUE(typeid(track) == GetParam().wrapper);
    EXPECT_EQ(wrapper->referenceCount(), 1);
    EXPECT_EQ(wrapper->getContext(), native->getContext());
    EXPECT_EQ(wrapper->getTrackID(), 31U);
    EXPECT_EQ(wrapper->getTrackType(), GetParam().trackType);
    wrapper->setAlpha(0.5F);
    EXPECT_EQ(native->getAlpha(), 0.5F);
}

TEST_P(WrappedTypeTest, FactoryGivesNullForANullContext)
{
    EXPECT_EQ(RvTrackFactory::createTrack(nullptr, GetParam().trackType), nullptr);
}

TEST_P(WrappedTypeTest, FactoryGivesNullForTypesWithoutAWrapper)
{
    const auto native = owned(GetParam().native());
    for (const int type : {5, 20004, 0, 1, 7, -1, 104, 106, 399, 401, 20000, 20006, 20010, 20016,
                           20018, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(RvTrackFactory::createTrack(native->getContext(), type), nullptr) << type;
}

TEST_P(WrappedTypeTest, FactoryGivesNullWhenTheNativeTrackIsOfAnotherType)
{
    const auto native = owned(GetParam().native());
    for (const WrappedType& other : wrappedTypes) {
        // Every track is a track: the generic class wraps them all.
        if (other.trackType == GetParam().trackType || other.trackType == RvTrackTypeGeneric)
            continue;
        EXPECT_EQ(RvTrackFactory::createTrack(native->getContext(), other.trackType), nullptr)
            << other.name;
    }
}

TEST_P(WrappedTypeTest, GenericWrapperTakesAnyTrack)
{
    const auto native = owned(GetParam().native());
    const auto wrapper = owned(RvTrackFactory::createTrack(native->getContext(), 6));
    ASSERT_TRUE(wrapper);
    EXPECT_EQ(wrapper->getTrackType(), GetParam().trackType);
}

TEST_P(WrappedTypeTest, MixLookupGivesANewWrapperOfTheTracksClass)
{
    const LiveTimeline timeline;
    const auto track = withId(GetParam().native(), 31);
    timeline.addMix(track.get());

    const auto found = owned(RvAttributeUtility::getMixTrack(timeline.get(), 31));

    ASSERT_TRUE(found);
    EXPECT_NE(found.get(), track.get());
    EXPECT_EQ(found->getContext(), track->getContext());
    EXPECT_EQ(found->referenceCount(), 1);
    const RvITrack& wrapper = *found;
    EXPECT_TRUE(typeid(wrapper) == GetParam().wrapper);
}

TEST_P(WrappedTypeTest, MainLookupGivesANewWrapperOfTheFirstTracksClass)
{
    const LiveTimeline timeline;
    const auto track = withId(GetParam().native(), 31);
    timeline.addGroup({track.get()});

    const auto found = owned(RvAttributeUtility::getMainTrack(timeline.get(), 31));

    ASSERT_TRUE(found);
    EXPECT_NE(found.get(), track.get());
    EXPECT_EQ(found->getContext(), track->getContext());
    EXPECT_EQ(found->referenceCount(), 1);
    const RvITrack& wrapper = *found;
    EXPECT_TRUE(typeid(wrapper) == GetParam().wrapper);
    EXPECT_TRUE(owned(RvAttributeUtility::getGroup(timeline.get(), 31)));
}

TEST(TrackFactoryTest, GivesNullWhenTheFrameworkCannotWrap)
{
    const auto native = owned(newLiveTrack(7));
    RvFault::failNext("RvARFilterTrack::create");
    EXPECT_EQ(RvTrackFactory::createTrack(native->getContext(), RvTrackTypeARFilter), nullptr);
}

TEST(TrackLookupTest, NullTimelineHoldsNothing)
{
    for (const std::uint64_t id : {std::uint64_t{0}, std::uint64_t{1}, greatestId}) {
        EXPECT_EQ(RvAttributeUtility::getGroup(nullptr, id), nullptr);
        EXPECT_EQ(RvAttributeUtility::getMainTrack(nullptr, id), nullptr);
        EXPECT_EQ(RvAttributeUtility::getMixTrack(nullptr, id), nullptr);
    }
}

TEST(TrackLookupTest, EmptyTimelineHoldsNothing)
{
    const LiveTimeline timeline;
    EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 0), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 0), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMixTrack(timeline.get(), 0), nullptr);
}

TEST(TrackLookupTest, AnIdThatIsNotThereGivesNull)
{
    const LiveTimeline timeline;
    timeline.addPicture(1);
    timeline.addDetection(2);
    EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 3), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 3), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMixTrack(timeline.get(), 3), nullptr);
}

TEST(TrackLookupTest, GroupIsTheTimelinesOwnWithOneMoreReference)
{
    const LiveTimeline timeline;
    timeline.addPicture(1);
    const auto picture = withId(newLiveTrack(2), 2);
    const auto group = timeline.addGroup({picture.get()});
    const int references = group->referenceCount();

    auto found = owned(RvAttributeUtility::getGroup(timeline.get(), 2));

    EXPECT_EQ(found.get(), group.get());
    EXPECT_EQ(group->referenceCount(), references + 1);
    found.reset();
    EXPECT_EQ(group->referenceCount(), references);
}

TEST(TrackLookupTest, OnlyTheFirstTrackOfAGroupNamesIt)
{
    const LiveTimeline timeline;
    const auto first = withId(newLiveTrack(7), 1);
    const auto second = withId(newLiveTrack(2), 2);
    const auto group = timeline.addGroup({first.get(), second.get()});

    EXPECT_EQ(owned(RvAttributeUtility::getGroup(timeline.get(), 1)).get(), group.get());
    EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 2), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 2), nullptr);
    const auto found = owned(RvAttributeUtility::getMainTrack(timeline.get(), 1));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->getContext(), first->getContext());
}

TEST(TrackLookupTest, GroupsWithoutTracksArePassedOver)
{
    const LiveTimeline timeline;
    timeline.addGroup({});
    EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 0), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 0), nullptr);
    timeline.addPicture(1);
    timeline.addGroup({});
    EXPECT_TRUE(owned(RvAttributeUtility::getGroup(timeline.get(), 1)));
    EXPECT_TRUE(owned(RvAttributeUtility::getMainTrack(timeline.get(), 1)));
}

TEST(TrackLookupTest, OfEqualIdsTheFirstOnTheTimelineIsFound)
{
    const LiveTimeline timeline;
    const auto firstMain = withId(newLiveTrack(2), 4);
    const auto secondMain = withId(newLiveTrack(3), 4);
    const auto firstMix = withId(newLiveTrack(4), 4);
    const auto secondMix = withId(newLiveTrack(5), 4);
    const auto firstGroup = timeline.addGroup({firstMain.get()});
    const auto secondGroup = timeline.addGroup({secondMain.get()});
    timeline.addMix(firstMix.get());
    timeline.addMix(secondMix.get());
    const auto mainContext = [&] {
        return owned(RvAttributeUtility::getMainTrack(timeline.get(), 4))->getContext();
    };
    const auto mixContext = [&] {
        return owned(RvAttributeUtility::getMixTrack(timeline.get(), 4))->getContext();
    };

    EXPECT_EQ(owned(RvAttributeUtility::getGroup(timeline.get(), 4)).get(), firstGroup.get());
    EXPECT_EQ(mainContext(), firstMain->getContext());
    EXPECT_EQ(mixContext(), firstMix->getContext());

    timeline.get()->changeGroupPosition(secondGroup.get(), 0);
    timeline.get()->removeMixTrack(firstMix.get());
    EXPECT_EQ(owned(RvAttributeUtility::getGroup(timeline.get(), 4)).get(), secondGroup.get());
    EXPECT_EQ(mainContext(), secondMain->getContext());
    EXPECT_EQ(mixContext(), secondMix->getContext());
}

TEST(TrackLookupTest, MainAndMixAreLookedUpApart)
{
    const LiveTimeline timeline;
    timeline.addPicture(1);
    timeline.addDetection(2);
    EXPECT_EQ(RvAttributeUtility::getMixTrack(timeline.get(), 1), nullptr);
    EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 2), nullptr);
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 2), nullptr);
}

TEST(TrackLookupTest, SmallestAndGreatestIdAreIdsLikeAnyOther)
{
    for (const std::uint64_t id : {std::uint64_t{0}, greatestId}) {
        const LiveTimeline timeline;
        timeline.addPicture(id);
        timeline.addDetection(id);
        EXPECT_TRUE(owned(RvAttributeUtility::getGroup(timeline.get(), id)));
        EXPECT_EQ(owned(RvAttributeUtility::getMainTrack(timeline.get(), id))->getTrackID(), id);
        EXPECT_EQ(owned(RvAttributeUtility::getMixTrack(timeline.get(), id))->getTrackID(), id);
        EXPECT_EQ(RvAttributeUtility::getGroup(timeline.get(), 1), nullptr);
        EXPECT_EQ(RvAttributeUtility::getMixTrack(timeline.get(), 1), nullptr);
    }
}

TEST(TrackLookupTest, LookingUpChangesNothing)
{
    const LiveTimeline timeline;
    timeline.addPicture(1);
    timeline.addDetection(2);
    const auto calls = callsOf([&] {
        owned(RvAttributeUtility::getGroup(timeline.get(), 1));
        owned(RvAttributeUtility::getMainTrack(timeline.get(), 1));
        owned(RvAttributeUtility::getMixTrack(timeline.get(), 2));
    });
    EXPECT_EQ(calls, std::vector<std::string>{});
}

TEST(TrackLookupTest, AWrapperThatCannotBeMadeGivesNull)
{
    const LiveTimeline timeline;
    const auto filter = withId(newLiveTrack(7), 1);
    const auto beauty = withId(newLiveTrack(8), 2);
    timeline.addGroup({filter.get()});
    timeline.addMix(beauty.get());
    RvFault::failNext("RvARFilterTrack::create");
    EXPECT_EQ(RvAttributeUtility::getMainTrack(timeline.get(), 1), nullptr);
    RvFault::failNext("RvARBeautyTrack::create");
    EXPECT_EQ(RvAttributeUtility::getMixTrack(timeline.get(), 2), nullptr);
}

} // namespace
