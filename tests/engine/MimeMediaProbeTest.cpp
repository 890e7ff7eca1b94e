// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/MediaProbe.h>

#include <gtest/gtest.h>

#include "support/TestMedia.h"

#include <QTemporaryDir>

#include <string>

using rvengine::MediaKind;
using rvengine::MediaProbe;

namespace {

/// Without an engine a file is what its MIME type says.
class MimeMediaProbeTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    bool is(MediaKind kind, const std::string& path)
    {
        return m_probe.probe(path, kind).has_value();
    }

    QTemporaryDir m_folder;
    MediaProbe m_probe;
};

} // namespace

TEST_F(MimeMediaProbeTest, GivesEveryVideoOneSizeAndLength)
{
    const std::string path = TestMedia::video(folder(), "a.mp4", 320, 180, "25", 1);
    const auto info = m_probe.probe(path, MediaKind::Video);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 1920);
    EXPECT_EQ(info->height, 1080);
    EXPECT_EQ(info->durationMs, 10000);
}

TEST_F(MimeMediaProbeTest, GivesEverySoundOneLength)
{
    for (const std::string& path :
         {TestMedia::sound(folder(), "a.wav", 1), TestMedia::sound(folder(), "a.m4a", 1),
          TestMedia::video(folder(), "a.mp4", 320, 180, "25", 1)}) {
        const auto info = m_probe.probe(path, MediaKind::Sound);
        ASSERT_TRUE(info) << path;
        EXPECT_EQ(info->width, 0);
        EXPECT_EQ(info->height, 0);
        EXPECT_EQ(info->durationMs, 10000);
    }
}

TEST_F(MimeMediaProbeTest, KnowsAVideoWithoutAnExtension)
{
    const std::string path = TestMedia::video(folder(), "a.mp4", 320, 180, "25", 1);

    EXPECT_TRUE(is(MediaKind::Video, TestMedia::copy(path, folder(), "video")));
    EXPECT_TRUE(is(MediaKind::Video, TestMedia::copy(path, folder(), "视频 文件")));
}

TEST_F(MimeMediaProbeTest, RefusesWhatIsOfAnotherKind)
{
    const std::string picture = TestMedia::picture(folder(), "a.png", 120, 80);
    EXPECT_FALSE(is(MediaKind::Video, picture));
    EXPECT_FALSE(is(MediaKind::Sound, picture));
    EXPECT_FALSE(is(MediaKind::Video, TestMedia::copy(picture, folder(), "png.mp4")));

    const std::string sound = TestMedia::sound(folder(), "a.wav", 1);
    EXPECT_FALSE(is(MediaKind::Video, sound));

    const std::string text = TestMedia::file(folder(), "a.txt", "text\n");
    EXPECT_FALSE(is(MediaKind::Video, text));
    EXPECT_FALSE(is(MediaKind::Sound, text));
}
