// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "ProcessCensus_linux.h"

#include <norvel/widgets/systemstatus/ToolRunner.h>
#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QTest>

#include <memory>

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
    tools.delay(Query::CpuLoad, 1500);
    auto panel = std::make_unique<systemstatus>(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([] { return ProcessCensus::children() == 1; }, patienceMs));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return tools.begun().contains(FakeTools::callOf(Query::CpuLoad)); }, patienceMs));
    panel.reset();
    EXPECT_EQ(ProcessCensus::children(), 0);
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
    tools.delay(Query::CpuLoad, 60000);
    norvel::ToolRunner(300).run("wmic cpu get loadpercentage");
    EXPECT_EQ(tools.begun(), QStringList{FakeTools::callOf(Query::CpuLoad)});
    EXPECT_EQ(ProcessCensus::children(), 0);
}
