// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

#include <rvkpcore/RvFault.h>

#include <algorithm>

using norvel::RvEditorTrace;

namespace {

class HistoryTest : public TraceTest
{
protected:
    /// Starts a history with `entries` entries, whose alpha is 1, 0.9, 0.8, ... and whose host's
    /// pointers are opaque(1), opaque(2), ...
    void record(int entries)
    {
        for (int i = 0; i < entries; ++i) {
            setAlpha(alphaOf(i));
            void* pointer = opaque(static_cast<std::uintptr_t>(i + 1));
            EXPECT_TRUE(i == 0 ? trace->initTrace(pointer) : trace->recordStatus(pointer));
        }
    }

    static float alphaOf(int entry) { return 1.0F - 0.1F * static_cast<float>(entry); }
};

} // namespace

TEST_F(HistoryTest, IsNotCreatedWithoutAnApplication)
{
    EXPECT_EQ(RvEditorTrace::create(nullptr), nullptr);
}

TEST_F(HistoryTest, IsCreatedWithoutTouchingTheFramework)
{
    takeTimelineAway();
    const Calls calls = callsOf([&] {
        const std::unique_ptr<RvEditorTrace> created(RvEditorTrace::create(&application));
        EXPECT_TRUE(created);
    });
    EXPECT_EQ(calls, Calls());
}

TEST_F(HistoryTest, IsEmptyAtFirst)
{
    EXPECT_FALSE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(trace->getCurrentOpaqueData(), nullptr);
    EXPECT_EQ(callsOf([&] {
                  trace->undo();
                  trace->redo();
              }),
              Calls());
}

TEST_F(HistoryTest, StartsWithOneEntry)
{
    EXPECT_TRUE(trace->initTrace(opaque(1)));
    EXPECT_FALSE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
}

TEST_F(HistoryTest, StartsWithNoPointerUnlessOneIsGiven)
{
    EXPECT_TRUE(trace->initTrace());
    EXPECT_EQ(trace->getCurrentOpaqueData(), nullptr);
    EXPECT_TRUE(trace->recordStatus(opaque(2)));
    EXPECT_TRUE(trace->recordStatus());
    EXPECT_EQ(trace->getCurrentOpaqueData(), nullptr);
    trace->undo();
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
}

TEST_F(HistoryTest, ForgetsEverythingWhenItStartsAgain)
{
    record(3);
    trace->undo();
    EXPECT_TRUE(trace->initTrace());
    EXPECT_FALSE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(undoSteps() + redoSteps(), 0);
}

TEST_F(HistoryTest, CannotStartWithoutATimelineAndIsEmptyThen)
{
    record(3);
    takeTimelineAway();
    EXPECT_FALSE(trace->initTrace(opaque(9)));
    giveTimelineBack();
    EXPECT_FALSE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(trace->getCurrentOpaqueData(), nullptr);
    EXPECT_EQ(printed(), "");
}

TEST_F(HistoryTest, ShowsTheOldestPointerAfterItStartedAgain)
{
    trace->initTrace(opaque(1));
    trace->recordStatus(opaque(2));
    trace->initTrace(opaque(3));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
    trace->initTrace(opaque(4));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
}

TEST_F(HistoryTest, ForgetsTheLeftoverPointersWithTheNextEntry)
{
    trace->initTrace(opaque(1));
    trace->recordStatus(opaque(2));
    trace->initTrace(opaque(3));
    trace->recordStatus(opaque(4));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(4));
    trace->undo();
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
    trace->redo();
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(4));
}

TEST_F(HistoryTest, TakesNoPointerWhenItCannotStart)
{
    takeTimelineAway();
    EXPECT_FALSE(trace->initTrace(opaque(1)));
    giveTimelineBack();
    EXPECT_TRUE(trace->initTrace(opaque(2)));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
}

TEST_F(HistoryTest, KeepsThePointersWhenItCannotStart)
{
    trace->initTrace(opaque(1));
    takeTimelineAway();
    EXPECT_FALSE(trace->initTrace(opaque(2)));
    giveTimelineBack();
    EXPECT_TRUE(trace->initTrace(opaque(3)));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
}

TEST_F(HistoryTest, RecordsTheFirstEntryWithoutAStart)
{
    EXPECT_TRUE(trace->recordStatus(opaque(1)));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
    EXPECT_EQ(undoSteps() + redoSteps(), 0);
    EXPECT_NE(printed(), "");
}

TEST_F(HistoryTest, DropsThePointersOfBeforeWithTheFirstEntryOfAnEmptyHistory)
{
    trace->initTrace(opaque(1));
    takeTimelineAway();
    trace->initTrace();
    giveTimelineBack();
    EXPECT_TRUE(trace->recordStatus(opaque(2)));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
}

