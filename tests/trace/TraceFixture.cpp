// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

using norvel::RvAttributeUtility;

namespace {

/// More than any history of the tests has.
constexpr int mostSteps = 1000;

} // namespace

TraceTest::TraceTest()
{
    const auto description = TimelineSamples::pictures({1, 2, 3});
    description->mixAttribs.push_back(TimelineSamples::record(norvel::RecordTypeARFilter, 11));
    timeline = TimelineSamples::live(*description);
    trace.reset(norvel::RvEditorTrace::create(&application));
    giveTimelineBack();
}

TraceTest::~TraceTest()
{
    takeTimelineAway();
    if (trace)
        trace->initTrace();
}

void TraceTest::setAlpha(float alpha)
{
    norvel::adopt(RvAttributeUtility::getMainTrack(timeline.get(), 1))->setAlpha(alpha);
}

float TraceTest::alpha() const
{
    return norvel::adopt(RvAttributeUtility::getMainTrack(timeline.get(), 1))->getAlpha();
}

void TraceTest::addMix(std::uint64_t id)
{
    timeline->addMixTrack(TimelineSamples::track(norvel::RecordTypeImage, id).get());
}

std::string TraceTest::printed()
{
    testing::internal::CaptureStdout();
    trace->printStatus();
    return testing::internal::GetCapturedStdout();
}

int TraceTest::undoSteps()
{
    int steps = 0;
    for (; steps < mostSteps && trace->canUndo(); ++steps)
        trace->undo();
    for (int i = 0; i < steps; ++i)
        trace->redo();
    return steps;
}

int TraceTest::redoSteps()
{
    int steps = 0;
    for (; steps < mostSteps && trace->canRedo(); ++steps)
        trace->redo();
    for (int i = 0; i < steps; ++i)
        trace->undo();
    return steps;
}
