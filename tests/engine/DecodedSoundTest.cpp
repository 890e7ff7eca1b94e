// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/base/SoundFormat.h>
#include <engine/media/SoundReader.h>

#include <gtest/gtest.h>

#include "SharedMedia.h"
#include "support/TestMedia.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using rvengine::SoundChannels;
using rvengine::SoundRate;
using rvengine::SoundReader;

namespace {

/// A way to store sound. What ffmpeg decodes of it is what is to be heard.
struct Storage
{
    const char* name;
    const char* extension;
    QStringList encoding;
    int rate = 48000;
    QString filter = {};         ///< that ffmpeg needs to keep the times of the file
    bool isSeekedExactly = true; ///< its time stamps tell every sample
};

void PrintTo(const Storage& storage, std::ostream* stream)
{
    *stream << storage.name;
}

QStringList encoding(const QString& text)
{
    return text.split(' ', Qt::SkipEmptyParts);
}

/// Leaves out a second of the sound.
const QString withGap = "aselect='lt(t,1)+gt(t,2)'";
/// Silence where there is no sound.
const QString filled = "aresample=async=1:min_hard_comp=0.01:first_pts=0";

const std::vector<Storage>& storages()
{
    static const std::vector<Storage> all{
        {"Bytes", "wav", encoding("-c:a pcm_u8")},
        {"Words", "wav", encoding("-c:a pcm_s16le")},
        {"Words24", "wav", encoding("-c:a pcm_s24le"), 44100},
        {"Floats", "wav", encoding("-c:a pcm_f32le"), 22050},
        {"HighRate", "wav", encoding("-c:a pcm_s32le"), 96000},
        {"Telephone", "wav", encoding("-c:a pcm_mulaw"), 8000},
        {"OddRate", "wav", encoding("-c:a pcm_s16le"), 37800},
        {"Adpcm", "wav", encoding("-c:a adpcm_ima_wav"), 44100},
        {"Flac", "flac", encoding("-c:a flac"), 44100},
        {"Alac", "m4a", encoding("-c:a alac"), 44100},
        {"Aac", "m4a", encoding("-c:a aac -b:a 192k -aac_pns 0"), 44100},
        {"AacStream", "aac", encoding("-c:a aac -b:a 192k -aac_pns 0"), 44100},
        {"AacInMatroska", "mka", encoding("-c:a aac -b:a 192k -aac_pns 0")},
        {"AacInTransportStream", "ts", encoding("-c:a aac -b:a 192k -aac_pns 0"), 48000},
        {"Mp3", "mp3", encoding("-c:a libmp3lame -b:a 192k"), 44100},
        {"Mp2", "mp2", encoding("-c:a mp2 -b:a 192k")},
        {"Ac3", "ac3", encoding("-c:a ac3 -b:a 192k")},
        {"Vorbis", "ogg", encoding("-c:a libvorbis -q:a 6"), 44100},
        {"VorbisInWebm", "webm", encoding("-c:a libvorbis -q:a 6"), 48000, {}, false},
        {"Opus", "opus", encoding("-c:a libopus -b:a 160k")},
        {"OpusInWebm", "webm", encoding("-c:a libopus -b:a 160k"), 48000},
        {"WindowsMedia", "wma", encoding("-c:a wmav2 -b:a 192k"), 44100},
        {"SixChannels", "flac", encoding("-c:a flac -ac 6")},
        {"WithGap", "nut", encoding("-c:a pcm_s16le -af " + withGap), 48000, filled},
        {"Aiff", "aiff", encoding("-c:a pcm_s16be"), 44100},
        {"FlashVideo", "flv", encoding("-c:a libmp3lame -b:a 192k"), 44100},
    };
    return all;
}

using Samples = std::vector<float>;

/// A reader and what ffmpeg decodes of the same file.
class DecodedSoundTest : public testing::TestWithParam<Storage>
{
protected:
    static constexpr std::size_t Shift = 1; ///< frames, at most

