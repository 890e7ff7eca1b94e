// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/PictureReader.h>

#include <gtest/gtest.h>

#include "FfmpegParts.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using rvengine::PictureReader;

namespace {

constexpr QSize Compared(96, 54);

/// What is made by ffmpeg, and how it decodes that.
struct Oddity
{
    const char* name;
    const char* extension;
    QStringList encoding;
    QString input = "testsrc2=size=192x108:rate=25:duration=2";
    QString filter = {};          ///< what ffmpeg does with it beyond decoding
    QString decoder = {};         ///< by name, where ffmpeg takes another one by itself
    QSize size = QSize(192, 108); ///< as it is seen
    int turn = 0;                 ///< degrees by which the file says that it is to be turned
    const char* needs = nullptr;  ///< the decoder, where not every FFmpeg has it
};

void PrintTo(const Oddity& oddity, std::ostream* stream)
{
    *stream << oddity.name;
}

const QString deinterlace = "bwdif=mode=send_frame:deint=interlaced";

QStringList encoding(const QString& text)
{
    return text.split(' ', Qt::SkipEmptyParts);
}

const std::vector<Oddity>& oddities()
{
    static const QString upright = "testsrc2=size=192x108:rate=25:duration=2";
    static const QString turned = "testsrc2=size=108x192:rate=25:duration=2";
    static const QString odd = "testsrc2=size=192x108:rate=25:duration=2,scale=161:121,setsar=1";
    static const QString transparent =
        "testsrc2=size=192x108:rate=25:duration=2:alpha=100,format=rgba,"
        "colorchannelmixer=aa=0.6";
    static const QString fields = "testsrc2=size=192x108:rate=50:duration=2,"
                                  "tinterlace=mode=interleave_top,fieldorder=tff";
    static const QString uneven = "testsrc2=size=192x108:rate=100:duration=2,"
                                  "select='not(mod(n,7))+not(mod(n,3))'";
    static const QString narrow = "testsrc2=size=192x108:rate=25:duration=2,scale=2:64,setsar=1";
    static const std::vector<Oddity> all{
        {"H264", "mp4", encoding("-c:v libx264 -g 250 -bf 3 -pix_fmt yuv420p")},
        {"H264OpenGops", "mkv",
         encoding("-c:v libx264 -g 12 -bf 3 -x264-params open-gop=1 -pix_fmt yuv420p")},
        {"H264In422Of10Bits", "mp4", encoding("-c:v libx264 -pix_fmt yuv422p10le")},
        {"H264In444", "mkv", encoding("-c:v libx264 -pix_fmt yuv444p")},
        {"H264WithoutKeyFrames", "mp4",
         encoding("-c:v libx264 -x264-params intra-refresh=1:keyint=20 -pix_fmt yuv420p")},
        {"Hevc10Bits", "mp4",
         encoding("-c:v libx265 -x265-params log-level=none -pix_fmt "
                  "yuv420p10le")},
        {"HevcOpenGops", "ts",
         encoding(
             "-c:v libx265 -x265-params log-level=none:keyint=12:open-gop=1 -pix_fmt yuv420p")},
        {"VariableRate", "mp4", encoding("-c:v libx264 -fps_mode vfr -pix_fmt yuv420p"), uneven},
        {"VariableRateInMatroska", "mkv", encoding("-c:v libx264 -fps_mode vfr -pix_fmt yuv420p"),
         uneven},
        {"LateTransportStream", "ts", encoding("-c:v mpeg2video -bf 2 -g 15 -q:v 3")},
        {"LateMatroska", "mkv", encoding("-c:v libx264 -output_ts_offset 1 -pix_fmt yuv420p")},
        {"NegativeStart", "mp4",
         encoding("-c:v libx264 -bf 3 -output_ts_offset -0.5 -avoid_negative_ts disabled -pix_fmt "
                  "yuv420p")},
        {"Vp8", "webm", encoding("-c:v libvpx -deadline realtime -cpu-used 8")},
        {"Vp9Transparent",
         "webm",
         encoding("-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -pix_fmt yuva420p"),
         transparent,
         {},
         "libvpx-vp9",
         QSize(192, 108),
         0,
         "libvpx-vp9"},
        {"ProRes4444", "mov", encoding("-c:v prores_ks -profile:v 4444 -pix_fmt yuva444p10le"),
         transparent},
        {"PngInMov",
         "mov",
         encoding("-c:v png -pix_fmt rgba"),
         transparent,
         {},
         {},
         QSize(192, 108),
         0,
         "png"},
        {"PaletteInMov", "mov", encoding("-c:v qtrle -pix_fmt rgb24")},
        {"Gif", "gif", {}},
        {"Apng", "apng", encoding("-plays 0"), upright, {}, {}, QSize(192, 108), 0, "apng"},
        {"OddSides",
         "mp4",
         encoding("-c:v libx264 -pix_fmt yuv444p"),
         odd,
         {},
         {},
         QSize(161, 121)},
        {"OddSidesOfVp9",
         "webm",
         encoding("-c:v libvpx-vp9 -deadline realtime -cpu-used 8"),
         odd,
         {},
         {},
         QSize(161, 121)},
        {"TwoPixelsWide",
         "mkv",
         encoding("-c:v ffv1 -pix_fmt yuv420p"),
         narrow,
         {},
         {},
         QSize(2, 64)},
        {"InterlacedMpeg2", "mpg", encoding("-c:v mpeg2video -flags +ilme+ildct -top 1 -q:v 3"),
         fields, deinterlace},
        {"InterlacedH264", "mp4",
         encoding("-c:v libx264 -flags +ilme+ildct -x264-params tff=1 -pix_fmt yuv420p"), fields,
         deinterlace},
        {"FullRangeMjpeg", "avi", encoding("-c:v mjpeg -q:v 2 -pix_fmt yuvj422p")},
        {"FullRangeH264", "mp4",
         encoding("-c:v libx264 -vf scale=out_range=pc:out_color_matrix=bt709 -color_range pc "
                  "-colorspace bt709 -pix_fmt yuv444p")},
        {"Mpeg4WithBFrames", "avi", encoding("-c:v mpeg4 -bf 2 -q:v 3")},
        {"ProgramStream", "vob", encoding("-c:v mpeg2video -bf 2 -q:v 3")},
        {"WindowsMedia", "wmv", encoding("-c:v wmv2 -q:v 3")},
        {"FlashVideo", "flv", encoding("-c:v flv -q:v 3")},
        {"Theora", "ogv", encoding("-c:v libtheora -q:v 8")},
        {"Gray", "mkv", encoding("-c:v ffv1 -pix_fmt gray")},
        {"Raw", "avi", encoding("-c:v rawvideo -pix_fmt bgr24")},
        {"NarrowPixels",
         "mp4",
         encoding("-c:v libx264 -vf setsar=2/3 -pix_fmt yuv420p"),
         "testsrc2=size=192x108:rate=25:duration=2",
         {},
         {},
         QSize(128, 108)},
        {"Turned",
         "mp4",
         encoding("-c:v libx264 -pix_fmt yuv420p"),
         turned,
         {},
         {},
         QSize(192, 108),
         90},
        {"TurnedBack",
         "mov",
         encoding("-c:v libx264 -pix_fmt yuv420p"),
         turned,
         {},
         {},
         QSize(192, 108),
         270},
        {"UpsideDown",
         "mp4",
         encoding("-c:v libx264 -pix_fmt yuv420p"),
         upright,
         {},
         {},
         QSize(192, 108),
         180},
    };
    return all;
}

class DecodedPicturesTest : public testing::TestWithParam<Oddity>
{
protected:
    void SetUp() override
    {
        const Oddity& oddity = GetParam();
        const QString name = QString("pictures_%1.%2").arg(oddity.name, oddity.extension);
        m_path = sharedMedia::once(name, [&] { return made(oddity, name); });
        // To scale and then to turn is not quite to turn and then to scale.
        m_size = oddity.turn == 0 ? Compared.boundedTo(oddity.size) : oddity.size;
        static std::map<QString, std::vector<DecodedPicture>> decoded;
        std::vector<DecodedPicture>& pictures = decoded[name];
        if (pictures.empty())
            pictures = TestMedia::pictures(m_path, m_size, oddity.filter, oddity.decoder);
        m_pictures = pictures;
        ASSERT_GT(m_pictures.size(), 20U);
        m_reader = PictureReader::open(m_path);
        ASSERT_NE(m_reader, nullptr);
    }