TEST_F(HistoryTest, RecordsEntriesBehindTheCurrentOne)
{
    record(4);
    EXPECT_TRUE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(undoSteps(), 3);
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(4));
}

TEST_F(HistoryTest, RecordsNothingWithoutATimeline)
{
    record(3);
    trace->undo();
    takeTimelineAway();
    EXPECT_FALSE(trace->recordStatus(opaque(9)));
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
    giveTimelineBack();
    EXPECT_EQ(undoSteps(), 1);
    EXPECT_EQ(redoSteps(), 1) << "what could be redone still can";
}

TEST_F(HistoryTest, CutsOffWhatCouldBeRedone)
{
    record(3);
    trace->undo();
    trace->undo();
    EXPECT_TRUE(trace->recordStatus(opaque(8)));
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(undoSteps(), 1);
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(8));
    trace->undo();
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
    EXPECT_EQ(redoSteps(), 1);
}

TEST_F(HistoryTest, GrowsBeyondTheMaximumNumberOfEntries)
{
    for (const int maximum : {2, 0, -5}) {
        trace->setMaxRecordStatusCounts(maximum);
        trace->initTrace();
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(trace->recordStatus());
        EXPECT_EQ(undoSteps(), 5);
    }
}

TEST_F(HistoryTest, StepsThroughTheStatesOfTheTimeline)
{
    record(4);
    for (int entry = 2; entry >= 0; --entry) {
        trace->undo();
        EXPECT_EQ(alpha(), alphaOf(entry));
        EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(static_cast<std::uintptr_t>(entry + 1)));
    }
    for (int entry = 1; entry <= 3; ++entry) {
        trace->redo();
        EXPECT_EQ(alpha(), alphaOf(entry));
        EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(static_cast<std::uintptr_t>(entry + 1)));
    }
}

TEST_F(HistoryTest, BringsTracksBackAndTakesThemAway)
{
    trace->initTrace();
    addMix(12);
    trace->recordStatus();
    timeline->removeGroup(
        norvel::adopt(norvel::RvAttributeUtility::getGroup(timeline.get(), 2)).get());
    trace->recordStatus();
    trace->undo();
    EXPECT_EQ(TimelineSamples::mainIds(*timeline), (Ids{1, 2, 3}));
    trace->undo();
    EXPECT_EQ(mixIds(), Ids{11});
    trace->redo();
    trace->redo();
    EXPECT_EQ(TimelineSamples::mainIds(*timeline), (Ids{1, 3}));
    EXPECT_EQ(mixIds(), (Ids{11, 12}));
}

TEST_F(HistoryTest, DoesNothingBeyondItsEnds)
{
    record(2);
    EXPECT_EQ(callsOf([&] { trace->redo(); }), Calls());
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
    trace->undo();
    EXPECT_EQ(callsOf([&] { trace->undo(); }), Calls());
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1));
}

TEST_F(HistoryTest, DoesNotStepWithoutATimeline)
{
    record(3);
    trace->undo();
    takeTimelineAway();
    EXPECT_FALSE(trace->canUndo());
    EXPECT_FALSE(trace->canRedo());
    EXPECT_EQ(callsOf([&] {
                  trace->undo();
                  trace->redo();
              }),
              Calls());
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(2));
    giveTimelineBack();
    EXPECT_TRUE(trace->canUndo());
    EXPECT_TRUE(trace->canRedo());
}

TEST_F(HistoryTest, StepsBetweenLockingAndUnlockingThePlayer)
{
    config().setKpSize(640.0F, 360.5F);
    trace->initTrace();
    config().setKpSize(800.0F, 600.0F);
    setAlpha(0.5F);
    trace->recordStatus();

    const Calls undone = callsOf([&] { trace->undo(); });
    ASSERT_GT(undone.size(), 5U);
    EXPECT_EQ(Calls(undone.begin(), undone.begin() + 3),
              (Calls{"RvKpPlayer::lockPlayer()", "RvKpConfig::setKpSize(640, 360.5)", undone[2]}));
    EXPECT_EQ(undone[2].rfind("RvKpGroup::setDuration(", 0), 0U) << "the reconciliation begins";
    EXPECT_EQ(Calls(undone.end() - 2, undone.end()),
              (Calls{"RvKpTimeLine::invalidate()", "RvKpPlayer::unlockPlayer()"}));
    EXPECT_EQ(std::count(undone.begin(), undone.end(), "RvKpPlayer::lockPlayer()"), 1);

    const Calls redone = callsOf([&] { trace->redo(); });
    ASSERT_GT(redone.size(), 5U);
    EXPECT_EQ(Calls(redone.begin(), redone.begin() + 2),
              (Calls{"RvKpPlayer::lockPlayer()", "RvKpConfig::setKpSize(800, 600)"}));
    EXPECT_EQ(Calls(redone.end() - 2, redone.end()),
              (Calls{"RvKpTimeLine::invalidate()", "RvKpPlayer::unlockPlayer()"}));
}

