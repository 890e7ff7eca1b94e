// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/SoundReader.h>
#include <engine/sound/SoundMixer.h>
#include <engine/sound/SpeedReader.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/ScopedCommaLocale.h"
#include "support/TestMedia.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

using rvengine::framesOf;
using rvengine::Layer;
using rvengine::SoundChannels;
using rvengine::SoundMixer;
using rvengine::SoundRate;

namespace {

constexpr double Pi = 3.14159265358979323846;

enum Side { Left, Right };

/// Interleaved stereo.
class Sound
{
public:
    explicit Sound(std::vector<float> samples)
        : m_samples(std::move(samples))
    {
    }

    long long frames() const { return static_cast<long long>(m_samples.size()) / SoundChannels; }
    float at(long long frame, Side side = Left) const
    {
        return m_samples[static_cast<std::size_t>(frame * SoundChannels + side)];
    }

    float loudest(long long fromMs, long long toMs, Side side = Left) const
    {
        float most = 0.0F;
        for (long long frame = framesOf(fromMs); frame < framesOf(toMs); ++frame)
            most = std::max(most, std::abs(at(frame, side)));
        return most;
    }

    /// Hz, by how often the sound goes from below to above the zero.
    double frequency(long long fromMs, long long toMs, Side side = Left) const
    {
        long long first = -1;
        long long last = -1;
        int rises = 0;
        for (long long frame = framesOf(fromMs) + 1; frame < framesOf(toMs); ++frame) {
            if (at(frame - 1, side) < 0.0F && at(frame, side) >= 0.0F) {
                first = first < 0 ? frame : first;
                last = frame;
                ++rises;
            }
        }
        return rises < 2 ? 0.0 : (rises - 1.0) * SoundRate / static_cast<double>(last - first);
    }

    /// How far the sound is at most from a sine of such a frequency that began at frame `start`.
    double distanceFromSine(double frequency, double amplitude, long long from, long long to,
                            Side side = Left, long long start = 0) const
    {
        double most = 0.0;
        for (long long frame = from; frame < to; ++frame) {
            const double waves = frequency * static_cast<double>(frame - start) / SoundRate;
            const double sine = amplitude * std::sin(2.0 * Pi * waves);
            most = std::max(most, std::abs(static_cast<double>(at(frame, side)) - sine));
        }
        return most;
    }

    /// The middle of what is heard between two times, ms.
    double middle(long long fromMs, long long toMs) const
    {
        double energy = 0.0;
        double moment = 0.0;
        for (long long frame = framesOf(fromMs); frame < framesOf(toMs); ++frame) {
            const double share = std::pow(static_cast<double>(at(frame)), 2.0);
            energy += share;
            moment += share * static_cast<double>(frame) * 1000.0 / SoundRate;
        }
        return moment / energy;
    }

    bool operator==(const Sound& other) const { return m_samples == other.m_samples; }

private:
    std::vector<float> m_samples;
};

class FileSoundTest : public testing::Test
{
protected:
    /// A fresh mix of the scene.
    Sound mixed(long long startMs, long long ms)
    {
        SoundMixer mixer(rvengine::makeSoundSource());
        return mixedBy(mixer, framesOf(startMs), framesOf(ms));
    }

    Sound mixedBy(SoundMixer& mixer, long long start, long long frames)
    {
        std::vector<float> samples(static_cast<std::size_t>(frames * SoundChannels));
        mixer.mix(m_sketch.scene(), start, static_cast<std::size_t>(frames), samples.data());
        return Sound(std::move(samples));
    }

    /// The same sound, mixed in blocks of many sizes.
    Sound mixedInParts(long long frames)
    {
        SoundMixer mixer(rvengine::makeSoundSource());
        std::vector<float> samples(static_cast<std::size_t>(frames * SoundChannels));
        long long next = 0;
        for (int i = 0; next < frames; ++i) {
            constexpr long long sizes[] = {1, 479, 1024, 1920, 1921, 7, 5003};
            const long long count = std::min(sizes[i % 7], frames - next);
            mixer.mix(m_sketch.scene(), next, static_cast<std::size_t>(count),
                      samples.data() + next * SoundChannels);
            next += count;
        }
        return Sound(std::move(samples));
    }

    Layer tone(long long fileStart = 0, double speed = 1.0) const
    {
        Layer layer = m_sketch.sound(sharedMedia::tone());
        layer.fileStart = fileStart;
        layer.speed = speed;
        return layer;
    }

