// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/base/SoundFormat.h>
#include <engine/media/MediaProbe.h>
#include <engine/media/PictureReader.h>
#include <engine/media/SoundReader.h>

#include <gtest/gtest.h>

#include "SharedMedia.h"
#include "support/TestMedia.h"

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

using rvengine::framesOf;
using rvengine::MediaKind;
using rvengine::MediaProbe;
using rvengine::PictureReader;
using rvengine::SoundChannels;
using rvengine::SoundReader;

namespace {

/// When the pictures and the sound of a file begin, ms after another.
struct Start
{
    const char* extension;
    QStringList encoding;
    int pictures;
    int sound;
    double distance = 1.0; ///< how exact the container is, ms
};

void PrintTo(const Start& start, std::ostream* stream)
{
    *stream << start.extension << " " << start.pictures << " " << start.sound;
}

QStringList encoding(const QString& text)
{
    return text.split(' ', Qt::SkipEmptyParts);
}

/// Numbered pictures, and sound that is loud from its first sample on.
class FileStartTest : public testing::TestWithParam<Start>
{
protected:
    void SetUp() override
    {
        const Start& start = GetParam();
        const QString name =
            QString("start_%1_%2.%3").arg(start.pictures).arg(start.sound).arg(start.extension);
        const auto seconds = [](int ms) { return QString::number(ms / 1000.0); };
        const std::string pictures = sharedMedia::numbered();
        m_path = TestMedia::made(sharedMedia::folder(), name,
                                 QStringList{"-itsoffset", seconds(start.pictures), "-i",
                                             QString::fromStdString(pictures), "-itsoffset",
                                             seconds(start.sound), "-f", "lavfi", "-i",
                                             "aevalsrc='0.5|0.5':s=48000:d=4", "-map", "0:v",
                                             "-map", "1:a"} +
                                     start.encoding);
        m_zero = std::min(start.pictures, start.sound);
    }

    std::string m_path;
    int m_zero = 0;
};

} // namespace

TEST_P(FileStartTest, PicturesAndSoundKeepTheirTimes)
{
    const Start& start = GetParam();
    const auto pictures = PictureReader::open(m_path);
    const auto sound = SoundReader::open(m_path);
    ASSERT_TRUE(pictures && sound);
    const int first = start.pictures - m_zero;
    for (const int number : {0, 1, 2, 50, 30, 97, 5}) {
        // Codecs that begin with some silence of their own move the pictures by that.
        const bool isExact = start.distance <= 1.0;
        for (const int within : isExact ? std::vector<int>{3, 37} : std::vector<int>{20}) {
            EXPECT_EQ(TestMedia::frameNumber(
                          pictures->picture(first + number * 40 + within, QSize(320, 180))),
                      number);
        }
    }
    EXPECT_EQ(TestMedia::frameNumber(pictures->picture(0, QSize(320, 180))), 0);

    std::vector<float> samples(static_cast<std::size_t>(framesOf(4000) * SoundChannels));
    ASSERT_TRUE(sound->read(0, samples.size() / SoundChannels, samples.data()));
    std::size_t loud = 0;
    while (loud < samples.size() && std::abs(samples[loud]) < 0.25F)
        loud += SoundChannels;
    const double beginsAt = static_cast<double>(loud) / SoundChannels / 48.0;
    EXPECT_NEAR(beginsAt, start.sound - m_zero, start.distance);
}

TEST_P(FileStartTest, TheLengthCountsFromTheFirstOfThem)
{
    MediaProbe probe;
    const auto info = probe.probe(m_path, MediaKind::Video);
    ASSERT_TRUE(info);
    const Start& start = GetParam();
    const int end = std::max(start.pictures, start.sound) + 4000;
    EXPECT_NEAR(static_cast<double>(info->durationMs), end - m_zero, 45.0);
}

INSTANTIATE_TEST_SUITE_P(All, FileStartTest,
                         testing::Values(Start{"mov", encoding("-c:v copy -c:a pcm_s16le"), 0, 0},
                                         Start{"mov", encoding("-c:v copy -c:a pcm_s16le"), 500, 0},
                                         Start{"mov", encoding("-c:v copy -c:a pcm_s16le"), 0, 700},
                                         Start{"mp4", encoding("-c:v copy -c:a aac"), 500, 0, 25.0},
                                         Start{"mp4", encoding("-c:v copy -c:a aac"), 0, 700, 25.0},
                                         Start{"mkv", encoding("-c:v copy -c:a flac"), 0, 0},
                                         Start{"mkv", encoding("-c:v copy -c:a flac"), 500, 0},
                                         Start{"mkv", encoding("-c:v copy -c:a flac"), 0, 1300},
                                         Start{"mkv", encoding("-c:v copy -c:a pcm_s16le"), 2000,
                                               2000},
                                         Start{"ts", encoding("-c:v copy -c:a mp2"), 500, 0, 25.0},
                                         Start{"ts", encoding("-c:v copy -c:a mp2"), 0, 700, 25.0}),
                         [](const auto& start) {
                             return std::string(start.param.extension) +
                                    std::to_string(start.param.pictures) + "And" +
                                    std::to_string(start.param.sound);
                         });