TEST_F(HistoryTest, SetsTheCanvasSizeOfTheEntry)
{
    config().setKpSize(640.0F, 360.0F);
    trace->initTrace();
    config().setKpSize(800.0F, 600.0F);
    trace->recordStatus();
    trace->undo();
    EXPECT_EQ(config().getKpSizeWidth(), 640.0F);
    EXPECT_EQ(config().getKpSizeHeight(), 360.0F);
    trace->redo();
    EXPECT_EQ(config().getKpSizeWidth(), 800.0F);
    EXPECT_EQ(config().getKpSizeHeight(), 600.0F);
}

TEST_F(HistoryTest, TouchesOnlyWhatDiffersBetweenTheEntries)
{
    // What was edited and not recorded is in no entry: undo does not know of it.
    trace->initTrace();
    addMix(12);
    trace->recordStatus();
    setAlpha(0.5F);
    trace->undo();
    EXPECT_EQ(alpha(), 0.5F);
    EXPECT_EQ(mixIds(), Ids{11});
}

TEST_F(HistoryTest, StepsTheTimelineThatThePlayerHasThen)
{
    record(2);
    const auto other = TimelineSamples::live(*TimelineSamples::pictures({1}));
    player().setTimeLine(other.get());
    trace->undo();
    EXPECT_EQ(alpha(), alphaOf(1)) << "the former one is left alone";
    EXPECT_EQ(norvel::adopt(norvel::RvAttributeUtility::getMainTrack(other.get(), 1))->getAlpha(),
              alphaOf(0));
}

TEST_F(HistoryTest, StepsAlthoughATrackCannotBeCreated)
{
    addMix(12);
    trace->initTrace(opaque(1));
    timeline->removeMixTrack(
        norvel::adopt(norvel::RvAttributeUtility::getMixTrack(timeline.get(), 12)).get());
    trace->recordStatus(opaque(2));
    qrvkp::RvFault::failNext("RvSpriteTrack::create");
    const Calls undone = callsOf([&] { trace->undo(); });
    EXPECT_EQ(undone.back(), "RvKpPlayer::unlockPlayer()");
    EXPECT_EQ(mixIds(), Ids{11});
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(1)) << "the step counts as made";
    EXPECT_TRUE(trace->canRedo());
}

TEST_F(HistoryTest, DescribesWithoutChangingTheTimeline)
{
    EXPECT_EQ(callsOf([&] {
                  trace->initTrace();
                  trace->recordStatus();
                  trace->canUndo();
                  trace->canRedo();
                  trace->getCurrentOpaqueData();
                  trace->setMaxRecordStatusCounts(3);
                  norvel::adopt(trace->getTrack(1));
                  printed();
              }),
              Calls());
}

TEST_F(HistoryTest, GivesBackEveryReferenceOfTheTimeline)
{
    const int references = timeline->referenceCount();
    const auto expectBalance = [&](const char* operation) {
        EXPECT_EQ(timeline->referenceCount(), references) << operation;
    };
    trace->initTrace();
    expectBalance("initTrace");
    setAlpha(0.5F);
    trace->recordStatus();
    expectBalance("recordStatus");
    EXPECT_TRUE(trace->canUndo());
    expectBalance("canUndo");
    trace->undo();
    expectBalance("undo");
    EXPECT_TRUE(trace->canRedo());
    expectBalance("canRedo");
    trace->redo();
    expectBalance("redo");
    norvel::adopt(trace->getTrack(1));
    norvel::adopt(trace->getTrack(99));
    expectBalance("getTrack");
    EXPECT_NE(printed(), "");
    expectBalance("printStatus");
}

TEST_F(HistoryTest, IsIndependentOfASecondHistory)
{
    const std::unique_ptr<RvEditorTrace> second(RvEditorTrace::create(&application));
    record(3);
    EXPECT_FALSE(second->canUndo());
    second->initTrace(opaque(7));
    EXPECT_TRUE(trace->canUndo());
    EXPECT_EQ(trace->getCurrentOpaqueData(), opaque(3));
    takeTimelineAway();
    second->initTrace();
}
