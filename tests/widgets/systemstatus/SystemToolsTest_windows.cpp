// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// The tools that the system has itself.

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QStringList>

#include <qt_windows.h>

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
    ToolSystemSource source;
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

TEST(SystemToolsTest, GiveNumbersWithinTheirBounds)
{
    ToolSystemSource source;
    const double load = source.cpuLoad();
    EXPECT_GE(load, 0.0);
    EXPECT_LE(load, 100.0);
    const qint64 bytes = source.processMemory();
    EXPECT_GE(bytes, 0);
    EXPECT_LT(bytes, qint64{1} << 40);
}
