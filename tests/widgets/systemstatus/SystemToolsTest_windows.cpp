// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// The tools that the system has itself.

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QStringList>

#include <qt_windows.h>

#define PSAPI_VERSION 2 // the functions in kernel32
#include <psapi.h>

using norvel::ToolSystemSource;

namespace {

/// Fails the test unless a text is a table below this heading, and nothing of how it was encoded.
void expectTable(const QString& text, const char* heading)
{
    const QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 2) << text.toStdString();
    EXPECT_TRUE(lines[0].contains(heading)) << text.toStdString();
    EXPECT_FALSE(lines[1].trimmed().isEmpty()) << text.toStdString();
    EXPECT_FALSE(text.contains(QChar::Null));
    EXPECT_FALSE(text.contains(QChar::ByteOrderMark));
}

} // namespace

TEST(SystemToolsTest, TellTheHardwareInPlainText)
{
    ToolSystemSource source(CalculateSysInfo::runCommand);
    expectTable(source.hardwareText(), "Name");
    expectTable(source.graphicsText(), "Name");
}

TEST(SystemToolsTest, TellTheCapacityOfTheMemoryModules)
{
    qint64 installed = 0;
    const QString text = CalculateSysInfo::runCommand("wmic memorychip get capacity");
    expectTable(text, "Capacity");
    for (const QString& line : text.split('\n'))
        installed += line.trimmed().toLongLong();

    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    ASSERT_TRUE(GlobalMemoryStatusEx(&memory));
    // Some of what is installed is kept from Windows.
    EXPECT_NEAR(static_cast<double>(installed) / static_cast<double>(memory.ullTotalPhys), 1.0,
                0.2);
}

TEST(SystemToolsTest, TellTheLoadInPercent)
{
    const double load = ToolSystemSource(CalculateSysInfo::runCommand).cpuLoad();
    EXPECT_GE(load, 0.0);
    EXPECT_LE(load, 100.0);
}

TEST(SystemToolsTest, TellTheWorkingSetOfThisProcess)
{
    PROCESS_MEMORY_COUNTERS memory{};
    ASSERT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory));
    const qint64 bytes = ToolSystemSource(CalculateSysInfo::runCommand).processMemory();
    // There are systems whose `tasklist` has no filters, and prints nothing then.
    const QString filtered = "tasklist /fi \"PID eq %1\" /fo csv /nh";
    if (CalculateSysInfo::runCommand(filtered.arg(QCoreApplication::applicationPid())).isEmpty())
        EXPECT_EQ(bytes, 0);
    else
        EXPECT_NEAR(static_cast<double>(bytes) / static_cast<double>(memory.WorkingSetSize), 1.0,
                    0.5);
}
