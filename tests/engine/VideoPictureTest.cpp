// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>
#include <engine/media/PictureReader.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/ScopedCommaLocale.h"
#include "support/TestMedia.h"

#include <cmath>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using rvengine::Compositor;
using rvengine::Layer;
using rvengine::PictureReader;
using rvengine::Placement;

namespace {

constexpr QSize CanvasSize(320, 180);

/// Shows numbered videos: the number of the picture tells what is seen.
class VideoPictureTest : public testing::Test
{
protected:
    QImage composed(long long time, QSize size = CanvasSize)
    {
        return m_compositor.compose(m_sketch.scene(), time, size);
    }

    int numberAt(long long time) { return TestMedia::frameNumber(composed(time)); }

    Layer numbered(long long fileStart = 0, double speed = 1.0) const
    {
        Layer layer = m_sketch.video(sharedMedia::numbered());
        layer.fileStart = fileStart;
        layer.speed = speed;
        return layer;
    }

    WarningCapture m_warnings;
    SceneSketch m_sketch;
    Compositor m_compositor{rvengine::makePictureSource()};
};

struct FormatCase
{
    const char* name;
    const char* file;
    const char* frameRate;
    double perSecond;
    QSize size;
    QStringList codec;
};

void PrintTo(const FormatCase& testCase, std::ostream* stream)
{
    *stream << testCase.name;
}

std::string nameOf(const testing::TestParamInfo<FormatCase>& info)
{
    return info.param.name;
}

const QStringList H264{"-c:v", "libx264", "-g", "250", "-bf", "3", "-pix_fmt", "yuv420p"};
const QStringList H264Full{"-c:v", "libx264", "-g", "250", "-bf", "3", "-pix_fmt", "yuv444p"};
const QStringList Vp9{"-c:v",      "libvpx-vp9", "-deadline", "realtime",
                      "-cpu-used", "8",          "-pix_fmt",  "yuv420p"};

/// Videos of 40 pictures, of many rates, sizes and codecs.
class VideoFormatTest : public testing::TestWithParam<FormatCase>
{
protected:
    static constexpr int Frames = 40;

    static long long timeOf(double frame)
    {
        return std::llround(frame * 1000.0 / GetParam().perSecond);
    }

    /// Expects the picture when it begins, to the millisecond, and in its middle.
    void expectFrame(int frame)
    {
        for (const double place : {0.0, 0.5}) {
            const QImage picture =
                m_reader->picture(static_cast<double>(timeOf(frame + place)), GetParam().size);
            ASSERT_EQ(TestMedia::frameNumber(picture), frame) << "at " << timeOf(frame + place);
        }
    }

    void SetUp() override
    {
        const FormatCase& format = GetParam();
        const QString name = QString(format.name) + format.file;
        const std::string path = sharedMedia::once(name, [&] {
            return TestMedia::numberedVideo(sharedMedia::folder(), name, format.size.width(),
                                            format.size.height(), format.frameRate, Frames,
                                            format.codec);
        });
        m_reader = PictureReader::open(path);
        ASSERT_NE(m_reader, nullptr);
    }

    WarningCapture m_warnings;
    std::unique_ptr<PictureReader> m_reader;
};

} // namespace

TEST_P(VideoFormatTest, ShowsEveryPictureInItsTurn)
{
    for (int frame = 0; frame < Frames; ++frame)
        expectFrame(frame);
}

TEST_P(VideoFormatTest, ShowsThePictureOfATimeInAnyOrder)
{
    for (int frame = Frames - 1; frame >= 0; frame -= 3)
        expectFrame(frame);
    std::mt19937 generator(1);
    for (int i = 0; i < 30; ++i)
        expectFrame(static_cast<int>(generator() % Frames));
}

