// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourReport.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TourStep step(const char* phase, std::vector<std::string> differences = {})
{
    TourStep made;
    made.phase = phase;
    made.edit = "fade a clip";
    made.calls = {"RvITrack::setAlpha(1000, 0.5)", "RvKpTimeLine::invalidate()"};
    made.milliseconds = 1.25;
    made.differences = std::move(differences);
    return made;
}

class TourReportTest : public testing::Test
{
protected:
    std::string print(const TourStep& printed, bool showCalls = false)
    {
        std::ostringstream out;
        TourReport(out, showCalls).print(printed);
        return out.str();
    }

    std::ostringstream m_out;
    TourReport m_report{m_out, false};
};

const std::string editLine =
    "   1  edit  fade a clip                                     2    1.250  same\n";

} // namespace

TEST_F(TourReportTest, PrintsALineForAStep)
{
    EXPECT_EQ(print(step("edit")), editLine);
}

TEST_F(TourReportTest, PrintsTheCallsBelowIfWanted)
{
    EXPECT_EQ(print(step("edit"), true), editLine + "        RvITrack::setAlpha(1000, 0.5)\n"
                                                    "        RvKpTimeLine::invalidate()\n");
}

TEST_F(TourReportTest, PrintsTheDifferencesBelow)
{
    EXPECT_EQ(print(step("undo", {"canvas size", "track 1 (type 3): alpha"})),
              "   1  undo  fade a clip                                     2    1.250  different\n"
              "        - canvas size\n"
              "        - track 1 (type 3): alpha\n");
}

TEST_F(TourReportTest, PutsItsHeadingOverTheColumns)
{
    m_report.printHeading();
    m_report.print(step("edit"));
    const std::string heading = m_out.str().substr(0, m_out.str().find('\n') + 1);
    EXPECT_EQ(heading,
              "step  phase edit                                        calls       ms  result\n");
    EXPECT_EQ(heading.find("phase"), editLine.find("edit"));
    EXPECT_EQ(heading.find("edit"), editLine.find("fade"));
    EXPECT_EQ(heading.find("calls") + 5, editLine.find("2 ") + 1);
    EXPECT_EQ(heading.find("result"), editLine.find("same"));
}

TEST_F(TourReportTest, SumsUpWhatWasPrinted)
{
    m_report.print(step("edit"));
    m_report.print(step("edit", {"canvas size", "alpha"}));
    m_report.print(step("undo"));
    m_out.str({});
    m_report.printSummary(3);
    EXPECT_EQ(m_out.str(), "\n3 steps (2 edits): 2 same, 1 different; 6 framework calls in "
                           "3.750 ms; 3 framework objects left alive\n");
}

TEST_F(TourReportTest, AgreesWhenEveryStepDoes)
{
    EXPECT_FALSE(m_report.agreed()) << "nothing was looked at yet";
    m_report.print(step("edit"));
    EXPECT_TRUE(m_report.agreed());
    m_report.print(step("undo", {"canvas size"}));
    EXPECT_FALSE(m_report.agreed());
    m_report.print(step("redo"));
    EXPECT_FALSE(m_report.agreed());
    EXPECT_EQ(m_report.stepCount(), 3);
}

TEST_F(TourReportTest, DoesNotAgreeWhenObjectsAreLeftAlive)
{
    m_report.print(step("edit"));
    m_report.printSummary(0);
    EXPECT_TRUE(m_report.agreed());
    m_report.printSummary(1);
    EXPECT_FALSE(m_report.agreed());
}
