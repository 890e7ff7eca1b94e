// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourEdits.h"
#include "tour/TourProgram.h"
#include "tour/TourRun.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

namespace {

/// The line of a step, counted from 1.
TourLine lineOf(const TourRun& run, int step)
{
    return run.lines().at(static_cast<std::size_t>(step - 1));
}

} // namespace

TEST(TourFaultTest, AnUndoThatDoesNotBringStrokesBackIsADifference)
{
    qrvkp::RvFault::failNext("RvARLiquifyTrack::loadLiquifyConfig");
    const TourRun run = TourRun::inProcess({});
    EXPECT_EQ(run.exitCode, TourDisagreed);
    ASSERT_EQ(run.steps("different").size(), 1U);
    const TourLine line = lineOf(run, run.steps("different").front());
    EXPECT_EQ(line.phase, "undo");
    EXPECT_EQ(line.edit, "delete the liquify");
    ASSERT_EQ(line.below.size(), 1U);
    EXPECT_NE(line.below.front().find("(type 13): effectPath"), std::string::npos)
        << line.below.front();
    EXPECT_NE(run.summary().find(" 1 different;"), std::string::npos) << run.summary();
}

TEST(TourFaultTest, AnEditThatCannotBeMadeIsADifference)
{
    qrvkp::RvFault::failNext("RvKpTimeLine::changeGroupPosition");
    const TourRun run = TourRun::inProcess({});
    EXPECT_EQ(run.exitCode, TourDisagreed);
    ASSERT_EQ(run.steps("different").size(), 1U);
    EXPECT_EQ(lineOf(run, run.steps("different").front()).below,
              std::vector<std::string>{"- the edit cannot be made"});
}

TEST(TourFaultTest, ATrackThatAnUndoDoesNotTakeAwayIsADifference)
{
    // Edits take tracks away before, one less than there are deletions: one is that of a clip.
    qrvkp::RvFault::failNext("RvKpTimeLine::removeMixTrack",
                             static_cast<int>(deletingEdits().size()));
    const TourRun run = TourRun::inProcess({});
    EXPECT_EQ(run.exitCode, TourDisagreed);
    ASSERT_FALSE(run.steps("different").empty());
    const TourLine line = lineOf(run, run.steps("different").front());
    EXPECT_EQ(line.phase, "undo");
    EXPECT_EQ(line.edit, "add a liquify with a first stroke");
    ASSERT_EQ(line.below.size(), 1U);
    EXPECT_NE(line.below.front().find("(type 13) is not described"), std::string::npos)
        << line.below.front();
}

TEST(TourFaultTest, NoTourIsMadeWithoutATimeline)
{
    qrvkp::RvFault::failNext("RvKpTimeLine::create");
    const TourRun run = TourRun::inProcess({});
    EXPECT_EQ(run.exitCode, TourNotMade);
    EXPECT_EQ(run.complaint, "norvel-tour: the framework makes no timeline of the files\n");
}

TEST(TourFaultTest, WhatIsLeftAliveBeforeTheTourIsNotItsOwn)
{
    const auto kept = qrvkp::RvKpTimeLine::create();
    const TourRun run = TourRun::inProcess({});
    EXPECT_EQ(run.exitCode, TourAgreed) << run.output;
    kept->release();
}

TEST(TourFaultTest, TheTourGivesTheCacheFolderBack)
{
    norvel::RvAttributeUtility::_sCacheDir.clear();
    EXPECT_EQ(TourRun::inProcess({}).exitCode, TourAgreed);
    EXPECT_EQ(norvel::RvAttributeUtility::_sCacheDir, "");
}