TEST_P(VideoFormatTest, StaysOnTheFirstAndTheLastPicture)
{
    const auto numberAt = [this](double time) {
        return TestMedia::frameNumber(m_reader->picture(time, GetParam().size));
    };
    EXPECT_EQ(numberAt(static_cast<double>(timeOf(Frames - 0.5))), Frames - 1);
    EXPECT_EQ(numberAt(static_cast<double>(timeOf(Frames + 1))), Frames - 1);
    EXPECT_EQ(numberAt(1e7), Frames - 1);
    EXPECT_EQ(numberAt(1e300), Frames - 1);
    EXPECT_EQ(numberAt(-1.0), 0);
    EXPECT_EQ(numberAt(-1e300), 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, VideoFormatTest,
    testing::Values(
        FormatCase{"Pal", ".mp4", "25", 25.0, CanvasSize, H264},
        FormatCase{"Ntsc", ".mp4", "30000/1001", 30000.0 / 1001.0, CanvasSize, H264},
        FormatCase{"Fast", ".mp4", "60", 60.0, CanvasSize, H264},
        FormatCase{"Film", ".mp4", "24000/1001", 24000.0 / 1001.0, CanvasSize, H264},
        FormatCase{"Slow", ".mp4", "10", 10.0, CanvasSize, H264},
        FormatCase{"Matroska", ".mkv", "30000/1001", 30000.0 / 1001.0, CanvasSize, H264},
        FormatCase{"FilmInMatroska", ".mkv", "24000/1001", 24000.0 / 1001.0, CanvasSize, H264},
        FormatCase{"WebM", ".webm", "25", 25.0, CanvasSize, Vp9},
        FormatCase{"OddWidth", ".mp4", "25", 25.0, QSize(321, 180), H264Full},
        FormatCase{"OddHeight", ".mp4", "25", 25.0, QSize(320, 181), H264Full},
        FormatCase{"OddSides", ".webm", "25", 25.0, QSize(323, 183), Vp9},
        FormatCase{"NoMultipleOfEight", ".mp4", "25", 25.0, QSize(342, 194), H264}),
    nameOf);

TEST(PictureReaderTest, GivesTheSizeThatIsWantedOrThatOfTheFile)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);

    for (const QSize wanted : {QSize(160, 90), QSize(101, 57), QSize(400, 200)}) {
        const QImage picture = reader->picture(480, wanted);
        EXPECT_EQ(picture.size(), wanted);
        EXPECT_EQ(TestMedia::frameNumber(picture), 12);
    }
    for (const QSize wanted : {QSize(), QSize(0, 0), QSize(20000, 20000)}) {
        const QImage picture = reader->picture(480, wanted);
        EXPECT_EQ(picture.size(), CanvasSize);
        EXPECT_EQ(TestMedia::frameNumber(picture), 12);
    }
}

TEST(PictureReaderTest, SurvivesATimeThatIsNoNumber)
{
    const auto reader = PictureReader::open(sharedMedia::numbered());
    ASSERT_NE(reader, nullptr);

    for (const double time :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()})
        EXPECT_EQ(reader->picture(time, CanvasSize).size(), CanvasSize) << time;
}

TEST(PictureReaderTest, TurnsAVideoAsItSays)
{
    const std::string path =
        TestMedia::turnedVideo(sharedMedia::numbered(), sharedMedia::folder(), "turned.mp4");
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);

    EXPECT_EQ(reader->size(), CanvasSize.transposed());
    for (const QSize wanted : {QSize(), QSize(90, 160), QSize(180, 320)}) {
        const QImage picture = reader->picture(480, wanted);
        EXPECT_EQ(picture.size(), wanted.isEmpty() ? reader->size() : wanted);
        EXPECT_EQ(TestMedia::frameNumber(picture.transformed(QTransform().rotate(90))), 12);
    }
}

TEST_F(VideoPictureTest, ShowsTheSamePictureUnderADecimalComma)
{
    const ScopedCommaLocale comma(sharedMedia::folder());
    m_sketch.addMain(numbered(0, 0.5), 2000);

    EXPECT_EQ(numberAt(480), 6);
    EXPECT_EQ(numberAt(1840), 23);
}

TEST_F(VideoPictureTest, BeginsWithinTheFile)
{
    m_sketch.addMain(numbered(1200), 1000);

    EXPECT_EQ(numberAt(0), 30);
    EXPECT_EQ(numberAt(39), 30);
    EXPECT_EQ(numberAt(40), 31);
    EXPECT_EQ(numberAt(999), 54);
}

TEST_F(VideoPictureTest, ShowsTheFirstPictureBeforeTheStartOfTheFile)
{
    m_sketch.addMain(numbered(-400), 1000);

    EXPECT_EQ(numberAt(0), 0);
    EXPECT_EQ(numberAt(399), 0);
    EXPECT_EQ(numberAt(440), 1);
}

