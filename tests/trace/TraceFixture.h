// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TimelineSamples.h"

#include <norvel/trace/RvEditorTrace.h>

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpApplication.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// A history over the timeline of a player, with the pictures 1, 2, 3 on the main line and the
/// filter 11 over them.
class TraceTest : public testing::Test
{
protected:
    using Calls = std::vector<std::string>;
    using Ids = std::vector<std::uint64_t>;

    TraceTest();
    /// Deletes what the history stored, which its destructor does not.
    ~TraceTest() override;

    qrvkp::RvKpPlayer& player() { return *application.getPlayer(); }
    qrvkp::RvKpConfig& config() { return *application.getRvKpConfig(); }
    void takeTimelineAway() { player().setTimeLine(nullptr); }
    void giveTimelineBack() { player().setTimeLine(timeline.get()); }

    /// Edits the live timeline: gives the first picture this opacity.
    void setAlpha(float alpha);
    float alpha() const;
    /// Adds a picture to the mix tracks.
    void addMix(std::uint64_t id);
    Ids mixIds() const { return TimelineSamples::mixIds(*timeline); }

    /// What `printStatus` writes.
    std::string printed();
    /// How often undo and redo are possible from here; goes back to where it was.
    int undoSteps();
    int redoSteps();
    /// The changing framework calls of a function.
    template <class Function>
    Calls callsOf(Function&& function);

    /// A host's pointer, never looked into: no two numbers give the same.
    static void* opaque(std::uintptr_t number)
    {
        return reinterpret_cast<void*>(number); // NOLINT: an address of nothing
    }

    qrvkp::RvKpApplication application;
    TimelineSamples::Timeline timeline;
    std::unique_ptr<norvel::RvEditorTrace> trace;
};

template <class Function>
TraceTest::Calls TraceTest::callsOf(Function&& function)
{
    qrvkp::RvCallLog::start();
    function();
    qrvkp::RvCallLog::stop();
    return qrvkp::RvCallLog::entries();
}
