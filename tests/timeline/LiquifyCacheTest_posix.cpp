// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Disks that take no more, as POSIX systems have them.

#include "timeline/LiquifyCacheFixture.h"

#include <gtest/gtest.h>

#include <QDir>

#include <csignal>
#include <sys/resource.h>

namespace {

using norvel::RvARLiquifyAttribute;

/// No file of this process may grow, as on a full disk, while it lives. Unlike the rights of a
/// folder that holds for every user.
class FullDisk
{
public:
    FullDisk()
        : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit none = m_before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*m_signal)(int);
    rlimit m_before{};
};

TEST_F(LiquifyCacheTest, AFullDiskLeavesAnEmptyFolder)
{
    addStroke(1.0F);
    std::unique_ptr<RvARLiquifyAttribute> record;
    {
        const FullDisk disk;
        record = capture();
    }
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
    ASSERT_EQ(m_cache.folders().size(), 1);
    EXPECT_TRUE(QDir(m_cache.root() + "/Norvel/Undo/" + m_cache.folders().first()).isEmpty());
}

TEST_F(LiquifyCacheTest, ARootThatTakesNoFolderGivesNone)
{
    setRoot(QStringLiteral("/proc/self"));
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
}

} // namespace
