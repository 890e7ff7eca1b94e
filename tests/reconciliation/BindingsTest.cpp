// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ReconciliationFixture.h"

#include "support/TestEnvironment.h"

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvDetectionTrack.h>

using norvel::RecordTypeARFilter;
using norvel::RecordTypeDetection;
using norvel::RecordTypeImage;
using norvel::RvARFilterAttribute;
using norvel::RvDetectAttribute;
using qkpar::RvARFilterTrack;
using qrvkp::RvDetectionTrack;

namespace {

/// Bindings of detections (id 21) and effects (id 22), made when they are created or changed.
class BindingsTest : public ReconciliationTest
{
protected:
    /// The calls that bind and unbind.
    static Calls bindings(const Calls& calls)
    {
        Calls result;
        for (const std::string& call : calls) {
            if (call.find("::bind") != std::string::npos ||
                call.find("::unbind") != std::string::npos)
                result.push_back(call);
        }
        return result;
    }

    template <class Record>
    static void bind(Record& record, int range, const Ids& target, int bindType = 0)
    {
        record.range = range;
        record.target = target;
        record.bindType = bindType;
    }

    template <class Class>
    std::uint64_t boundTo(std::uint64_t id) const
    {
        const auto track = norvel::adopt(mixTrack<Class>(id)->getBindTrack());
        return track ? track->getTrackID() : 0;
    }

    std::uint64_t detectionOf(std::uint64_t effect) const
    {
        const auto track = norvel::adopt(mixTrack<RvARFilterTrack>(effect)->getBindDetect());
        return track ? track->getTrackID() : 0;
    }

    static RvDetectAttribute& addDetection(norvel::RvTimeLineAttribute& description)
    {
        return add<RvDetectAttribute>(description.mixAttribs, RecordTypeDetection, 21);
    }
    static RvARFilterAttribute& addEffect(norvel::RvTimeLineAttribute& description)
    {
        return add<RvARFilterAttribute>(description.mixAttribs, RecordTypeARFilter, 22);
    }
};

} // namespace

TEST_F(BindingsTest, BindsCreatedTracksToAMainTrackCreatedInTheSameCall)
{
    const auto to = TimelineSamples::pictures({1, 2});
    bind(addDetection(*to), 1, {2}, 5);
    bind(addEffect(*to), 1, {1, 2}, 6);
    EXPECT_EQ(bindings(update(empty, *to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvDetectionTrack::bind(21, 2, 5)",
                     "RvIEffectTrack::unbind(22)", "RvIEffectTrack::bind(22, 1, 6)"}));
    EXPECT_EQ(boundTo<RvDetectionTrack>(21), 2U);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 1U) << "the first target";
}

TEST_F(BindingsTest, BindsChangedTracksToAMainTrackCreatedInTheSameCall)
{
    const auto from = TimelineSamples::pictures({1});
    addDetection(*from);
    addEffect(*from);
    const auto to = TimelineSamples::pictures({1, 2});
    bind(addDetection(*to), 1, {2});
    bind(addEffect(*to), 1, {2});
    setLive(*from);
    EXPECT_EQ(bindings(update(*from, *to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvDetectionTrack::bind(21, 2, 0)",
                     "RvIEffectTrack::unbind(22)", "RvIEffectTrack::bind(22, 2, 0)"}));
    EXPECT_EQ(boundTo<RvDetectionTrack>(21), 2U);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 2U);
}

TEST_F(BindingsTest, UsesADetectionCreatedEarlierInTheSameCall)
{
    norvel::RvTimeLineAttribute to;
    addDetection(to);
    addEffect(to).detect = 21;
    EXPECT_EQ(bindings(update(empty, to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvIEffectTrack::unbind(22)",
                     "RvIEffectTrack::bindDetect(22, 21)"}));
    EXPECT_EQ(detectionOf(22), 21U);
}

