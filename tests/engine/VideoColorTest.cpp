// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "FfmpegParts.h"
#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

using rvengine::Compositor;

namespace {

constexpr QSize CanvasSize(320, 180);

struct StorageCase
{
    const char* name;
    const char* extension;
    StoredColors stored;
    QSize size = CanvasSize;
    const char* needs = nullptr; ///< the decoder, where not every FFmpeg has it
};

void PrintTo(const StorageCase& testCase, std::ostream* stream)
{
    *stream << testCase.name;
}

/// Colours that go into a video are those that come out, however they are stored.
class VideoColorTest : public testing::TestWithParam<StorageCase>
{
protected:
    /// The colour at the middle of the canvas, which the video covers, over a background.
    QColor shown(const QColor& color, const QColor& background, QSize output)
    {
        const StorageCase& storage = GetParam();
        const QString name = QString("%1%2.%3").arg(
            storage.name, color.name(QColor::HexArgb).mid(1), storage.extension);
        const std::string path = sharedMedia::once(name, [&] {
            return TestMedia::solidVideo(sharedMedia::folder(), name, storage.size.width(),
                                         storage.size.height(), color, storage.stored);
        });
        SceneSketch sketch;
        const QString below = background.name().mid(1) + ".png";
        sketch.addMain(sketch.picture(
            TestMedia::solidPicture(sharedMedia::folder(), below, 64, 36, background)));
        sketch.addMix(sketch.video(path));
        Compositor compositor(rvengine::makePictureSource());
        const QImage picture = compositor.compose(sketch.scene(), 100, output);
        const QPoint middle = picture.rect().center();
        expectNear(picture.pixelColor(middle / 4), picture.pixelColor(middle));
        return picture.pixelColor(middle);
    }

    static void expectNear(const QColor& actual, const QColor& expected)
    {
        constexpr int tolerance = 3;
        EXPECT_TRUE(std::abs(actual.red() - expected.red()) <= tolerance &&
                    std::abs(actual.green() - expected.green()) <= tolerance &&
                    std::abs(actual.blue() - expected.blue()) <= tolerance)
            << actual.name().toStdString() << " instead of " << expected.name().toStdString();
    }

    WarningCapture m_warnings;
};

class VideoTransparencyTest : public VideoColorTest
{
};

std::string nameOf(const testing::TestParamInfo<StorageCase>& info)
{
    return info.param.name;
}

StoredColors stored(const QString& matrix, bool fullRange, const QString& pixelFormat = "yuv420p")
{
    StoredColors result;
    result.matrix = matrix;
    result.fullRange = fullRange;
    result.pixelFormat = pixelFormat;
    return result;
}

StoredColors encoded(const QString& pixelFormat, const QStringList& codec,
                     const QString& matrix = "bt709")
{
    StoredColors result;
    result.matrix = matrix;
    result.pixelFormat = pixelFormat;
    result.codec = codec;
    return result;
}

const QStringList LosslessVp9{"-c:v",      "libvpx-vp9", "-lossless", "1",
                              "-deadline", "realtime",   "-cpu-used", "8"};

} // namespace

TEST_P(VideoColorTest, ShowsTheColoursThatWentIn)
{
    for (const QColor& color :
         {QColor(Qt::white), QColor(255, 0, 0), QColor(0, 0, 255), QColor(30, 144, 90)})
        expectNear(shown(color, Qt::magenta, CanvasSize), color);
}

TEST_P(VideoColorTest, ShowsThemAtAnotherSize)
{
    const QColor color(30, 144, 90);
    expectNear(shown(color, Qt::magenta, QSize(640, 360)), color);
    expectNear(shown(color, Qt::magenta, QSize(96, 54)), color);
}

INSTANTIATE_TEST_SUITE_P(
    All, VideoColorTest,
    testing::Values(
        StorageCase{"Bt601", "mp4", stored("bt601", false)},
        StorageCase{"Bt709", "mp4", stored("bt709", false)},
        StorageCase{"Bt601FullRange", "mp4", stored("bt601", true)},
        StorageCase{"Bt709FullRange", "mp4", stored("bt709", true)},
        StorageCase{"Bt601LikeJpeg", "mp4", stored("bt601", true, "yuvj420p")},
        StorageCase{"Bt709WithWholeChroma", "mp4", stored("bt709", false, "yuv444p")},
        StorageCase{"Bt601WithWholeChroma", "mp4", stored("bt601", false, "yuv444p")},
        StorageCase{"Bt709WithTenBits", "mp4", stored("bt709", false, "yuv420p10le")},
        StorageCase{"Bt601WithOddSides", "mp4", stored("bt601", false, "yuv444p"), {321, 181}},
        StorageCase{"Bt709WithOddSides", "mp4", stored("bt709", false, "yuv444p"), {321, 181}},
        StorageCase{
            "Bt709FullRangeWithOddSides", "mp4", stored("bt709", true, "yuv444p"), {321, 181}}),
    nameOf);

TEST_P(VideoTransparencyTest, ShowsOpaqueColours)
{
    for (const QColor& color : {QColor(255, 0, 0), QColor(0, 255, 0), QColor(30, 144, 90)})
        expectNear(shown(color, Qt::magenta, CanvasSize), color);
}

TEST_P(VideoTransparencyTest, ShowsWhatIsBehindHalfTransparentColours)
{
    const QColor seen = shown(QColor(200, 40, 90, 128), QColor(0, 100, 250), CanvasSize);

    expectNear(seen, QColor(100, 70, 170));
}

TEST_P(VideoTransparencyTest, ShowsOnlyWhatIsBehindATransparentColour)
{
    expectNear(shown(QColor(200, 40, 90, 0), QColor(0, 100, 250), CanvasSize), QColor(0, 100, 250));
}

// The ProRes file does not tell its colours: a picture of its size is then taken for BT.601.
INSTANTIATE_TEST_SUITE_P(
    All, VideoTransparencyTest,
    testing::ValuesIn(ffmpegParts::possible<StorageCase>(
        "VideoTransparencyTest",
        {StorageCase{"Animation", "mov", encoded("argb", {"-c:v", "qtrle"})},
         StorageCase{"Png", "mov", encoded("rgba", {"-c:v", "png"}), CanvasSize, "png"},
         StorageCase{"Vp9", "webm", encoded("yuva420p", LosslessVp9), CanvasSize, "libvpx-vp9"},
         StorageCase{"ProRes", "mov",
                     encoded("yuva444p10le", {"-c:v", "prores_ks", "-qscale:v", "2"}, "bt601")}})),
    nameOf);
