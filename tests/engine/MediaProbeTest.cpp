// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MediaProbeFixture.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

using rvengine::MediaKind;
using rvengine::MediaProbe;

namespace {

/// Gives a file the modification time of a moment long ago.
void age(const std::string& path, int milliseconds = 0)
{
    const QDateTime moment(QDate(2020, 2, 29), QTime(12, 34, 56, 789));
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(file.setFileTime(moment.addMSecs(milliseconds), QFileDevice::FileModificationTime));
}

/// A picture of 120 x 80 that is old.
std::string oldPicture(const QString& folder)
{
    const std::string path = TestMedia::picture(folder, "a.png", 120, 80);
    age(path);
    return path;
}

/// Writes other content into an old file, which looks as old as before.
void replaceUnnoticed(const std::string& path, const QByteArray& content)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(content.constData(), content.size());
    age(path);
}

/// Runs `work` in four threads that start together.
template <typename Work>
void inFourThreads(const Work& work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST_F(MediaProbeTest, MeasuresAPicture)
{
    const auto info =
        m_probe.probe(TestMedia::picture(folder(), "a.png", 120, 80), MediaKind::Picture);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 120);
    EXPECT_EQ(info->height, 80);
    EXPECT_EQ(info->durationMs, 0);
}

TEST_F(MediaProbeTest, RefusesWhatIsNoFile)
{
    expectNothing("");
    expectNothing((folder() + "/missing.mp4").toStdString());
    expectNothing(folder().toStdString());
    expectNothing(std::string(10000, 'x'));
    EXPECT_EQ(m_probe.probedCount(), 0U);
}

TEST_F(MediaProbeTest, RefusesAPathThatIsNoUtf8Text)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    const std::string latin1 = (folder() + "/").toStdString() + "\xe9.png";
    std::filesystem::copy_file(path, latin1);

    expectNothing(latin1);
    std::filesystem::remove(latin1); // QTemporaryDir cannot remove a file of such a name.
    expectNothing(path + std::string(1, '\0'));
    expectNothing(path + std::string("\0.png", 5));
    EXPECT_EQ(width(path), 120);
}

TEST_F(MediaProbeTest, RefusesAnEmptyFile)
{
    expectNothing(TestMedia::file(folder(), "a.mp4", {}));
    expectNothing(TestMedia::file(folder(), "a.png", {}));
    expectNothing(TestMedia::file(folder(), "a.wav", {}));
}

TEST_F(MediaProbeTest, TakesAnyNameForALocalFile)
{
    const std::string source = TestMedia::picture(folder(), "a.png", 120, 80);
    for (const char* name :
         {"视频 文件.png", "a%03d.png", "a#b&c.png", "-", "~.png", "\xef\xbf\xbd.png"})
        EXPECT_EQ(width(TestMedia::copy(source, folder(), name)), 120) << name;
}

TEST_F(MediaProbeTest, FindsAFileWhoseNameIsNotInComposedForm)
{
    const std::string source = TestMedia::picture(folder(), "a.png", 120, 80);
    const std::string decomposed = (folder() + "/").toStdString() + "e\xcc\x81.png";
    const auto decomposedPath = std::filesystem::u8path(decomposed);
    std::filesystem::copy_file(source, decomposedPath);

    EXPECT_EQ(width(decomposed), 120);
    std::filesystem::remove(decomposedPath); // QTemporaryDir cannot remove a file of such a name.
}

TEST_F(MediaProbeTest, ReadsARelativePathFromTheWorkingDirectoryOfTheCall)
{
    ASSERT_TRUE(QDir(folder()).mkdir("other"));
    TestMedia::picture(folder(), "a.png", 120, 80);
    TestMedia::picture(folder() + "/other", "a.png", 60, 40);
    const QString before = QDir::currentPath();

    QDir::setCurrent(folder());
    EXPECT_EQ(width("a.png"), 120);
    QDir::setCurrent(folder() + "/other");
    EXPECT_EQ(width("a.png"), 60);

    QDir::setCurrent(before);
}