    WarningCapture m_warnings;
    SceneSketch m_sketch;
};

/// Speeds at which the pitch is that of the file, and everything is in time.
class FileSoundSpeedTest : public FileSoundTest, public testing::WithParamInterface<double>
{
};

/// What sound is stored in.
struct SoundFormat
{
    const char* name;
    const char* extension;
    int rate;
    double distance; ///< from the sine, at most
};

void PrintTo(const SoundFormat& format, std::ostream* stream)
{
    *stream << format.name;
}

std::string nameOf(const testing::TestParamInfo<SoundFormat>& info)
{
    return info.param.name;
}

class FileSoundFormatTest : public FileSoundTest, public testing::WithParamInterface<SoundFormat>
{
};

} // namespace

TEST_F(FileSoundTest, OneChannelIsHeardOnBothSidesAsItIs)
{
    m_sketch.addMix(tone(), 0, 2000);
    const Sound sound = mixed(0, 2000);

    EXPECT_LT(sound.distanceFromSine(440, 0.5, 0, sound.frames(), Left), 1e-4);
    EXPECT_LT(sound.distanceFromSine(440, 0.5, 0, sound.frames(), Right), 1e-4);
    EXPECT_NEAR(sound.frequency(0, 2000), 440.0, 0.5);
}

TEST_F(FileSoundTest, TwoChannelsKeepTheirSides)
{
    m_sketch.addMain(
        m_sketch.sound(TestMedia::wave(sharedMedia::folder(), "stereo.wav",
                                       {"0.25*sin(2*PI*300*t)", "0.75*sin(2*PI*1000*t)"}, 1)));
    const Sound sound = mixed(0, 1000);

    EXPECT_LT(sound.distanceFromSine(300, 0.25, 0, sound.frames(), Left), 1e-4);
    EXPECT_LT(sound.distanceFromSine(1000, 0.75, 0, sound.frames(), Right), 1e-4);
}

TEST_F(FileSoundTest, MoreChannelsAreHeard)
{
    m_sketch.addMain(
        m_sketch.sound(TestMedia::tone(sharedMedia::folder(), "six.wav", 440, 0.25, 1, 6)));
    const Sound sound = mixed(0, 1000);

    for (const Side side : {Left, Right}) {
        EXPECT_NEAR(sound.frequency(100, 900, side), 440.0, 1.0);
        EXPECT_GT(sound.loudest(100, 900, side), 0.05F);
    }
}

TEST_P(FileSoundFormatTest, IsHeardAsItIs)
{
    const SoundFormat& format = GetParam();
    const QString name = QString(format.name) + format.extension;
    m_sketch.addMain(
        m_sketch.sound(TestMedia::tone(sharedMedia::folder(), name, 440, 0.5, 2, 2, format.rate)),
        2000);
    const Sound sound = mixed(0, 2000);

    // The filter that changes the rate keeps back some samples of the file.
    double least = 1.0;
    for (long long start = 0; start <= framesOf(2); ++start) {
        least = std::min(
            least, sound.distanceFromSine(440, 0.5, framesOf(100), framesOf(1900), Left, start));
    }
    EXPECT_LT(least, format.distance) << "within two milliseconds of its time";
    EXPECT_NEAR(sound.frequency(100, 1900), 440.0, 0.5);
    EXPECT_NEAR(sound.loudest(100, 1900), 0.5, format.distance);
}

// Encoders that lose something come close to the sine, in time too.
INSTANTIATE_TEST_SUITE_P(All, FileSoundFormatTest,
                         testing::Values(SoundFormat{"Wav44", ".wav", 44100, 0.02},
                                         SoundFormat{"Wav96", ".wav", 96000, 0.02},
                                         SoundFormat{"Wav8", ".wav", 8000, 0.05},
                                         SoundFormat{"Flac", ".flac", 48000, 1e-3},
                                         SoundFormat{"Aac", ".m4a", 48000, 0.05},
                                         SoundFormat{"Aac44", ".m4a", 44100, 0.05},
                                         SoundFormat{"Ogg", ".ogg", 48000, 0.05},
                                         SoundFormat{"Mp3", ".mp3", 44100, 0.05}),
                         nameOf);

TEST_F(FileSoundTest, BeginsWithinTheFile)
{
    // 440 Hz goes through whole waves in 25 ms, that is 11 of them.
    m_sketch.addMix(tone(1025), 0, 1000);
    const Sound sound = mixed(0, 1000);

    EXPECT_LT(sound.distanceFromSine(440, 0.5, 0, sound.frames()), 1e-4);
}

TEST_F(FileSoundTest, IsSilentBeforeAndAfterTheLayerAndTheFile)
{
    m_sketch.addMix(tone(4500), 500, 2000);
    const Sound sound = mixed(0, 3000);

    EXPECT_EQ(sound.loudest(0, 500), 0.0F);
    EXPECT_NEAR(sound.loudest(500, 1000), 0.5F, 1e-3);
    EXPECT_EQ(sound.loudest(1001, 3000), 0.0F);
}

