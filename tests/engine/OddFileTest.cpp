// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/MediaProbe.h>
#include <engine/media/PictureFiles.h>
#include <engine/media/PictureReader.h>
#include <engine/media/SoundReader.h>

#include <gtest/gtest.h>

#include "FfmpegParts.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QTemporaryDir>

#include <ostream>
#include <string>
#include <vector>

using rvengine::MediaKind;
using rvengine::MediaProbe;
using rvengine::PictureReader;
using rvengine::SoundReader;

namespace {

QStringList words(const QString& text)
{
    return text.split(' ', Qt::SkipEmptyParts);
}

/// Files that are rare, and to be opened all the same.
class OddFileTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    QTemporaryDir m_folder;
    WarningCapture m_warnings;
    MediaProbe m_probe;
};

class StillFormatTest : public OddFileTest, public testing::WithParamInterface<const char*>
{
};

/// A file that not every FFmpeg can read, and what is seen of it.
struct RareFile
{
    const char* name;
    const char* needs; ///< a decoder or a filter
    void (*check)(const QString& folder);
};

void PrintTo(const RareFile& file, std::ostream* stream)
{
    *stream << file.name;
}

class RareFileTest : public OddFileTest, public testing::WithParamInterface<RareFile>
{
};

std::string made(const QString& folder, const QString& name, const QString& input,
                 const QString& encoding)
{
    return TestMedia::made(folder, name, QStringList{"-f", "lavfi", "-i", input} + words(encoding));
}

void expectAMovingPngToBeAVideo(const QString& folder)
{
    const std::string path = made(folder, "a.png", "testsrc2=s=96x54:r=10:d=1", "-f apng -plays 0");
    const auto info = MediaProbe().probe(path, MediaKind::Video);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 96);
    EXPECT_EQ(info->height, 54);
    EXPECT_NEAR(static_cast<double>(info->durationMs), 1000.0, 110.0);
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    EXPECT_NE(reader->picture(50, QSize()), reader->picture(850, QSize()));
    EXPECT_TRUE(MediaProbe().probe(path, MediaKind::Picture)) << "its first picture is a still one";
}

void expectAPngOfOnePictureToBeNone(const QString& folder)
{
    const std::string path = made(folder, "a.png", "testsrc2=s=96x54:r=10:d=0.1", "-f apng");
    EXPECT_FALSE(MediaProbe().probe(path, MediaKind::Video));
}

/// White paper of 203 cd/m2, which has the code 0.58 in PQ; without a mapping it is a middle gray.
std::string paperOfHighRange(const QString& folder)
{
    return made(folder, "pq.mp4",
                "color=0x949494:s=96x54:r=25:d=0.4,format=gbrp,"
                "scale=out_color_matrix=bt2020:out_range=tv,format=yuv420p10le",
                "-c:v libx265 -x265-params log-level=none:colorprim=bt2020:"
                "transfer=smpte2084:colormatrix=bt2020nc -color_primaries bt2020 "
                "-color_trc smpte2084 -colorspace bt2020nc");
}

void expectAHighRangeToBeMapped(const QString& folder)
{
    const auto reader = PictureReader::open(paperOfHighRange(folder));
    ASSERT_NE(reader, nullptr);
    const int gray = qGray(reader->picture(100, QSize()).pixel(48, 27));
    EXPECT_GT(gray, 0x94 + 20) << "paper is bright on a display";
    EXPECT_LT(gray, 255) << "and lights are brighter";
}

const std::vector<RareFile> rareFiles{
    {"AMovingPngIsAVideo", "apng", &expectAMovingPngToBeAVideo},
    {"APngOfOnePictureIsNoVideo", "apng", &expectAPngOfOnePictureToBeNone},
    {"AHighDynamicRangeIsMappedToADisplay", "zscale", &expectAHighRangeToBeMapped},
};

} // namespace

TEST_P(StillFormatTest, IsAPictureAndNoVideo)
{
    const QString extension = GetParam();
    const std::string path =
        made(folder(), "a." + extension, "color=0x3060c0:s=64x36:d=1", "-frames:v 1");
    const auto info = m_probe.probe(path, MediaKind::Picture);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 64);
    EXPECT_EQ(info->height, 36);
    EXPECT_FALSE(m_probe.probe(path, MediaKind::Video));
    rvengine::PictureFiles files;
    const QImage picture = files.picture(path, QSize());
    ASSERT_EQ(picture.size(), QSize(64, 36));
    const QColor middle = picture.pixelColor(32, 18);
    EXPECT_NEAR(middle.red(), 0x30, 6);
    EXPECT_NEAR(middle.green(), 0x60, 6);
    EXPECT_NEAR(middle.blue(), 0xc0, 6);
}

TEST_P(StillFormatTest, IsNoneWithoutItsEnd)
{
    const QString extension = GetParam();
    const std::string path =
        made(folder(), "a." + extension, "testsrc2=s=160x90:d=1", "-frames:v 1");
    const int size = TestMedia::content(path).size();
    const std::string part = TestMedia::truncated(path, folder(), "part." + extension, size / 2);
    EXPECT_FALSE(m_probe.probe(part, MediaKind::Picture));
}