TEST_F(BindingsTest, FindsWhatTheSameCallCreatedAfterItLookedAround)
{
    // A changed group and a changed mix track have been looked up before anything is created.
    const auto from = TimelineSamples::pictures({1});
    add(from->mixAttribs, RecordTypeImage, 11);
    const auto to = TimelineSamples::pictures({1, 2});
    to->mainAttribs[0]->alpha = 0.5F;
    add(to->mixAttribs, RecordTypeImage, 11).alpha = 0.5F;
    addDetection(*to);
    bind(addEffect(*to), 1, {2});
    dynamic_cast<RvARFilterAttribute&>(*to->mixAttribs.back()).detect = 21;
    setLive(*from);
    EXPECT_EQ(bindings(update(*from, *to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvIEffectTrack::unbind(22)",
                     "RvIEffectTrack::bind(22, 2, 0)", "RvIEffectTrack::bindDetect(22, 21)"}));
}

TEST_F(BindingsTest, DoesNotFindADetectionCreatedLaterInTheSameCall)
{
    norvel::RvTimeLineAttribute to;
    addEffect(to).detect = 21;
    addDetection(to);
    EXPECT_EQ(bindings(update(empty, to)),
              (Calls{"RvIEffectTrack::unbind(22)", "RvDetectionTrack::unbind(21)"}));
    EXPECT_EQ(detectionOf(22), 0U);
}

TEST_F(BindingsTest, ActsOnTheWholeCanvasForRangeZero)
{
    const auto from = TimelineSamples::pictures({1});
    bind(addDetection(*from), 1, {1});
    bind(addEffect(*from), 1, {1});
    const auto to = TimelineSamples::pictures({1});
    bind(addDetection(*to), 0, {1});
    bind(addEffect(*to), 0, {1});
    setLive(*from);
    EXPECT_EQ(bindings(update(*from, *to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvIEffectTrack::unbind(22)"}));
    EXPECT_EQ(boundTo<RvDetectionTrack>(21), 0U);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 0U);
}

TEST_F(BindingsTest, FollowsWhatLiesBelowForRangeTwo)
{
    norvel::RvTimeLineAttribute from;
    addDetection(from);
    addEffect(from);
    norvel::RvTimeLineAttribute to;
    bind(addDetection(to), 2, {});
    bind(addEffect(to), 2, {});
    setLive(from);
    EXPECT_EQ(bindings(update(from, to)),
              (Calls{"RvDetectionTrack::unbind(21)", "RvDetectionTrack::bindDynamic(21)",
                     "RvIEffectTrack::unbind(22)", "RvIEffectTrack::bindDynamic(22)"}));
}

TEST_F(BindingsTest, ChangesNoBindingForAnotherRange)
{
    const auto from = TimelineSamples::pictures({1});
    bind(addDetection(*from), 1, {1});
    bind(addEffect(*from), 1, {1});
    const auto to = TimelineSamples::pictures({1});
    bind(addDetection(*to), 3, {});
    bind(addEffect(*to), -1, {});
    setLive(*from);
    EXPECT_EQ(bindings(update(*from, *to)), Calls());
    EXPECT_EQ(boundTo<RvDetectionTrack>(21), 1U);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 1U);
}

TEST_F(BindingsTest, EndsUnboundWithoutATargetOnTheMainLine)
{
    // No target, a mix track, the second track of a group, and one that is not there at all.
    for (const Ids& target : {Ids{}, Ids{23}, Ids{3}, Ids{99, 1}}) {
        const auto from = TimelineSamples::pictures({1});
        add(from->mixAttribs, RecordTypeImage, 23);
        bind(addDetection(*from), 1, {1});
        bind(addEffect(*from), 1, {1});
        const auto to = TimelineSamples::pictures({1});
        add(to->mixAttribs, RecordTypeImage, 23);
        bind(addDetection(*to), 1, target);
        bind(addEffect(*to), 1, target);
        setLive(*from);
        const auto groups = norvel::adopt(timeline->getGroups());
        (*groups.begin())->addTrack(TimelineSamples::track(RecordTypeImage, 3).get());
        EXPECT_EQ(bindings(update(*from, *to)),
                  (Calls{"RvDetectionTrack::unbind(21)", "RvIEffectTrack::unbind(22)"}));
    }
}

TEST_F(BindingsTest, LeavesUnchangedTracksBound)
{
    const auto description = TimelineSamples::pictures({1, 2});
    bind(addDetection(*description), 1, {1});
    bind(addEffect(*description), 1, {2});
    setLive(*description);
    EXPECT_EQ(bindings(update(*description, *description)), Calls());
    EXPECT_EQ(boundTo<RvDetectionTrack>(21), 1U);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 2U);
}