TEST_F(FileSoundTest, IsSilentBeforeTheStartOfTheFile)
{
    m_sketch.addMix(tone(-510), 0, 1000);
    const Sound sound = mixed(0, 1000);

    EXPECT_EQ(sound.loudest(0, 510), 0.0F);
    EXPECT_NEAR(sound.at(framesOf(510) + 27), 0.5F, 1e-2); // a quarter of a wave later
    EXPECT_NEAR(sound.loudest(510, 1000), 0.5F, 1e-3);
    EXPECT_TRUE(mixedInParts(sound.frames()) == sound);
}

TEST_F(FileSoundTest, LayersSumAndTheSumIsLimited)
{
    m_sketch.addMain(tone(), 1000);
    m_sketch.addMix(tone(), 250, 750);
    m_sketch.addMix(tone(), 500, 500);
    const Sound sound = mixed(0, 1000);

    EXPECT_NEAR(sound.loudest(0, 250), 0.5F, 1e-3);
    EXPECT_NEAR(sound.loudest(250, 500), 1.0F, 1e-3);
    EXPECT_EQ(sound.loudest(500, 1000), 1.0F);
    EXPECT_NEAR(sound.frequency(500, 1000), 440.0, 2.0);
}

TEST_F(FileSoundTest, FollowsTheVolume)
{
    Layer faded = tone();
    faded.volume = {{0, 0.0F}, {1000, 1.0F}};
    m_sketch.addMix(faded, 0, 2000);
    const Sound sound = mixed(0, 2000);

    for (const long long ms : {100, 300, 500, 900})
        EXPECT_NEAR(sound.loudest(ms - 5, ms + 5), 0.5 * static_cast<double>(ms) / 1000.0, 5e-3);
    EXPECT_NEAR(sound.loudest(1000, 2000), 0.5F, 1e-3);
}

TEST_F(FileSoundTest, IsTheSameInBlocksOfAnySize)
{
    m_sketch.addMain(tone(130), 1000);
    m_sketch.addMain(tone(700), 1000);
    m_sketch.addMix(tone(3), 333, 1111);
    const Sound whole = mixed(0, 2000);

    EXPECT_GT(whole.loudest(0, 2000), 0.5F);
    EXPECT_TRUE(mixedInParts(whole.frames()) == whole);
}

TEST_F(FileSoundTest, IsTheSameAfterSeekingBack)
{
    m_sketch.addMix(tone(), 0, 5000);
    SoundMixer mixer(rvengine::makeSoundSource());
    const Sound first = mixedBy(mixer, framesOf(100), framesOf(500));
    mixedBy(mixer, framesOf(3000), 1000);

    EXPECT_TRUE(mixedBy(mixer, framesOf(100), framesOf(500)) == first);
}

TEST_F(FileSoundTest, IsInTimeAfterSeekingInAFileOfAnotherRate)
{
    m_sketch.addMix(
        m_sketch.sound(TestMedia::tone(sharedMedia::folder(), "seek.wav", 440, 0.5, 4, 1, 44100)),
        0, 4000);
    SoundMixer mixer(rvengine::makeSoundSource());
    for (const long long ms : {2000, 500, 3000, 501}) {
        const Sound whole = mixed(0, ms + 200);
        const Sound part = mixedBy(mixer, framesOf(ms), framesOf(200));
        double most = 0.0;
        for (long long frame = framesOf(50); frame < part.frames(); ++frame)
            most = std::max(most, static_cast<double>(
                                      std::abs(part.at(frame) - whole.at(framesOf(ms) + frame))));
        EXPECT_LT(most, 0.02) << "from " << ms << " ms";
    }
}

TEST_P(FileSoundSpeedTest, KeepsThePitchAndTheLevel)
{
    const double speed = GetParam();
    const auto length = static_cast<long long>(std::min(5000.0 / speed, 3000.0));
    m_sketch.addMix(tone(0, speed), 0, length);
    const Sound sound = mixed(0, length);

    EXPECT_NEAR(sound.frequency(100, length - 200), 440.0, 4.0);
    EXPECT_NEAR(sound.loudest(100, length - 200), 0.5F, 0.05F);
}

