// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// A Windows without `wmic`, and what its own functions tell beside what `wmic` tells.

#include "OnlyPath.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/WindowsSystemSource_windows.h>
#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <vector>

#include <qt_windows.h>

using norvel::SystemSource;
using norvel::WindowsSystemSource;

namespace {

constexpr int patienceMs = 60000;

/// What `wmic` prints, its lines without their padding and their ends.
QStringList wmicLines(const QString& arguments)
{
    QStringList lines;
    for (const QString& line : CalculateSysInfo::runCommand("wmic " + arguments).split('\n'))
        lines.append(line.trimmed());
    lines.removeAll("");
    return lines;
}

/// The same of the tables of the source.
QStringList linesOf(const QString& tables)
{
    QStringList lines;
    for (const QString& line : tables.split("\r\r\n"))
        lines.append(line.trimmed());
    lines.removeAll("");
    return lines;
}

/// Busy and total time of all processors in units of 100 ns.
struct ReadTimes
{
    double busy = 0.0;
    double total = 0.0;
};

ReadTimes readTimes()
{
    FILETIME idle{};
    FILETIME kernel{};
    FILETIME user{};
    EXPECT_TRUE(GetSystemTimes(&idle, &kernel, &user));
    const auto ticks = [](const FILETIME& time) {
        return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime;
    };
    const double total = ticks(kernel) + ticks(user);
    return {total - ticks(idle), total};
}

/// The search path is an empty folder, so that `wmic`, which is in none of Windows' own folders for
/// programs, is not found.
class NoWmicTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    OnlyPath path{folder.path()};
};

} // namespace

TEST(WmicTest, IsThereUnlessItIsHidden)
{
    EXPECT_FALSE(wmicLines("cpu get name").isEmpty());
}

TEST_F(NoWmicTest, CommandsOfWmicDoNotStart)
{
    QProcess process;
    process.start("wmic", {"cpu", "get", "name"});
    EXPECT_FALSE(process.waitForStarted());
    EXPECT_EQ(process.error(), QProcess::FailedToStart);
    EXPECT_EQ(CalculateSysInfo::runCommand("wmic cpu get name"), "");
}

TEST_F(NoWmicTest, WindowsItselfIsAsked)
{
    const std::unique_ptr<SystemSource> source =
        SystemSource::create([](const QString& commandLine) {
            ADD_FAILURE() << commandLine.toStdString();
            return QString();
        });
    ASSERT_NE(dynamic_cast<const WindowsSystemSource*>(source.get()), nullptr);
    EXPECT_GT(source->installedMemory(), 0);
    source->cpuLoad();
    EXPECT_GT(source->processMemory(), 0);
    EXPECT_NE(source->hardwareText(), "");
    EXPECT_NE(source->graphicsText(), "");
}

TEST_F(NoWmicTest, ThePanelShowsNumbersAndTexts)
{
    const systemstatus panel(nullptr);
    const QList<QLabel*> labels = panel.findChildren<QLabel*>();
    const auto shows = [&](const QString& pattern) {
        const QRegularExpression expression(pattern);
        return QTest::qWaitFor(
            [&] {
                for (const QLabel* label : labels) {
                    if (expression.match(label->text()).hasMatch())
                        return true;
                }
                return false;
            },
            patienceMs);
    };
    EXPECT_TRUE(shows("^CPU Usage: (100|[0-9]{1,2})%$"));
    EXPECT_TRUE(shows("^Mem Usage: 0%$"));
    WindowsSystemSource source;
    EXPECT_TRUE(shows('^' + QRegularExpression::escape(source.hardwareText()) + '$'));
    EXPECT_TRUE(shows('^' + QRegularExpression::escape(source.graphicsText()) + '$'));
}

TEST(WindowsSystemSourceTest, InstalledMemoryIsThatOfTheMemoryModules)
{
    EXPECT_EQ((QStringList{"Capacity", QString::number(WindowsSystemSource().installedMemory())}),
              wmicLines("memorychip get capacity"));
}

TEST(WindowsSystemSourceTest, HardwareIsATableOfProcessorsAndOneOfTheMemory)
{
    WindowsSystemSource source;
    const QStringList lines = linesOf(source.hardwareText());
    const QStringList names = wmicLines("cpu get name").mid(1);
    ASSERT_EQ(lines.size(), names.size() + 3);
    EXPECT_EQ(lines[0].simplified(), "MaxClockSpeed Name NumberOfCores NumberOfLogicalProcessors");
    int logicalProcessors = 0;
    for (int i = 0; i < names.size(); ++i) {
        const QRegularExpression columns("^(\\d+)  +(.*\\S)  +(\\d+)  +(\\d+)$");
        const QRegularExpressionMatch match = columns.match(lines[i + 1]);
        ASSERT_TRUE(match.hasMatch()) << lines[i + 1].toStdString();
        EXPECT_GT(match.captured(1).toInt(), 100) << "MHz";
        EXPECT_EQ(match.captured(2), names[i]);
        EXPECT_GE(match.captured(3).toInt(), 1);
        EXPECT_GE(match.captured(4).toInt(), match.captured(3).toInt());
        logicalProcessors += match.captured(4).toInt();
    }
    EXPECT_EQ(logicalProcessors, static_cast<int>(GetActiveProcessorCount(ALL_PROCESSOR_GROUPS)));
    EXPECT_EQ(lines.mid(names.size() + 1),
              (QStringList{"Capacity", QString::number(source.installedMemory())}));
}

TEST(WindowsSystemSourceTest, GraphicsAreTheAdaptersThatWmicTells)
{
    const QStringList lines = linesOf(WindowsSystemSource().graphicsText());
    EXPECT_GE(lines.size(), 2);
    EXPECT_EQ(lines, wmicLines("path win32_VideoController get name"));
}

TEST(WindowsSystemSourceTest, SeesWhatThisProcessTakes)
{
    constexpr std::size_t taken = std::size_t(64) * 1024 * 1024;
    WindowsSystemSource source;
    const qint64 before = source.processMemory();
    EXPECT_GT(before, 1024 * 1024);
    EXPECT_LT(before, source.installedMemory());
    const std::vector<char> bytes(taken, 'x');
    const qint64 grown = source.processMemory() - before;
    EXPECT_GE(grown, static_cast<qint64>(taken * 9 / 10));
    EXPECT_LT(grown, static_cast<qint64>(taken * 2));
    EXPECT_EQ(bytes.back(), 'x');
}

TEST(WindowsSystemSourceTest, TheLoadIsThatSinceTheLastCall)
{
    WindowsSystemSource source;
    const ReadTimes beforeFirst = readTimes();
    source.cpuLoad();
    const ReadTimes afterFirst = readTimes();
    // Work, of this process or of one that keeps it from the processor, and some rest.
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < 500) {
    }
    QThread::msleep(200);
    const ReadTimes beforeSecond = readTimes();
    const double load = source.cpuLoad();
    const ReadTimes afterSecond = readTimes();
    // What is read around the calls bounds what they read, however long that takes.
    const double leastBusy = beforeSecond.busy - afterFirst.busy;
    const double mostBusy = afterSecond.busy - beforeFirst.busy;
    const double leastTotal = beforeSecond.total - afterFirst.total;
    const double mostTotal = afterSecond.total - beforeFirst.total;
    constexpr double rounding = 1.0;
    EXPECT_GT(leastBusy, 0.0);
    EXPECT_GE(load, 100.0 * leastBusy / mostTotal - rounding);
    EXPECT_LE(load, 100.0 * mostBusy / leastTotal + rounding);
}
