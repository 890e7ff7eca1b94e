// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Which files the probe opens where files have POSIX rights, kinds and names.

#include "MediaProbeFixture.h"
#include "support/ScopedNobody_posix.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QDir>

#include <filesystem>
#include <string>
#include <sys/stat.h>

TEST_F(MediaProbeTest, RefusesANamedPipeWithoutWaitingForAWriter)
{
    const std::string path = (folder() + "/pipe.mp4").toStdString();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);

    expectNothing(path);
}

TEST_F(MediaProbeTest, RefusesADevice)
{
    expectNothing("/dev/zero");
    EXPECT_EQ(m_probe.probedCount(), 0U);
}

TEST_F(MediaProbeTest, RefusesAFileWithoutReadPermissionUntilItHasIt)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    namespace fs = std::filesystem;
    fs::permissions(folder().toStdString(), fs::perms(0755));
    fs::permissions(path, fs::perms::none);
    {
        const ScopedNobody nobody;
        expectNothing(path);
    }
    fs::permissions(path, fs::perms(0644));
    const ScopedNobody nobody;
    EXPECT_EQ(width(path), 120);
}

TEST_F(MediaProbeTest, TakesNamesThatLookLikeAnAddressOrAPatternForALocalFile)
{
    const std::string source = TestMedia::picture(folder(), "a.png", 120, 80);
    for (const char* name : {"a:b.png", "file:a.png", "concat:a.png", "pipe:0", "qrc:a.png",
                             ":a.png", "a?b=c.png", "a\\?b.png"})
        EXPECT_EQ(width(TestMedia::copy(source, folder(), name)), 120) << name;
}

TEST_F(MediaProbeTest, ReadsARelativePathThatLooksLikeAnAddress)
{
    TestMedia::picture(folder(), "a:b.png", 120, 80);
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder());

    EXPECT_EQ(width("a:b.png"), 120);
    QDir::setCurrent(before);
}
