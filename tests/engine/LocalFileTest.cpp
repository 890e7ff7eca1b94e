// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/LocalFile.h>

#include <gtest/gtest.h>

#include "support/TestMedia.h"

#include <QDir>
#include <QTemporaryDir>

#include <string>

using rvengine::isPath;
using rvengine::readableFile;

namespace {

/// Makes a folder the current one.
class ScopedCurrentFolder
{
public:
    explicit ScopedCurrentFolder(const QString& path) { EXPECT_TRUE(QDir::setCurrent(path)); }
    ~ScopedCurrentFolder() { QDir::setCurrent(m_before); }
    ScopedCurrentFolder(const ScopedCurrentFolder&) = delete;
    ScopedCurrentFolder& operator=(const ScopedCurrentFolder&) = delete;

private:
    const QString m_before = QDir::currentPath();
};

} // namespace

TEST(LocalFileTest, ANameMayBeginWithAByteOrderMark)
{
    const std::string mark = "\xef\xbb\xbf";
    const QTemporaryDir folder;
    TestMedia::file(folder.path(), "plain", "plain");
    TestMedia::file(folder.path(), QChar(0xfeff) + QStringLiteral("marked"), "marked");
    const ScopedCurrentFolder current(folder.path());

    EXPECT_FALSE(readableFile(mark + "plain")) << "another name";
    const auto marked = readableFile(mark + "marked");
    ASSERT_TRUE(marked);
    QFile file;
    ASSERT_TRUE(rvengine::openForReading(file, *marked));
    EXPECT_EQ(file.readAll(), "marked");
}

TEST(LocalFileTest, APathIsUtf8WithoutANul)
{
    using namespace std::string_literals;
    EXPECT_TRUE(isPath("a"));
    EXPECT_TRUE(isPath("/数/🎬.mp4"));
    EXPECT_TRUE(isPath("\xef\xbb\xbf"));
    EXPECT_FALSE(isPath(""));
    EXPECT_FALSE(isPath("a\0b"s));
    EXPECT_FALSE(isPath("\0"s));
    EXPECT_FALSE(isPath("\xff\xfe.mp4"));
    EXPECT_FALSE(isPath("cut off \xe8\xa7"));
}
