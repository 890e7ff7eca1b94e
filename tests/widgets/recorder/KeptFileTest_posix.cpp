// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FolderOfFiles.h"
#include "support/ScopedNobody_posix.h"

#include <norvel/widgets/recorder/KeptFile.h>

#include <gtest/gtest.h>

#include <sys/stat.h>

using norvel::KeptFile;

TEST(KeptFileLinkTest, ALinkStaysAndItsFileIsSetAside)
{
    const FolderOfFiles folder;
    ASSERT_TRUE(QDir().mkpath(folder.path("sub")));
    folder.write("sub/voice", "old");
    ASSERT_TRUE(QFile::link(folder.path("sub/voice"), folder.path("link")));
    const auto file = KeptFile::setAside(folder.path("link"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->path(), folder.path("link"));
    EXPECT_EQ(folder.names(), (QStringList{"link", "sub"}));

    folder.write("link", "new");
    EXPECT_EQ(folder.content("sub/voice"), "new") << "the link leads there still";
    EXPECT_TRUE(file->putBack());
    EXPECT_EQ(folder.content("link"), "old");
    EXPECT_TRUE(QFileInfo(folder.path("link")).isSymLink());
    EXPECT_EQ(QDir(folder.path("sub")).entryList(QDir::Files), QStringList{"voice"});
}

TEST(KeptFileLinkTest, APipeIsNotSetAside)
{
    const FolderOfFiles folder;
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.path("pipe")).constData(), 0600), 0);
    EXPECT_FALSE(KeptFile::setAside(folder.path("pipe")));
    EXPECT_EQ(folder.names(), QStringList{"pipe"});
}

TEST(KeptFileRightsTest, AFileThatMayNotBeWrittenStays)
{
    const ScopedNobody nobody;
    const FolderOfFiles folder;
    folder.write("voice", "old");
    QFile::setPermissions(folder.path("voice"), QFile::ReadOwner);
    EXPECT_FALSE(KeptFile::setAside(folder.path("voice")));
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST(KeptFileRightsTest, AFileInAFolderThatMayNotBeWrittenStays)
{
    const ScopedNobody nobody;
    const FolderOfFiles folder;
    ASSERT_TRUE(QDir().mkpath(folder.path("sub")));
    folder.write("sub/voice", "old");
    QFile::setPermissions(folder.path("sub"), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(KeptFile::setAside(folder.path("sub/voice")));
    EXPECT_EQ(folder.content("sub/voice"), "old");
    QFile::setPermissions(folder.path("sub"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