TEST_P(FileSoundSpeedTest, IsInTime)
{
    // A burst of 10 ms after each second of the file.
    const std::string path = TestMedia::wave(sharedMedia::folder(), "bursts.wav",
                                             {"if(lt(mod(t,1),0.01),0.8*sin(2*PI*1000*t),0)"}, 5);
    const double speed = GetParam();
    Layer layer = m_sketch.sound(path);
    layer.fileStart = 500;
    layer.speed = speed;
    const auto length = static_cast<long long>(4500.0 / speed);
    m_sketch.addMix(layer, 200, length);
    const Sound sound = mixed(0, length);

    constexpr double tolerance = 20.0;
    for (int burst = 1; burst < 4; ++burst) {
        const double expected = 200.0 + (burst * 1000.0 - 500.0 + 5.0) / speed;
        const auto near = static_cast<long long>(400.0 / speed);
        const auto at = static_cast<long long>(expected);
        EXPECT_NEAR(sound.middle(at - near, at + near), expected, tolerance) << "burst " << burst;
        EXPECT_GT(sound.loudest(at - near, at + near), 0.15F) << "burst " << burst;
    }
}

TEST_P(FileSoundSpeedTest, IsTheSameInBlocksOfAnySize)
{
    m_sketch.addMix(tone(0, GetParam()), 10, 1000);
    const Sound whole = mixed(0, 1000);

    EXPECT_TRUE(mixedInParts(whole.frames()) == whole);
}

TEST_P(FileSoundSpeedTest, IsHeardAfterTheStartOfTheFileWhenItBeginsBefore)
{
    const double speed = GetParam();
    Layer early = tone(static_cast<long long>(-500 * speed), speed);
    m_sketch.addMix(early, 0, 1500);
    const Sound sound = mixedInParts(framesOf(1500));

    EXPECT_LT(sound.loudest(0, 300), 0.01F);
    EXPECT_NEAR(sound.loudest(600, 1000), 0.5F, 0.05F);
}

INSTANTIATE_TEST_SUITE_P(All, FileSoundSpeedTest,
                         testing::Values(0.25, 0.4, 0.5, 0.8, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0),
                         [](const testing::TestParamInfo<double>& speed) {
                             return "Percent" + std::to_string(std::lround(speed.param * 100.0));
                         });

TEST_F(FileSoundTest, PlaysAtASpeedUnderADecimalComma)
{
    m_sketch.addMix(tone(0, 1.25), 0, 1000);
    const Sound expected = mixed(0, 1000);

    const ScopedCommaLocale comma(sharedMedia::folder());
    const Sound sound = mixed(0, 1000);
    EXPECT_NEAR(sound.frequency(100, 900), 440.0, 4.0);
    EXPECT_TRUE(sound == expected);
}

TEST_F(FileSoundTest, IsSilentAtSpeedsThatCannotBePlayed)
{
    for (const double speed :
         {0.0, -1.0, 0.01, 100.0, 1e300, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        m_sketch.addMix(tone(0, speed), 0, 100);
        EXPECT_EQ(rvengine::SpeedReader::open(sharedMedia::tone(), speed), nullptr) << speed;
    }

    EXPECT_EQ(mixed(0, 100).loudest(0, 100), 0.0F);
}

TEST_F(FileSoundTest, IsSilentWithoutAWarningForAVideoWithoutSound)
{
    m_sketch.addMain(m_sketch.video(sharedMedia::numbered()), 1000);

    EXPECT_EQ(mixed(0, 1000).loudest(0, 1000), 0.0F);
}

TEST_F(FileSoundTest, HearsTheSoundOfAVideo)
{
    m_sketch.addMain(
        m_sketch.video(TestMedia::video(sharedMedia::folder(), "sounding.mp4", 160, 90, "25", 1)));
    const Sound sound = mixed(0, 1000);

    EXPECT_NEAR(sound.frequency(100, 900), 440.0, 2.0);
    EXPECT_GT(sound.loudest(100, 900), 0.05F);
}

TEST_F(FileSoundTest, WarnsOnceOfAFileThatIsMissing)
{
    m_sketch.addMix(m_sketch.sound("/nowhere/missing.wav"));
    SoundMixer mixer(rvengine::makeSoundSource());
    for (int block = 0; block < 10; ++block)
        EXPECT_EQ(mixedBy(mixer, framesOf(block * 20), framesOf(20)).loudest(0, 20), 0.0F);

    EXPECT_EQ(m_warnings.take(), QStringList{"cannot read the media file /nowhere/missing.wav"});
}

TEST(SoundReaderTest, TellsWhereThereIsNothingButSilence)
{
    const auto reader = rvengine::SoundReader::open(sharedMedia::tone());
    ASSERT_NE(reader, nullptr);
    std::vector<float> block(960 * SoundChannels);

    EXPECT_TRUE(reader->read(0, 960, block.data()));
    EXPECT_FALSE(reader->read(framesOf(5000), 960, block.data()));
    EXPECT_FALSE(reader->read(std::numeric_limits<long long>::max() / 4, 960, block.data()));
    EXPECT_TRUE(reader->read(framesOf(4990), 960, block.data()));
    EXPECT_EQ(block.back(), 0.0F);
}
