// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"
#include "OnlyPath.h"
#include "widgets/support/DebugLines.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTimer>

#include <memory>

using norvel::SystemSource;
using norvel::ToolSystemSource;

TEST(SourceChoiceTest, TheToolsAreTakenWhereBothAreOnTheSearchPath)
{
    const FakeTools tools;
    DebugLines lines;
    QStringList commands;
    const std::unique_ptr<SystemSource> source =
        SystemSource::create([&](const QString& commandLine) {
            commands.append(commandLine);
            return QString();
        });
    ASSERT_NE(dynamic_cast<const ToolSystemSource*>(source.get()), nullptr);
    EXPECT_EQ(ToolSystemSource::missingTools(), QStringList());
    EXPECT_EQ(lines.take(), QStringList());
    source->cpuLoad();
    EXPECT_EQ(commands, QStringList{"wmic cpu get loadpercentage"});
    EXPECT_EQ(tools.begun(), QStringList()) << "run by what was given alone";
}

TEST(SourceChoiceTest, MissingToolsAreReportedOnceByASampler)
{
    const QTemporaryDir folder;
    const OnlyPath path(folder.path());
    DebugLines lines;
    CalculateSysInfo worker;
    const std::unique_ptr<QTimer> timer(worker.timer);
    EXPECT_EQ(lines.take(), QStringList{"Not on the search path: wmic, tasklist"});
    worker.sample();
    worker.sample();
    worker.collectHardwareInfo();
    EXPECT_EQ(lines.take(), QStringList());
}
