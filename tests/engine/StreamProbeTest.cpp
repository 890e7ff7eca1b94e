// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/MediaProbe.h>

#include <gtest/gtest.h>

#include "SharedMedia.h"
#include "support/ScopedCommaLocale.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <vector>

using rvengine::MediaKind;
using rvengine::MediaProbe;

namespace {

/// What is measured of video and sound.
class StreamProbeTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    /// A video of one second of this name in the folder of the test.
    std::string video(const QString& name) const
    {
        const QString made = "second." + QFileInfo(name).suffix();
        return TestMedia::copy(
            sharedMedia::once(
                made,
                [&] { return TestMedia::video(sharedMedia::folder(), made, 320, 180, "25", 1); }),
            folder(), name);
    }

    bool isVideo(const std::string& path)
    {
        return m_probe.probe(path, MediaKind::Video).has_value();
    }

    bool isSound(const std::string& path)
    {
        return m_probe.probe(path, MediaKind::Sound).has_value();
    }

    QTemporaryDir m_folder;
    MediaProbe m_probe;
};

/// The length of files, by extension, against the one that ffprobe tells.
class SoundLengthTest : public StreamProbeTest, public testing::WithParamInterface<const char*>
{
};

class VideoLengthTest : public StreamProbeTest, public testing::WithParamInterface<const char*>
{
};

std::string extension(const testing::TestParamInfo<const char*>& info)
{
    return info.param;
}

QByteArray randomBytes(int count)
{
    std::mt19937 generator(1);
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() & 0xFF);
    return bytes;
}

/// Lets what stderr got be read back while it lives.
class ScopedStderr
{
public:
    ScopedStderr() { testing::internal::CaptureStderr(); }
    std::string text() const { return testing::internal::GetCapturedStderr(); }
};

} // namespace

TEST_F(StreamProbeTest, MeasuresAVideo)
{
    const std::string path = TestMedia::video(folder(), "a.mp4", 320, 180, "25", 2);
    const auto info = m_probe.probe(path, MediaKind::Video);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 320);
    EXPECT_EQ(info->height, 180);
    EXPECT_EQ(info->durationMs, 2000);
}

TEST_F(StreamProbeTest, MeasuresAVideoOfABrokenFrameRate)
{
    const std::string path = TestMedia::video(folder(), "a.mp4", 640, 360, "30000/1001", 2, false);
    const auto info = m_probe.probe(path, MediaKind::Video);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 640);
    EXPECT_EQ(info->height, 360);
    EXPECT_EQ(info->durationMs, 2002);
}

TEST_P(VideoLengthTest, IsThatOfTheFile)
{
    const QString name = QString("a.%1").arg(GetParam());
    const std::string path = TestMedia::video(folder(), name, 320, 180, "30000/1001", 1.5);
    const auto info = m_probe.probe(path, MediaKind::Video);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 320);
    EXPECT_NEAR(static_cast<double>(info->durationMs), TestMedia::durationMs(path), 1);
}

INSTANTIATE_TEST_SUITE_P(Formats, VideoLengthTest,
                         testing::Values("mp4", "mov", "mkv", "webm", "avi", "ts", "flv", "wmv"),
                         extension);

TEST_P(SoundLengthTest, IsThatOfTheFile)
{
    const std::string path = TestMedia::sound(folder(), QString("a.%1").arg(GetParam()), 1.5);
    const auto info = m_probe.probe(path, MediaKind::Sound);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 0);
    EXPECT_EQ(info->height, 0);
    // What files without a length are said to last is a guess by their size.
    const bool isTold = QString(GetParam()) != "aac";
    const double decoded = static_cast<double>(TestMedia::samples(path).size()) / 2 / 48;
    EXPECT_NEAR(static_cast<double>(info->durationMs),
                isTold ? TestMedia::durationMs(path) : decoded, 1);
    EXPECT_NEAR(static_cast<double>(info->durationMs), 1500, 60);
}

INSTANTIATE_TEST_SUITE_P(Formats, SoundLengthTest,
                         testing::Values("wav", "m4a", "mp3", "ogg", "flac", "opus", "aac"),
                         extension);

