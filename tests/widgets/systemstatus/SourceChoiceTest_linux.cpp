// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace {

/// A search path of nothing but a folder while it lives.
class OnlyPath
{
public:
    explicit OnlyPath(const QString& folder)
        : m_before(qgetenv("PATH"))
    {
        qputenv("PATH", folder.toLocal8Bit());
    }
    ~OnlyPath() { qputenv("PATH", m_before); }
    OnlyPath(const OnlyPath&) = delete;
    OnlyPath& operator=(const OnlyPath&) = delete;

private:
    const QByteArray m_before;
};

template <class Source>
bool isChosen()
{
    const std::unique_ptr<norvel::SystemSource> source = norvel::SystemSource::create();
    return dynamic_cast<const Source*>(source.get()) != nullptr;
}

} // namespace

TEST(SourceChoiceTest, TheToolsAreTakenWhereBothAreOnTheSearchPath)
{
    const FakeTools tools;
    EXPECT_TRUE(isChosen<norvel::ToolSystemSource>());
}

TEST(SourceChoiceTest, TheSystemItselfIsAskedWhereOneToolIsMissing)
{
    const QTemporaryDir folder;
    const OnlyPath path(folder.path());
    EXPECT_TRUE(isChosen<norvel::ProcSystemSource>()) << "none is there";
    ASSERT_TRUE(QFile::copy(FAKE_TOOLS "/wmic", folder.filePath("wmic")));
    EXPECT_TRUE(isChosen<norvel::ProcSystemSource>()) << "one is there";
    ASSERT_TRUE(QFile::copy(FAKE_TOOLS "/tasklist", folder.filePath("tasklist")));
    EXPECT_TRUE(isChosen<norvel::ToolSystemSource>()) << "both are there";
}

TEST(SourceChoiceTest, MissingToolsGive0AndNoText)
{
    const QTemporaryDir folder;
    const OnlyPath path(folder.path());
    norvel::ToolSystemSource source;
    EXPECT_EQ(source.installedMemory(), 0);
    EXPECT_EQ(source.cpuLoad(), 0.0);
    EXPECT_EQ(source.processMemory(), 0);
    EXPECT_EQ(source.hardwareText(), "");
    EXPECT_EQ(source.graphicsText(), "");
}