    void SetUp() override
    {
        const Storage& storage = GetParam();
        const QString name = QString("sound_%1.%2").arg(storage.name, storage.extension);
        // Left and right differ, and no moment is like another one.
        const QString input =
            QString("aevalsrc='0.4*sin(2*PI*(300+200*t)*t)|0.3*sin(2*PI*(900-100*t)*t)':s=%1:d=3.3")
                .arg(storage.rate);
        m_path = sharedMedia::once(name, [&] {
            return TestMedia::made(sharedMedia::folder(), name,
                                   QStringList{"-f", "lavfi", "-i", input} + storage.encoding);
        });
        static std::map<QString, Samples> decoded;
        Samples& samples = decoded[name];
        if (samples.empty())
            samples = TestMedia::samples(m_path, storage.filter);
        m_expected = samples;
        ASSERT_GT(m_expected.size(), std::size_t{SoundRate} * SoundChannels * 3);
        m_reader = SoundReader::open(m_path);
        ASSERT_NE(m_reader, nullptr);
    }

    static Samples read(SoundReader& reader, std::size_t start, std::size_t frames)
    {
        Samples samples(frames * SoundChannels);
        EXPECT_TRUE(reader.read(static_cast<long long>(start), frames, samples.data())) << start;
        return samples;
    }

    /// The root of the mean square of the differences in dB of full level, where `part` is moved by
    /// `shift` frames from where `whole` has `start`.
    static double difference(const Samples& part, const Samples& whole, std::size_t start,
                             std::ptrdiff_t shift)
    {
        double sum = 0.0;
        std::size_t count = 0;
        for (std::size_t i = 0; i < part.size(); ++i) {
            const auto at =
                static_cast<std::ptrdiff_t>(start * SoundChannels + i) + shift * SoundChannels;
            if (at < 0 || at >= static_cast<std::ptrdiff_t>(whole.size()))
                continue;
            const double distance =
                static_cast<double>(part[i]) - whole[static_cast<std::size_t>(at)];
            sum += distance * distance;
            ++count;
        }
        return 10.0 * std::log10(sum / static_cast<double>(count) + 1e-20);
    }

    static double leastDifference(const Samples& part, const Samples& whole, std::size_t start)
    {
        constexpr auto most = static_cast<std::ptrdiff_t>(Shift);
        double least = 0.0;
        for (std::ptrdiff_t shift = -most; shift <= most; ++shift)
            least = std::min(least, difference(part, whole, start, shift));
        return least;
    }

    std::string m_path;
    Samples m_expected;
    std::unique_ptr<SoundReader> m_reader;
};

} // namespace

TEST_P(DecodedSoundTest, IsThatOfFfmpeg)
{
    const std::size_t frames = m_expected.size() / SoundChannels;
    const Samples samples = read(*m_reader, 0, frames);

    EXPECT_LT(leastDifference(samples, m_expected, 0), -60.0);
    EXPECT_GT(difference(samples, m_expected, 0, 30), -40.0) << "else it could not fail";
    Samples after(SoundRate * SoundChannels);
    EXPECT_FALSE(m_reader->read(static_cast<long long>(frames) + 1, SoundRate, after.data()));
}

TEST_P(DecodedSoundTest, IsTheSameInAnyOrder)
{
    const std::size_t frames = m_expected.size() / SoundChannels;
    const Samples whole = read(*m_reader, 0, frames);
    std::mt19937 generator(1);
    for (int i = 0; i < 20; ++i) {
        const std::size_t count = 500 + generator() % 3000;
        const std::size_t start = generator() % (frames - count);
        const Samples part = read(*m_reader, start, count);
        if (GetParam().isSeekedExactly) {
            EXPECT_LT(difference(part, whole, start, 0), -80.0) << "from " << start;
        } else {
            double least = 0.0;
            for (std::ptrdiff_t shift = -48; shift <= 48; ++shift)
                least = std::min(least, difference(part, whole, start, shift));
            EXPECT_LT(least, -60.0) << "within a millisecond, from " << start;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, DecodedSoundTest, testing::ValuesIn(storages()),
                         [](const auto& storage) { return std::string(storage.param.name); });