TEST_F(BindingsTest, BindsToATrackThatTheSameCallRemovesAfterwards)
{
    // It is still there while the mix tracks are updated; then the effect acts on nothing.
    const auto from = TimelineSamples::pictures({1});
    addEffect(*from);
    norvel::RvTimeLineAttribute to;
    bind(addEffect(to), 1, {1});
    setLive(*from);
    EXPECT_EQ(bindings(update(*from, to)),
              (Calls{"RvIEffectTrack::unbind(22)", "RvIEffectTrack::bind(22, 1, 0)"}));
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 0U);
    EXPECT_EQ(mixTrack<RvARFilterTrack>(22)->getActionRange(), qrvkp::RvActionRangeAway);
}

TEST_F(BindingsTest, AnUnchangedEffectActsAgainOnATrackThatCameBack)
{
    const auto with = TimelineSamples::pictures({1});
    bind(addEffect(*with), 1, {1});
    norvel::RvTimeLineAttribute without;
    bind(addEffect(without), 1, {1});
    setLive(*with);
    update(*with, without);
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 0U);
    EXPECT_EQ(bindings(update(without, *with)), Calls());
    EXPECT_EQ(boundTo<RvARFilterTrack>(22), 1U);
}

TEST_F(BindingsTest, BindsNoDetectionByTheIdOfAnotherKindAndLeavesThatTrackHeld)
{
    norvel::RvTimeLineAttribute from;
    add(from.mixAttribs, RecordTypeImage, 23);
    addEffect(from);
    norvel::RvTimeLineAttribute to;
    add(to.mixAttribs, RecordTypeImage, 23);
    addEffect(to).detect = 23;
    setLive(from);
    const UnreportedLeaks pause;
    EXPECT_EQ(bindings(update(from, to)), Calls{"RvIEffectTrack::unbind(22)"});
    DeliberateLeak::allow(1); // the wrapper of the picture
    EXPECT_EQ(detectionOf(22), 0U);
}

TEST_F(BindingsTest, BindsNoDetectionByTheIdOfAMainTrack)
{
    const auto to = TimelineSamples::pictures({1});
    addEffect(*to).detect = 1;
    EXPECT_EQ(bindings(update(empty, *to)), Calls{"RvIEffectTrack::unbind(22)"});
}

TEST_F(BindingsTest, BindsMainTracksOfOneIdByTheFirstOfThem)
{
    const auto description = TimelineSamples::pictures({1, 1});
    addEffect(*description);
    setLive(*description);
    const auto first = norvel::adopt(norvel::RvAttributeUtility::getMainTrack(timeline.get(), 1));
    const auto to = TimelineSamples::copyOf(*description);
    bind(dynamic_cast<RvARFilterAttribute&>(*to->mixAttribs[0]), 1, {1});
    update(*description, *to);
    // Moving the two groups to their places has changed which of them comes first.
    const auto nowFirst =
        norvel::adopt(norvel::RvAttributeUtility::getMainTrack(timeline.get(), 1));
    EXPECT_NE(first->getContext(), nowFirst->getContext());
    const auto bound = norvel::adopt(mixTrack<RvARFilterTrack>(22)->getBindTrack());
    ASSERT_TRUE(bound);
    EXPECT_EQ(bound->getContext(), nowFirst->getContext());
}