    static std::string made(const Oddity& oddity, const QString& name)
    {
        const QString folder = sharedMedia::folder();
        const std::string path = TestMedia::made(
            folder, name, QStringList{"-f", "lavfi", "-i", oddity.input} + oddity.encoding);
        return oddity.turn == 0
                   ? path
                   : TestMedia::turnedVideo(path, folder, "turned_" + name, oddity.turn);
    }

    /// What ffmpeg shows at a time, ms since the first picture.
    const QImage& expectedAt(double ms) const
    {
        const double seconds = m_pictures.front().seconds + ms / 1000.0;
        const auto next = std::find_if(m_pictures.begin() + 1, m_pictures.end(),
                                       [&](const auto& other) { return other.seconds > seconds; });
        return std::prev(next)->image;
    }

    /// Times in the middle of pictures.
    double middleOf(std::size_t picture) const
    {
        const std::size_t next = std::min(picture + 1, m_pictures.size() - 1);
        return (m_pictures[picture].seconds + m_pictures[next].seconds) * 500.0 -
               m_pictures.front().seconds * 1000.0 + (picture == next ? 10.0 : 0.0);
    }

    /// The mean distance of channels that are premultiplied, 0 to 255.
    static double distance(const QImage& a, const QImage& b)
    {
        const QImage one = a.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        const QImage other = b.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        double sum = 0.0;
        for (int y = 0; y < one.height(); ++y) {
            const uchar* const left = one.constScanLine(y);
            const uchar* const right = other.constScanLine(y);
            for (int i = 0; i < one.width() * 4; ++i)
                sum += std::abs(left[i] - right[i]);
        }
        return sum / (one.width() * one.height() * 4.0);
    }

