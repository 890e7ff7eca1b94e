// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "ScriptedSource.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <memory>
#include <vector>

namespace {

constexpr int patienceMs = 60000;

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
};

/// Collects the timers of one second that tick in this thread.
class TickWatch : public QObject
{
public:
    TickWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* const timer = qobject_cast<QTimer*>(object);
        if (timer && event->type() == QEvent::Timer && timer->interval() == 1000) {
            ++ticks;
            last = timer;
        }
        return false;
    }

    int ticks = 0;
    QPointer<QTimer> last;
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
    script->waitsForRelease = true;
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 8; }, patienceMs));
    timer->stop();
    EXPECT_EQ(measurements(), 1) << "the first one still runs";
    script->released.release(ticks);
    EXPECT_TRUE(QTest::qWaitFor([&] { return measurements() == ticks; }, patienceMs));
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

TEST_F(WorkerThreadTest, MeasuresNoMoreOnceItIsToEnd)
{
    script->waitsForRelease = true;
    start();
    std::atomic<int> told{0};
    QObject::connect(
        worker.data(), &CalculateSysInfo::updateCpuMemUsage, worker.data(), [&] { ++told; },
        Qt::DirectConnection);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 8 && measurements() == 1; }, patienceMs));
    thread.requestInterruption();
    thread.quit();
    script->released.release(1000);
    ASSERT_TRUE(thread.wait(patienceMs));
    EXPECT_EQ(script->asked(), (QStringList{"hardware", "graphics", "cpu"}));
    EXPECT_EQ(told, 0);
}

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

TEST(PanelThreadTest, DestructionWaitsForTheCommandThatRunsAndStartsNoOther)
{
    FakeTools tools;
    auto panel = std::make_unique<systemstatus>(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return tools.ended().size() >= 3; }, patienceMs));
    tools.delay(Query::CpuLoad, 2000);
    const auto isMeasuring = [&] {
        return tools.begun().size() > tools.ended().size() &&
               tools.begun().last() == FakeTools::callOf(Query::CpuLoad);
    };
    ASSERT_TRUE(QTest::qWaitFor(isMeasuring, patienceMs));
    QTest::qWait(1200); // a further tick waits now
    panel.reset();
    EXPECT_EQ(tools.begun(), tools.ended());
    EXPECT_EQ(tools.ended().last(), FakeTools::callOf(Query::CpuLoad));
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
    tools.answerAll();
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