TEST_F(MediaProbeTest, OpensAFileOnce)
{
    const std::string path = oldPicture(folder());
    EXPECT_EQ(width(path), 120);
    replaceUnnoticed(path, QByteArray(TestMedia::content(path).size(), 'x'));

    EXPECT_EQ(width(path), 120);
    EXPECT_EQ(m_probe.probedCount(), 1U);
    EXPECT_FALSE(MediaProbe().probe(path, MediaKind::Picture));
}

TEST_F(MediaProbeTest, RemembersAFailure)
{
    const QByteArray picture = TestMedia::content(TestMedia::picture(folder(), "a.png", 120, 80));
    const std::string path = TestMedia::file(folder(), "b.png", QByteArray(picture.size(), 'x'));
    age(path);
    EXPECT_EQ(width(path), -1);
    replaceUnnoticed(path, picture);

    EXPECT_EQ(width(path), -1);
    EXPECT_EQ(m_probe.probedCount(), 1U);
    EXPECT_TRUE(MediaProbe().probe(path, MediaKind::Picture));
}

TEST_F(MediaProbeTest, OpensAFileAgainWhenItsTimeChanged)
{
    const std::string path = oldPicture(folder());
    EXPECT_EQ(width(path), 120);
    replaceUnnoticed(path, QByteArray(TestMedia::content(path).size(), 'x'));
    age(path, 10);

    EXPECT_EQ(width(path), -1);
    EXPECT_EQ(m_probe.probedCount(), 2U);
}

TEST_F(MediaProbeTest, OpensAFileAgainWhenItsSizeChanged)
{
    const std::string path = oldPicture(folder());
    const QByteArray other = TestMedia::content(TestMedia::picture(folder(), "b.png", 640, 360));
    EXPECT_EQ(width(path), 120);
    replaceUnnoticed(path, other);

    EXPECT_EQ(width(path), 640);
    EXPECT_EQ(width(path), 640);
    EXPECT_EQ(m_probe.probedCount(), 2U);
}

TEST_F(MediaProbeTest, MissesAFileThatWasRemoved)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    EXPECT_EQ(width(path), 120);
    std::filesystem::remove(path);

    EXPECT_EQ(width(path), -1);
}

TEST_F(MediaProbeTest, RemembersEachKindApart)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(m_probe.probe(path, MediaKind::Video));
        EXPECT_TRUE(m_probe.probe(path, MediaKind::Picture));
        EXPECT_FALSE(m_probe.probe(path, MediaKind::Sound));
    }

    EXPECT_EQ(m_probe.probedCount(), 3U);
}

TEST_F(MediaProbeTest, ForgetsTheOldestBeyondItsCapacity)
{
    MediaProbe probe(2);
    const std::string a = TestMedia::picture(folder(), "a.png", 20, 10);
    const std::string b = TestMedia::copy(a, folder(), "b.png");
    const std::string c = TestMedia::copy(a, folder(), "c.png");
    for (const std::string& path : {a, b, c, c, b})
        EXPECT_TRUE(probe.probe(path, MediaKind::Picture));
    EXPECT_EQ(probe.probedCount(), 3U);

    EXPECT_TRUE(probe.probe(a, MediaKind::Picture));
    EXPECT_EQ(probe.probedCount(), 4U);
}

TEST_F(MediaProbeTest, MeasuresOnceForThreadsThatAskTogether)
{
    std::vector<std::string> paths{TestMedia::picture(folder(), "0.png", 120, 80)};
    for (int i = 1; i < 20; ++i)
        paths.push_back(TestMedia::copy(paths[0], folder(), QString("%1.png").arg(i)));
    std::atomic<int> measured{0};

    inFourThreads([&] {
        for (const std::string& path : paths)
            measured += width(path) == 120 ? 1 : 0;
    });

    EXPECT_EQ(measured, 80);
    EXPECT_EQ(m_probe.probedCount(), 20U);
}

TEST_F(MediaProbeTest, IsOneForTheProcess)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    const std::size_t before = rvengine::mediaProbe().probedCount();
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(rvengine::mediaProbe().probe(path, MediaKind::Picture));

    EXPECT_EQ(rvengine::mediaProbe().probedCount(), before + 1);
}
