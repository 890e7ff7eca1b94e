// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourOptions.h"

#include <gtest/gtest.h>

namespace {

TourOptions parse(const QStringList& arguments)
{
    return TourOptions::parse(QStringList{"norvel-tour"} + arguments);
}

std::string complaint(const QStringList& arguments)
{
    const TourOptions options = parse(arguments);
    return options.action == TourOptions::Action::Complain ? options.text : "";
}

} // namespace

TEST(TourOptionsTest, AskForAPlainTourWithoutArguments)
{
    const TourOptions options = parse({});
    EXPECT_EQ(options.action, TourOptions::Action::Run);
    EXPECT_TRUE(options.files.empty());
    EXPECT_TRUE(options.jsonFolder.empty());
    EXPECT_FALSE(options.showCalls);
}

TEST(TourOptionsTest, TakeFilesAndOptionsInAnyOrder)
{
    const TourOptions options = parse({"a b.mp4", "--json", "docs", "视频.mp4", "--calls"});
    EXPECT_EQ(options.action, TourOptions::Action::Run);
    EXPECT_EQ(options.files, (std::vector<std::string>{"a b.mp4", "视频.mp4"}));
    EXPECT_EQ(options.jsonFolder, "docs");
    EXPECT_TRUE(options.showCalls);
}

TEST(TourOptionsTest, TakeFilesThatLookLikeOptionsBehindTwoDashes)
{
    EXPECT_EQ(parse({"--", "--calls"}).files, std::vector<std::string>{"--calls"});
}

TEST(TourOptionsTest, TellTheHelpAndTheVersion)
{
    const TourOptions help = parse({"--help"});
    EXPECT_EQ(help.action, TourOptions::Action::Tell);
    for (const char* option : {"--json <dir>", "--calls", "[files...]"})
        EXPECT_NE(help.text.find(option), std::string::npos) << option;
    EXPECT_EQ(parse({"--version"}).text, "norvel-tour 0.1.0\n");
}

TEST(TourOptionsTest, ComplainOfWhatIsNoOption)
{
    EXPECT_EQ(complaint({"--fast"}), "Unknown option 'fast'.");
    EXPECT_EQ(complaint({"--json"}), "Missing value after '--json'.");
    EXPECT_EQ(complaint({"--json="}), "Missing value after '--json'.");
    EXPECT_EQ(complaint({"--json", ""}), "Missing value after '--json'.");
    EXPECT_NE(complaint({"--calls=yes"}), "");
}
