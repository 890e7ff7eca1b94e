// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "ScriptedSource.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>

#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <memory>
#include <vector>

namespace {

/// A worker with the timer that it leaves behind. The timer is older, and so goes after the worker.
struct Worker
{
    explicit Worker(std::unique_ptr<CalculateSysInfo> made)
        : timer(made->timer)
        , object(std::move(made))
    {
    }

    CalculateSysInfo* operator->() const { return object.get(); }

    std::unique_ptr<QTimer> timer;
    std::unique_ptr<CalculateSysInfo> object;
};

Worker workerOf(const std::shared_ptr<SourceScript>& script)
{
    return Worker(std::make_unique<CalculateSysInfo>(std::make_unique<ScriptedSource>(script)));
}

/// What a sample tells of the memory.
double memoryShare(qint64 installed, qint64 used)
{
    const auto script = std::make_shared<SourceScript>(installed);
    script->processMemory = used;
    const Worker worker = workerOf(script);
    QSignalSpy samples(worker.object.get(), &CalculateSysInfo::updateCpuMemUsage);
    worker->sample();
    EXPECT_EQ(samples.size(), 1);
    return samples.value(0).value(1).toDouble();
}

class CalculateSysInfoTest : public testing::Test
{
protected:
    std::shared_ptr<SourceScript> script = std::make_shared<SourceScript>(8589934592);
};

class ToolSysInfoTest : public testing::Test
{
protected:
    FakeTools tools;
};

} // namespace