    void expectPicture(std::size_t picture)
    {
        const double time = middleOf(picture);
        const QImage shown = m_reader->picture(time, m_size);
        ASSERT_EQ(shown.size(), m_size);
        EXPECT_LT(distance(shown, expectedAt(time)), 2.0)
            << "picture " << picture << " at " << time;
    }

    WarningCapture m_warnings;
    QSize m_size;
    std::string m_path;
    std::vector<DecodedPicture> m_pictures;
    std::unique_ptr<PictureReader> m_reader;
};

} // namespace

TEST_P(DecodedPicturesTest, AreThoseOfFfmpegAtTenTimes)
{
    for (std::size_t i = 0; i < 10; ++i)
        expectPicture((2 * i + 1) * m_pictures.size() / 20);
}

TEST_P(DecodedPicturesTest, AreThoseOfFfmpegInAnyOrder)
{
    std::mt19937 generator(1);
    for (int i = 0; i < 10; ++i)
        expectPicture(generator() % m_pictures.size());
    expectPicture(m_pictures.size() - 1);
    expectPicture(0);
}

TEST_P(DecodedPicturesTest, DifferFromEachOther)
{
    EXPECT_GT(distance(m_pictures[2].image, m_pictures[m_pictures.size() - 3].image), 4.0)
        << "else the others could not fail";
}

TEST_P(DecodedPicturesTest, HaveTheSizeInWhichTheyAreSeen)
{
    EXPECT_EQ(m_reader->size(), GetParam().size);
    EXPECT_EQ(m_reader->picture(0, QSize()).size(), GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(All, DecodedPicturesTest,
                         testing::ValuesIn(ffmpegParts::possible("DecodedPicturesTest",
                                                                 oddities())),
                         [](const auto& oddity) { return std::string(oddity.param.name); });
