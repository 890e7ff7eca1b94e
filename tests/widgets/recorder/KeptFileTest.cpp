// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FolderOfFiles.h"

#include <norvel/widgets/recorder/KeptFile.h>

#include <gtest/gtest.h>

#include <QRegularExpression>

using norvel::KeptFile;

namespace {

class KeptFileTest : public testing::Test
{
protected:
    FolderOfFiles folder;
};

} // namespace

TEST_F(KeptFileTest, IsAsideInItsFolderUnderANameThatSaysWhatItIs)
{
    folder.write("voice.3gp", "old");
    const auto file = KeptFile::setAside(folder.path("voice.3gp"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->path(), folder.path("voice.3gp"));
    ASSERT_EQ(folder.names().size(), 1);
    const QString name = folder.names().first();
    const QRegularExpression form("^voice\\.3gp\\.kept-[0-9a-f]{32}$");
    EXPECT_TRUE(form.match(name).hasMatch()) << name.toStdString();
    EXPECT_EQ(folder.content(name), "old");
}

TEST_F(KeptFileTest, ComesBackAsItWas)
{
    folder.write("声音 #1", "old");
    const auto file = KeptFile::setAside(folder.path("声音 #1"));
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->putBack());
    EXPECT_EQ(folder.names(), QStringList{"声音 #1"});
    EXPECT_EQ(folder.content("声音 #1"), "old");
}

TEST_F(KeptFileTest, ComesBackOverWhatIsInItsPlace)
{
    folder.write("voice", "old");
    const auto file = KeptFile::setAside(folder.path("voice"));
    folder.write("voice", "an empty container");
    ASSERT_TRUE(file && file->putBack());
    EXPECT_EQ(folder.names(), QStringList{"voice"});
    EXPECT_EQ(folder.content("voice"), "old");
}

TEST_F(KeptFileTest, SaysWhenItCannotComeBackAndStaysAside)
{
    folder.write("voice", "old");
    const auto file = KeptFile::setAside(folder.path("voice"));
    ASSERT_TRUE(file);
    ASSERT_TRUE(QDir().mkpath(folder.path("voice/sub")));
    EXPECT_FALSE(file->putBack());
    ASSERT_EQ(folder.names().size(), 2);
    EXPECT_EQ(folder.content(folder.names().last()), "old");
    ASSERT_TRUE(QDir(folder.path("voice")).removeRecursively());
    EXPECT_TRUE(file->putBack()) << "later it can";
}

TEST_F(KeptFileTest, CanBeRemoved)
{
    folder.write("voice", "old");
    const auto file = KeptFile::setAside(folder.path("voice"));
    ASSERT_TRUE(file);
    folder.write("voice", "new");
    file->remove();
    EXPECT_EQ(folder.names(), QStringList{"voice"});
    EXPECT_EQ(folder.content("voice"), "new");
}

TEST_F(KeptFileTest, TwoFilesOfOneNameHaveNamesOfTheirOwn)
{
    folder.write("voice", "first");
    const auto first = KeptFile::setAside(folder.path("voice"));
    folder.write("voice", "second");
    const auto second = KeptFile::setAside(folder.path("voice"));
    ASSERT_TRUE(first && second);
    EXPECT_EQ(folder.names().size(), 2);
    EXPECT_TRUE(first->putBack());
    EXPECT_EQ(folder.content("voice"), "first");
    EXPECT_TRUE(second->putBack());
    EXPECT_EQ(folder.content("voice"), "second");
}

TEST_F(KeptFileTest, OnlyAFileIsSetAside)
{
    ASSERT_TRUE(QDir().mkpath(folder.path("sub")));
    EXPECT_FALSE(KeptFile::setAside(folder.path("sub")));
    EXPECT_FALSE(KeptFile::setAside(folder.path("none")));
    EXPECT_FALSE(KeptFile::setAside(folder.path("none/none")));
    EXPECT_FALSE(KeptFile::setAside(QString()));
    EXPECT_EQ(folder.names(), QStringList{"sub"});
}

TEST_F(KeptFileTest, AFileWhoseNameHasNoRoomForMoreStays)
{
    const QString name(250, 'n');
    folder.write(name, "old");
    EXPECT_FALSE(KeptFile::setAside(folder.path(name)));
    EXPECT_EQ(folder.names(), QStringList{name});
}
