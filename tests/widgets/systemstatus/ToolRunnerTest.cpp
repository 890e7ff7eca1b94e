// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <norvel/widgets/systemstatus/ToolRunner.h>

#include <gtest/gtest.h>

#include <QElapsedTimer>

using norvel::ToolRunner;

namespace {

const QString loadCommand = "wmic cpu get loadpercentage";
constexpr int patienceMs = 60000;
constexpr int shortLimitMs = 400;

/// What a tool that does not end has printed when its limit comes. However slow the machine is, the
/// limit that counts is one that leaves the tool the time to print.
QString outputUntilTheLimit()
{
    QString output;
    for (int limitMs = shortLimitMs; output.isEmpty() && limitMs < patienceMs; limitMs *= 2)
        output = ToolRunner(limitMs).run(loadCommand);
    return output;
}

class ToolRunnerTest : public testing::Test
{
protected:
    FakeTools tools;
};

} // namespace

TEST_F(ToolRunnerTest, GivesWhatAToolPrintsAndNotItsErrors)
{
    tools.answer(Query::CpuLoad, "LoadPercentage\r\r\n12\r\r\n");
    EXPECT_EQ(ToolRunner().run(loadCommand), "LoadPercentage\r\r\n12\r\r\n");
    EXPECT_EQ(tools.ended(), QStringList{"wmic|cpu|get|loadpercentage"});
}

TEST_F(ToolRunnerTest, GivesMoreThanAPipeHolds)
{
    const QByteArray much(1000000, 'x');
    tools.answer(Query::CpuLoad, much);
    EXPECT_EQ(ToolRunner().run(loadCommand), QString(much));
}

TEST_F(ToolRunnerTest, ReadsWhatComesInUtf16)
{
    tools.answer(Query::CpuLoad, QByteArray("\xFF\xFE"
                                            "1\0"
                                            "2\0",
                                            6));
    EXPECT_EQ(ToolRunner().run(loadCommand), "12");
}

TEST_F(ToolRunnerTest, HandsEveryWordToTheToolAsAnArgument)
{
    ToolRunner().run("wmic a && wmic b | c > d; \"e f\" $PATH %PATH%");
    EXPECT_EQ(tools.begun(), QStringList{"wmic|a|&&|wmic|b|||c|>|d;|e f|$PATH|%PATH%"});
}

TEST_F(ToolRunnerTest, KeepsTheInputOfTheToolOpen)
{
    tools.answer(Query::CpuLoad, "asked");
    tools.readInput(Query::CpuLoad);
    EXPECT_EQ(outputUntilTheLimit(), "asked");
    EXPECT_EQ(tools.ended(), QStringList()) << "its input came to an end";
}

TEST_F(ToolRunnerTest, AToolThatFailsGivesWhatItPrinted)
{
    tools.answer(Query::CpuLoad, "half of it");
    tools.fail(Query::CpuLoad, 3);
    EXPECT_EQ(ToolRunner().run(loadCommand), "half of it");
    tools.crash(Query::CpuLoad);
    EXPECT_EQ(ToolRunner().run(loadCommand), "half of it");
    EXPECT_EQ(tools.begun().size(), 2);
    EXPECT_EQ(tools.ended().size(), 1) << "the second one crashed";
}

TEST_F(ToolRunnerTest, AToolThatIsMissingGivesNothing)
{
    EXPECT_EQ(ToolRunner().run("norvel-no-such-tool get loadpercentage"), "");
    EXPECT_EQ(ToolRunner().run(""), "");
    EXPECT_EQ(ToolRunner().run("  "), "");
}

TEST_F(ToolRunnerTest, AToolThatIsTooSlowGivesNothing)
{
    tools.answer(Query::CpuLoad, "late");
    tools.hold(Query::CpuLoad);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(ToolRunner(shortLimitMs).run(loadCommand), "");
    EXPECT_GE(time.elapsed(), shortLimitMs);
    EXPECT_LT(time.elapsed(), patienceMs);
    EXPECT_EQ(tools.ended(), QStringList());
}

TEST_F(ToolRunnerTest, AToolThatIsTooSlowGivesWhatItPrintedUntilThen)
{
    tools.answer(Query::CpuLoad, "in time");
    tools.linger(Query::CpuLoad);
    EXPECT_EQ(outputUntilTheLimit(), "in time");
    EXPECT_EQ(tools.ended(), QStringList());
}

TEST_F(ToolRunnerTest, AToolMayTake30Seconds)
{
    constexpr int limit = ToolRunner::DefaultLimitMs; // no reference to a constant of a DLL
    EXPECT_EQ(limit, 30000);
}