TEST_F(StreamProbeTest, MeasuresAVoiceRecording)
{
    // A header and 50 frames of 20 ms, each of 31 bytes after its type.
    const QByteArray frame = QByteArray(1, '\x3c') + QByteArray(31, '\0');
    const std::string path = TestMedia::file(folder(), "a.amr", "#!AMR\n" + frame.repeated(50));
    const auto info = m_probe.probe(path, MediaKind::Sound);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->durationMs, 1000);
}

TEST_F(StreamProbeTest, TakesAVideoWithSoundForSound)
{
    const auto info = m_probe.probe(video("a.mp4"), MediaKind::Sound);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 0);
    EXPECT_EQ(info->height, 0);
    EXPECT_EQ(info->durationMs, 1000);
}

TEST_F(StreamProbeTest, RefusesAsSoundWhatHasNone)
{
    EXPECT_FALSE(isSound(TestMedia::video(folder(), "a.mp4", 320, 180, "25", 1, false)));
    EXPECT_FALSE(isSound(TestMedia::picture(folder(), "a.png", 120, 80)));
    EXPECT_FALSE(isSound(TestMedia::file(folder(), "a.wav", "no sound\n")));
}

TEST_F(StreamProbeTest, RefusesSoundAloneAsVideo)
{
    const std::string wav = TestMedia::sound(folder(), "a.wav", 1);
    EXPECT_FALSE(isVideo(wav));
    EXPECT_FALSE(isVideo(TestMedia::copy(wav, folder(), "wav.mp4")));
    EXPECT_FALSE(isVideo(TestMedia::sound(folder(), "a.m4a", 1)));
}

TEST_F(StreamProbeTest, RefusesSoundWithACoverAsVideo)
{
    for (const char* name : {"a.mp3", "a.m4a"}) {
        const std::string path = TestMedia::soundWithCover(folder(), name, 1);
        EXPECT_FALSE(isVideo(path)) << name;
        EXPECT_TRUE(isSound(path)) << name;
    }
}

TEST_F(StreamProbeTest, RefusesAStillPictureAsVideo)
{
    for (const char* type : {"png", "jpg", "gif", "bmp", "ppm", "tiff", "tga", "webp", "jp2"}) {
        const QString name = QString("a.%1").arg(type);
        const std::string path = TestMedia::picture(folder(), name, 120, 80);
        EXPECT_FALSE(isVideo(path)) << type;
        EXPECT_FALSE(isVideo(TestMedia::copy(path, folder(), name + ".mp4"))) << type;
    }
}

TEST_F(StreamProbeTest, RefusesAPictureNamedLikeASequence)
{
    const std::string path = TestMedia::picture(folder(), "a000.tiff", 120, 80);
    TestMedia::copy(path, folder(), "a001.tiff");

    EXPECT_FALSE(isVideo(TestMedia::copy(path, folder(), "a%03d.tiff")));
}

TEST_F(StreamProbeTest, TakesAMovingGifForVideo)
{
    const auto info = m_probe.probe(TestMedia::video(folder(), "a.gif", 120, 80, "10", 1, false),
                                    MediaKind::Video);

    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 120);
    EXPECT_EQ(info->durationMs, 1000);
}

TEST_F(StreamProbeTest, TakesAVideoByItsContent)
{
    const std::string path = video("a.mp4");
    EXPECT_TRUE(isVideo(TestMedia::copy(path, folder(), "a.png")));
    EXPECT_TRUE(isVideo(TestMedia::copy(path, folder(), "a.txt")));
    EXPECT_TRUE(isVideo(TestMedia::copy(path, folder(), "a")));
}

TEST_F(StreamProbeTest, RefusesCorruptFiles)
{
    const std::string text = TestMedia::file(folder(), "text.mp4", "no video\n");
    const std::string bytes = TestMedia::file(folder(), "bytes.mp4", randomBytes(50000));
    const std::string part = TestMedia::truncated(video("a.mp4"), folder(), "part.mp4", 6000);
    for (const std::string& path : {text, bytes, part}) {
        EXPECT_FALSE(isVideo(path)) << path;
        EXPECT_FALSE(isSound(path)) << path;
    }
}