TEST_F(CalculateSysInfoTest, HasTwoSignals)
{
    const QMetaObject& meta = CalculateSysInfo::staticMetaObject;
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
    const QMetaMethod first = meta.method(meta.methodOffset());
    EXPECT_EQ(first.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(first.methodSignature(), "updateCpuMemUsage(double,double)");
    EXPECT_EQ(first.parameterNames(), (QList<QByteArray>{"cpu", "mem"}));
    const QMetaMethod second = meta.method(meta.methodOffset() + 1);
    EXPECT_EQ(second.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(second.methodSignature(), "displayInfo(QString,QString)");
}

TEST_F(CalculateSysInfoTest, ReadsTheInstalledMemoryOnceAtTheStart)
{
    const Worker worker = workerOf(script);
    EXPECT_EQ(worker->totalMemory, 8589934592);
    EXPECT_EQ(worker->parent(), nullptr);
    EXPECT_EQ(script->asked(), QStringList()) << "nothing is measured yet";
}

TEST_F(CalculateSysInfoTest, HasATimerOfOneSecondThatIsNoChild)
{
    const Worker worker = workerOf(script);
    EXPECT_TRUE(worker->timer->isActive());
    EXPECT_EQ(worker->timer->interval(), 1000);
    EXPECT_FALSE(worker->timer->isSingleShot());
    EXPECT_EQ(worker->timer->parent(), nullptr);
    QThread other;
    worker->moveToThread(&other);
    EXPECT_EQ(worker->timer->thread(), QThread::currentThread());
}

TEST_F(CalculateSysInfoTest, LeavesItsTimerBehind)
{
    Worker worker = workerOf(script);
    const QPointer<QTimer> timer = worker.timer.get();
    worker.object.reset();
    ASSERT_FALSE(timer.isNull());
    EXPECT_TRUE(timer->isActive());
}

TEST_F(CalculateSysInfoTest, MeasuresLoadAndMemoryAtEveryTick)
{
    script->cpuLoad = 12.5;
    script->processMemory = 126418944;
    const Worker worker = workerOf(script);
    QSignalSpy samples(worker.object.get(), &CalculateSysInfo::updateCpuMemUsage);
    ASSERT_TRUE(samples.wait(60000));
    EXPECT_EQ(samples.value(0), (QVariantList{12.5, 0.0}));
    EXPECT_EQ(script->asked(), (QStringList{"cpu", "memory"}));
}

TEST_F(CalculateSysInfoTest, TheMemoryShareCountsWholeInstalledMemories)
{
    EXPECT_EQ(memoryShare(8589934592, 126418944), 0.0);
    EXPECT_EQ(memoryShare(8589934592, 8589934591), 0.0);
    EXPECT_EQ(memoryShare(8589934592, 8589934592), 100.0);
    EXPECT_EQ(memoryShare(8589934592, 17179869183), 100.0);
    EXPECT_EQ(memoryShare(8589934592, 17179869184), 200.0);
    EXPECT_EQ(memoryShare(1, 9000000000000000000), 9e20);
}

TEST_F(CalculateSysInfoTest, TheMemoryShareIs0WithoutInstalledMemory)
{
    EXPECT_EQ(memoryShare(0, 126418944), 0.0);
    EXPECT_EQ(memoryShare(-1, 126418944), 0.0);
}

TEST_F(CalculateSysInfoTest, TellsTheGraphicsFirstAndAsksForTheHardwareFirst)
{
    const Worker worker = workerOf(script);
    QSignalSpy infos(worker.object.get(), &CalculateSysInfo::displayInfo);
    worker->collectHardwareInfo();
    ASSERT_EQ(infos.size(), 1);
    EXPECT_EQ(infos.value(0), (QVariantList{"the graphics", "the hardware"}));
    EXPECT_EQ(script->asked(), (QStringList{"hardware", "graphics"}));
}

TEST_F(ToolSysInfoTest, AsksTheToolsWhereTheyAre)
{
    tools.answerAll();
    const Worker worker(std::make_unique<CalculateSysInfo>());
    EXPECT_EQ(worker->totalMemory, 8589934592);
    QSignalSpy samples(worker.object.get(), &CalculateSysInfo::updateCpuMemUsage);
    QSignalSpy infos(worker.object.get(), &CalculateSysInfo::displayInfo);
    worker->sample();
    worker->collectHardwareInfo();
    EXPECT_EQ(samples.value(0), (QVariantList{12.0, 0.0}));
    EXPECT_EQ(infos.value(0),
              (QVariantList{"Name\r\r\nSome GPU\r\r\n",
                            "MaxClockSpeed  Name\r\r\n3600           Some CPU\r\r\n"}));
    EXPECT_EQ(
        tools.ended(),
        (QStringList{FakeTools::callOf(Query::InstalledMemory), FakeTools::callOf(Query::CpuLoad),
                     FakeTools::callOf(Query::ProcessMemory), FakeTools::callOf(Query::Hardware),
                     FakeTools::callOf(Query::Graphics)}));
}

TEST_F(ToolSysInfoTest, ShowsAProcessOfAllTheMemoryAs100Percent)
{
    tools.answerAll();
    tools.answer(Query::ProcessMemory, "\"e\",\"1\",\"Console\",\"1\",\"8,388,608 K\"\r\n");
    const Worker worker(std::make_unique<CalculateSysInfo>());
    QSignalSpy samples(worker.object.get(), &CalculateSysInfo::updateCpuMemUsage);
    worker->sample();
    EXPECT_EQ(samples.value(0), (QVariantList{12.0, 100.0}));
}

TEST_F(ToolSysInfoTest, IsAllZeroWithSilentTools)
{
    const Worker worker(std::make_unique<CalculateSysInfo>());
    EXPECT_EQ(worker->totalMemory, 0);
    QSignalSpy samples(worker.object.get(), &CalculateSysInfo::updateCpuMemUsage);
    worker->sample();
    EXPECT_EQ(samples.value(0), (QVariantList{0.0, 0.0}));
}

TEST_F(ToolSysInfoTest, RunsACommandWithoutAShell)
{
    tools.answerAll();
    EXPECT_EQ(CalculateSysInfo::runCommand("wmic path win32_VideoController get name"),
              "Name\r\r\nSome GPU\r\r\n");
    EXPECT_EQ(CalculateSysInfo::runCommand("wmic cpu && wmic path get name"),
              "Name\r\r\nSome GPU\r\r\n");
    EXPECT_EQ(tools.begun().last(), "wmic|cpu|&&|wmic|path|get|name");
    EXPECT_EQ(CalculateSysInfo::runCommand("norvel-no-such-tool"), "");
}