TEST_F(VideoPictureTest, StaysOnTheLastPictureAfterTheEndOfTheFile)
{
    m_sketch.addMain(numbered(3600), 2000);

    EXPECT_EQ(numberAt(360), 99);
    EXPECT_EQ(numberAt(400), 99);
    EXPECT_EQ(numberAt(1999), 99);
}

TEST_F(VideoPictureTest, GoesThroughTheFileAtTheSpeedOfTheLayer)
{
    m_sketch.addMain(numbered(400, 2.0), 1000);
    m_sketch.addMain(numbered(400, 0.5), 1000);

    for (int i = 0; i < 25; ++i) {
        EXPECT_EQ(numberAt(40 * i), 10 + 2 * i);
        EXPECT_EQ(numberAt(1000 + 40 * i), 10 + i / 2);
    }
}

TEST_F(VideoPictureTest, SurvivesSenselessSpeeds)
{
    for (const double speed : {0.0, -1.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()})
        m_sketch.addMain(numbered(400, speed), 100);

    for (long long time = 0; time < 600; time += 50)
        EXPECT_GE(numberAt(time), 0) << time;
}

TEST_F(VideoPictureTest, ShowsClipsOfOneFileOneAfterTheOther)
{
    const std::vector<int> starts{70, 3, 50, 51, 0};
    for (const int frame : starts)
        m_sketch.addMain(numbered(40 * frame), 200);

    for (int round = 0; round < 2; ++round) {
        for (std::size_t clip = 0; clip < starts.size(); ++clip) {
            const auto start = static_cast<long long>(clip) * 200;
            EXPECT_EQ(numberAt(start), starts[clip]);
            EXPECT_EQ(numberAt(start + 100), starts[clip] + 2);
            EXPECT_EQ(numberAt(start + 199), starts[clip] + 4);
        }
    }
}

TEST_F(VideoPictureTest, ShowsOneFileAtSeveralTimesAtOnce)
{
    m_sketch.addMain(numbered(0), 2000);
    Layer left = numbered(1000);
    left.placement = Placement{160, 60, QPointF(80, 150)};
    m_sketch.addMix(left, 0, 2000);
    Layer right = numbered(3000, 0.5);
    right.placement = Placement{160, 60, QPointF(240, 150)};
    m_sketch.addMix(right, 0, 2000);

    const QRect whole(0, 60, 320, 120);
    for (const long long time : {0LL, 40LL, 80LL, 1000LL, 200LL, 1960LL}) {
        const QImage picture = composed(time);
        const int frame = static_cast<int>(time / 40);
        EXPECT_EQ(TestMedia::frameNumber(picture, whole), frame);
        EXPECT_EQ(TestMedia::frameNumber(picture, QRect(0, 0, 160, 60)), 25 + frame);
        EXPECT_EQ(TestMedia::frameNumber(picture, QRect(160, 0, 160, 60)), 75 + frame / 2);
    }
}

TEST_F(VideoPictureTest, ShowsItAtOtherOutputSizes)
{
    m_sketch.addMain(numbered(), 2000);

    for (const QSize size : {QSize(160, 90), QSize(640, 360), QSize(333, 187), QSize(1920, 1080)}) {
        const QImage picture = composed(840, size);
        EXPECT_EQ(picture.size(), size);
        EXPECT_EQ(TestMedia::frameNumber(picture), 21);
    }
}

TEST_F(VideoPictureTest, ShowsATurnedVideo)
{
    Layer turned = numbered();
    turned.placement.rotation = 180.0;
    m_sketch.addMain(turned, 2000);

    EXPECT_EQ(TestMedia::frameNumber(composed(840).mirrored(true, true)), 21);
}

TEST_F(VideoPictureTest, ShowsStillPicturesWithTheirTransparency)
{
    const std::string half =
        TestMedia::solidPicture(sharedMedia::folder(), "half.png", 64, 36, QColor(255, 0, 0, 128));
    const std::string blue =
        TestMedia::solidPicture(sharedMedia::folder(), "blue.png", 640, 360, Qt::blue);
    m_sketch.addMain(m_sketch.picture(blue));
    Layer layer = m_sketch.picture(half);
    layer.placement = Placement{100, 50, QPointF(160, 90)};
    m_sketch.addMix(layer);
    const QImage picture = composed(0);

    EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_NEAR(picture.pixelColor(160, 90).red(), 128, 1);
    EXPECT_NEAR(picture.pixelColor(160, 90).blue(), 127, 1);
}