TEST_F(StreamProbeTest, RefusesAVideoOfWhichOnlyTheHeaderIsThere)
{
    const std::string path = TestMedia::video(folder(), "a.mkv", 320, 180, "25", 1, false);
    const QByteArray bytes = TestMedia::content(path);
    // The first cluster, which holds the first frames, starts with this number.
    const int header = bytes.indexOf(QByteArray::fromHex("1f43b675"));
    ASSERT_GT(header, 0);

    EXPECT_FALSE(isVideo(TestMedia::truncated(path, folder(), "header.mkv", header)));
}

TEST_F(StreamProbeTest, RefusesAStreamOfUnknownLength)
{
    EXPECT_FALSE(isVideo(TestMedia::video(folder(), "a.h264", 320, 180, "25", 1, false)));
}

TEST_F(StreamProbeTest, SaysNothingAboutCorruptFiles)
{
    const std::string part = TestMedia::truncated(video("a.mp4"), folder(), "part.mp4", 6000);
    QByteArray bytes = TestMedia::content(video("b.mkv"));
    bytes.replace(bytes.size() / 2, 1000, randomBytes(1000));
    const std::string damaged = TestMedia::file(folder(), "damaged.mkv", bytes);

    const ScopedStderr output;
    EXPECT_FALSE(isVideo(part));
    EXPECT_TRUE(isVideo(damaged));
    EXPECT_EQ(output.text(), "");
}

TEST_F(StreamProbeTest, TakesAnyNameForALocalFile)
{
    const std::string source = video("a.mp4");
    for (const char* name :
         {"视频 文件.mp4", "a:b.mp4", "file:a.mp4", "concat:a.mp4", "pipe:0", "mp4:a?b=c.mp4",
          "a?b=c.mp4", "a%03d.mp4", "a#b&c.mp4", "a\\?b.mp4", "-"})
        EXPECT_TRUE(!TestMedia::isFileName(name) ||
                    isVideo(TestMedia::copy(source, folder(), name)))
            << name;
}

TEST_F(StreamProbeTest, TakesARelativePathForALocalFile)
{
    const std::string source = video("a.mp4");
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder());
    for (const char* name : {"concat:a.mp4", "mp4:b.mp4", "-"}) {
        if (!TestMedia::isFileName(name))
            continue;
        TestMedia::copy(source, folder(), name);
        EXPECT_TRUE(isVideo(name)) << name;
    }
    // No such files: FFmpeg would take the name for another file or for a device.
    EXPECT_FALSE(isVideo("file:a.mp4"));
    EXPECT_FALSE(isVideo("mp4:a.mp4"));
    EXPECT_FALSE(isVideo("lavfi:testsrc"));
    QDir::setCurrent(before);
}

TEST_F(StreamProbeTest, MeasuresAnotherFileThatTookThePlace)
{
    const std::string path = video("a.mp4");
    EXPECT_EQ(m_probe.probe(path, MediaKind::Video)->width, 320);
    TestMedia::video(folder(), "a.mp4", 640, 360, "25", 2);

    const auto info = m_probe.probe(path, MediaKind::Video);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 640);
    EXPECT_EQ(info->durationMs, 2000);
}

TEST_F(StreamProbeTest, MeasuresTheSameUnderADecimalComma)
{
    const std::string path = TestMedia::video(folder(), "a.mp4", 320, 180, "30000/1001", 2);
    const std::string cover = TestMedia::soundWithCover(folder(), "a.mp3", 1);
    const std::string gif = TestMedia::video(folder(), "a.gif", 120, 80, "10", 1, false);

    const ScopedCommaLocale comma(folder());
    const auto info = m_probe.probe(path, MediaKind::Video);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->durationMs, 2002);
    EXPECT_FALSE(isVideo(cover));
    EXPECT_TRUE(isVideo(gif));
}

TEST_F(StreamProbeTest, MeasuresInSeveralThreadsAtOnce)
{
    std::vector<std::string> paths{video("0.mp4")};
    for (int i = 1; i < 20; ++i)
        paths.push_back(TestMedia::copy(paths[0], folder(), QString("%1.mp4").arg(i)));
    std::atomic<int> measured{0};
    const auto work = [&](std::size_t first) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const std::string& path = paths[(first + i) % paths.size()];
            const auto info = m_probe.probe(path, MediaKind::Video);
            measured += info && info->durationMs == 1000 ? 1 : 0;
        }
    };

    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i)
        threads.emplace_back(work, i * 5);
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(measured, 80);
    EXPECT_EQ(m_probe.probedCount(), 20U);
}
