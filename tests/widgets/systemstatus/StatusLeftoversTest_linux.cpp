// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "ProcessCensus_linux.h"
#include "TickWatch.h"

#include <norvel/widgets/systemstatus/ToolRunner.h>
#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>
#include <thread>

namespace {

constexpr int patienceMs = 60000;

/// Fails when a test leaves a thread or a process of the panel's behind.
class StatusLeftoversTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(ProcessCensus::children(), 0); }

    void TearDown() override
    {
        EXPECT_EQ(ProcessCensus::children(), 0);
        // A thread that has ended for all others may still be on its way out.
        EXPECT_TRUE(QTest::qWaitFor([&] { return ProcessCensus::threads() <= threadsBefore; }))
            << ProcessCensus::threads() << " threads, not " << threadsBefore;
    }

    FakeTools tools;
    const int threadsBefore = ProcessCensus::threads();
};

} // namespace

TEST_F(StatusLeftoversTest, APanelHasOneThreadWhileItLives)
{
    const systemstatus panel(nullptr);
    EXPECT_EQ(ProcessCensus::threads(), threadsBefore + 1);
}

TEST_F(StatusLeftoversTest, APanelThatMeasuredLeavesNoThreadAndNoProcess)
{
    tools.hold(Query::CpuLoad);
    auto panel = std::make_unique<systemstatus>(nullptr);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return tools.begun().contains(FakeTools::callOf(Query::CpuLoad)); }, patienceMs));
    EXPECT_EQ(ProcessCensus::children(), 1);
    std::thread releaser([&] { tools.release(Query::CpuLoad); });
    panel.reset();
    releaser.join();
    EXPECT_EQ(ProcessCensus::children(), 0);
}

TEST_F(StatusLeftoversTest, APanelThatIsDestroyedStartsNoToolAfterTheOneThatRuns)
{
    constexpr int looks = 50;
    tools.hold(Query::CpuLoad);
    TickWatch watch;
    auto panel = std::make_unique<systemstatus>(nullptr);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return tools.begun().contains(FakeTools::callOf(Query::CpuLoad)); }, patienceMs));
    // The worker serves it after the tool, unless it is to end.
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.ticks >= 2; }, patienceMs));
    std::atomic<bool> isGoing{false};
    std::thread releaser([&] {
        // The main thread sleeps for so long only where the destructor waits.
        for (int asleep = 0; asleep < looks; QThread::msleep(1))
            asleep = isGoing && ProcessCensus::isMainThreadAsleep() ? asleep + 1 : 0;
        tools.release(Query::CpuLoad);
    });
    isGoing = true;
    panel.reset();
    releaser.join();
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::CpuLoad));
    EXPECT_EQ(tools.begun(), tools.ended());
}

TEST_F(StatusLeftoversTest, AHundredPanelsDestroyedAtOnceLeaveNoThreadAndNoProcess)
{
    for (int i = 0; i < 100; ++i) {
        const systemstatus panel(nullptr);
    }
    EXPECT_EQ(ProcessCensus::children(), 0);
}

TEST_F(StatusLeftoversTest, AToolThatIsTooSlowIsGoneAfterItsRun)
{
    tools.hold(Query::CpuLoad);
    // However slow the machine is, one limit is long enough for the tool to begin.
    for (int limitMs = 300; tools.begun().isEmpty() && limitMs < patienceMs; limitMs *= 2)
        norvel::ToolRunner(limitMs).run("wmic cpu get loadpercentage");
    EXPECT_EQ(tools.begun(), QStringList{FakeTools::callOf(Query::CpuLoad)});
    EXPECT_EQ(tools.ended(), QStringList());
    EXPECT_EQ(ProcessCensus::children(), 0);
}
