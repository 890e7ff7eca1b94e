// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <norvel/widgets/systemstatus/ToolRunner.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

using norvel::ToolRunner;
using norvel::ToolSystemSource;

namespace {

/// Runs tools that may take this long.
norvel::SystemSource::CommandRunner runnerWithin(int limitMs)
{
    return [limitMs](const QString& commandLine) { return ToolRunner(limitMs).run(commandLine); };
}

class ToolSystemSourceTest : public testing::Test
{
protected:
    FakeTools tools;
    ToolSystemSource source{runnerWithin(ToolRunner::DefaultLimitMs)};
};

} // namespace

TEST_F(ToolSystemSourceTest, AsksOneToolForEachNumberAndText)
{
    tools.answerAll();
    EXPECT_EQ(source.installedMemory(), 8589934592);
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::InstalledMemory));
    EXPECT_EQ(source.cpuLoad(), 12.0);
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::CpuLoad));
    EXPECT_EQ(source.processMemory(), 123456 * 1024);
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::ProcessMemory));
    EXPECT_EQ(source.hardwareText(), "MaxClockSpeed  Name\r\r\n3600           Some CPU\r\r\n");
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::Hardware));
    EXPECT_EQ(source.graphicsText(), "Name\r\r\nSome GPU\r\r\n");
    EXPECT_EQ(tools.begun().last(), FakeTools::callOf(Query::Graphics));
    EXPECT_EQ(tools.begun().size(), 5);
}

TEST_F(ToolSystemSourceTest, RunsEveryToolByWhatItWasGiven)
{
    QStringList lines;
    ToolSystemSource told([&](const QString& commandLine) {
        lines.append(commandLine);
        return "Capacity=" + QString::number(lines.size());
    });
    EXPECT_EQ(told.installedMemory(), 1);
    EXPECT_EQ(told.cpuLoad(), 0.0);
    EXPECT_EQ(told.processMemory(), 0);
    EXPECT_EQ(told.hardwareText(), "Capacity=4");
    EXPECT_EQ(told.graphicsText(), "Capacity=5");
    const QString pid = QString::number(QCoreApplication::applicationPid());
    EXPECT_EQ(lines,
              (QStringList{"wmic memorychip get capacity /value", "wmic cpu get loadpercentage",
                           "tasklist /fi \"PID eq " + pid + "\" /fo csv /nh",
                           "wmic cpu get name, maxclockspeed, numberofcores, "
                           "numberoflogicalprocessors && wmic memorychip get capacity",
                           "wmic path win32_VideoController get name"}));
    EXPECT_EQ(tools.begun(), QStringList());
}

TEST_F(ToolSystemSourceTest, SilentToolsGive0AndNoText)
{
    EXPECT_EQ(source.installedMemory(), 0);
    EXPECT_EQ(source.cpuLoad(), 0.0);
    EXPECT_EQ(source.processMemory(), 0);
    EXPECT_EQ(source.hardwareText(), "");
    EXPECT_EQ(source.graphicsText(), "");
    EXPECT_EQ(tools.ended().size(), 5);
}

TEST_F(ToolSystemSourceTest, WhatAFailingToolPrintsCounts)
{
    tools.answerAll();
    tools.fail(Query::CpuLoad, 1);
    tools.crash(Query::ProcessMemory);
    EXPECT_EQ(source.cpuLoad(), 12.0);
    EXPECT_EQ(source.processMemory(), 123456 * 1024);
}

TEST_F(ToolSystemSourceTest, SlowToolsGive0)
{
    tools.answerAll();
    tools.holdAll();
    ToolSystemSource hasty(runnerWithin(200));
    EXPECT_EQ(hasty.installedMemory(), 0);
    EXPECT_EQ(hasty.cpuLoad(), 0.0);
    EXPECT_EQ(hasty.processMemory(), 0);
    EXPECT_EQ(hasty.hardwareText(), "");
    EXPECT_EQ(hasty.graphicsText(), "");
    EXPECT_EQ(tools.ended(), QStringList());
}

TEST_F(ToolSystemSourceTest, ToolsThatAnswerInUtf16AreUnderstood)
{
    tools.answer(Query::CpuLoad, QByteArray("\xFF\xFE"
                                            "L\0\r\0\r\0\n\0"
                                            "4\0"
                                            "2\0 \0\r\0\r\0\n\0",
                                            22));
    EXPECT_EQ(source.cpuLoad(), 42.0);
}
