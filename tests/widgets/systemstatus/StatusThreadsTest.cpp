// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "ScriptedSource.h"
#include "TickWatch.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

constexpr int patienceMs = 60000;

// Tools with texts are left to other tests: the thread sanitizer does not see how Qt's labels give
// back a text that another thread made.
constexpr const char* loadOf12 = "LoadPercentage\n12\n";

/// A worker in a thread of its own, as the panel has it, with a timer that ticks often.
class WorkerThreadTest : public testing::Test
{
protected:
    void start()
    {
        auto* const made = new CalculateSysInfo(std::make_unique<ScriptedSource>(script));
        worker = made;
        timer.reset(made->timer);
        timer->setInterval(5);
        QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this] { ++ticks; });
        made->moveToThread(&thread);
        QObject::connect(&thread, &QThread::finished, made, &QObject::deleteLater);
        QObject::connect(&thread, &QThread::started, made, &CalculateSysInfo::collectHardwareInfo);
        // In the worker's thread.
        const auto count = [this] { ++told; };
        QObject::connect(made, &CalculateSysInfo::displayInfo, made, count, Qt::DirectConnection);
        QObject::connect(made, &CalculateSysInfo::updateCpuMemUsage, made, count,
                         Qt::DirectConnection);
        thread.start();
    }

    void TearDown() override
    {
        script->released.release(1000000);
        thread.requestInterruption();
        thread.quit();
        thread.wait();
    }

    long long measurements() const { return script->asked().count("cpu"); }

    std::shared_ptr<SourceScript> script = std::make_shared<SourceScript>(1000);
    QPointer<CalculateSysInfo> worker;
    std::unique_ptr<QTimer> timer;
    QThread thread;
    int ticks = 0;
    std::atomic<int> told{0}; ///< signals of the worker
};

/// A worker that is to end while it waits for the answer to a question.
class EndingWorkerTest : public WorkerThreadTest, public testing::WithParamInterface<const char*>
{
};

} // namespace

TEST_F(WorkerThreadTest, MeasuresInItsOwnThread)
{
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return measurements() >= 3; }, patienceMs));
    for (QThread* const askedIn : script->askedIn())
        EXPECT_EQ(askedIn, &thread);
    EXPECT_EQ(script->asked().mid(0, 2), (QStringList{"hardware", "graphics"}));
    EXPECT_EQ(timer->thread(), QThread::currentThread());
}

TEST_F(WorkerThreadTest, ServesTheTicksThatPiledUpOneAfterAnother)
{
    script->heldQuestion = "cpu";
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 8 && measurements() == 1; }, patienceMs));
    timer->stop();
    EXPECT_EQ(measurements(), 1) << "the first one still runs";
    script->released.release(ticks);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return script->asked().count("memory") == ticks; }, patienceMs));
    EXPECT_EQ(measurements(), ticks);
}

TEST_F(WorkerThreadTest, TellsWhatItMeasuredToTheThreadOfTheUserInterface)
{
    script->cpuLoad = 12.0;
    script->processMemory = 2500;
    start();
    double cpu = 0.0;
    double mem = 0.0;
    QThread* toldIn = nullptr;
    QObject::connect(worker.data(), &CalculateSysInfo::updateCpuMemUsage, timer.get(),
                     [&](double c, double m) {
                         cpu = c;
                         mem = m;
                         toldIn = QThread::currentThread();
                     });
    ASSERT_TRUE(QTest::qWaitFor([&] { return toldIn != nullptr; }, patienceMs));
    EXPECT_EQ(cpu, 12.0);
    EXPECT_EQ(mem, 200.0);
    EXPECT_EQ(toldIn, QThread::currentThread());
}

TEST_P(EndingWorkerTest, AsksAndTellsNoMoreOnceItIsToEnd)
{
    const QString question = GetParam();
    script->heldQuestion = question;
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 8 && script->asked().contains(question); },
                                patienceMs));
    const QStringList askedBefore = script->asked();
    const int toldBefore = told;
    thread.requestInterruption();
    thread.quit();
    script->released.release(1000);
    ASSERT_TRUE(thread.wait(patienceMs));
    EXPECT_EQ(script->asked(), askedBefore);
    EXPECT_EQ(askedBefore.last(), question);
    EXPECT_EQ(told, toldBefore);
}

