// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/WmicText.h>

#include <gtest/gtest.h>

using norvel::WmicText;

TEST(WmicTextTest, ProcessorsAreATableWithColumnsByTheAlphabet)
{
    EXPECT_EQ(WmicText::processors({{3600, "Maker CPU @ 3.60GHz", 4, 8}}),
              "MaxClockSpeed  Name                 NumberOfCores  NumberOfLogicalProcessors  \r\r\n"
              "3600           Maker CPU @ 3.60GHz  4              8                          \r\r\n"
              "\r\r\n");
}

TEST(WmicTextTest, ColumnsAreAsWideAsTheirLongestText)
{
    EXPECT_EQ(WmicText::processors({{800, "Short", 1, 1}, {12345, "Much longer", 128, 256}}),
              "MaxClockSpeed  Name         NumberOfCores  NumberOfLogicalProcessors  \r\r\n"
              "800            Short        1              1                          \r\r\n"
              "12345          Much longer  128            256                        \r\r\n"
              "\r\r\n");
}

TEST(WmicTextTest, MemoryIsATableOfOneModule)
{
    EXPECT_EQ(WmicText::memory(8589934592), "Capacity    \r\r\n8589934592  \r\r\n\r\r\n");
    EXPECT_EQ(WmicText::memory(1), "Capacity  \r\r\n1         \r\r\n\r\r\n");
}

TEST(WmicTextTest, AdaptersAreATableOfNames)
{
    EXPECT_EQ(WmicText::videoControllers({"Some GPU"}), "Name      \r\r\nSome GPU  \r\r\n\r\r\n");
    EXPECT_EQ(WmicText::videoControllers({"显卡", "Some GPU"}),
              "Name      \r\r\n显卡        \r\r\nSome GPU  \r\r\n\r\r\n");
}

TEST(WmicTextTest, WithoutObjectsThereIsNoTable)
{
    EXPECT_EQ(WmicText::processors({}), "");
    EXPECT_EQ(WmicText::memory(0), "");
    EXPECT_EQ(WmicText::memory(-1), "");
    EXPECT_EQ(WmicText::videoControllers({}), "");
}
