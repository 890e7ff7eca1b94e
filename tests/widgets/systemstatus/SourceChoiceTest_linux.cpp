// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "OnlyPath.h"

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace {

template <class Source>
bool isChosen()
{
    const std::unique_ptr<norvel::SystemSource> source =
        norvel::SystemSource::create(CalculateSysInfo::runCommand);
    return dynamic_cast<const Source*>(source.get()) != nullptr;
}

} // namespace

TEST(LinuxSourceChoiceTest, TheSystemItselfIsAskedWhereOneToolIsMissing)
{
    using norvel::ToolSystemSource;
    const QTemporaryDir folder;
    const OnlyPath path(folder.path());
    EXPECT_TRUE(isChosen<norvel::ProcSystemSource>());
    EXPECT_EQ(ToolSystemSource::missingTools(), (QStringList{"wmic", "tasklist"}));
    ASSERT_TRUE(QFile::copy(FAKE_TOOLS "/tasklist", folder.filePath("tasklist")));
    EXPECT_TRUE(isChosen<norvel::ProcSystemSource>());
    EXPECT_EQ(ToolSystemSource::missingTools(), QStringList{"wmic"});
    ASSERT_TRUE(QFile::remove(folder.filePath("tasklist")));
    ASSERT_TRUE(QFile::copy(FAKE_TOOLS "/wmic", folder.filePath("wmic")));
    EXPECT_TRUE(isChosen<norvel::ProcSystemSource>());
    EXPECT_EQ(ToolSystemSource::missingTools(), QStringList{"tasklist"});
    ASSERT_TRUE(QFile::copy(FAKE_TOOLS "/tasklist", folder.filePath("tasklist")));
    EXPECT_TRUE(isChosen<ToolSystemSource>());
}

TEST(LinuxSourceChoiceTest, MissingToolsGive0AndNoText)
{
    const QTemporaryDir folder;
    const OnlyPath path(folder.path());
    norvel::ToolSystemSource source(CalculateSysInfo::runCommand);
    EXPECT_EQ(source.installedMemory(), 0);
    EXPECT_EQ(source.cpuLoad(), 0.0);
    EXPECT_EQ(source.processMemory(), 0);
    EXPECT_EQ(source.hardwareText(), "");
    EXPECT_EQ(source.graphicsText(), "");
}
