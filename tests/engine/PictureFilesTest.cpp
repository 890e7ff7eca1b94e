// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/PictureFiles.h>

#include <gtest/gtest.h>

#include "ManualClock.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QFile>
#include <QTemporaryDir>

#include <string>

using rvengine::PictureFiles;

namespace {

// There is room for two pictures of this size: they take 4 bytes for each px.
constexpr int Width = 64;
constexpr int Height = 36;

class PictureFilesTest : public testing::Test
{
protected:
    std::string picture(const QString& name, int width, int height) const
    {
        return TestMedia::solidPicture(m_folder.path(), name, width, height, Qt::red);
    }

    static void remove(const std::string& path)
    {
        EXPECT_TRUE(QFile::remove(QString::fromStdString(path)));
    }

    /// Whether the cache still has the picture of a file that is gone.
    bool hasKept(const std::string& path) { return !m_files.picture(path, QSize()).isNull(); }

    WarningCapture m_warnings;
    QTemporaryDir m_folder;
    ManualClock m_clock;
    PictureFiles m_files{m_clock.clock(), 2LL * 4 * Width* Height};
};

} // namespace

TEST_F(PictureFilesTest, GiveAPictureOfNoLessThanTheSizeThatIsWanted)
{
    const std::string path = picture("a.png", 40, 20);
    EXPECT_EQ(m_files.picture(path, QSize()).size(), QSize(40, 20));
    EXPECT_EQ(m_files.picture(path, QSize(100, 100)).size(), QSize(40, 20));
    EXPECT_EQ(m_files.picture(path, QSize(21, 1)).size(), QSize(40, 20));
    EXPECT_EQ(m_files.picture(path, QSize(1, 11)).size(), QSize(40, 20));
    EXPECT_EQ(m_files.picture(path, QSize(20, 10)).size(), QSize(20, 10));
    EXPECT_EQ(m_files.picture(path, QSize(6, 6)).size(), QSize(20, 10));
    EXPECT_EQ(m_files.picture(path, QSize(6, 5)).size(), QSize(10, 5));
    EXPECT_EQ(m_files.picture(path, QSize(5, 2)).size(), QSize(5, 2));
    EXPECT_EQ(m_files.picture(path, QSize(5, 2)).pixelColor(1, 1), QColor(Qt::red));
}

TEST_F(PictureFilesTest, KeepWhatTheyHaveReadWhileThereIsRoom)
{
    const std::string path = picture("a.png", 4, 2);
    m_files.picture(path, QSize());
    remove(path);
    for (int frame = 0; frame < 1000; ++frame)
        m_files.endFrame();

    EXPECT_TRUE(hasKept(path));
}

TEST_F(PictureFilesTest, DropWhatWasNotUsedForTheLongestTime)
{
    const std::string first = picture("1.png", Width, Height);
    const std::string second = TestMedia::copy(first, m_folder.path(), "2.png");
    const std::string third = TestMedia::copy(first, m_folder.path(), "3.png");
    for (const std::string& path : {first, second}) {
        ASSERT_FALSE(m_files.picture(path, QSize()).isNull());
        m_files.endFrame();
    }
    m_files.picture(first, QSize());
    m_files.endFrame();
    ASSERT_FALSE(m_files.picture(third, QSize()).isNull());
    m_files.endFrame();
    for (const std::string& path : {first, second, third})
        remove(path);

    EXPECT_TRUE(hasKept(first));
    EXPECT_FALSE(hasKept(second));
    EXPECT_TRUE(hasKept(third));
    EXPECT_EQ(m_warnings.take().size(), 1);
}

TEST_F(PictureFilesTest, KeepWhatTheFrameUsesThoughThereIsNoRoom)
{
    const std::string first = picture("1.png", Width, Height);
    const std::string second = TestMedia::copy(first, m_folder.path(), "2.png");
    const std::string third = TestMedia::copy(first, m_folder.path(), "3.png");
    for (const std::string& path : {first, second, third})
        ASSERT_FALSE(m_files.picture(path, QSize()).isNull());
    m_files.endFrame();
    for (const std::string& path : {first, second, third})
        remove(path);

    for (const std::string& path : {first, second, third})
        EXPECT_TRUE(hasKept(path)) << path;
}

TEST_F(PictureFilesTest, TryAFileThatCouldNotBeReadAgainAfterAWhile)
{
    const std::string path = m_folder.filePath("late.png").toStdString();
    EXPECT_TRUE(m_files.picture(path, QSize()).isNull());
    picture("late.png", 4, 2);
    EXPECT_TRUE(m_files.picture(path, QSize()).isNull());
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);

    EXPECT_EQ(m_files.picture(path, QSize()).size(), QSize(4, 2));
    EXPECT_EQ(m_warnings.take().size(), 1);
}
