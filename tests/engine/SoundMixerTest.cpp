// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/sound/SoundMixer.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using rvengine::Layer;
using rvengine::Scene;
using rvengine::SoundChannels;
using rvengine::SoundMixer;
using rvengine::SoundSource;
using rvengine::VolumePoint;

namespace {

/// Sounds without files: the source of a layer is the level of its left side, and the right side is
/// the negative of it. A layer whose source is "ramp" has a level that tells the offset.
class LevelSource : public SoundSource
{
public:
    static constexpr float RampStep = 1e-6F;

    bool sound(const Layer& layer, std::uintptr_t, long long offset, std::size_t frames,
               float* out) override
    {
        if (layer.source.empty())
            return false;
        for (std::size_t i = 0; i < frames; ++i) {
            const float level =
                layer.source == "ramp"
                    ? static_cast<float>(offset + static_cast<long long>(i)) * RampStep
                    : std::stof(layer.source);
            *out++ = level;
            *out++ = -level;
        }
        return true;
    }

    void endBlock() override {}
};

class SoundMixerTest : public testing::Test
{
protected:
    /// The left side of the mix, from `startMs` on.
    std::vector<float> left(long long startMs, long long ms)
    {
        const auto frames = static_cast<std::size_t>(rvengine::framesOf(ms));
        std::vector<float> samples(frames * SoundChannels, 99.0F);
        m_mixer.mix(m_sketch.scene(), rvengine::framesOf(startMs), frames, samples.data());
        std::vector<float> side(frames);
        int wrong = 0;
        for (std::size_t i = 0; i < frames; ++i) {
            side[i] = samples[i * SoundChannels];
            wrong += samples[i * SoundChannels + 1] == -side[i] ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << "frames whose right side is not the negative of the left one";
        return side;
    }

    float levelAt(long long ms) { return left(ms, 1).front(); }

    Layer sound(const char* level, const std::vector<VolumePoint>& volume = {}) const
    {
        Layer layer = m_sketch.sound(level);
        layer.volume = volume;
        return layer;
    }

    SceneSketch m_sketch;
    SoundMixer m_mixer{std::make_unique<LevelSource>()};
};

} // namespace

TEST_F(SoundMixerTest, IsSilentWhereNothingIs)
{
    for (const float level : left(0, 10))
        ASSERT_EQ(level, 0.0F);
}

TEST_F(SoundMixerTest, HearsALayerFromItsStartUntilBeforeItsEnd)
{
    m_sketch.addMix(sound("0.5"), 10, 20);
    const std::vector<float> levels = left(0, 40);

    for (std::size_t i = 0; i < levels.size(); ++i)
        ASSERT_EQ(levels[i], i >= 480 && i < 1440 ? 0.5F : 0.0F) << "frame " << i;
}

TEST_F(SoundMixerTest, AsksForTheSoundFromTheStartOfTheLayer)
{
    m_sketch.addMix(sound("ramp"), 10, 100);

    EXPECT_FLOAT_EQ(levelAt(10), 0.0F);
    EXPECT_FLOAT_EQ(levelAt(40), 30 * 48 * LevelSource::RampStep);
}

TEST_F(SoundMixerTest, SumsAllLayersAndLimitsTheSum)
{
    m_sketch.addMain(sound("0.5"), 100);
    m_sketch.addMix(sound("0.25"), 0, 60);
    m_sketch.addMix(sound("0.75"), 30, 40);

    EXPECT_FLOAT_EQ(levelAt(0), 0.75F);
    EXPECT_FLOAT_EQ(levelAt(40), 1.0F);
    EXPECT_FLOAT_EQ(levelAt(65), 1.0F);
    EXPECT_FLOAT_EQ(levelAt(80), 0.5F);
}

TEST_F(SoundMixerTest, HearsVideosButNotPicturesAndEffects)
{
    for (const auto kind : {rvengine::LayerKind::Picture, rvengine::LayerKind::Matte,
                            rvengine::LayerKind::Filter, rvengine::LayerKind::Liquify})
        m_sketch.addMix(m_sketch.layer(kind, "0.25"));
    EXPECT_EQ(levelAt(0), 0.0F);

    m_sketch.addMix(m_sketch.video("0.25"));
    EXPECT_FLOAT_EQ(levelAt(0), 0.25F);
}

TEST_F(SoundMixerTest, ChangesTheVolumeEvenlyBetweenPointsAndHoldsItOutside)
{
    m_sketch.addMix(sound("1", {{20, 0.25F}, {60, 0.75F}, {80, 0.5F}}), 100, 200);

    EXPECT_FLOAT_EQ(levelAt(100), 0.25F);
    EXPECT_FLOAT_EQ(levelAt(120), 0.25F);
    EXPECT_FLOAT_EQ(levelAt(130), 0.375F);
    EXPECT_FLOAT_EQ(levelAt(140), 0.5F);
    EXPECT_FLOAT_EQ(levelAt(160), 0.75F);
    EXPECT_FLOAT_EQ(levelAt(170), 0.625F);
    EXPECT_FLOAT_EQ(levelAt(180), 0.5F);
    EXPECT_FLOAT_EQ(levelAt(299), 0.5F);
}

TEST_F(SoundMixerTest, TakesTheLastOfSeveralVolumesOfOneTime)
{
    m_sketch.addMix(sound("1", {{10, 0.25F}, {10, 0.75F}}), 0, 100);

    EXPECT_FLOAT_EQ(levelAt(9), 0.25F);
    EXPECT_FLOAT_EQ(levelAt(10), 0.75F);
}

TEST_F(SoundMixerTest, SurvivesVolumesThatAreNoNumbers)
{
    constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float Infinity = std::numeric_limits<float>::infinity();
    m_sketch.addMix(sound("0.5", {{0, NaN}}), 0, 100);
    m_sketch.addMix(sound("0", {{0, Infinity}}), 0, 100);
    m_sketch.addMix(sound("0.5", {{0, Infinity}, {100, -Infinity}}), 0, 100);

    for (const float level : left(0, 100))
        ASSERT_TRUE(std::isfinite(level) && std::abs(level) <= 1.0F) << level;
}

TEST_F(SoundMixerTest, MixesTheSameInBlocksOfAnySize)
{
    m_sketch.addMain(sound("ramp", {{0, 0.0F}, {150, 1.0F}}), 130);
    m_sketch.addMain(sound("0.5"), 100);
    m_sketch.addMix(sound("ramp", {{3, 2.0F}, {90, 0.5F}}), 17, 111);
    constexpr std::size_t frames = 12000;
    std::vector<float> whole(frames * SoundChannels);
    m_mixer.mix(m_sketch.scene(), 0, frames, whole.data());

    std::vector<float> parts(frames * SoundChannels);
    std::size_t next = 0;
    for (std::size_t size = 1; next < frames; size = size * 3 + 1) {
        const std::size_t count = std::min(size, frames - next);
        m_mixer.mix(m_sketch.scene(), static_cast<long long>(next), count,
                    parts.data() + next * SoundChannels);
        next += count;
    }
    EXPECT_TRUE(parts == whole);
}

TEST_F(SoundMixerTest, SurvivesTimesAtTheEndsOfTime)
{
    constexpr long long first = std::numeric_limits<long long>::min();
    constexpr long long last = std::numeric_limits<long long>::max();
    m_sketch.addMix(sound("0.5"), 0, last);
    m_sketch.scene().mix.back().start = first;
    m_sketch.addMix(sound("0.25", {{first, 1.0F}, {last, 1.0F}}), 0, last);

    EXPECT_FLOAT_EQ(levelAt(-1000), 0.5F);
    EXPECT_FLOAT_EQ(levelAt(1000), 0.75F);
}
