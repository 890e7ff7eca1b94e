// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/UnreadableFiles.h>

#include <gtest/gtest.h>

#include "ManualClock.h"
#include "WarningCapture.h"

using rvengine::UnreadableFiles;

namespace {

class UnreadableFilesTest : public testing::Test
{
protected:
    static QStringList warningOf(const QString& path)
    {
        return {"cannot read the media file " + path};
    }

    WarningCapture m_warnings;
    ManualClock m_clock;
    UnreadableFiles m_files{m_clock.clock()};
};

} // namespace

TEST_F(UnreadableFilesTest, AllowTheFirstTry)
{
    EXPECT_TRUE(m_files.mayTry("a"));
    EXPECT_TRUE(m_files.mayTry(""));
}

TEST_F(UnreadableFilesTest, AllowTheNextTryAfterAWhile)
{
    m_files.tried("a", false);
    EXPECT_FALSE(m_files.mayTry("a"));
    EXPECT_TRUE(m_files.mayTry("b"));
    m_clock.advance(UnreadableFiles::UntilNextTry - std::chrono::nanoseconds(1));
    EXPECT_FALSE(m_files.mayTry("a"));
    m_clock.advance(std::chrono::nanoseconds(1));
    EXPECT_TRUE(m_files.mayTry("a"));

    m_files.tried("a", false);
    EXPECT_FALSE(m_files.mayTry("a")) << "the while begins anew";
    m_clock.advance(UnreadableFiles::UntilNextTry);
    EXPECT_TRUE(m_files.mayTry("a"));
    EXPECT_EQ(m_warnings.take(), warningOf("a"));
}

TEST_F(UnreadableFilesTest, WarnOnceOfEachFile)
{
    for (int i = 0; i < 3; ++i) {
        m_files.tried("a", false);
        m_files.tried("b", false);
        m_clock.advance(UnreadableFiles::UntilNextTry);
    }
    EXPECT_EQ(m_warnings.take(), warningOf("a") + warningOf("b"));
}

TEST_F(UnreadableFilesTest, ForgetAFileThatWasRead)
{
    m_files.tried("a", false);
    EXPECT_EQ(m_warnings.take(), warningOf("a"));
    m_files.tried("a", true);
    EXPECT_TRUE(m_files.mayTry("a"));

    m_files.tried("a", false);
    EXPECT_EQ(m_warnings.take(), warningOf("a")) << "it was readable in between";
}

TEST_F(UnreadableFilesTest, NameTheFileAsItIs)
{
    m_files.tried("\xef\xbb\xbf数.mp4", false);
    EXPECT_EQ(m_warnings.take(), warningOf(QChar(0xfeff) + QString::fromUtf8("数.mp4")));
}