INSTANTIATE_TEST_SUITE_P(All, StillFormatTest, testing::Values("webp", "tiff", "tga", "png", "bmp"),
                         [](const auto& format) { return std::string(format.param); });

TEST_F(OddFileTest, AVideoIsNoPicture)
{
    EXPECT_FALSE(m_probe.probe(sharedMedia::numbered(), MediaKind::Picture));
}

TEST_F(OddFileTest, ARecordingOfABrowserIsMeasuredAndSoughtIn)
{
    // Written to a pipe, which tells neither how long it is nor where what is.
    const std::string whole = TestMedia::numberedVideo(
        folder(), "whole.mkv", 320, 180, "25", 100,
        words("-c:v libvpx -deadline realtime -cpu-used 8 -g 20 -live 1 -f matroska"));
    const auto info = m_probe.probe(whole, MediaKind::Video);
    ASSERT_EQ(TestMedia::durationMs(whole), -1) << "else it has a length";
    ASSERT_TRUE(info);
    EXPECT_NEAR(static_cast<double>(info->durationMs), 4000.0, 41.0);
    const auto reader = PictureReader::open(whole);
    ASSERT_NE(reader, nullptr);
    for (const int number : {99, 0, 50, 51, 20, 98, 3})
        EXPECT_EQ(TestMedia::frameNumber(reader->picture(number * 40 + 20, QSize(320, 180))),
                  number);
}

TEST_F(OddFileTest, PlayingForwardDecodesEachPictureOnce)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);
    for (int number = 0; number < 100; ++number)
        ASSERT_EQ(TestMedia::frameNumber(reader->picture(number * 40, QSize())), number);
    EXPECT_EQ(reader->decodedCount(), 100);
}

TEST_F(OddFileTest, AStepBackDecodesNothing)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);
    reader->picture(2000, QSize());
    const long long before = reader->decodedCount();
    for (int number = 50; number > 40; --number)
        EXPECT_EQ(TestMedia::frameNumber(reader->picture(number * 40, QSize())), number);
    EXPECT_EQ(reader->decodedCount(), before);
}

TEST_F(OddFileTest, AJumpDecodesFromTheKeyFrameBefore)
{
    const std::string path =
        TestMedia::numberedVideo(folder(), "keys.mp4", 320, 180, "25", 200,
                                 words("-c:v libx264 -g 20 -bf 2 -pix_fmt yuv420p"));
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    for (const int number : {190, 45, 121}) {
        const long long before = reader->decodedCount();
        EXPECT_EQ(TestMedia::frameNumber(reader->picture(number * 40, QSize())), number);
        EXPECT_LE(reader->decodedCount() - before, 20 + 2) << number;
    }
}

TEST_F(OddFileTest, AReaderThatRestedGoesOn)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(2000, QSize())), 50);
    reader->rest();
    const long long before = reader->decodedCount();
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(1960, QSize())), 49);
    EXPECT_EQ(reader->decodedCount(), before) << "what was decoded is kept";
    for (const int number : {51, 52, 99, 98, 0})
        EXPECT_EQ(TestMedia::frameNumber(reader->picture(number * 40, QSize())), number);
    reader->picture(99 * 40 + 1000, QSize());
    reader->rest();
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(99 * 40 + 1000, QSize())), 99);
}

TEST_F(OddFileTest, APictureOnTheWayIsGivenToOneWhoDoesNotWait)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);
    reader->picture(0, QSize());
    int asked = 0;
    const auto isEnough = [&] { return ++asked == 5; };
    const int onTheWay = TestMedia::frameNumber(reader->picture(3600, QSize(), isEnough));
    EXPECT_GT(onTheWay, 0);
    EXPECT_LT(onTheWay, 90);
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(3600, QSize())), 90)
        << "it goes on from there";
}

TEST_F(OddFileTest, ItIsSaidOnceThatAHighRangeIsNotMapped)
{
    QStringList expected;
    if (!ffmpegParts::has("zscale"))
        expected << "videos of a high dynamic range look flat: this FFmpeg has no filter for them";
    const std::string path = paperOfHighRange(folder());
    for (int round = 0; round < 2; ++round) {
        const auto reader = PictureReader::open(path);
        ASSERT_NE(reader, nullptr);
        EXPECT_FALSE(reader->picture(100, QSize()).isNull());
    }
    EXPECT_EQ(m_warnings.take(), expected);
}

// An FFmpeg may lack all that they need.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RareFileTest);

TEST_P(RareFileTest, IsReadWhereItCanBe)
{
    GetParam().check(folder());
}

INSTANTIATE_TEST_SUITE_P(All, RareFileTest,
                         testing::ValuesIn(ffmpegParts::possible("RareFileTest", rareFiles)),
                         [](const auto& file) { return std::string(file.param.name); });