INSTANTIATE_TEST_SUITE_P(AtEveryQuestion, EndingWorkerTest,
                         testing::Values("hardware", "graphics", "cpu", "memory"));

TEST_F(WorkerThreadTest, GoesWithItsThreadAndLeavesTheTimer)
{
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return measurements() >= 1; }, patienceMs));
    thread.quit();
    ASSERT_TRUE(thread.wait(patienceMs));
    EXPECT_TRUE(worker.isNull());
    EXPECT_TRUE(timer->isActive());
    const int before = ticks;
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > before + 3; }, patienceMs));
}

TEST(PanelThreadTest, TheTimerGoesWithThePanel)
{
    const FakeTools tools;
    TickWatch watch;
    {
        const systemstatus panel(nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return watch.ticks > 0; }, patienceMs));
        ASSERT_FALSE(watch.last.isNull());
        EXPECT_EQ(watch.last->thread(), QThread::currentThread());
    }
    EXPECT_TRUE(watch.last.isNull());
}

TEST(PanelThreadTest, TheUserInterfaceGoesOnWhileAToolRuns)
{
    FakeTools tools;
    tools.answer(Query::CpuLoad, loadOf12);
    const auto calls = [](const QStringList& all) {
        return all.count(FakeTools::callOf(Query::CpuLoad));
    };
    tools.hold(Query::CpuLoad);
    TickWatch watch;
    const systemstatus panel(nullptr);
    const auto* const cpuLabel = qobject_cast<QLabel*>(panel.layout()->itemAt(1)->widget());
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls(tools.begun()) == 1; }, patienceMs));
    // The panel's own ticks come on while the worker waits for the tool.
    const int ticksBefore = watch.ticks;
    ASSERT_TRUE(QTest::qWaitFor([&] { return watch.ticks >= ticksBefore + 2; }, patienceMs));
    EXPECT_EQ(calls(tools.begun()), 1) << "a second one was started";
    EXPECT_EQ(calls(tools.ended()), 0);
    tools.release(Query::CpuLoad);
    ASSERT_TRUE(QTest::qWaitFor([&] { return cpuLabel->text() == "CPU Usage: 12%"; }, patienceMs));
    EXPECT_EQ(tools.begun().mid(0, 4), tools.ended().mid(0, 4)) << "the tool was killed";
}

TEST(PanelThreadTest, DestructionWaitsForTheCommandThatRuns)
{
    FakeTools tools;
    tools.hold(Query::CpuLoad);
    auto panel = std::make_unique<systemstatus>(nullptr);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return tools.begun().contains(FakeTools::callOf(Query::CpuLoad)); }, patienceMs));
    std::thread releaser([&] { tools.release(Query::CpuLoad); });
    panel.reset();
    EXPECT_EQ(tools.begun(), tools.ended());
    EXPECT_TRUE(tools.ended().contains(FakeTools::callOf(Query::CpuLoad)));
    releaser.join();
}

TEST(PanelThreadTest, CanBeDestroyedAtOnceAHundredTimesInARow)
{
    FakeTools tools;
    tools.answerAll();
    TickWatch watch;
    for (int i = 0; i < 100; ++i)
        const systemstatus panel(nullptr);
    EXPECT_EQ(tools.begun(), tools.ended());
    EXPECT_EQ(tools.begun().count(FakeTools::callOf(Query::InstalledMemory)), 100);
    QTest::qWait(1500);
    EXPECT_EQ(watch.ticks, 0) << "a timer was left behind";
}

TEST(PanelThreadTest, ManyPanelsMeasureSideBySide)
{
    FakeTools tools;
    tools.answer(Query::CpuLoad, loadOf12);
    std::vector<std::unique_ptr<systemstatus>> panels(4);
    for (std::unique_ptr<systemstatus>& panel : panels)
        panel = std::make_unique<systemstatus>(nullptr);
    const auto allShow = [&] {
        for (const auto& panel : panels) {
            bool shows = false;
            for (const QLabel* label : panel->findChildren<QLabel*>())
                shows |= label->text() == "CPU Usage: 12%";
            if (!shows)
                return false;
        }
        return true;
    };
    EXPECT_TRUE(QTest::qWaitFor(allShow, patienceMs));
    panels.clear();
    EXPECT_EQ(tools.begun().size(), tools.ended().size());
}
